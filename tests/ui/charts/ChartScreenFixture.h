#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QWidget>
#include <memory>

#include "TempDir.h"
#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "session/Session.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// A running session on a fresh root with "Zerbu" open, weighed in through the engine.
class ChartScreenFixture : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();
        ASSERT_TRUE(session.userOpen());
    }

    // Weighs in on a day (made when missing) and tells every open screen.
    void weigh(int d, int m, int y, float pounds) {
        UserStore& store = session.store();
        const CalendarDate date = CalendarDate::fromDmy(d, m, y);
        Position at = store.findDay(date);
        if (at == kNoPosition) {
            at = store.insertDay(std::make_unique<DayRecord>(date));
        }
        setDayWeight(store.dayAt(at), pounds, store.profile);
        announce();
    }

    void announce() {
        Notices n;
        n.userData = true;
        n.dataChanged = true;
        (void)notifier.apply(n);
    }

    TempDir dir;
    FixedClock clock{CalendarDate::fromDmy(21, 11, 2002)};
    MemorySettings settings;
    Session session{dir.path(), clock, settings, {}};
    SessionNotifier notifier{session};
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
