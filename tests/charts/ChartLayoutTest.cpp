#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calc/Bmr.h"
#include "charts/ChartLayout.h"
#include "core/UserProfile.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

// A 14-day history with 150 on the first day and 182 on the last, as collected.
WeightHistory history150To182() {
    WeightHistory h;
    h.span = 1;
    h.dayCount = 15;
    h.weights.assign(15, -1);
    h.weights.front() = 150;
    h.weights.back() = 182;
    h.labels = {"5/2/2002",  "5/4/2002",  "5/6/2002",  "5/8/2002",
                "5/10/2002", "5/12/2002", "5/14/2002", "5/16/2002"};
    h.highest = 182;
    h.lowest = 150;
    const WeightScale s = weightScale(h.highest, h.lowest);
    h.step = s.step;
    h.lineCount = s.lineCount;
    h.points = 2;
    return h;
}

const WrappedTextHeight kFortyHigh = [](int32_t) { return 40; };

TEST(HistoricChartLayout, TheAreaIsAtMostHalfAsHighAsWideWithThePlotInsideItsMargins) {
    struct Row {
        int32_t width, height, areaHeight;
    };
    for (const Row& r : {Row{400, 400, 200}, Row{400, 120, 120}, Row{401, 500, 200}}) {
        const HistoricChartLayout l =
            layoutHistoricChart(history150To182(), r.width, r.height, kFortyHigh);
        EXPECT_EQ(l.area, (ChartRect{0, 0, r.width, r.areaHeight})) << r.width << "x" << r.height;
        EXPECT_EQ(l.plot, (ChartRect{40, 0, r.width - 40, r.areaHeight - 25}));
    }
}

TEST(HistoricChartLayout, From150To182ThirteenLinesAndElevenLabels) {
    const HistoricChartLayout l = layoutHistoricChart(history150To182(), 440, 300, kFortyHigh);
    ASSERT_TRUE(l.drawable);
    ASSERT_EQ(l.valueLines.size(), 13u);
    EXPECT_EQ(l.valueLines.front().y, l.plot.bottom);
    EXPECT_EQ(l.valueLines.back().y, l.plot.top);
    for (std::size_t k = 1; k < l.valueLines.size(); ++k) {
        EXPECT_LT(l.valueLines[k].y, l.valueLines[k - 1].y) << k;  // upwards, evenly
        EXPECT_NEAR(l.valueLines[k - 1].y - l.valueLines[k].y, l.plot.height() / 12.0, 1.0);
    }

    ASSERT_EQ(l.valueLabels.size(), 11u);
    std::vector<std::string> texts;
    for (const ChartLabel& label : l.valueLabels) {
        texts.push_back(label.text);
        EXPECT_EQ(label.box.left, 0);
        EXPECT_EQ(label.box.right, l.plot.left - 5);
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"150", "153", "156", "159", "162", "165", "168",
                                               "171", "174", "177", "180"}));
    // Each label is centred on its line.
    EXPECT_NEAR((l.valueLabels[0].box.top + l.valueLabels[0].box.bottom) / 2.0, l.valueLines[1].y,
                1.0);

    // Two points at the ends, the 150 one on the first labelled line; 182 between 180 and 183.
    ASSERT_EQ(l.weightLine.size(), 2u);
    EXPECT_EQ(l.weightLine[0], (ChartPoint{l.plot.left, l.valueLines[1].y}));
    EXPECT_EQ(l.weightLine[1].x, l.plot.right);
    EXPECT_LT(l.weightLine[1].y, l.valueLines[11].y);
    EXPECT_GT(l.weightLine[1].y, l.valueLines[12].y);
}

TEST(HistoricChartLayout, TheLineBridgesMissingDaysAndTheDatesSitUnderTheirPositions) {
    WeightHistory h = history150To182();
    h.weights[7] = 160;
    h.points = 3;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
    ASSERT_EQ(l.weightLine.size(), 3u);
    EXPECT_EQ(l.weightLine[1].x, l.plot.left + l.plot.width() * 7 / 14);

    ASSERT_EQ(l.dateLabels.size(), 8u);
    const int32_t w = l.plot.width() / 7;
    for (std::size_t k = 0; k < 8; ++k) {
        const ChartLabel& label = l.dateLabels[k];
        const int32_t x = l.plot.left + l.plot.width() * static_cast<int32_t>(k) / 7;
        EXPECT_EQ(label.text, h.labels[k]);
        EXPECT_EQ(label.box,
                  (ChartRect{x - w / 2, l.plot.bottom + 3, x + w / 2, l.plot.bottom + 33}))
            << k;
    }
}

TEST(HistoricChartLayout, EqualWeightsGiveThreeLinesWithTheMiddleOneLabelled) {
    WeightHistory h = history150To182();
    h.weights.back() = 150;
    h.highest = 150;
    const WeightScale s = weightScale(150, 150);
    h.step = s.step;
    h.lineCount = s.lineCount;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
    ASSERT_EQ(l.valueLines.size(), 3u);
    ASSERT_EQ(l.valueLabels.size(), 1u);
    EXPECT_EQ(l.valueLabels[0].text, "150");
    EXPECT_EQ(l.weightLine[0].y, l.valueLines[1].y);
    EXPECT_EQ(l.weightLine[1].y, l.valueLines[1].y);
}

TEST(HistoricChartLayout, ReferenceLinesOnlyWhenInsideThePlot) {
    struct Row {
        int16_t start, goal;
        bool startShown, goalShown;
    };
    // The scale runs from 147 (bottom edge) to 183 (top edge).
    const Row rows[] = {
        {160, 170, true, true},  {147, 183, true, true},  {146, 184, false, false},
        {-1, 200, false, false}, {100, 150, false, true},
    };
    for (const Row& r : rows) {
        WeightHistory h = history150To182();
        h.startLine = r.start;
        h.goalLine = r.goal;
        const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
        EXPECT_EQ(l.startLine.has_value(), r.startShown) << r.start;
        EXPECT_EQ(l.goalLine.has_value(), r.goalShown) << r.goal;
        for (const auto& line : {l.startLine, l.goalLine}) {
            if (line) {
                EXPECT_EQ(line->left, l.plot.left);
                EXPECT_EQ(line->right, l.plot.right);
                EXPECT_GE(line->y, l.plot.top);
                EXPECT_LE(line->y, l.plot.bottom);
            }
        }
    }
    WeightHistory h = history150To182();
    h.goalLine = 150;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
    ASSERT_TRUE(l.goalLine);
    EXPECT_EQ(l.goalLine->y, l.valueLines[1].y);  // on the line of its weight
}

TEST(HistoricChartLayout, FewerThanTwoPointsGiveTheCentredMessageBox) {
    WeightHistory h = history150To182();
    h.weights.back() = -1;
    h.points = 1;
    int32_t measuredAt = 0;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, [&](int32_t width) {
        measuredAt = width;
        return 64;
    });
    EXPECT_FALSE(l.drawable);
    EXPECT_EQ(l.message, kTooFewPointsMessage);
    EXPECT_EQ(l.messageBox, (ChartRect{60, 68, 380, 152}));  // 320 wide, 64 + 20 high, centred
    EXPECT_EQ(l.messageText, (ChartRect{70, 78, 370, 142}));
    EXPECT_EQ(measuredAt, l.messageText.width());
    EXPECT_TRUE(l.weightLine.empty());
    EXPECT_TRUE(l.valueLabels.empty());

    h.labels.clear();  // no records at all
    h.points = 2;
    EXPECT_FALSE(layoutHistoricChart(h, 440, 300, kFortyHigh).drawable);
}

TEST(HistoricChartLayout, TheTrendFollowsTheScaleDayByDay) {
    const WeightHistory h = history150To182();
    std::vector<std::optional<float>> trend(15);
    trend[0] = 150.0f;
    trend[14] = 183.0f;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh, &trend);
    ASSERT_EQ(l.trendLine.size(), 2u);  // nothing where the trend is unknown
    EXPECT_EQ(l.trendLine[0], (ChartPoint{l.plot.left, l.valueLines[1].y}));
    EXPECT_EQ(l.trendLine[1], (ChartPoint{l.plot.right, l.plot.top}));
    EXPECT_TRUE(layoutHistoricChart(h, 440, 300, kFortyHigh).trendLine.empty());
}

TEST(BodyMassLayout, BandsAndWeightsAllInsideInOrder) {
    struct Row {
        int16_t under, over, obese, current, goal;
    };
    const Row rows[] = {
        {129, 174, 209, 220, 170},  // a 70-inch person in pounds
        {58, 79, 95, 100, 77},      // the same in kilograms
        {129, 174, 209, 400, 90},   // far outside the bands
        {100, 100, 100, 100, 100},  // a degenerate height
    };
    for (const Row& r : rows) {
        BodyMassChart c;
        c.underweightBelow = r.under;
        c.overweightFrom = r.over;
        c.obeseFrom = r.obese;
        c.current = r.current;
        c.goal = r.goal;
        const BodyMassScale s = bodyMassScale(c);
        EXPECT_LT(s.lineCount, 20) << r.current;
        for (const int16_t w : {r.under, r.obese, r.current, r.goal}) {
            EXPECT_GT(w, s.lineWeight(0)) << w;
            EXPECT_LT(w, s.highest()) << w;
        }
        const BodyMassLayout l = layoutBodyMassChart(c, 400, 300);
        EXPECT_EQ(l.bands[0].rect.bottom, l.plot.bottom);
        EXPECT_EQ(l.bands[3].rect.top, l.plot.top);
        for (std::size_t b = 1; b < 4; ++b) {
            EXPECT_EQ(l.bands[b].rect.bottom, l.bands[b - 1].rect.top) << b;
            EXPECT_LE(l.bands[b].rect.top, l.bands[b].rect.bottom) << b;
        }
        for (const ChartLevel& line : {l.current, l.goal}) {
            EXPECT_TRUE(l.plot.contains(line.left, line.y)) << line.weight;
        }
        EXPECT_EQ(l.valueLabels.size(), s.lineCount - 2u);
    }

    // The current weight above the obese limit lies in the obese band.
    BodyMassChart c;
    c.underweightBelow = 129;
    c.overweightFrom = 174;
    c.obeseFrom = 209;
    c.current = 220;
    c.goal = 170;
    const BodyMassLayout l = layoutBodyMassChart(c, 400, 300);
    EXPECT_LT(l.current.y, l.bands[3].rect.bottom);
    EXPECT_GT(l.goal.y, l.bands[2].rect.bottom);  // the goal in the normal band
    EXPECT_LT(l.goal.y, l.bands[1].rect.bottom);
}

}  // namespace
}  // namespace nutrovex
