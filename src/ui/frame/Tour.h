#pragma once

#include <QPalette>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace nutrovex {

// The default window: a portrait handheld shape that every screen is laid out for.
inline constexpr int kDefaultWindowWidth = 480;
inline constexpr int kDefaultWindowHeight = 640;

// One screen of the tour: how to open it with its data shown, and the name its pictures are
// saved under ("logbook" gives logbook.png, logbook@2x.png drawn at twice the pixel density, and
// dark/logbook.png in a dark palette).
struct TourStop {
    QString name;
    std::function<std::unique_ptr<QWidget>(QWidget* parent)> open;
};

// Shows every stop in turn at the default size, without running it modally, and saves its
// pictures into dir: at scale 1, at device pixel ratio 2, and in a dark palette into dir/dark. A
// stop whose widget is null is reported, not skipped silently. Returns the failures in words; empty
// when every picture was written.
[[nodiscard]] QStringList runTour(const QString& dir, const std::vector<TourStop>& stops,
                                  QWidget* parent);

// Lays the widget out at size, paints it with pixelRatio device pixels to a logical one and writes
// it as a PNG; false when it cannot be written.
[[nodiscard]] bool saveWidgetPicture(QWidget& widget, QSize size, const QString& path,
                                     qreal pixelRatio = 1.0);

// The palette of the tour's dark pictures.
[[nodiscard]] QPalette darkPalette();

}  // namespace nutrovex
