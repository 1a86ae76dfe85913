#include <gtest/gtest.h>

#include "core/ServingUnits.h"

namespace nutrovex {
namespace {

enum Unit : uint8_t {
    kPinch,
    kTsp,
    kTbsp,
    kCup,
    kPint,
    kQrt,
    kGal,
    kFlOz,
    kL,
    kMl,
    kOz,
    kLbs,
    kG,
    kKg,
    kItem
};

TEST(ServingUnits, Conversions) {
    const struct {
        float amount;
        unsigned from;
        unsigned to;
        float expected;
    } cases[] = {
        {2.0f, kTbsp, kCup, 0.125f},
        {1.0f, kL, kMl, 1000.0f},
        {1.0f, kLbs, kKg, 0.45359232f},
        {3.0f, kItem, kG, 3.0f},  // item counts as a gram, on purpose
        {1.0f, kGal, kPinch, 6144.0f},
        {48.0f, kPinch, kFlOz, 1.0f},
        {16.0f, kOz, kLbs,
         static_cast<float>(static_cast<float>(16.0 * 28.34952) * 0.002204622864866848)},
        {0.0f, kCup, kTsp, 0.0f},
    };
    for (const auto& c : cases) {
        float out = -1.0f;
        ASSERT_EQ(convertServing(c.amount, c.from, c.to, out), ConvertResult::Converted)
            << kUnitNames[c.from] << " to " << kUnitNames[c.to];
        EXPECT_FLOAT_EQ(out, c.expected) << kUnitNames[c.from] << " to " << kUnitNames[c.to];
    }
}

TEST(ServingUnits, FamiliesDecideCompatibility) {
    EXPECT_TRUE(unitsCompatible(kPinch, kMl));
    EXPECT_TRUE(unitsCompatible(kOz, kItem));
    EXPECT_FALSE(unitsCompatible(kCup, kG));
    EXPECT_FALSE(unitsCompatible(kItem, kFlOz));
    float out = 7.0f;
    EXPECT_EQ(convertServing(1.0f, kCup, kG, out), ConvertResult::Failed);
    EXPECT_EQ(out, 7.0f);
}

TEST(ServingUnits, UnknownUnitsWriteNothingOrZero) {
    float out = 7.0f;
    EXPECT_EQ(convertServing(5.0f, kG, 15, out), ConvertResult::NothingWritten);
    EXPECT_EQ(out, 7.0f);
    EXPECT_EQ(convertServing(5.0f, 200, kG, out), ConvertResult::Converted);
    EXPECT_EQ(out, 0.0f);
}

TEST(ServingUnits, ServingFactor) {
    // 100 g is 3.527397 oz, so 2 oz is 0.567 of it.
    EXPECT_NEAR(servingFactor({100.0f, kG, 0}, {2.0f, kOz, 0}), 0.567f, 0.0001f);
    EXPECT_EQ(servingFactor({1.0f, kCup, 0}, {2.0f, kG, 0}), 1.0f);  // incompatible
    EXPECT_EQ(servingFactor({1.0f, kCup, 0}, {0.0f, kCup, 0}), 0.0f);
    EXPECT_EQ(servingFactor({0.0f, kCup, 0}, {1.0f, kCup, 0}), 0.0f);
    EXPECT_EQ(servingFactor({1.0f, kCup, 0}, {3.0f, kTbsp, 0}), 3.0f / 16.0f);
}

}  // namespace
}  // namespace nutrovex
