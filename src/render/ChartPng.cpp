#include "render/ChartPng.h"

#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPalette>
#include <cstdio>
#include <memory>

#include "render/ChartPainter.h"

namespace nutrovex {

namespace {

// A display-less application for the rest of the process, for fonts and painting.
void ensureGuiApplication() {
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Qt's notes about the missing desktop session are not the command's business.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    static int argc = 1;
    static char name[] = "nutrovex-tool";
    static char* argv[] = {name, nullptr};
    static const auto app = std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

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
