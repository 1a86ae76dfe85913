#include <gtest/gtest.h>

#include "calc/Bmr.h"
#include "forms/charts/HistoricChartForm.h"
#include "forms/logbook/FoodBudgetForms.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using Command = HistoricChartForm::Command;

class HistoricChartFormTest : public LogbookFixture {};

TEST_F(HistoricChartFormTest, TheSpanLastsAcrossOpeningsAndTitlesTheChart) {
    setDayWeight(addDay(1, 5, 2002), 160.0f, store.profile);
    setDayWeight(addDay(10, 5, 2002), 158.0f, store.profile);
    MemoryChartSettings settings;
    {
        HistoricChartForm form(cursor, settings);
        HistoricChartView v = form.view();
        EXPECT_EQ(v.span, 0);
        EXPECT_EQ(v.title, "Historic Weight (7-Day)");
        EXPECT_FALSE(v.history.drawable());  // 1 May is outside the 8 days
        (void)form.command(Command::Span3Months);
        v = form.view();
        EXPECT_EQ(v.title, "Historic Weight (3-Month)");
        EXPECT_TRUE(v.history.drawable());
        EXPECT_TRUE(store.chartPoints.values.empty());  // the chart holds its own copy
    }
    HistoricChartForm again(cursor, settings);
    EXPECT_EQ(again.view().span, 3);
    EXPECT_EQ(again.view().history.points, 2);

    // A weigh-in arriving while the chart is open shows when it is drawn again.
    setDayWeight(addDay(11, 5, 2002), 157.0f, store.profile);
    EXPECT_EQ(again.view().history.points, 3);
    settings.setSpan(9);  // not a span: the first
    EXPECT_EQ(again.view().span, 0);
    EXPECT_STREQ(HistoricChartForm::spanButton(6), "5 Year");
}

TEST_F(HistoricChartFormTest, TheTrendSmoothsTheWeighInsAndGivesItsWeeklyRate) {
    // 200 lbs, then 190 every other day: each weigh-in moves the trend a tenth of the way.
    setDayWeight(addDay(1, 5, 2002), 200.0f, store.profile);
    for (int d = 3; d <= 15; d += 2) {
        setDayWeight(addDay(d, 5, 2002), 190.0f, store.profile);
    }
    MemoryChartSettings settings;
    settings.setSpan(1);  // 15 days: 1 to 15 May
    HistoricChartForm form(cursor, settings);
    HistoricChartView v = form.view();
    EXPECT_TRUE(v.trend.empty());  // off until asked for
    EXPECT_EQ(v.rateText, "");

    (void)form.command(Command::ShowTrend);
    EXPECT_TRUE(settings.trendShown());
    v = form.view();
    ASSERT_EQ(v.trend.size(), 15u);
    EXPECT_FLOAT_EQ(*v.trend[0], 200.0f);
    EXPECT_FLOAT_EQ(*v.trend[1], 200.0f);  // carried across the day without a weigh-in
    EXPECT_FLOAT_EQ(*v.trend[2], 199.0f);
    EXPECT_FLOAT_EQ(*v.trend[3], 199.0f);
    EXPECT_FLOAT_EQ(*v.trend[4], 198.1f);
    // Seven weigh-ins of 190 leave 190 + 10 x 0.9^7 = 194.78 after 14 days: -2.6 a week.
    EXPECT_NEAR(*v.trend[14], 194.78f, 0.01f);
    EXPECT_EQ(v.rateText, "Trend (28 days): -2.6 lbs/week");

    ASSERT_TRUE(store.profile.setUnits(1));
    EXPECT_EQ(form.view().rateText, "Trend (28 days): -1.2 kg/week");

    // A trend starting inside the span is drawn from its first day on.
    (void)form.command(Command::Span3Months);
    v = form.view();
    ASSERT_EQ(v.trend.size(), v.history.dayCount);
    const std::size_t firstMay = v.history.dayCount - 15u;
    EXPECT_FALSE(v.trend[firstMay - 1].has_value());
    EXPECT_FLOAT_EQ(*v.trend[firstMay], 200.0f);
    EXPECT_EQ(v.rateText, "Trend (28 days): -1.2 kg/week");  // the same whatever the span

    (void)form.command(Command::HideTrend);
    v = form.view();
    EXPECT_TRUE(v.trend.empty());
    EXPECT_EQ(v.rateText, "");
}

// A loss that slows down: the rate over the whole span and over the last four weeks differ, and
// the chart gives the same recent figure as the food budget page, whatever its span.
TEST_F(HistoricChartFormTest, TheChartAndTheBudgetPageGiveOneTrend) {
    for (int i = 0; i < 90; ++i) {
        const CalendarDate date = steppedDate(dmy(24, 8, 2002), i);
        const float pounds = i < 60 ? 200.0f - 0.2f * static_cast<float>(i) : 188.0f;
        setDayWeight(addDay(date.day, date.month, date.year), pounds, store.profile);
    }
    cursor.setCurrentDate(dmy(21, 11, 2002));  // the last day: the page's current date
    const std::vector<BudgetSection> page = FoodBudgetForm(cursor).view();
    const BudgetRow& trendRow = page.back().rows.back();
    ASSERT_EQ(trendRow.label, "Trend (28 days):");

    MemoryChartSettings settings;
    settings.setTrendShown(true);
    HistoricChartForm form(cursor, settings);
    for (const Command span : {Command::Span7Days, Command::Span3Months, Command::Span1Year}) {
        (void)form.command(span);
        EXPECT_EQ(form.view().rateText, "Trend (28 days): " + trendRow.value);
    }
    EXPECT_NE(trendRow.value, "0.0 lbs/week");  // the trend still falls after the weight held
}

}  // namespace
}  // namespace nutrovex
