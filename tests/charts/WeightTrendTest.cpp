#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "charts/WeightTrend.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

TEST(WeightTrend, MovesATenthOfTheWayAndCarriesAcrossMissingDays) {
    const std::vector<DatedWeight> weighIns = {{100, 200.0f}, {103, 190.0f}, {104, 180.0f}};
    const WeightTrend trend(weighIns);
    ASSERT_EQ(trend.firstDay(), 100);
    EXPECT_EQ(trend.at(99), std::nullopt);
    EXPECT_FLOAT_EQ(*trend.at(100), 200.0f);
    EXPECT_FLOAT_EQ(*trend.at(102), 200.0f);  // no weigh-in: the trend holds
    EXPECT_FLOAT_EQ(*trend.at(103), 199.0f);
    // Single precision, step by step as the trend is kept.
    const float expected = 199.0f + 0.1f * (180.0f - 199.0f);
    EXPECT_EQ(*trend.at(104), expected);
    EXPECT_EQ(*trend.at(500), expected);

    const auto series = trend.series(98, 7);
    ASSERT_EQ(series.size(), 7u);
    EXPECT_FALSE(series[0].has_value());
    EXPECT_FALSE(series[1].has_value());
    EXPECT_FLOAT_EQ(*series[2], 200.0f);
    EXPECT_FLOAT_EQ(*series[4], 200.0f);
    EXPECT_FLOAT_EQ(*series[5], 199.0f);
    EXPECT_EQ(*series[6], expected);
    // A series starting after the first point begins from the trend in force.
    EXPECT_FLOAT_EQ(*trend.series(103, 1)[0], 199.0f);
}

TEST(WeightTrend, TakesWeighInsByDateAndSkipsWhatIsNoWeighIn) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    // Out of order, with markers for "no weight" and damaged values among them.
    const std::vector<DatedWeight> weighIns = {{20, 190.0f}, {10, 200.0f}, {11, -1.0f},
                                               {12, 0.0f},   {13, nan},    {14, inf}};
    const WeightTrend trend(weighIns);
    EXPECT_EQ(trend.firstDay(), 10);
    EXPECT_FLOAT_EQ(*trend.at(19), 200.0f);
    EXPECT_FLOAT_EQ(*trend.at(20), 199.0f);

    // Two weigh-ins of one date are both taken, in the order given.
    const std::vector<DatedWeight> twice = {{1, 100.0f}, {2, 200.0f}, {2, 100.0f}};
    const float afterBoth = (100.0f + 0.1f * (200.0f - 100.0f));
    EXPECT_EQ(*WeightTrend(twice).at(2), afterBoth + 0.1f * (100.0f - afterBoth));

    EXPECT_TRUE(WeightTrend(std::vector<DatedWeight>{{5, -1.0f}}).empty());
}

TEST(WeightTrend, WeeklyRate) {
    const std::vector<DatedWeight> weighIns = {{0, 200.0f}, {14, 180.0f}};
    const WeightTrend trend(weighIns);
    // 200 -> 198 over 14 days: one pound a week.
    EXPECT_NEAR(*trend.weeklyRate(0, 14), -1.0, 1e-6);
    EXPECT_NEAR(*trend.weeklyRate(0, 28), -0.5, 1e-6);
    EXPECT_EQ(trend.weeklyRate(-1, 14), std::nullopt);  // before the trend starts
    EXPECT_EQ(trend.weeklyRate(14, 14), std::nullopt);
}

TEST(WeightTrend, ReadsTheLogbooksDays) {
    FixedClock clock(dmy(1, 3, 2003));
    UserStore store(clock);
    const auto add = [&](int d, float pounds) {
        auto day = std::make_unique<DayRecord>(dmy(d, 3, 2003));
        day->rawFields().weight = pounds;
        store.insertDay(std::move(day));
    };
    add(5, 180.0f);
    add(1, 200.0f);
    add(3, -1.0f);
    const WeightTrend trend = WeightTrend::ofDays(store.days());
    EXPECT_EQ(trend.firstDay(), dayNumber(dmy(1, 3, 2003)));
    EXPECT_FLOAT_EQ(*trend.at(dayNumber(dmy(4, 3, 2003))), 200.0f);
    EXPECT_FLOAT_EQ(*trend.at(dayNumber(dmy(5, 3, 2003))), 198.0f);
}

TEST(WeightTrend, RateTextInTheDisplayUnit) {
    const struct {
        double pounds;
        bool metric;
        const char* text;
    } rows[] = {
        {-0.8, false, "-0.8 lbs/week"},        {0.25, false, "+0.3 lbs/week"},
        {-0.25, false, "-0.3 lbs/week"},       {-0.04, false, "0.0 lbs/week"},
        {0.0, false, "0.0 lbs/week"},          {-2.21, true, "-1.0 kg/week"},
        {1.105, true, "+0.5 kg/week"},         {-12.0, false, "-12.0 lbs/week"},
        {std::nan(""), false, "--- lbs/week"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(weeklyRateText(r.pounds, r.metric), r.text) << r.pounds;
    }
}

}  // namespace
}  // namespace nutrovex
