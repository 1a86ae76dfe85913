#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "charts/BodyMassBands.h"
#include "charts/WeightHistory.h"

namespace nutrovex {

// Pixels; right and bottom are the last pixel's edge, as the plot's frame is drawn on them.
struct ChartRect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
    [[nodiscard]] int32_t width() const { return right - left; }
    [[nodiscard]] int32_t height() const { return bottom - top; }
    [[nodiscard]] bool contains(int32_t x, int32_t y) const {
        return x >= left && x <= right && y >= top && y <= bottom;
    }
    friend bool operator==(const ChartRect&, const ChartRect&) = default;
};

struct ChartPoint {
    int32_t x = 0;
    int32_t y = 0;
    friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

// A text and the box it is drawn in; how it sits in the box depends on the kind of label.
struct ChartLabel {
    ChartRect box;
    std::string text;
};

// A horizontal line across the plot.
struct ChartLevel {
    int32_t y = 0;
    int32_t left = 0;
    int32_t right = 0;
    int32_t weight = 0;
};

// Margins of the plot rectangle inside the drawing area.
inline constexpr int32_t kPlotMarginLeft = 40;
inline constexpr int32_t kPlotMarginRight = 40;
inline constexpr int32_t kPlotMarginBottom = 25;
// Date labels sit in a box this far below the plot.
inline constexpr int32_t kDateLabelTop = 3;
inline constexpr int32_t kDateLabelBottom = 33;
// Value labels end this far left of the plot.
inline constexpr int32_t kValueLabelGap = 5;
// The message box is this much narrower than the area, and its text this far inside its frame.
inline constexpr int32_t kMessageNarrower = 120;
inline constexpr int32_t kMessagePadding = 10;

// What a legend entry stands for.
enum class ChartSeries : uint8_t { Weight, Trend };

// A legend entry: a short stroke of the series' line, and its name after it.
struct ChartLegendEntry {
    ChartSeries series = ChartSeries::Weight;
    ChartPoint strokeFrom;
    ChartPoint strokeTo;
    ChartLabel label;  // left-aligned, centred vertically
};

// A reference weight beyond the scale, named with its value inside the plot at the edge it lies
// past, at the plot's left end; the mark after the text points out of the plot.
struct ChartEdgeMark {
    ChartLabel label;  // right-aligned, centred vertically
    bool above = false;
};

// How wide a text is and how high a line of it, in the chart's font.
struct ChartTextMetrics {
    std::function<int32_t(const std::string&)> width;
    int32_t height = 15;
    [[nodiscard]] int32_t widthOf(const std::string& text) const {
        return width ? width(text) : static_cast<int32_t>(text.size()) * 7;
    }
};

// Texts along an axis stand at least this far apart.
inline constexpr int32_t kLabelGap = 8;

// Everything the historic chart paints, in the control's pixels. The widget fills the area with
// the face colour, frames the plot and draws the rest as told.
struct HistoricChartLayout {
    ChartRect area;
    ChartRect plot;
    bool drawable = false;
    // Not drawable: the framed box and the word-wrapped text inside it.
    ChartRect messageBox;
    ChartRect messageText;
    std::string message;
    // Drawable:
    std::vector<ChartLevel> valueLines;   // every value line, bottom (line 0) first
    std::vector<ChartLabel> valueLabels;  // inner lines only; right-aligned, centred vertically
    // Centred horizontally, at the top of the box; where every label would not fit, every
    // second (third, ...) one counted back from the newest, so that no two run together.
    std::vector<ChartLabel> dateLabels;
    ChartLabel unitLabel;                // the weights' unit above the value labels, right-aligned
    std::vector<ChartPoint> weightLine;  // the days with a weight, joined in order
    std::optional<ChartLevel> goalLine;
    std::optional<ChartEdgeMark> goalMark;  // the goal when it lies beyond the scale
    std::vector<ChartPoint> trendLine;      // empty unless a trend was given
    // Above the plot at its right end while a trend is drawn: which line is which.
    std::vector<ChartLegendEntry> legend;
};

// The height of a text word-wrapped to a width, measured with the chart's font.
using WrappedTextHeight = std::function<int32_t(int32_t width)>;

// The band above the historic chart's plot for the unit and the legend: a line of text and room.
[[nodiscard]] int32_t plotMarginTop(const ChartTextMetrics& text);

// Lays the historic chart out in a control of width x height. trend, when given, holds one
// smoothed weight in pounds per day of the history (nullopt before the trend starts).
[[nodiscard]] HistoricChartLayout layoutHistoricChart(
    const WeightHistory& history, int32_t width, int32_t height,
    const WrappedTextHeight& wrappedTextHeight,
    const std::vector<std::optional<float>>* trend = nullptr, const ChartTextMetrics& text = {});

// Which of count labels, evenly spread over a width, are shown so that none runs into the next:
// every step-th counted back from the last, the smallest step that fits. widths are the labels'
// own widths; the boxes are kept inside [left, right].
[[nodiscard]] std::vector<ChartLabel> spacedLabels(const std::vector<std::string>& texts,
                                                   const std::vector<int32_t>& widths, int32_t left,
                                                   int32_t right, int32_t top, int32_t bottom,
                                                   int32_t areaLeft, int32_t areaRight);

// The weight scale of the chart with body-mass bands: the bands' limits, the current and the goal
// weight all inside, with room for a band's worth above the obese limit and below the
// underweight one.
struct BodyMassScale {
    int32_t lowest = 0;  // the bottom line's weight
    uint16_t step = 0;
    uint16_t lineCount = 0;
    [[nodiscard]] int32_t lineWeight(int line) const { return lowest + line * step; }
    [[nodiscard]] int32_t highest() const { return lineWeight(lineCount - 1); }
};
[[nodiscard]] BodyMassScale bodyMassScale(const BodyMassChart& chart);

struct BandArea {
    BodyMassBand band = BodyMassBand::Normal;
    ChartRect rect;
};

// Everything the chart with body-mass bands paints: four bands bottom to top, the current and
// goal lines, and the value labels on the inner lines.
struct BodyMassLayout {
    ChartRect area;
    ChartRect plot;
    std::array<BandArea, 4> bands;
    std::vector<ChartLevel> valueLines;
    std::vector<ChartLabel> valueLabels;
    ChartLevel current;
    ChartLevel goal;
};
inline constexpr int32_t kBandPlotMarginRight = 10;
inline constexpr int32_t kBandPlotMarginVertical = 8;

[[nodiscard]] BodyMassLayout layoutBodyMassChart(const BodyMassChart& chart, int32_t width,
                                                 int32_t height);

}  // namespace nutrovex
