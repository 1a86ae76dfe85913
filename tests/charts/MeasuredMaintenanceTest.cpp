#include <gtest/gtest.h>

#include <vector>

#include "calc/Goals.h"
#include "charts/MeasuredMaintenance.h"
#include "core/UserProfile.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

// Day numbers relative to the current date, which is day 1000.
constexpr int32_t kNow = 1000;
constexpr int32_t kBefore = kNow - 28;  // the day before the window

// Food logged on each of `count` days ending at the current date, every `every` days.
std::vector<DaySample> intake(int count, double calories, int every = 1) {
    std::vector<DaySample> days;
    for (int i = 0; i < count; ++i) {
        days.push_back({kNow - i * every, -1.0f, calories});
    }
    return days;
}

void weigh(std::vector<DaySample>& days, int32_t day, float pounds) {
    days.push_back({day, pounds, 0.0});
}

TEST(MeasuredMaintenance, HandComputedWindows) {
    {  // A steady weight and a steady intake: what is eaten is what is burnt.
        auto days = intake(28, 2000.0);
        for (int32_t d = kBefore - 10; d <= kNow; d += 3) {
            weigh(days, d, 180.0f);
        }
        const Maintenance m = measureMaintenance(days, kNow);
        ASSERT_TRUE(m.valid);
        EXPECT_DOUBLE_EQ(m.calories, 2000.0);
        EXPECT_EQ(m.loggedDays, 28);
        EXPECT_EQ(m.trendDays, 28);
    }
    {  // Two pounds of trend lost over the 28 days at 2000 a day: 7000 calories came from the body.
        auto days = intake(28, 2000.0);
        weigh(days, kBefore, 200.0f);
        weigh(days, kNow - 10, 200.0f);
        weigh(days, kNow, 180.0f);  // the trend moves a tenth of the way: 198
        const Maintenance m = measureMaintenance(days, kNow);
        ASSERT_TRUE(m.valid);
        EXPECT_EQ(*m.trendStart, 200.0f);
        EXPECT_EQ(*m.trendEnd, 198.0f);
        EXPECT_DOUBLE_EQ(m.calories, 2250.0);
        EXPECT_EQ(roundedMaintenance(m.calories), 2250);
        EXPECT_NEAR(*m.weeklyRate(), -0.5, 1e-9);
    }
    {  // Days without food inside the window are not zero intake: 14 logged days out of 28.
        auto days = intake(14, 2000.0, 2);
        days.push_back({kNow - 1, 190.0f, 0.0});  // a weigh-in only
        weigh(days, kBefore, 190.0f);
        weigh(days, kNow - 21, 190.0f);
        const Maintenance m = measureMaintenance(days, kNow);
        ASSERT_TRUE(m.valid);
        EXPECT_EQ(m.loggedDays, 14);
        EXPECT_DOUBLE_EQ(m.calories, 2000.0);
    }
    {  // The logbook's first weigh-in inside the window starts the trend there.
        auto days = intake(20, 2000.0);
        weigh(days, kNow - 14, 200.0f);
        weigh(days, kNow, 190.0f);  // trend 199: one pound over 14 days
        const Maintenance m = measureMaintenance(days, kNow);
        ASSERT_TRUE(m.valid);
        EXPECT_EQ(m.trendDays, 14);
        EXPECT_EQ(*m.trendStart, 200.0f);
        EXPECT_DOUBLE_EQ(m.calories, 2250.0);
    }
}

TEST(MeasuredMaintenance, OnlyTheWindowCounts) {
    auto days = intake(14, 2000.0);
    weigh(days, kNow, 190.0f);
    days.push_back({kNow - 27, 190.0f, 3000.0});  // first day of the window: counted
    days.push_back({kBefore, 190.0f, 9000.0});    // the day before: its weight only
    days.push_back({kNow + 1, 100.0f, 9000.0});   // after the current date: ignored
    const Maintenance m = measureMaintenance(days, kNow);
    ASSERT_TRUE(m.valid);
    EXPECT_EQ(m.loggedDays, 15);
    EXPECT_EQ(m.weighIns, 2);
    EXPECT_EQ(*m.trendEnd, 190.0f);
    EXPECT_DOUBLE_EQ(m.calories, (14 * 2000.0 + 3000.0) / 15);
}

TEST(MeasuredMaintenance, SaysWhatIsMissing) {
    const struct {
        int logged;
        int weighIns;
        const char* missing;
    } rows[] = {
        {13, 2, "1 more day of food logging"},
        {6, 1, "8 more days of food logging and 1 more weigh-in"},
        {14, 0, "2 more weigh-ins"},
        {0, 5, "14 more days of food logging"},
        {14, 2, ""},
    };
    for (const auto& r : rows) {
        auto days = intake(r.logged, 1800.0);
        for (int i = 0; i < r.weighIns; ++i) {
            days.push_back({kNow - i, 170.0f, 0.0});
        }
        const Maintenance m = measureMaintenance(days, kNow);
        EXPECT_EQ(m.valid, std::string(r.missing).empty()) << r.logged << " " << r.weighIns;
        EXPECT_EQ(missingForMaintenance(m), r.missing) << r.logged << " " << r.weighIns;
    }
}

TEST(MeasuredMaintenance, SeveralRecordsOfOneDateAreOneDay) {
    auto days = intake(13, 2000.0);
    days.push_back({kNow, -1.0f, 500.0});  // a second record of today
    weigh(days, kNow - 3, 180.0f);
    weigh(days, kNow - 3, 180.0f);
    const Maintenance m = measureMaintenance(days, kNow);
    EXPECT_EQ(m.loggedDays, 13);
    EXPECT_EQ(m.weighIns, 1);
    EXPECT_FALSE(m.valid);
}

TEST(MeasuredMaintenance, SuggestedBudgetTakesTheGoalAndKeepsTheSafetyLine) {
    Maintenance m;
    m.valid = true;
    m.calories = 2310.4;
    GoalPlan plan;
    computeGoalPlan(plan, 200.0f, dmy(1, 3, 2003), 190.0f, dmy(5, 4, 2003));  // 1000 a day
    EXPECT_EQ(suggestedBudget(m, plan), 1310);
    m.calories = 2150.0;
    EXPECT_EQ(suggestedBudget(m, plan), 1200);
    computeGoalPlan(plan, 150.0f, dmy(1, 3, 2003), 160.0f, dmy(10, 5, 2003));  // gain: -500
    EXPECT_EQ(suggestedBudget(m, plan), 2650);
    plan.valid = 0;
    EXPECT_EQ(suggestedBudget(m, plan), std::nullopt);
    m.valid = false;
    computeGoalPlan(plan, 150.0f, dmy(1, 3, 2003), 160.0f, dmy(10, 5, 2003));
    EXPECT_EQ(suggestedBudget(m, plan), std::nullopt);
}

TEST(MeasuredMaintenance, RoundsAndGroupsCalories) {
    EXPECT_EQ(roundedMaintenance(2309.5), 2310);
    EXPECT_EQ(roundedMaintenance(-2309.5), -2310);
    EXPECT_EQ(roundedMaintenance(2309.49), 2309);
    EXPECT_EQ(roundedMaintenance(1e12), 2147483647);
    const struct {
        int64_t calories;
        const char* text;
    } rows[] = {{2310, "2,310 cal"},        {0, "0 cal"},
                {999, "999 cal"},           {1000, "1,000 cal"},
                {-1200, "-1,200 cal"},      {-45, "-45 cal"},
                {1234567, "1,234,567 cal"}, {INT64_MIN, "-9,223,372,036,854,775,808 cal"}};
    for (const auto& r : rows) {
        EXPECT_EQ(groupedCalories(r.calories), r.text);
    }
}

class MeasuredSection : public LogbookFixture {
protected:
    // A logged food of `calories` on the day; the stored totals are left stale on purpose.
    void eat(DayRecord& day, float calories) {
        FoodItem food;
        food.name = "Stew";
        food.group = 3;
        food.ratio = 1.0f;
        food.nutrients[kCalories] = calories;
        day.group(3).push_back(food);
    }
    // 28 days ending today (21 November 2002) at 2000 calories, trend 200 -> 198.
    void fillLosingMonth() {
        addDay(24, 10, 2002).rawFields().weight = 200.0f;
        for (int i = 0; i < 28; ++i) {
            const CalendarDate date = steppedDate(dmy(21, 11, 2002), -i);
            eat(addDay(date.day, date.month, date.year), 2000.0f);
        }
        store.dayOf(dmy(10, 11, 2002))->rawFields().weight = 200.0f;
        store.dayOf(dmy(21, 11, 2002))->rawFields().weight = 180.0f;
    }
};

TEST_F(MeasuredSection, ShowsTheMeasurementInTheUsersUnits) {
    fillLosingMonth();
    UserProfile& profile = store.profile;
    profile.rawFields().startWeight = 200.0f;
    profile.rawFields().startDate = dmy(1, 3, 2003);
    profile.rawFields().goalWeight = 190.0f;
    profile.rawFields().goalDate = dmy(5, 4, 2003);  // 1000 a day

    const BudgetSection lbs = measuredSection(store, dmy(21, 11, 2002));
    EXPECT_EQ(lbs.heading, "Measured");
    const std::vector<BudgetRow> expected = {
        {"Maintenance (28 days):", "2250 cal"},
        {"Suggested budget:", "1250 cal"},
        {"",
         "Measured: what your own food log and weight trend say you burn, less the goal's "
         "1000 cal a day."},
        {"Trend (28 days):", "-0.5 lbs/week"}};
    EXPECT_EQ(lbs.rows, expected);

    ASSERT_TRUE(profile.setUnits(1));
    profile.rawFields().goalWeight = -1.0f;  // no plan: no suggestion
    const std::vector<BudgetRow> metric = {{"Maintenance (28 days):", "2250 cal"},
                                           {"Trend (28 days):", "-0.2 kg/week"}};
    EXPECT_EQ(measuredSection(store, dmy(21, 11, 2002)).rows, metric);
}

TEST_F(MeasuredSection, SaysWhatIsStillMissing) {
    addDay(1, 11, 2002).rawFields().weight = 180.0f;
    for (int d = 10; d < 16; ++d) {
        eat(addDay(d, 11, 2002), 1900.0f);
    }
    const BudgetSection s = measuredSection(store, dmy(21, 11, 2002));
    const std::vector<BudgetRow> expected = {
        {"", "Measured maintenance needs 8 more days of food logging and 1 more weigh-in."},
        {"Trend (28 days):", "0.0 lbs/week"}};
    EXPECT_EQ(s.rows, expected);

    // An empty logbook has no trend to show.
    store.removeAllDays();
    const std::vector<BudgetRow> empty = {
        {"", "Measured maintenance needs 14 more days of food logging and 2 more weigh-ins."}};
    EXPECT_EQ(measuredSection(store, dmy(21, 11, 2002)).rows, empty);
}

}  // namespace
}  // namespace nutrovex
