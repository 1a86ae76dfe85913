#include <gtest/gtest.h>

#include "calc/Goals.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

const CalendarDate kStart = CalendarDate::fromDmy(1, 3, 2002);

GoalPlan planFor(float start, float goal, int days, GoalPlan plan = {}) {
    computeGoalPlan(plan, start, kStart, goal, steppedDate(kStart, days));
    return plan;
}

TEST(GoalPlan, CaloriesPerDayFromWholePoundsAndDays) {
    const struct {
        float start;
        float goal;
        int days;
        int32_t change;
        int32_t perDay;
    } table[] = {
        {200.0f, 190.0f, 35, 10, 1000},
        {150.0f, 160.0f, 70, -10, -500},
        {151.0f, 150.0f, 3, 1, 1166},    // 3500 / 3, truncated
        {150.0f, 151.0f, 3, -1, -1166},  // toward zero
        {180.0f, 180.0f, 30, 0, 0},
        {200.48f, 189.5f, 10, 10, 3500},  // 200 - 190: each weight rounded at 0.49 first
        {180.0f, 170.0f, 365, 10, 95},    // across the turn of the year
    };
    for (const auto& c : table) {
        const GoalPlan plan = planFor(c.start, c.goal, c.days);
        EXPECT_EQ(plan.valid, 1) << c.start << " " << c.goal;
        EXPECT_EQ(planWeightChange(plan), c.change) << c.start << " " << c.goal;
        EXPECT_EQ(planDays(plan), c.days) << c.start << " " << c.goal;
        EXPECT_EQ(planCaloriesPerDay(plan), c.perDay) << c.start << " " << c.goal;
    }
}

TEST(GoalPlan, IncompleteGoalsOnlyMarkThePlanNotValid) {
    const GoalPlan before{1, 10, 35, 1000};
    const GoalPlan noStart = planFor(kNotEntered, 190.0f, 35, before);
    EXPECT_EQ(noStart, (GoalPlan{0, 10, 35, 1000}));
    EXPECT_EQ(planFor(200.0f, -5.0f, 35, before), (GoalPlan{0, 10, 35, 1000}));
    // When the dates fail, the days have already been worked out.
    EXPECT_EQ(planFor(200.0f, 190.0f, 0, before), (GoalPlan{0, 10, 0, 1000}));
    EXPECT_EQ(planFor(200.0f, 190.0f, -2, before),
              (GoalPlan{0, 10, static_cast<uint32_t>(-2), 1000}));

    EXPECT_EQ(planDays(noStart), std::nullopt);
    EXPECT_EQ(planWeightChange(noStart), std::nullopt);
    EXPECT_EQ(planCaloriesPerDay(noStart), std::nullopt);
    EXPECT_EQ(goalSentence(noStart, false), kNoGoalSentence);
}

TEST(GoalPlan, RecomputingTheProfilesPlanMarksItChanged) {
    UserProfile profile(kStart);
    profile.rawFields().flags = 0;
    profile.setStartWeight(200.0f);
    profile.setGoalWeight(190.0f);
    profile.setGoalDate(steppedDate(kStart, 35));
    recomputeGoalPlan(profile);
    EXPECT_EQ(profile.plan(), (GoalPlan{1, 10, 35, 1000}));
    EXPECT_NE(profile.flags() & kFlagGoalPlan, 0);
}

TEST(GoalSentence, LoseGainAndNothing) {
    EXPECT_EQ(goalSentence(planFor(200.0f, 190.0f, 35), false),
              "To lose 10 lbs in 35 days, you will need to eat 1000 fewer calories per day than "
              "your body burns.");
    EXPECT_EQ(goalSentence(planFor(150.0f, 160.0f, 70), false),
              "To gain 10 lbs in 70 days, you will need to eat 500 more calories per day than "
              "your body burns.");
    EXPECT_EQ(goalSentence(planFor(180.0f, 180.0f, 30), false),
              "To lose 0 lbs in 30 days, you will need to eat 0 fewer calories per day than your "
              "body burns.");
    // A metric user sees kilograms; the calories stay those of the pounds.
    EXPECT_EQ(goalSentence(planFor(200.0f, 190.0f, 35), true),
              "To lose 5 kg in 35 days, you will need to eat 1000 fewer calories per day than "
              "your body burns.");
    EXPECT_EQ(goalSentence(planFor(200.0f, 200.0f, 1), false).substr(0, 8), "To lose ");
    EXPECT_EQ(goalSentence(planFor(200.0f, 190.0f, 0), false),
              "After inputting your personal information and goals, the calorie calculator will "
              "automatically display the calories you need to remove from your diet each day.");
}

TEST(GoalSentence, WeightChangeInDisplayUnits) {
    const struct {
        int32_t pounds;
        bool metric;
        int32_t shown;
    } table[] = {
        {10, false, 10}, {-10, false, -10}, {10, true, 5},  // 4.52 rounds up at 0.49
        {-10, true, -5}, {1, true, 0},                      // 0.45 rounds down
        {0, true, 0},    {221, true, 100},
    };
    for (const auto& c : table) {
        EXPECT_EQ(displayedWeightChange(c.pounds, c.metric), c.shown) << c.pounds;
    }
}

TEST(GoalWeightEntry, TypedWholeNumbersBecomeStoredPounds) {
    const struct {
        int32_t typed;
        bool metric;
        float stored;
    } table[] = {
        {0, false, -1.0f},    {0, true, -1.0f},      // empty or 0: not entered
        {-20, false, -1.0f},  {170, false, 170.0f},  //
        {999, false, 999.0f}, {1000, false, 999.0f},    {1200, false, 999.0f},
        {100, true, 221.0f},  {452, true, 452 * 2.21f},  // 998.92, kept
        {453, true, 999.0f},                             // 1001.13, held to 999
    };
    for (const auto& c : table) {
        EXPECT_EQ(weightFromEntry(c.typed, c.metric), c.stored) << c.typed << " " << c.metric;
    }
}

}  // namespace
}  // namespace nutrovex
