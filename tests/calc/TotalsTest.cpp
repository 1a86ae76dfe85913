#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calc/Bmr.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

FoodItem food(float calories, float ratio = 1.0f, const char* name = "") {
    FoodItem f;
    f.name = name;
    f.nutrients = {calories, 10.0f, 2.0f, 5.0f, 3.0f, 1.0f};
    f.ratio = ratio;
    return f;
}

ExerciseEntry exercise(uint16_t minutes, uint16_t calories) {
    ExerciseEntry e;
    e.minutes = minutes;
    e.calories = calories;
    return e;
}

class TotalsTest : public ::testing::Test {
protected:
    DayRecord day{CalendarDate::fromDmy(5, 6, 2003)};
    FoodList& group(int g) { return day.rawFields().groups[static_cast<std::size_t>(g)]; }
};

TEST_F(TotalsTest, EachFoodAddsItsNutrientsTimesItsServingRatio) {
    group(2).push_back(food(200.0f, 1.5f));
    group(2).push_back(food(100.0f, 0.0f));  // a serving of amount 0 adds nothing
    group(2).push_back(food(80.0f, 0.5f));
    EXPECT_EQ(groupTotals(day, 2), (Nutrients{340.0f, 20.0f, 4.0f, 10.0f, 6.0f, 2.0f}));
    EXPECT_EQ(groupTotals(day, 3), Nutrients{});
    EXPECT_EQ(groupTotals(day, 9), Nutrients{});
    EXPECT_EQ(groupTotals(day, -1), Nutrients{});
}

TEST_F(TotalsTest, AGroupIsHeldTo9999AfterEveryFoodButTheDayIsNot) {
    for (int i = 0; i < 10; ++i) {
        group(0).push_back(food(1500.0f));
    }
    EXPECT_EQ(groupTotals(day, 0)[kCalories], 9999.0f);
    EXPECT_EQ(groupTotals(day, 0)[kCarbohydrate], 100.0f);

    // A negative serving ratio (only a damaged file has one) shows the hold is per food: 9000 +
    // 2000 is held to 9999 before the 1000 comes off.
    group(1) = {food(9000.0f), food(2000.0f), food(1000.0f, -1.0f)};
    EXPECT_EQ(groupTotals(day, 1)[kCalories], 8999.0f);

    for (int i = 0; i < 7; ++i) {
        group(7).push_back(food(1500.0f));
    }
    const Nutrients totals = dayTotals(day);
    EXPECT_EQ(totals[kCalories], 9999.0f + 8999.0f + 9999.0f);
    EXPECT_EQ(day.totals(), totals);
    EXPECT_EQ(groupTotals(day, kAllFoodsGroup), totals);
}

TEST_F(TotalsTest, ADayWithoutFoodsTotalsZero) {
    day.rawFields().totals = {1.0f, 1.0f, 1.0f, 1.0f, 1.0f, 1.0f};
    EXPECT_EQ(dayTotals(day), Nutrients{});
    EXPECT_EQ(day.totals(), Nutrients{});
}

TEST_F(TotalsTest, AllFoodsListIsRebuiltInMealOrder) {
    const auto atMeal = [](FoodItem f, uint16_t meal) {
        f.meal = meal;
        return f;
    };
    group(5).push_back(atMeal(food(1.0f, 1.0f, "Toast"), 0));
    group(0).push_back(atMeal(food(1.0f, 1.0f, "Butter"), 1));
    group(5).push_back(atMeal(food(1.0f, 1.0f, "Bagel"), 0));
    group(7).push_back(atMeal(food(1.0f, 1.0f, "Pizza"), 2));
    day.allFoods().push_back(food(1.0f, 1.0f, "stale"));
    rebuildAllFoods(day);
    std::vector<std::string> names;
    for (const FoodItem& f : day.allFoods()) {
        names.push_back(f.name.str());
    }
    // Breakfast, lunch, dinner, each meal by name, whatever the groups.
    EXPECT_EQ(names, (std::vector<std::string>{"Bagel", "Toast", "Butter", "Pizza"}));
    // Copies: the group lists are untouched.
    EXPECT_EQ(group(5).size(), 2u);
}

TEST_F(TotalsTest, ExerciseCaloriesAreHeldAt99999AndCrossedByMinutes) {
    const struct {
        std::vector<std::pair<uint16_t, uint16_t>> entries;  // minutes, calories
        uint32_t calories;
        uint32_t minutes;
    } table[] = {
        {{}, 0, 0},
        {{{30, 360}, {45, 200}}, 560, 75},
        {{{10, 65535}, {10, 34464}}, 99999, 20},      // exactly 99999
        {{{10, 65535}, {10, 34465}}, 99999, 20},      // 100000 held
        {{{65535, 10}, {34464, 10}}, 20, 99999},      // 99999 minutes: no effect
        {{{65535, 10}, {34465, 10}}, 99999, 100000},  // minutes past 99999 force the calories
    };
    for (const auto& c : table) {
        day.exercisesForEdit().clear();
        for (const auto& [minutes, calories] : c.entries) {
            day.exercisesForEdit().push_back(exercise(minutes, calories));
        }
        recomputeDay(day, UserProfile{});
        EXPECT_EQ(day.exerciseCalories, c.calories) << c.minutes;
        EXPECT_EQ(day.exerciseMinutes, c.minutes) << c.calories;
    }
}

TEST_F(TotalsTest, RecomputingTheDayStoresTotalsCaloriesInAndRefreshesTheBmr) {
    UserProfile profile(day.date());
    profile.setHeight(70.0f);
    (void)profile.setAge(30);
    group(3).push_back(food(1234.9f));
    group(4).push_back(food(100.0f));
    day.rawFields().weight = 180.0f;

    const struct {
        uint16_t level;
        int16_t bmrBefore;
        int16_t bmrAfter;
    } table[] = {
        {0, 55, 55},      // no level: left alone
        {1, 55, 1861},    // 1861.7 in bed
        {2, 55, 2234},    // the worked example, at 1.2
        {4, 55, 2978},    // a man walking, 1.6
        {5, 1500, 1500},  // typed by hand: kept
    };
    for (const auto& c : table) {
        day.rawFields().level = c.level;
        day.rawFields().bmr = c.bmrBefore;
        recomputeDay(day, profile);
        EXPECT_EQ(day.bmr(), c.bmrAfter) << c.level;
        EXPECT_EQ(day.caloriesIn, 1334u) << c.level;  // 1334.9 truncated
        EXPECT_FLOAT_EQ(day.totals()[kCalories], 1334.9f);
    }

    // A BMR that cannot be computed is stored as 0 for levels 1 to 4.
    day.rawFields().level = 3;
    day.rawFields().weight = -1.0f;
    recomputeDay(day, profile);
    EXPECT_EQ(day.bmr(), 0);
}

TEST(WholeCalories, TruncatesTowardZeroWithinThirtyTwoBits) {
    EXPECT_EQ(wholeCalories(1499.99f), 1499u);
    EXPECT_EQ(wholeCalories(79992.0f), 79992u);
    EXPECT_EQ(wholeCalories(-0.5f), 0u);
    EXPECT_EQ(wholeCalories(-2.5f), 0xFFFFFFFEu);
    EXPECT_EQ(wholeCalories(std::numeric_limits<float>::quiet_NaN()), 0u);
    EXPECT_EQ(wholeCalories(-std::numeric_limits<float>::infinity()), 0u);
}

}  // namespace
}  // namespace nutrovex
