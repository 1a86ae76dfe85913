#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPalette>
#include <QSize>
#include <array>
#include <optional>
#include <vector>

#include "charts/ChartLayout.h"

class QPainter;

namespace nutrovex {

// The charts' colours, taken from the palette so that light and dark themes both read well.
struct ChartColours {
    QColor face;                  // the area and the plot
    QColor ink;                   // frame, texts, the start line, the current weight
    QColor grid;                  // value lines
    QColor line;                  // the weight line
    QColor trend;                 // the smoothed weight
    QColor goal;                  // the goal line
    std::array<QColor, 4> bands;  // Under, Normal, Over, Obese
};
[[nodiscard]] ChartColours chartColours(const QPalette& palette);

// The historic chart laid out for a control of this size, its message measured with the font.
[[nodiscard]] HistoricChartLayout historicChartLayout(
    const WeightHistory& history, QSize size, const QFont& font,
    const std::vector<std::optional<float>>* trend = nullptr);

// Paints what the layouts say; nothing here decides where anything goes.
void paintHistoricChart(QPainter& painter, const HistoricChartLayout& layout,
                        const ChartColours& colours, const QFont& font);
void paintBodyMassChart(QPainter& painter, const BodyMassLayout& layout,
                        const ChartColours& colours, const QFont& font);

// The historic chart as an image of the given size, for a file.
[[nodiscard]] QImage renderHistoricChart(const WeightHistory& history, QSize size,
                                         const QPalette& palette, const QFont& font,
                                         const std::vector<std::optional<float>>* trend = nullptr);

}  // namespace nutrovex
