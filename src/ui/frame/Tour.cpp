#include "ui/frame/Tour.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPixmap>

namespace nutrovex {

namespace {

// Shows the widget at its logical size and waits for layouts, fonts and deferred updates.
void settle(QWidget& widget, QSize size) {
    widget.resize(size);
    widget.show();
    QApplication::processEvents();
    QApplication::processEvents();
}

// Every stop saved into dir, each at scale 1 and, when doubled is set, at device pixel ratio 2.
// The names of the stops that did not open are added to closed, and stops already there skipped.
void saveStops(const QDir& out, const std::vector<TourStop>& stops, QWidget* parent, bool doubled,
               QStringList& failures, QStringList& closed) {
    const QSize size(kDefaultWindowWidth, kDefaultWindowHeight);
    for (const TourStop& stop : stops) {
        if (closed.contains(stop.name)) {
            continue;
        }
        std::unique_ptr<QWidget> widget = stop.open ? stop.open(parent) : nullptr;
        if (!widget) {
            failures << QStringLiteral("%1: the screen did not open").arg(stop.name);
            closed << stop.name;
            continue;
        }
        for (const auto& [scale, suffix] : {std::pair{1.0, ""}, std::pair{2.0, "@2x"}}) {
            if (scale > 1.0 && !doubled) {
                continue;
            }
            const QString path =
                out.filePath(stop.name + QString::fromLatin1(suffix) + QStringLiteral(".png"));
            if (!saveWidgetPicture(*widget, size, path, scale)) {
                failures << QStringLiteral("%1: cannot be written").arg(path);
            }
        }
        widget->hide();
    }
}

}  // namespace

QPalette darkPalette() {
    QPalette p;
    const QColor window(45, 45, 48);
    const QColor base(30, 30, 32);
    const QColor text(230, 230, 230);
    const QColor disabled(128, 128, 128);
    p.setColor(QPalette::Window, window);
    p.setColor(QPalette::WindowText, text);
    p.setColor(QPalette::Base, base);
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::ToolTipBase, base);
    p.setColor(QPalette::ToolTipText, text);
    p.setColor(QPalette::PlaceholderText, disabled);
    p.setColor(QPalette::Text, text);
    p.setColor(QPalette::Button, QColor(58, 58, 62));
    p.setColor(QPalette::ButtonText, text);
    p.setColor(QPalette::BrightText, QColor(255, 110, 110));
    p.setColor(QPalette::Light, QColor(85, 85, 90));
    p.setColor(QPalette::Midlight, QColor(70, 70, 74));
    p.setColor(QPalette::Mid, QColor(95, 95, 100));
    p.setColor(QPalette::Dark, QColor(20, 20, 22));
    p.setColor(QPalette::Shadow, QColor(0, 0, 0));
    p.setColor(QPalette::Highlight, QColor(62, 128, 205));
    p.setColor(QPalette::HighlightedText, QColor(255, 255, 255));
    p.setColor(QPalette::Link, QColor(110, 170, 240));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        p.setColor(QPalette::Disabled, role, disabled);
    }
    return p;
}

bool saveWidgetPicture(QWidget& widget, QSize size, const QString& path, qreal pixelRatio) {
    settle(widget, size);
    // The same logical layout drawn with pixelRatio device pixels to each: text and art crisp.
    QPixmap picture(size * pixelRatio);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(widget.palette().color(QPalette::Window));
    widget.render(&picture);
    return picture.save(path, "PNG");
}

QStringList runTour(const QString& dir, const std::vector<TourStop>& stops, QWidget* parent) {
    QStringList failures;
    const QString darkDir = QDir(dir).filePath(QStringLiteral("dark"));
    if (!QDir().mkpath(dir) || !QDir().mkpath(darkDir)) {
        failures << QStringLiteral("%1: the folder cannot be made").arg(dir);
        return failures;
    }
    QStringList closed;
    saveStops(QDir(dir), stops, parent, true, failures, closed);

    // The same screens once more in a dark palette; whatever they paint must follow it.
    const QPalette before = QApplication::palette();
    QApplication::setPalette(darkPalette());
    saveStops(QDir(darkDir), stops, parent, false, failures, closed);
    QApplication::setPalette(before);
    return failures;
}

}  // namespace nutrovex
