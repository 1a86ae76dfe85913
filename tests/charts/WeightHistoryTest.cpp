#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "charts/BodyMassBands.h"
#include "charts/WeightHistory.h"
#include "core/UserProfile.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

class WeightHistoryTest : public LogbookFixture {
protected:
    void weigh(int d, int m, int y, float pounds) {
        setDayWeight(addDay(d, m, y), pounds, store.profile);
    }
};

TEST(WeightScale, StepKeepsTheLinesFewerThanSixteenApart) {
    struct Row {
        int16_t highest;
        int16_t lowest;
        uint16_t step;
        uint16_t lines;
    };
    const Row rows[] = {
        {182, 150, 3, 13}, {150, 150, 1, 3},  {165, 150, 1, 18},
        {166, 150, 2, 11}, {400, 10, 25, 18}, {-1, 999, 0, 0},
    };
    for (const Row& r : rows) {
        const WeightScale s = weightScale(r.highest, r.lowest);
        EXPECT_EQ(s.step, r.step) << r.highest << " " << r.lowest;
        EXPECT_EQ(s.lineCount, r.lines) << r.highest << " " << r.lowest;
    }
}

TEST(LabelSteps, MonthAndYearStepsLandOnTheFirstWhenTheDayIsMissing) {
    struct Row {
        CalendarDate from;
        LabelStep step;
        CalendarDate to;
    };
    const Row rows[] = {
        {dmy(31, 3, 2003), LabelStep::Month, dmy(1, 3, 2003)},
        {dmy(30, 3, 2004), LabelStep::Month, dmy(1, 3, 2004)},
        {dmy(29, 3, 2004), LabelStep::Month, dmy(29, 2, 2004)},
        {dmy(31, 1, 2003), LabelStep::Month, dmy(31, 12, 2002)},
        {dmy(15, 5, 2003), LabelStep::ThreeMonths, dmy(15, 2, 2003)},
        {dmy(31, 5, 2003), LabelStep::ThreeMonths, dmy(1, 3, 2003)},
        {dmy(15, 2, 2003), LabelStep::ThreeMonths, dmy(15, 11, 2002)},
        {dmy(29, 2, 2004), LabelStep::Year, dmy(1, 3, 2003)},
        {dmy(1, 3, 2003), LabelStep::Day, dmy(28, 2, 2003)},
        {dmy(2, 3, 2004), LabelStep::TwoDays, dmy(29, 2, 2004)},
    };
    for (const Row& r : rows) {
        const CalendarDate got = labelStepBack(r.from, r.step);
        EXPECT_EQ(got.day, r.to.day) << r.from.day << "/" << r.from.month;
        EXPECT_EQ(got.month, r.to.month) << r.from.day << "/" << r.from.month;
        EXPECT_EQ(got.year, r.to.year) << r.from.day << "/" << r.from.month;
    }
}

TEST_F(WeightHistoryTest, LabelsAndDaysCoveredOfEverySpan) {
    weigh(31, 3, 2003, 150.0f);
    struct Row {
        uint16_t span;
        uint16_t days;
        std::vector<std::string> labels;
    };
    const Row rows[] = {
        {0,
         8,
         {"3/24/2003", "3/25/2003", "3/26/2003", "3/27/2003", "3/28/2003", "3/29/2003", "3/30/2003",
          "3/31/2003"}},
        {1,
         15,
         {"3/17/2003", "3/19/2003", "3/21/2003", "3/23/2003", "3/25/2003", "3/27/2003", "3/29/2003",
          "3/31/2003"}},
        {2, 31, {"3/1/2003", "3/31/2003"}},
        {3, 90, {"1/1/2003", "2/1/2003", "3/1/2003", "3/31/2003"}},
        {4,
         182,
         {"10/1/2002", "11/1/2002", "12/1/2002", "1/1/2003", "2/1/2003", "3/1/2003", "3/31/2003"}},
        {5, 365, {"4/1/2002", "7/1/2002", "10/1/2002", "12/31/2002", "3/31/2003"}},
        {6, 1827, {"3/31/1998", "3/31/1999", "3/31/2000", "3/31/2001", "3/31/2002", "3/31/2003"}},
    };
    for (const Row& r : rows) {
        const WeightHistory h = collectWeightHistory(cursor, r.span);
        EXPECT_EQ(h.dayCount, r.days) << r.span;
        EXPECT_EQ(h.weights.size(), r.days) << r.span;
        EXPECT_EQ(h.labels, r.labels) << r.span;
        EXPECT_EQ(h.weights.back(), 150) << r.span;
        EXPECT_EQ(h.points, 1) << r.span;
        EXPECT_FALSE(h.drawable()) << r.span;  // one day is not a line
    }
}

TEST_F(WeightHistoryTest, FourteenDaysFrom150To182) {
    weigh(1, 5, 2002, 182.0f);  // one day before the span: not counted
    weigh(2, 5, 2002, 150.2f);
    weigh(9, 5, 2002, 5.0f);  // too light to be a weigh-in
    addDay(12, 5, 2002);      // a day without a weight
    weigh(16, 5, 2002, 181.6f);
    cursor.setCurrentDate(dmy(3, 1, 2001));

    const WeightHistory h = collectWeightHistory(cursor, 1);
    EXPECT_EQ(h.dayCount, 15);
    ASSERT_EQ(h.weights.size(), 15u);
    EXPECT_EQ(h.weights.front(), 150);
    EXPECT_EQ(h.weights.back(), 182);
    EXPECT_EQ(h.weights[7], -1);
    EXPECT_EQ(h.weights[10], -1);
    EXPECT_EQ(h.points, 2);
    EXPECT_EQ(h.highest, 182);
    EXPECT_EQ(h.lowest, 150);
    EXPECT_EQ(h.step, 3);
    EXPECT_EQ(h.lineCount, 13);
    EXPECT_EQ(h.lineWeight(1), 150);
    EXPECT_EQ(h.lineWeight(11), 180);  // the last labelled line
    EXPECT_TRUE(h.drawable());
    EXPECT_TRUE(currentIs(3, 1, 2001));

    EXPECT_EQ(store.chartLabel(0), "5/2/2002");
    EXPECT_EQ(store.chartLabel(7), "5/16/2002");
    EXPECT_EQ(store.chartLabel(8), "");
    EXPECT_EQ(store.chartPoints.values, h.weights);
    EXPECT_EQ(store.chartPoints.first, 147);
    EXPECT_EQ(store.chartPoints.step, 3);
    releaseChartData(store);
    EXPECT_TRUE(store.chartPoints.values.empty());
    EXPECT_EQ(store.chartLabel(0), "");
}

TEST_F(WeightHistoryTest, EqualWeightsGiveThreeLines) {
    weigh(1, 5, 2002, 160.0f);
    weigh(4, 5, 2002, 160.0f);
    weigh(7, 5, 2002, 160.2f);
    ASSERT_TRUE(store.profile.setUnits(1));  // the chart stays in pounds
    const WeightHistory h = collectWeightHistory(cursor, 0);
    EXPECT_EQ(h.points, 3);
    EXPECT_EQ(h.step, 1);
    EXPECT_EQ(h.lineCount, 3);
    EXPECT_EQ(h.lineWeight(1), 160);
}

TEST_F(WeightHistoryTest, WeightsBelowTenAreMissing) {
    weigh(1, 5, 2002, 5.0f);
    weigh(2, 5, 2002, 5.0f);
    const WeightHistory h = collectWeightHistory(cursor, 0);
    EXPECT_EQ(h.points, 0);
    EXPECT_EQ(h.highest, -1);
    EXPECT_EQ(h.lowest, 999);
    EXPECT_EQ(h.lineCount, 0);
    EXPECT_FALSE(h.drawable());
}

TEST_F(WeightHistoryTest, NoRecordsNoHistory) {
    store.profile.setGoalWeight(150.0f);
    const WeightHistory h = collectWeightHistory(cursor, 4);
    EXPECT_TRUE(h.labels.empty());
    EXPECT_TRUE(h.weights.empty());
    EXPECT_EQ(h.goalLine, 150);
    EXPECT_EQ(h.startLine, -1);
    EXPECT_TRUE(currentIs(21, 11, 2002));
}

TEST(BodyMass, BandLimitsFollowFromTheHeight) {
    const FixedClock clock(dmy(1, 1, 2003));
    UserProfile profile(clock.now());
    profile.setHeight(70.0f);
    profile.setGoalWeight(170.0f);
    DayRecord day(clock.now());
    setDayWeight(day, 220.0f, profile);

    std::optional<BodyMassChart> c = bodyMassChart(&day, profile);
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->underweightBelow, 129);
    EXPECT_EQ(c->overweightFrom, 174);
    EXPECT_EQ(c->obeseFrom, 209);
    EXPECT_EQ(c->current, 220);
    EXPECT_EQ(c->goal, 170);
    EXPECT_EQ(c->currentBand, BodyMassBand::Obese);
    EXPECT_EQ(c->goalBand, BodyMassBand::Normal);

    ASSERT_TRUE(profile.setUnits(1));
    c = bodyMassChart(&day, profile);
    ASSERT_TRUE(c.has_value());
    EXPECT_EQ(c->underweightBelow, 58);
    EXPECT_EQ(c->overweightFrom, 79);
    EXPECT_EQ(c->obeseFrom, 95);
    EXPECT_EQ(c->current, 100);

    EXPECT_EQ(bandOf(18.49), BodyMassBand::Under);
    EXPECT_EQ(bandOf(18.5), BodyMassBand::Normal);
    EXPECT_EQ(bandOf(25.0), BodyMassBand::Over);
    EXPECT_EQ(bandOf(30.0), BodyMassBand::Obese);
}

TEST(BodyMass, MissingValuesOpenNothing) {
    const FixedClock clock(dmy(1, 1, 2003));
    UserProfile profile(clock.now());
    DayRecord day(clock.now());
    setDayWeight(day, 180.0f, profile);
    profile.setGoalWeight(170.0f);
    EXPECT_FALSE(bodyMassChart(&day, profile).has_value());  // no height
    profile.setHeight(70.0f);
    EXPECT_TRUE(bodyMassChart(&day, profile).has_value());
    EXPECT_FALSE(bodyMassChart(nullptr, profile).has_value());
    profile.setGoalWeight(-1.0f);
    EXPECT_FALSE(bodyMassChart(&day, profile).has_value());
    profile.setGoalWeight(170.0f);
    setDayWeight(day, -1.0f, profile);
    EXPECT_FALSE(bodyMassChart(&day, profile).has_value());

    EXPECT_EQ(missingChartDataMessage(),
              (ScreenMessage{"Could not plot one or more data points due to missing height or "
                             "weight information.",
                             "Weight Chart", MessageKind::Warning}));
}

}  // namespace
}  // namespace nutrovex
