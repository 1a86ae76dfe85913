#include <gtest/gtest.h>

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

CalendarDate dmy(int d, int m, int y) {
    return CalendarDate::fromDmy(d, m, y);
}

// A profile whose BMR can be computed: 30-year-old man, 70 in.
UserProfile measuredProfile() {
    UserProfile p(dmy(1, 1, 2002));
    p.setHeight(70.0f);
    p.setAge(30);
    return p;
}

TEST(Rounding, FractionFromPointFortyNineRoundsUp) {
    const struct {
        float value;
        int16_t whole;
    } cases[] = {
        {70.49f, 70},  // its single-precision fraction is 0.4899998
        {70.5f, 71},  {70.495f, 71},    {69.68326f, 70},   {0.48f, 0},
        {-3.0f, 0},   {9999.6f, 10000}, {12000.0f, 10000},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(roundWhole(c.value), c.whole) << c.value;
    }
}

TEST(Bmr, WeightAndHeightToWholeNumbers) {
    EXPECT_EQ(weightToWhole(154.0f, true).value, 70);  // 69.68 kg
    EXPECT_EQ(weightToWhole(180.0f, true).value, 81);  // 81.45 kg
    EXPECT_EQ(weightToWhole(70.49f, false).value, 70);
    EXPECT_EQ(weightToWhole(70.5f, false).value, 71);
    EXPECT_EQ(heightToWhole(70.0f, true).value, 178);  // 177.8 cm
    EXPECT_EQ(heightToWhole(70.0f, false).value, 70);
    const WholeResult missing = weightToWhole(-1.0f, true);
    EXPECT_FALSE(missing.ok);
    EXPECT_EQ(missing.value, -1);
    EXPECT_FALSE(heightToWhole(-0.5f, false).ok);
}

UserProfile profileOf(float height, int age, unsigned gender) {
    UserProfile p;
    p.setHeight(height);
    p.setAge(age);
    EXPECT_TRUE(p.setGender(gender));
    return p;
}

TEST(Bmr, LevelsScaleTheBasalRateAndLevelFourDependsOnGender) {
    const UserProfile man = profileOf(70.0f, 30, 0);
    const UserProfile woman = profileOf(65.0f, 40, 1);
    // Man: 66 + 13.7*81 + 5*178 - 6.8*30 = 1861.7. Woman (68 kg, 165 cm):
    // 655 + 9.6*68 + 1.8*165 - 4.7*40 = 1416.8.
    const struct {
        const UserProfile* profile;
        uint16_t level;
        uint16_t bmr;
    } cases[] = {
        {&man, 1, 1861},   {&man, 2, 2234},   {&man, 3, 2420},   {&man, 4, 2978},
        {&woman, 1, 1416}, {&woman, 2, 1700}, {&woman, 3, 1841}, {&woman, 4, 1983},
    };
    for (const auto& c : cases) {
        const float weight = c.profile == &man ? 180.0f : 150.0f;
        const BmrResult r = computeBmr(*c.profile, c.level, weight);
        EXPECT_TRUE(r.ok);
        EXPECT_EQ(r.bmr, c.bmr) << "level " << c.level;
    }
}

TEST(Bmr, FailsForManualLevelAndMissingInputsButNotForLevelZero) {
    const UserProfile man = profileOf(70.0f, 30, 0);
    EXPECT_FALSE(computeBmr(man, 5, 180.0f).ok);
    EXPECT_FALSE(computeBmr(man, 2, -1.0f).ok);
    EXPECT_FALSE(computeBmr(profileOf(-1.0f, 30, 0), 2, 180.0f).ok);
    EXPECT_FALSE(computeBmr(profileOf(70.0f, -1, 0), 2, 180.0f).ok);
    const BmrResult none = computeBmr(man, 0, 180.0f);
    EXPECT_TRUE(none.ok);
    EXPECT_EQ(none.bmr, 0);
    EXPECT_TRUE(computeBmr(man, 9, 180.0f).ok);
    EXPECT_EQ(computeBmr(man, 9, 180.0f).bmr, 0);
}

TEST(DayWeight, SettingTheWeightSettlesLevelAndBmr) {
    const UserProfile profile = measuredProfile();

    DayRecord fresh(dmy(3, 5, 2002));
    setDayWeight(fresh, 180.0f, profile);  // level 0 takes the profile's default, 2
    EXPECT_EQ(fresh.level(), 2);
    EXPECT_EQ(fresh.bmr(), 2234);
    EXPECT_EQ(fresh.flags() & kDayFlagWeight, kDayFlagWeight);

    DayRecord manual(dmy(3, 5, 2002));
    ASSERT_TRUE(manual.setLevel(5));
    ASSERT_TRUE(manual.setBmr(1500));
    setDayWeight(manual, 200.0f, profile);  // a typed BMR survives a new weight
    EXPECT_EQ(manual.bmr(), 1500);
    EXPECT_EQ(manual.weight(), 200.0f);

    DayRecord cleared(dmy(3, 5, 2002));
    setDayWeight(cleared, 180.0f, profile);
    setDayWeight(cleared, -1.0f, profile);  // no weight: level and BMR back to 0
    EXPECT_EQ(cleared.level(), 0);
    EXPECT_EQ(cleared.bmr(), 0);

    UserProfile noAge = measuredProfile();
    noAge.setAge(-1);
    DayRecord failed(dmy(3, 5, 2002));
    ASSERT_TRUE(failed.setBmr(1234));
    setDayWeight(failed, 180.0f, noAge);  // a failed computation leaves no old value behind
    EXPECT_EQ(failed.bmr(), 0);
    EXPECT_EQ(failed.level(), 2);
}

}  // namespace
}  // namespace nutrovex
