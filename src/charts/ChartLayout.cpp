#include "charts/ChartLayout.h"

#include <algorithm>
#include <cmath>

namespace nutrovex {

namespace {

// Whole-number division rounding towards minus infinity, so a weight just below the scale maps
// below the plot rather than onto its edge.
int64_t floorDiv(int64_t a, int64_t b) {
    const int64_t q = a / b;
    return (a % b != 0 && ((a < 0) != (b < 0))) ? q - 1 : q;
}

// Maps weights onto a plot whose bottom edge stands for `bottomWeight` and top edge for
// `topWeight`.
struct WeightAxis {
    ChartRect plot;
    int32_t bottomWeight = 0;
    int32_t topWeight = 1;

    [[nodiscard]] int32_t y(int32_t weight) const {
        const int64_t rise =
            floorDiv(int64_t{plot.height()} * (weight - bottomWeight), topWeight - bottomWeight);
        return static_cast<int32_t>(plot.bottom - rise);
    }
    [[nodiscard]] int32_t y(double weight) const {
        // Floored as the whole weights are, so a trend on a whole weight meets its line.
        const double rise = plot.height() * (weight - bottomWeight) / (topWeight - bottomWeight);
        return plot.bottom - static_cast<int32_t>(std::clamp(std::floor(rise + 1e-9), -1e9, 1e9));
    }
};

std::vector<ChartLevel> valueLevels(const WeightAxis& axis, int lineCount,
                                    const std::function<int32_t(int)>& lineWeight) {
    std::vector<ChartLevel> lines;
    lines.reserve(static_cast<std::size_t>(lineCount));
    for (int k = 0; k < lineCount; ++k) {
        const int32_t weight = lineWeight(k);
        lines.push_back({axis.y(weight), axis.plot.left, axis.plot.right, weight});
    }
    return lines;
}

// "%d" right-aligned left of the plot, in a box as high as the line spacing, for the inner lines.
std::vector<ChartLabel> valueLabelsOf(const std::vector<ChartLevel>& lines, const ChartRect& area,
                                      const ChartRect& plot) {
    std::vector<ChartLabel> labels;
    if (lines.size() < 3) {
        return labels;
    }
    const double spacing =
        static_cast<double>(plot.height()) / static_cast<double>(lines.size() - 1);
    const auto half = static_cast<int32_t>(std::lround(spacing / 2.0));
    for (std::size_t k = 1; k + 1 < lines.size(); ++k) {
        const int32_t y = lines[k].y;
        labels.push_back({{area.left, y - half, plot.left - kValueLabelGap, y + half},
                          std::to_string(lines[k].weight)});
    }
    return labels;
}

}  // namespace

int32_t plotMarginTop(const ChartTextMetrics& text) {
    return text.height + 6;
}

std::vector<ChartLabel> spacedLabels(const std::vector<std::string>& texts,
                                     const std::vector<int32_t>& widths, int32_t left,
                                     int32_t right, int32_t top, int32_t bottom, int32_t areaLeft,
                                     int32_t areaRight) {
    const auto count = static_cast<int32_t>(std::min(texts.size(), widths.size()));
    const int32_t gaps = std::max(count - 1, 1);
    const auto boxOf = [&](int32_t k) {
        const int32_t x = left + static_cast<int32_t>(int64_t{right - left} * k / gaps);
        const int32_t w = widths[static_cast<std::size_t>(k)];
        int32_t l = x - w / 2;
        // Kept inside the area, shifted rather than cut.
        l = std::max(areaLeft, std::min(l, areaRight - w));
        return ChartRect{l, top, l + w, bottom};
    };
    for (int32_t step = 1; step <= std::max(count, 1); ++step) {
        std::vector<ChartLabel> shown;
        bool fits = true;
        for (int32_t k = count - 1; k >= 0; k -= step) {
            const ChartRect box = boxOf(k);
            if (!shown.empty() && box.right + kLabelGap > shown.back().box.left) {
                fits = false;
                break;
            }
            shown.push_back({box, texts[static_cast<std::size_t>(k)]});
        }
        if (fits) {
            std::reverse(shown.begin(), shown.end());
            return shown;
        }
    }
    // Not even one pair fits: the newest alone.
    if (count == 0) {
        return {};
    }
    return {{boxOf(count - 1), texts[static_cast<std::size_t>(count - 1)]}};
}

HistoricChartLayout layoutHistoricChart(const WeightHistory& history, int32_t width, int32_t height,
                                        const WrappedTextHeight& wrappedTextHeight,
                                        const std::vector<std::optional<float>>* trend,
                                        const ChartTextMetrics& text) {
    HistoricChartLayout layout;
    width = std::max(width, 0);
    height = std::max(height, 0);
    layout.area = {0, 0, width, std::min(height, width / 2)};
    const ChartRect& area = layout.area;
    layout.plot = {area.left + kPlotMarginLeft, area.top + plotMarginTop(text),
                   area.right - kPlotMarginRight,
                   std::max(area.bottom - kPlotMarginBottom, area.top + plotMarginTop(text))};
    const ChartRect& plot = layout.plot;

    layout.drawable =
        history.drawable() && history.dayCount >= 2 && history.lineCount >= 3 && history.step > 0;
    if (!layout.drawable) {
        layout.message = kTooFewPointsMessage;
        const int32_t boxWidth = std::max(area.width() - kMessageNarrower, 2 * kMessagePadding);
        // Measured at the width it is drawn in, so no line is lost to the frame.
        const int32_t textHeight = wrappedTextHeight(boxWidth - 2 * kMessagePadding);
        const int32_t boxHeight = textHeight + 2 * kMessagePadding;
        const int32_t left = area.left + (area.width() - boxWidth) / 2;
        const int32_t top = area.top + (area.height() - boxHeight) / 2;
        layout.messageBox = {left, top, left + boxWidth, top + boxHeight};
        layout.messageText = {left + kMessagePadding, top + kMessagePadding,
                              left + boxWidth - kMessagePadding, top + boxHeight - kMessagePadding};
        return layout;
    }

    const int lineCount = history.lineCount;
    const WeightAxis axis{plot, history.lineWeight(0), history.lineWeight(lineCount - 1)};
    const int32_t lastDay = history.dayCount - 1;
    const auto dayX = [&](int32_t day) {
        return plot.left + static_cast<int32_t>(int64_t{plot.width()} * day / lastDay);
    };

    layout.valueLines = valueLevels(axis, lineCount, [&](int k) { return history.lineWeight(k); });
    layout.valueLabels = valueLabelsOf(layout.valueLines, area, plot);

    for (int32_t day = 0; day <= lastDay && static_cast<std::size_t>(day) < history.weights.size();
         ++day) {
        const int16_t weight = history.weights[static_cast<std::size_t>(day)];
        if (weight >= 0) {
            layout.weightLine.push_back({dayX(day), axis.y(int32_t{weight})});
        }
    }

    std::vector<int32_t> labelWidths;
    labelWidths.reserve(history.labels.size());
    for (const std::string& label : history.labels) {
        labelWidths.push_back(text.widthOf(label));
    }
    layout.dateLabels = spacedLabels(history.labels, labelWidths, plot.left, plot.right,
                                     plot.bottom + kDateLabelTop, plot.bottom + kDateLabelBottom,
                                     area.left, area.right);
    layout.unitLabel = {{area.left, area.top, plot.left - kValueLabelGap, plot.top}, history.unit};

    const auto referenceLine = [&](int16_t weight) -> std::optional<ChartLevel> {
        if (weight < 0) {
            return std::nullopt;
        }
        const ChartLevel level{axis.y(int32_t{weight}), dayX(0), dayX(lastDay), weight};
        if (!plot.contains(level.left, level.y)) {
            return std::nullopt;
        }
        return level;
    };
    layout.goalLine = referenceLine(history.goalLine);
    if (!layout.goalLine && history.goalLine >= 0) {
        // Beyond the scale: named with its value at the edge it lies past.
        const bool above = int32_t{history.goalLine} > history.lineWeight(lineCount - 1);
        const std::string name = "Goal " + std::to_string(history.goalLine) + ' ' + history.unit;
        const int32_t w = text.widthOf(name) + text.height;  // room for the mark after it
        const int32_t top = above ? plot.top + 2 : plot.bottom - 2 - text.height;
        // At the left end: a weight moving towards its goal ends at the right one.
        layout.goalMark = ChartEdgeMark{
            {{plot.left + 4, top, std::min(plot.left + 4 + w, plot.right), top + text.height},
             name},
            above};
    }

    if (trend != nullptr) {
        for (int32_t day = 0; day <= lastDay && static_cast<std::size_t>(day) < trend->size();
             ++day) {
            if (const std::optional<float>& value = (*trend)[static_cast<std::size_t>(day)]) {
                layout.trendLine.push_back({dayX(day), axis.y(static_cast<double>(*value))});
            }
        }
    }
    if (!layout.trendLine.empty()) {
        // Right to left from the plot's right end: "Trend" last, "Weight" before it.
        const int32_t stroke = 16;
        const int32_t mid = area.top + plot.top / 2;
        int32_t right = plot.right;
        for (const auto& [series, name] :
             {std::pair{ChartSeries::Trend, "Trend"}, std::pair{ChartSeries::Weight, "Weight"}}) {
            const int32_t w = text.widthOf(name);
            const int32_t textLeft = right - w;
            const int32_t strokeRight = textLeft - 4;
            ChartLegendEntry entry;
            entry.series = series;
            entry.strokeFrom = {strokeRight - stroke, mid};
            entry.strokeTo = {strokeRight, mid};
            entry.label = {{textLeft, area.top, right, plot.top}, name};
            layout.legend.insert(layout.legend.begin(), entry);
            right = strokeRight - stroke - 2 * kLabelGap;
        }
    }
    return layout;
}

BodyMassScale bodyMassScale(const BodyMassChart& chart) {
    const int32_t under = chart.underweightBelow;
    const int32_t over = chart.overweightFrom;
    const int32_t obese = chart.obeseFrom;
    const int32_t low =
        std::min({under - std::max(over - under, 1), int32_t{chart.current}, int32_t{chart.goal}});
    const int32_t high =
        std::max({obese + std::max(obese - over, 1), int32_t{chart.current}, int32_t{chart.goal}});
    // Fewer than sixteen steps between the extremes, as on the historic chart.
    int32_t step = 1;
    while ((high - low) / step >= 16) {
        ++step;
    }
    BodyMassScale scale;
    scale.step = static_cast<uint16_t>(step);
    // Lines on multiples of the step, one below the lowest weight and one above the highest.
    scale.lowest = static_cast<int32_t>(floorDiv(low, step) * step);
    if (scale.lowest == low) {
        scale.lowest -= step;
    }
    int32_t lines = 1;
    while (scale.lowest + (lines - 1) * step <= high) {
        ++lines;
    }
    scale.lineCount = static_cast<uint16_t>(lines);
    return scale;
}

BodyMassLayout layoutBodyMassChart(const BodyMassChart& chart, int32_t width, int32_t height) {
    BodyMassLayout layout;
    layout.area = {0, 0, std::max(width, 0), std::max(height, 0)};
    const ChartRect& area = layout.area;
    layout.plot = {
        area.left + kPlotMarginLeft, area.top + kBandPlotMarginVertical,
        std::max(area.right - kBandPlotMarginRight, area.left + kPlotMarginLeft + 1),
        std::max(area.bottom - kBandPlotMarginVertical, area.top + kBandPlotMarginVertical + 1)};
    const ChartRect& plot = layout.plot;

    const BodyMassScale scale = bodyMassScale(chart);
    const WeightAxis axis{plot, scale.lowest, scale.highest()};
    layout.valueLines =
        valueLevels(axis, scale.lineCount, [&](int k) { return scale.lineWeight(k); });
    layout.valueLabels = valueLabelsOf(layout.valueLines, area, plot);

    const int32_t underTop = axis.y(int32_t{chart.underweightBelow});
    const int32_t normalTop = axis.y(int32_t{chart.overweightFrom});
    const int32_t overTop = axis.y(int32_t{chart.obeseFrom});
    layout.bands = {{
        {BodyMassBand::Under, {plot.left, underTop, plot.right, plot.bottom}},
        {BodyMassBand::Normal, {plot.left, normalTop, plot.right, underTop}},
        {BodyMassBand::Over, {plot.left, overTop, plot.right, normalTop}},
        {BodyMassBand::Obese, {plot.left, plot.top, plot.right, overTop}},
    }};
    layout.current = {axis.y(int32_t{chart.current}), plot.left, plot.right, chart.current};
    layout.goal = {axis.y(int32_t{chart.goal}), plot.left, plot.right, chart.goal};
    return layout;
}

}  // namespace nutrovex
