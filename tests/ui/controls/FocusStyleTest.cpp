#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <functional>

#include "forms/foods/FindFoodForm.h"
#include "forms/logbook/LogbookForm.h"
#include "ui/DemoSession.h"
#include "ui/controls/FocusStyle.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/logbook/LogbookDialog.h"

namespace nutrovex {
namespace {

QPalette darkPalette() {
    QPalette p;
    p.setColor(QPalette::Window, QColor(0x20, 0x20, 0x24));
    p.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
    p.setColor(QPalette::Base, QColor(0x18, 0x18, 0x1c));
    p.setColor(QPalette::Text, QColor(0xee, 0xee, 0xee));
    p.setColor(QPalette::Button, QColor(0x30, 0x30, 0x36));
    p.setColor(QPalette::ButtonText, QColor(0xee, 0xee, 0xee));
    p.setColor(QPalette::Highlight, QColor(0x2a, 0x3a, 0x5a));  // too close to the window
    p.setColor(QPalette::HighlightedText, Qt::white);
    return p;
}

// How many pixels giving the widget the focus changed into a colour that stands out from what
// was there before (3 : 1, as a focus indicator must).
int ringPixels(QWidget* widget, const std::function<void()>& focus) {
    const QImage before = widget->grab().toImage();
    focus();
    const QImage after = widget->grab().toImage();
    const auto luminance = [](const QColor& c) {
        const auto channel = [](double v) {
            return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) +
               0.0722 * channel(c.blueF());
    };
    int count = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            const double a = luminance(before.pixelColor(x, y));
            const double b = luminance(after.pixelColor(x, y));
            count += (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05) >= 3.0 ? 1 : 0;
        }
    }
    return count;
}

TEST(FocusStyle, TheRingStandsOutFromTheWindowInAnyPalette) {
    const QPalette light = QApplication::palette();
    EXPECT_EQ(FocusStyle::focusColour(light), light.color(QPalette::Highlight));
    const QPalette dark = darkPalette();
    EXPECT_EQ(FocusStyle::focusColour(dark), dark.color(QPalette::WindowText));
    QPalette bright = dark;
    bright.setColor(QPalette::Highlight, QColor(0x4d, 0xa3, 0xff));
    EXPECT_EQ(FocusStyle::focusColour(bright), QColor(0x4d, 0xa3, 0xff));
}

using FocusRing = test::DemoSession;

// The logbook's date and Find's list, where the focus used to be invisible, show the ring when
// they have the focus and only then, in a dark palette too.
TEST_F(FocusRing, TheLogbooksDateAndFindsListShowWhereTheFocusIs) {
    ASSERT_NE(qobject_cast<FocusStyle*>(QApplication::style()), nullptr);
    for (const QPalette& palette : {QApplication::palette(), darkPalette()}) {
        LogbookDialog logbook(LogbookForm(session->days()), *notifier, nullptr);
        logbook.setPalette(palette);
        logbook.show();
        logbook.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&logbook));
        QPushButton* date = nullptr;
        for (QPushButton* b : logbook.findChildren<QPushButton*>()) {
            if (b->accessibleName().endsWith(QStringLiteral(", Go to Date"))) {
                date = b;
            }
        }
        ASSERT_NE(date, nullptr);
        ASSERT_FALSE(date->hasFocus());
        EXPECT_GT(ringPixels(date, [date] { date->setFocus(Qt::OtherFocusReason); }),
                  2 * (date->width() + date->height()));

        FindFoodDialog find(
            FindFoodForm(session->catalogue(), session->foodRunState().finder, "apple"), nullptr);
        find.setPalette(palette);
        find.show();
        find.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&find));
        QListWidget* list = find.results();
        ASSERT_GT(list->count(), 1);
        find.findChild<QLineEdit*>()->setFocus();
        ASSERT_FALSE(list->hasFocus());
        ASSERT_NE(list->currentItem(), nullptr);
        EXPECT_GT(ringPixels(list->viewport(), [list] { list->setFocus(Qt::OtherFocusReason); }),
                  2 * list->visualItemRect(list->currentItem()).width());
    }
}

}  // namespace
}  // namespace nutrovex
