#include <gtest/gtest.h>

#include "core/ServingQuantity.h"
#include "core/ServingUnits.h"

namespace nutrovex {
namespace {

using U = ServingUnit;

TEST(ServingUnits, Conversions) {
    const struct {
        float amount;
        ServingUnit from;
        ServingUnit to;
        float expected;
    } cases[] = {
        {2.0f, U::Tablespoon, U::Cup, 0.125f},
        {1.0f, U::Litre, U::Millilitre, 1000.0f},
        {1.0f, U::Pound, U::Kilogram, 0.45359232f},
        {3.0f, U::Item, U::Gram, 3.0f},  // item counts as a gram, on purpose
        {1.0f, U::Gallon, U::Pinch, 6144.0f},
        {48.0f, U::Pinch, U::FluidOunce, 1.0f},
        {16.0f, U::Ounce, U::Pound,
         static_cast<float>(static_cast<float>(16.0 * 28.34952) * 0.002204622864866848)},
        {0.0f, U::Cup, U::Teaspoon, 0.0f},
    };
    for (const auto& c : cases) {
        float out = -1.0f;
        ASSERT_EQ(convertServing(c.amount, c.from, c.to, out), ConvertResult::Converted)
            << unitName(c.from) << " to " << unitName(c.to);
        EXPECT_FLOAT_EQ(out, c.expected) << unitName(c.from) << " to " << unitName(c.to);
    }
}

TEST(ServingUnits, FamiliesDecideCompatibility) {
    EXPECT_TRUE(unitsCompatible(U::Pinch, U::Millilitre));
    EXPECT_TRUE(unitsCompatible(U::Ounce, U::Item));
    EXPECT_FALSE(unitsCompatible(U::Cup, U::Gram));
    EXPECT_FALSE(unitsCompatible(U::Item, U::FluidOunce));
    float out = 7.0f;
    EXPECT_EQ(convertServing(1.0f, U::Cup, U::Gram, out), ConvertResult::Failed);
    EXPECT_EQ(out, 7.0f);
}

TEST(ServingUnits, UnknownUnitsWriteNothingOrZero) {
    float out = 7.0f;
    EXPECT_EQ(convertServing(5.0f, U::Gram, unitFromByte(15), out), ConvertResult::NothingWritten);
    EXPECT_EQ(out, 7.0f);
    EXPECT_EQ(convertServing(5.0f, unitFromByte(200), U::Gram, out), ConvertResult::Converted);
    EXPECT_EQ(out, 0.0f);
}

TEST(ServingUnits, ServingFactor) {
    // 100 g is 3.527397 oz, so 2 oz is 0.567 of it.
    EXPECT_NEAR(servingFactor({100.0f, U::Gram, 0}, {2.0f, U::Ounce, 0}), 0.567f, 0.0001f);
    EXPECT_EQ(servingFactor({1.0f, U::Cup, 0}, {2.0f, U::Gram, 0}), 1.0f);  // incompatible
    EXPECT_EQ(servingFactor({1.0f, U::Cup, 0}, {0.0f, U::Cup, 0}), 0.0f);
    EXPECT_EQ(servingFactor({0.0f, U::Cup, 0}, {1.0f, U::Cup, 0}), 0.0f);
    EXPECT_EQ(servingFactor({1.0f, U::Cup, 0}, {3.0f, U::Tablespoon, 0}), 3.0f / 16.0f);
}

}  // namespace
}  // namespace nutrovex
