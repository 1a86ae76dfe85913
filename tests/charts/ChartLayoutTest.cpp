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
        // A line of text above the plot for the unit and the legend.
        EXPECT_EQ(l.plot, (ChartRect{40, 21, r.width - 40, r.areaHeight - 25}));
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

    // Eight labels of about 60 pixels, 51 apart: every second one, counted back from the newest,
    // each centred under its day.
    ASSERT_EQ(l.dateLabels.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t k = 2 * i + 1;
        const ChartLabel& label = l.dateLabels[i];
        const int32_t x = l.plot.left + l.plot.width() * static_cast<int32_t>(k) / 7;
        EXPECT_EQ(label.text, h.labels[k]);
        const auto w = static_cast<int32_t>(h.labels[k].size()) * 7;
        EXPECT_EQ(label.box,
                  (ChartRect{x - w / 2, l.plot.bottom + 3, x - w / 2 + w, l.plot.bottom + 33}))
            << k;
    }
    EXPECT_EQ(l.unitLabel.text, "lbs");
    EXPECT_EQ(l.unitLabel.box.right, l.plot.left - 5);
    EXPECT_LE(l.unitLabel.box.bottom, l.plot.top);  // above the value labels
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

TEST(HistoricChartLayout, TheGoalLineOnlyWhenInsideThePlot) {
    struct Row {
        int16_t goal;
        bool shown;
    };
    // The scale runs from 147 (bottom edge) to 183 (top edge).
    for (const Row& r : {Row{170, true}, Row{147, true}, Row{183, true}, Row{146, false},
                         Row{184, false}, Row{-1, false}}) {
        WeightHistory h = history150To182();
        h.goalLine = r.goal;
        const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
        EXPECT_EQ(l.goalLine.has_value(), r.shown) << r.goal;
        if (l.goalLine) {
            EXPECT_EQ(l.goalLine->left, l.plot.left);
            EXPECT_EQ(l.goalLine->right, l.plot.right);
            EXPECT_GE(l.goalLine->y, l.plot.top);
            EXPECT_LE(l.goalLine->y, l.plot.bottom);
        }
    }
    WeightHistory h = history150To182();
    h.goalLine = 150;
    const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
    ASSERT_TRUE(l.goalLine);
    EXPECT_EQ(l.goalLine->y, l.valueLines[1].y);  // on the line of its weight
    EXPECT_FALSE(l.goalMark);
}

TEST(HistoricChartLayout, AGoalBeyondTheScaleIsMarkedAtItsEdgeWithItsValue) {
    struct Row {
        int16_t goal;
        bool above;
        const char* text;
    };
    for (const Row& r : {Row{120, false, "Goal 120 lbs"}, Row{184, true, "Goal 184 lbs"},
                         Row{400, true, "Goal 400 lbs"}}) {
        WeightHistory h = history150To182();
        h.goalLine = r.goal;
        const HistoricChartLayout l = layoutHistoricChart(h, 440, 300, kFortyHigh);
        EXPECT_FALSE(l.goalLine) << r.goal;
        ASSERT_TRUE(l.goalMark) << r.goal;
        EXPECT_EQ(l.goalMark->above, r.above);
        EXPECT_EQ(l.goalMark->label.text, r.text);
        const ChartRect& box = l.goalMark->label.box;
        EXPECT_TRUE(l.plot.contains(box.left, box.top) && l.plot.contains(box.right, box.bottom));
        // At the edge the goal lies past.
        EXPECT_LE(r.above ? box.top - l.plot.top : l.plot.bottom - box.bottom, 2) << r.goal;
    }
    WeightHistory none = history150To182();  // no goal entered: no mark
    EXPECT_FALSE(layoutHistoricChart(none, 440, 300, kFortyHigh).goalMark);
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

    // Drawn, the trend gets a legend above the plot naming both lines, neither over the other.
    ASSERT_EQ(l.legend.size(), 2u);
    EXPECT_EQ(l.legend[0].series, ChartSeries::Weight);
    EXPECT_EQ(l.legend[0].label.text, "Weight");
    EXPECT_EQ(l.legend[1].series, ChartSeries::Trend);
    EXPECT_EQ(l.legend[1].label.text, "Trend");
    EXPECT_LT(l.legend[0].label.box.right, l.legend[1].strokeFrom.x);
    EXPECT_EQ(l.legend[1].label.box.right, l.plot.right);
    for (const ChartLegendEntry& e : l.legend) {
        EXPECT_LE(e.label.box.bottom, l.plot.top);
        EXPECT_LT(e.strokeTo.x, e.label.box.left);
    }
    EXPECT_TRUE(layoutHistoricChart(h, 440, 300, kFortyHigh).legend.empty());
}

// Date labels of every span, collected from a logbook of three years, at the widths the chart
// takes from the smallest window up: no two shown labels touch, all stay inside the chart, and
// the newest date is always among them.
class DateLabelSpacing : public LogbookFixture {};

TEST_F(DateLabelSpacing, NoTwoLabelsRunTogetherAtAnySpanOrWidth) {
    for (int i = 0; i < 3 * 365; i += 3) {
        const CalendarDate date = steppedDate(dmy(21, 11, 1999), i);
        setDayWeight(addDay(date.day, date.month, date.year),
                     180.0f - 0.01f * static_cast<float>(i), store.profile);
    }
    // A wide font: ten pixels a character.
    ChartTextMetrics wide;
    wide.width = [](const std::string& s) { return static_cast<int32_t>(s.size()) * 10; };
    wide.height = 18;
    const struct {
        uint16_t span;
        const char* name;
    } spans[] = {{0, "7 days"}, {1, "14 days"}, {2, "1 month"}, {3, "3 months"}, {5, "1 year"}};
    for (const auto& s : spans) {
        const WeightHistory h = collectWeightHistory(cursor, s.span);
        ASSERT_TRUE(h.drawable()) << s.name;
        for (const int32_t width : {240, 320, 400, 480, 640, 1000}) {
            const ChartTextMetrics* measures[] = {&wide, nullptr};
            for (const ChartTextMetrics* text : measures) {
                const HistoricChartLayout l =
                    text != nullptr
                        ? layoutHistoricChart(h, width, width / 2, kFortyHigh, nullptr, *text)
                        : layoutHistoricChart(h, width, width / 2, kFortyHigh);
                const std::string where = std::string(s.name) + " at " + std::to_string(width);
                ASSERT_FALSE(l.dateLabels.empty()) << where;
                EXPECT_EQ(l.dateLabels.back().text, h.labels.back()) << where;
                for (std::size_t k = 0; k < l.dateLabels.size(); ++k) {
                    const ChartRect& box = l.dateLabels[k].box;
                    EXPECT_GE(box.left, l.area.left) << where;
                    EXPECT_LE(box.right, l.area.right) << where;
                    const int32_t textWidth =
                        text != nullptr ? text->widthOf(l.dateLabels[k].text)
                                        : ChartTextMetrics{}.widthOf(l.dateLabels[k].text);
                    EXPECT_EQ(box.width(), textWidth) << where;  // the box holds the whole text
                    if (k > 0) {
                        EXPECT_GE(box.left - l.dateLabels[k - 1].box.right, kLabelGap) << where;
                    }
                }
            }
        }
    }
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
