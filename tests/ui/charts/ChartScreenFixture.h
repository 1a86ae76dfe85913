#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QWidget>
#include <memory>

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "ui/ScreenSession.h"

namespace nutrovex::test {

// A running session on a fresh root with "Zerbu" open on 21 November 2002, weighed in through
// the engine.
class ChartScreenFixture : public ScreenSession {
protected:
    ChartScreenFixture() : ScreenSession(at(21, 11, 2002)) {}

    // Weighs in on a day (made when missing) and tells every open screen.
    void weigh(int d, int m, int y, float pounds) {
        UserStore& store = session.store();
        const CalendarDate date = CalendarDate::fromDmy(d, m, y);
        Position day = store.findDay(date);
        if (day == kNoPosition) {
            day = store.insertDay(std::make_unique<DayRecord>(date));
        }
        setDayWeight(store.dayAt(day), pounds, store.profile);
        announce();
    }

    void announce() { (void)notifier.apply(Notices{.userData = true, .dataChanged = true}); }
};

// The painted widget, at its current size.
inline QImage paintedImage(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

inline bool sameColour(QRgb pixel, const QColor& colour) {
    return pixel == colour.rgb();
}

// Pixels of the image in exactly this colour.
inline int countColour(const QImage& image, const QColor& colour) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            n += sameColour(image.pixel(x, y), colour) ? 1 : 0;
        }
    }
    return n;
}

}  // namespace nutrovex::test
