#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>

#include "ui/AccessibleTree.h"
#include "ui/DemoSession.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/FrameTour.h"
#include "ui/logbook/FoodBudgetDialogs.h"

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

// The food budget page paints its text; a reader gets every heading and every row with its label.
TEST_F(AccessibleScreens, ThePaintedFoodBudgetPageIsReadLineByLine) {
    FoodBudgetDialog screen(FoodBudgetForm(session->days()), *notifier, nullptr);
    screen.show();
    QAccessibleInterface* page = QAccessible::queryAccessibleInterface(screen.page());
    ASSERT_NE(page, nullptr);
    QStringList read;
    for (int i = 0; i < page->childCount(); ++i) {
        read << page->child(i)->text(QAccessible::Name);
    }
    const std::vector<BudgetSection>& sections = screen.page()->sections();
    ASSERT_EQ(sections.size(), 6u);
    EXPECT_TRUE(read.contains(QStringLiteral("Measured")));
    const BudgetRow& maintenance = sections[5].rows.at(0);
    EXPECT_TRUE(read.contains(QStringLiteral("Maintenance (28 days): ") +
                              QString::fromStdString(maintenance.value)))
        << read.join(u'|').toStdString();
    int rows = 0;
    for (const BudgetSection& s : sections) {
        rows += 1 + static_cast<int>(s.rows.size());
    }
    EXPECT_EQ(read.size(), rows);
}

}  // namespace
}  // namespace nutrovex
