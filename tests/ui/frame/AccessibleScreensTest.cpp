#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "ui/AccessibleTree.h"
#include "ui/DemoSession.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/FrameTour.h"

namespace nutrovex {
namespace {

using AccessibleScreens = test::DemoSession;

// Every screen of the program on the demo user, as a reader walks it: each control it can reach
// has a name, every button and label is named with what it shows, and one part has the focus.
TEST_F(AccessibleScreens, EveryControlIsNamedWithWhatItShowsAndOneHasTheFocus) {
    CMainFrame frame(MainFrameForm(*session), *notifier, FrameOpeners{});
    frame.show();
    const std::vector<TourStop> stops = allTourStops(*session, *notifier);
    ASSERT_GT(stops.size(), 30u);
    for (const TourStop& stop : stops) {
        std::unique_ptr<QWidget> screen = stop.open(&frame);
        ASSERT_NE(screen, nullptr) << stop.name.toStdString();
        screen->resize(kDefaultWindowWidth, kDefaultWindowHeight);
        screen->show();
        screen->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get())) << stop.name.toStdString();
        const QStringList faults = test::accessibilityFaults(screen.get());
        EXPECT_TRUE(faults.isEmpty()) << stop.name.toStdString() << ":\n  "
                                      << faults.join(QStringLiteral("\n  ")).toStdString();
        screen->hide();
    }
}

}  // namespace
}  // namespace nutrovex
