#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "charts/RangeReport.h"
#include "charts/ReportSheet.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

// A food of the given values per serving, logged at `ratio` servings.
FoodItem food(const Nutrients& values, float ratio = 1.0f) {
    FoodItem f;
    f.name = "Food";
    f.loggedFlag = 1;
    f.nutrients = values;
    f.ratio = ratio;
    return f;
}

constexpr Nutrients kSoup{500.0f, 50.0f, 5.0f, 20.0f, 10.0f, 3.0f};
constexpr Nutrients kPasta{800.0f, 100.0f, 10.0f, 40.0f, 30.0f, 10.0f};

// Ten days from Monday 5 January 2026, worked out by hand:
//   1/5  180 lbs, BMR 1700, soup, 200 cal of exercise   budget 1700 - 700 + 200 = 1200
//   1/6  no record
//   1/7  181 lbs, BMR 1710, no food                     budget 1010
//   1/8  pasta at 1.5 servings, no weight, no level     no budget
//   1/12 179 lbs, BMR 1690, soup twice                  budget 990
// The goal loses 14 lbs in 70 days: 700 calories a day.
class RangeReportTest : public LogbookFixture {
protected:
    RangeReportTest() {
        UserProfile& p = store.profile;
        EXPECT_TRUE(p.setDisplayName("Ann"));
        p.setHeight(65.0f);
        p.setAge(41);
        (void)p.setGender(1);
        p.setStartWeight(184.0f);
        p.setStartDate(dmy(1, 1, 2026));
        p.setGoalWeight(170.0f);
        p.setGoalDate(dmy(12, 3, 2026));

        DayRecord& d5 = dayWith(5, 180.0f, 1700);
        d5.group(1).push_back(food(kSoup));
        ExerciseEntry run;
        run.calories = 200;
        run.minutes = 20;
        (void)d5.appendExercise(run);
        dayWith(7, 181.0f, 1710);
        addDay(8, 1, 2026).group(5).push_back(food(kPasta, 1.5f));
        DayRecord& d12 = dayWith(12, 179.0f, 1690);
        d12.group(1).push_back(food(kSoup));
        d12.group(1).push_back(food(kSoup));
    }

    DayRecord& dayWith(int day, float weight, int bmr) {
        DayRecord& d = addDay(day, 1, 2026);
        d.rawFields().weight = weight;
        d.rawFields().level = 2;
        d.rawFields().bmr = static_cast<int16_t>(bmr);
        return d;
    }

    [[nodiscard]] RangeReport report(const MacroTargets& targets = {}) const {
        return makeRangeReport(store, targets, dmy(5, 1, 2026), dmy(14, 1, 2026));
    }
};

TEST_F(RangeReportTest, EveryCalendarDayWithItsFigures) {
    const RangeReport r = report();
    ASSERT_EQ(r.days.size(), 10u);
    const ReportDay& d5 = r.days[0];
    EXPECT_TRUE(d5.recorded && d5.hasFood);
    EXPECT_EQ(d5.totals, kSoup);
    EXPECT_EQ(d5.exercise, 200u);
    EXPECT_EQ(d5.bmr, 1700);
    EXPECT_EQ(d5.weight, 180.0f);
    EXPECT_EQ(d5.budget, 1200);

    EXPECT_FALSE(r.days[1].recorded);  // 1/6
    EXPECT_FALSE(r.days[1].hasFood);

    const ReportDay& d7 = r.days[2];
    EXPECT_TRUE(d7.recorded);
    EXPECT_FALSE(d7.hasFood);
    EXPECT_EQ(d7.budget, 1010);

    const ReportDay& d8 = r.days[3];
    EXPECT_EQ(d8.totals, (Nutrients{1200.0f, 150.0f, 15.0f, 60.0f, 45.0f, 15.0f}));
    EXPECT_FALSE(d8.bmr);
    EXPECT_FALSE(d8.weight);
    EXPECT_FALSE(d8.budget);

    EXPECT_EQ(r.days[7].totals[kCalories], 1000.0f);
    EXPECT_EQ(r.days[7].budget, 990);
    EXPECT_EQ(r.plan.valid, 1);
    EXPECT_EQ(r.plan.perDay, 700u);
}

TEST_F(RangeReportTest, WeeksAddUpAndAverageOverTheDaysThatHaveEachFigure) {
    const RangeReport r = report();
    ASSERT_EQ(r.weeks.size(), 2u);
    EXPECT_EQ(r.weeks[0].count, 7u);
    EXPECT_EQ(r.weeks[1].first, 7u);
    EXPECT_EQ(r.weeks[1].count, 3u);

    const ReportSums& w1 = r.weeks[0].sums;
    EXPECT_EQ(w1.foodDays, 2);  // 1/7 logged no food: left out, not a zero
    EXPECT_DOUBLE_EQ(w1.food[kCalories], 1700.0);
    EXPECT_DOUBLE_EQ(*w1.averageFood(kCalories), 850.0);
    EXPECT_DOUBLE_EQ(*w1.averageFood(kFat), 27.5);
    EXPECT_DOUBLE_EQ(*w1.averageFood(kSaturatedFat), 9.0);
    EXPECT_EQ(w1.recordedDays, 3);
    EXPECT_NEAR(*w1.averageExercise(), 200.0 / 3.0, 1e-12);
    EXPECT_DOUBLE_EQ(*w1.averageBmr(), 1705.0);
    EXPECT_DOUBLE_EQ(*w1.averageWeight(), 180.5);
    EXPECT_DOUBLE_EQ(*w1.averageBudget(), 1105.0);

    const ReportSums& whole = r.whole.sums;
    EXPECT_EQ(whole.foodDays, 3);
    EXPECT_DOUBLE_EQ(*whole.averageFood(kCalories), 900.0);
    EXPECT_EQ(whole.weighIns, 3);

    // A week without any day of a figure has no average of it, rather than a zero.
    ReportSums empty;
    empty.add(r.days[1]);
    EXPECT_FALSE(empty.averageFood(kCalories));
    EXPECT_FALSE(empty.averageWeight());
    EXPECT_FALSE(empty.averageExercise());
}

TEST_F(RangeReportTest, TrendIsTheChartsSmoothedWeight) {
    const RangeReport r = report();
    // 180 starts it; 181 moves it a tenth of the way; 179 a tenth of the way from there.
    const float afterSeventh = 180.0f + 0.1f * (181.0f - 180.0f);
    const float afterTwelfth = afterSeventh + 0.1f * (179.0f - afterSeventh);
    EXPECT_EQ(r.days[0].trend, 180.0f);
    EXPECT_EQ(r.days[1].trend, 180.0f);  // kept through a day without a record
    EXPECT_EQ(r.days[6].trend, afterSeventh);
    EXPECT_EQ(r.days[9].trend, afterTwelfth);
    EXPECT_EQ(r.trendStart, 180.0f);
    EXPECT_EQ(r.trendEnd, afterTwelfth);
    EXPECT_NEAR(*r.weeks[0].trendRate, (double{afterSeventh} - 180.0) * 7.0 / 6.0, 1e-9);
    EXPECT_NEAR(*r.weeks[1].trendRate, 0.0, 1e-9);
    EXPECT_NEAR(*r.whole.trendRate, (double{afterTwelfth} - 180.0) * 7.0 / 9.0, 1e-9);
    EXPECT_EQ(r.chartTrend.size(), 10u);
}

TEST_F(RangeReportTest, TrendStartedBeforeTheRangeCarriesIntoIt) {
    DayRecord& before = addDay(20, 12, 2025);
    before.rawFields().weight = 190.0f;
    const RangeReport r = report();
    EXPECT_EQ(r.days[0].trend, 190.0f + 0.1f * (180.0f - 190.0f));
    EXPECT_NEAR(*r.weeks[0].trendRate,
                (double{r.days[6].trend.value()} - double{r.days[0].trend.value()}) * 7.0 / 6.0,
                1e-9);
}

TEST_F(RangeReportTest, TargetsInGramsOfEachDaysBudget) {
    MacroTargets targets;
    targets.of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Grams, 40.0};
    targets.of(TargetNutrient::Carbohydrate) = MacroTarget{MacroTarget::Kind::Percent, 40.0};
    targets.of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 10.0};
    const RangeReport r = report(targets);
    const auto carb = static_cast<std::size_t>(TargetNutrient::Carbohydrate);
    EXPECT_DOUBLE_EQ(*r.days[0].targetGrams[carb], 120.0);  // 40% of 1200 cal at 4 cal a gram
    EXPECT_FALSE(r.days[2].targetsJudged);                  // no food
    EXPECT_FALSE(r.days[3].targetGrams[carb]);              // no budget, no grams
    EXPECT_FALSE(r.days[3].targetsMet);
    EXPECT_DOUBLE_EQ(*r.days[7].targetGrams[carb], 99.0);
    EXPECT_TRUE(r.days[7].targetsMet);  // 40 g protein, 100 g carbohydrate of 99, 10 g fibre
    EXPECT_EQ(r.weeks[0].sums.targetsJudged, 2);
    EXPECT_EQ(r.weeks[0].sums.targetsMet, 0);
    EXPECT_EQ(r.whole.sums.targetsMet, 1);
    EXPECT_DOUBLE_EQ(*r.weeks[0].sums.averageTargetGrams(TargetNutrient::Carbohydrate), 120.0);
}

TEST_F(RangeReportTest, RangesThatCannotBeReported) {
    EXPECT_FALSE(reportRangeProblem(store, dmy(5, 1, 2026), dmy(5, 1, 2026)));
    EXPECT_FALSE(reportRangeProblem(store, dmy(1, 1, 2026), dmy(6, 1, 2026)));
    EXPECT_EQ(reportRangeProblem(store, dmy(14, 1, 2026), dmy(5, 1, 2026)),
              "the range ends before it starts: 1/14/2026 to 1/5/2026");
    EXPECT_EQ(reportRangeProblem(store, dmy(13, 1, 2026), dmy(31, 1, 2026)),
              "the logbook has no days from 1/13/2026 to 1/31/2026");
    EXPECT_TRUE(reportRangeProblem(store, dmy(6, 1, 2026), dmy(6, 1, 2026)));
}

TEST_F(RangeReportTest, ChartOfTheRangeAsTheChartScreenScalesIt) {
    const WeightHistory h = rangeWeightHistory(store, dmy(5, 1, 2026), dmy(14, 1, 2026));
    EXPECT_EQ(h.dayCount, 10);
    EXPECT_EQ(h.weights, (std::vector<int16_t>{180, -1, 181, -1, -1, -1, -1, 179, -1, -1}));
    EXPECT_EQ(h.points, 3);
    EXPECT_EQ(h.highest, 181);
    EXPECT_EQ(h.lowest, 179);
    EXPECT_EQ(h.step, 1);
    EXPECT_EQ(h.lineCount, 5);
    EXPECT_EQ(h.startLine, 184);
    EXPECT_EQ(h.goalLine, 170);
    // Seven labels over nine days' gaps, each on the day nearest its place.
    EXPECT_EQ(h.labels, (std::vector<std::string>{"1/5/2026", "1/7/2026", "1/8/2026", "1/10/2026",
                                                  "1/11/2026", "1/13/2026", "1/14/2026"}));
    EXPECT_TRUE(h.drawable());
    // One day: one label, and a chart that says it has too few points.
    const WeightHistory one = rangeWeightHistory(store, dmy(5, 1, 2026), dmy(5, 1, 2026));
    EXPECT_EQ(one.labels, (std::vector<std::string>{"1/5/2026"}));
    EXPECT_FALSE(one.drawable());
}

// The texts of a row, spans written as "text*span".
std::vector<std::string> texts(const ReportRow& row) {
    std::vector<std::string> out;
    for (const ReportCell& c : row.cells) {
        out.push_back(c.span == 1 ? c.text : c.text + "*" + std::to_string(c.span));
    }
    return out;
}

TEST_F(RangeReportTest, SheetRowsMarkBlanksAndAddUp) {
    const RangeReport r = report();
    const std::vector<ReportColumnHead> columns = reportColumns(r);
    ASSERT_EQ(columns.size(), 12u);
    const std::vector<ReportRow> rows = reportRows(r);
    ASSERT_EQ(rows.size(), 10u + 2 * 2 + 2);
    for (const ReportRow& row : rows) {
        const int span = std::accumulate(row.cells.begin(), row.cells.end(), 0,
                                         [](int n, const ReportCell& c) { return n + c.span; });
        EXPECT_EQ(span, 12) << texts(row)[0];
    }
    using V = std::vector<std::string>;
    EXPECT_EQ(texts(rows[0]), (V{"Mon 1/5/2026", "500", "50.0", "5.0", "20.0", "10.0", "3.0", "200",
                                 "1,700", "180.0", "180.0", "1,200"}));
    EXPECT_EQ(texts(rows[1]), (V{"Tue 1/6/2026", "no entry in the logbook*11"}));
    EXPECT_EQ(texts(rows[2]),
              (V{"Wed 1/7/2026", "no food logged*6", "0", "1,710", "181.0", "180.1", "1,010"}));
    EXPECT_EQ(texts(rows[3]), (V{"Thu 1/8/2026", "1,200", "150.0", "15.0", "60.0", "45.0", "15.0",
                                 "0", "\x97", "\x97", "180.1", "\x97"}));
    EXPECT_TRUE(rows[1].cells[1].missing);
    EXPECT_FALSE(rows[0].cells[1].missing);
    EXPECT_EQ(texts(rows[7]), (V{"Week total", "1,700", "200.0", "20.0", "80.0", "55.0", "18.0",
                                 "200", "", "", "", ""}));
    EXPECT_EQ(texts(rows[8]), (V{"Week average", "850", "100.0", "10.0", "40.0", "27.5", "9.0",
                                 "67", "1,705", "180.5", "+0.1/wk", "1,105"}));
    EXPECT_EQ(rows[14].kind, ReportRowKind::RangeTotal);
    EXPECT_EQ(texts(rows[15])[1], "900");
    EXPECT_EQ(texts(rows[15])[10], "0.0/wk");
}

TEST_F(RangeReportTest, SheetTargetColumnsSitBesideTheirNutrients) {
    MacroTargets targets;
    targets.of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 10.0};
    targets.of(TargetNutrient::SaturatedFat) = MacroTarget{MacroTarget::Kind::Grams, 20.0};
    const RangeReport r = report(targets);
    std::vector<std::string> heads;
    for (const ReportColumnHead& c : reportColumns(r)) {
        heads.push_back(c.head);
    }
    EXPECT_EQ(heads, (std::vector<std::string>{"Date", "Calories", "Carb", "Fiber", "target",
                                               "Protein", "Fat", "Sat fat", "limit", "Exercise",
                                               "BMR", "Weight", "Trend", "Budget", "Targets"}));
    const std::vector<ReportRow> rows = reportRows(r);
    EXPECT_EQ(texts(rows[0])[4], "10.0");
    EXPECT_EQ(texts(rows[0]).back(), "no");  // 5 g of fibre
    EXPECT_EQ(texts(rows[2])[1], "no food logged*8");
    EXPECT_EQ(texts(rows[3]).back(), "yes");  // 15 g of fibre, 15 g of saturated fat
    EXPECT_EQ(texts(rows[7]).back(), "1 of 2");
}

TEST_F(RangeReportTest, SummarySaysWhoWhenWhatGoalAndWhatIsMissing) {
    ASSERT_TRUE(store.profile.setDisplayName("Ann B"));
    const std::vector<BudgetSection> summary = reportSummary(report());
    std::vector<std::string> lines;
    for (const BudgetSection& s : summary) {
        lines.push_back("# " + s.heading);
        for (const BudgetRow& row : s.rows) {
            lines.push_back(row.label + " " + row.value);
        }
    }
    const std::vector<std::string> expected = {
        "# Person",
        "Name: Ann B",
        "Profile: female, 41 years, 65 in",
        "# Range",
        "Dates: Monday January 5, 2026 to Wednesday January 14, 2026",
        "Days: 10 days: 4 with entries, 3 with food logged, 3 weigh-ins",
        "# Goal and plan",
        "Start: 184 lbs on Thursday January 1, 2026",
        "Goal: 170 lbs by Thursday March 12, 2026",
        " To lose 14 lbs in 70 days, you will need to eat 700 fewer calories per day than your "
        "body burns.",
        "# Weight trend",
        "Trend: 180.0 to 180.0 lbs",
        "Rate: 0.0 lbs/week",
        "# Maintenance measured to 1/14/2026",
        " Measured maintenance needs 11 more days of food logging.",
        "Trend (28 days): 0.0 lbs/week"};
    EXPECT_EQ(lines, expected);
}

TEST(ReportRanges, AWeekAndAMonthEndOnTheDayGiven) {
    struct Case {
        CalendarDate last;
        CalendarDate weekFrom;
        CalendarDate monthFrom;
    };
    const Case cases[] = {
        {dmy(25, 11, 2026), dmy(19, 11, 2026), dmy(26, 10, 2026)},
        {dmy(3, 1, 2026), dmy(28, 12, 2025), dmy(4, 12, 2025)},
        // A month back from 31 March lands on 1 March, as the chart's month steps do.
        {dmy(31, 3, 2026), dmy(25, 3, 2026), dmy(2, 3, 2026)},
        {dmy(1, 3, 2024), dmy(24, 2, 2024), dmy(2, 2, 2024)},
    };
    for (const Case& c : cases) {
        const ReportRange week = weekEndingOn(c.last);
        const ReportRange month = monthEndingOn(c.last);
        EXPECT_TRUE(datesEqual(week.from, c.weekFrom)) << longDateText(c.last);
        EXPECT_TRUE(datesEqual(month.from, c.monthFrom)) << longDateText(c.last);
        EXPECT_TRUE(datesEqual(week.to, c.last));
        EXPECT_TRUE(datesEqual(month.to, c.last));
    }
}

TEST(ReportPages, RowsFillPagesAndAWeeksTotalStaysWithItsAverage) {
    const auto rowsOf = [](std::initializer_list<ReportRowKind> kinds) {
        std::vector<ReportRow> rows;
        for (const ReportRowKind k : kinds) {
            rows.push_back({k, {}});
        }
        return rows;
    };
    using K = ReportRowKind;
    using Starts = std::vector<std::size_t>;
    const auto week = rowsOf({K::Day, K::Day, K::Day, K::WeekTotal, K::WeekAverage, K::Day, K::Day,
                              K::WeekTotal, K::WeekAverage});
    EXPECT_EQ(reportPageStarts(week, 3, 3), (Starts{0, 3, 6}));
    // The fourth row is a total: it goes over with its average.
    EXPECT_EQ(reportPageStarts(week, 4, 4), (Starts{0, 3, 7}));
    EXPECT_EQ(reportPageStarts(week, 0, 20), (Starts{0}));
    EXPECT_EQ(reportPageStarts(week, 1, 100), (Starts{0, 1}));
    EXPECT_TRUE(reportPageStarts({}, 5, 5).empty());
    // Pages too short for a total and its average still move on.
    EXPECT_EQ(reportPageStarts(rowsOf({K::WeekTotal, K::WeekAverage}), 1, 1), (Starts{0, 1}));
}

}  // namespace
}  // namespace nutrovex
