#include "ui/frame/Tour.h"

#include <QApplication>
#include <QDir>

namespace nutrovex {

bool saveWidgetPicture(QWidget& widget, QSize size, const QString& path) {
    widget.resize(size);
    widget.show();
    // Let layouts, fonts and deferred updates settle before painting.
    QApplication::processEvents();
    QApplication::processEvents();
    return widget.grab().save(path, "PNG");
}

QStringList runTour(const QString& dir, const std::vector<TourStop>& stops, QWidget* parent) {
    QStringList failures;
    if (!QDir().mkpath(dir)) {
        failures << QStringLiteral("%1: the folder cannot be made").arg(dir);
        return failures;
    }
    const QDir out(dir);
    const QSize size(kDefaultWindowWidth, kDefaultWindowHeight);
    for (const TourStop& stop : stops) {
        std::unique_ptr<QWidget> widget = stop.open ? stop.open(parent) : nullptr;
        if (!widget) {
            failures << QStringLiteral("%1: the screen did not open").arg(stop.name);
            continue;
        }
        for (const auto& [scale, suffix] : {std::pair{1, ""}, std::pair{2, "@2x"}}) {
            const QString path =
                out.filePath(stop.name + QString::fromLatin1(suffix) + QStringLiteral(".png"));
            if (!saveWidgetPicture(*widget, size * scale, path)) {
                failures << QStringLiteral("%1: cannot be written").arg(path);
            }
        }
        widget->hide();
    }
    return failures;
}

}  // namespace nutrovex
