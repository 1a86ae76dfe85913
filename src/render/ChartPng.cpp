#include "render/ChartPng.h"

#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>

#include "render/ChartPainter.h"
#include "render/GuiApplication.h"

namespace nutrovex {

std::vector<uint8_t> historicChartPng(const WeightHistory& history,
                                      const std::vector<std::optional<float>>* trend, int width) {
    ensureGuiApplication();
    const QSize size(width, width / 2);
    const QImage image =
        renderHistoricChart(history, size, QGuiApplication::palette(), QFont(), trend);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
        return {};
    }
    return {bytes.begin(), bytes.end()};
}

}  // namespace nutrovex
