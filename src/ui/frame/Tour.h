#pragma once

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
// saved under ("logbook" gives logbook.png at the default size and logbook@2x.png at twice it).
struct TourStop {
    QString name;
    std::function<std::unique_ptr<QWidget>(QWidget* parent)> open;
};

// Shows every stop in turn at the default size and at twice it, without running it modally, and
// saves its pictures into dir. A stop whose widget is null is reported, not skipped silently.
// Returns the failures in words; empty when every picture was written.
[[nodiscard]] QStringList runTour(const QString& dir, const std::vector<TourStop>& stops,
                                  QWidget* parent);

// Lays the widget out at size, paints it and writes it as a PNG; false when it cannot be written.
[[nodiscard]] bool saveWidgetPicture(QWidget& widget, QSize size, const QString& path);

}  // namespace nutrovex
