#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <sstream>

#include "data/ShippedCatalogue.h"
#include "tool/DemoLogbook.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/FrameTour.h"
#include "ui/logbook/ActivityDialog.h"
#include "ui/logbook/DayRangeDialog.h"
#include "ui/logbook/FoodBudgetDialogs.h"
#include "ui/logbook/JournalDialog.h"
#include "ui/logbook/LogbookData.h"
#include "ui/logbook/LogbookDialog.h"
#include "ui/logbook/SummaryTableDialog.h"
#include "ui/logbook/WeighInDialog.h"

namespace nutrovex {
namespace {

class DayScreensTest : public test::LogbookScreens {
protected:
    // One of the logbook's screens, made as the logbook makes it.
    template <typename Screen>
    std::unique_ptr<Screen> show(ScreenMaker LogbookOpeners::*which) {
        auto screen = std::unique_ptr<Screen>(qobject_cast<Screen*>((screens().*which)(nullptr)));
        EXPECT_NE(screen, nullptr);
        screen->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(screen.get()));
        return screen;
    }

    // Six weeks up to today: a weigh-in most mornings, meals and some exercise.
    void fillSixWeeks() {
        setLosingGoal();
        CalendarDate date = CalendarDate::fromDmy(11, 10, 2002);
        for (int i = 0; i < 42; ++i) {
            const float pounds = i % 5 == 3 ? -1.0f : 201.0f - 0.2f * static_cast<float>(i);
            DayRecord& day = addDay(date.day, date.month, date.year, pounds,
                                    1700.0f + static_cast<float>((i * 137) % 600),
                                    i % 3 == 0 ? static_cast<uint16_t>(250 + i) : 0);
            day.setWater(static_cast<uint16_t>(i % 9));
            date = steppedDate(date, 1);
        }
        session.store().dayAt(41).setNote("Walked to the market.\r\nSlept well.");
        (void)session.days().setCurrentDate(session.clock().now());
    }
};

TEST_F(DayScreensTest, TheJournalKeepsANoteOnlyForADayAndAppendsLinesAtTheEnd) {
    auto empty = show<JournalDialog>(&LogbookOpeners::journal);
    EXPECT_EQ(empty->editor()->toPlainText(), QStringLiteral("Enter daily notes here."));
    QTest::keyClicks(empty->editor(), QStringLiteral("lost"));
    EXPECT_TRUE(session.store().days().empty());
    EXPECT_FALSE(session.userDataModified());
    empty.reset();

    addDay(21, 11, 2002, 180.0f).setNote("Ran");
    auto journal = show<JournalDialog>(&LogbookOpeners::journal);
    EXPECT_EQ(journal->editor()->toPlainText(), QStringLiteral("Ran"));
    // Enter with the caret at the start still starts a new line at the end.
    journal->editor()->moveCursor(QTextCursor::Start);
    QTest::keyClick(journal->editor(), Qt::Key_Return);
    QTest::keyClicks(journal->editor(), QStringLiteral("Ate"));
    EXPECT_EQ(session.days().currentRecord()->note(), "Ran\r\nAte");
    EXPECT_TRUE(session.userDataModified());
    // Cancel undoes nothing, and the note is saved as the screen closes.
    QTest::mouseClick(journal->cancelButton(), Qt::LeftButton);
    EXPECT_EQ(session.days().currentRecord()->note(), "Ran\r\nAte");
    EXPECT_FALSE(session.userDataModified());
}

TEST_F(DayScreensTest, AGainGoalLeavesTheBudgetAskingForAWeight) {
    addDay(21, 11, 2002, 180.0f, 1800.0f, 300);
    setGainingGoal();
    auto box = show<FoodBudgetBoxDialog>(&LogbookOpeners::foodBudgetBox);
    EXPECT_EQ(box->budgetText(),
              QStringLiteral("To achieve the goals you have set, your food budget "
                             "is:  (Weight required for BMR)."));
    EXPECT_TRUE(box->goalText().startsWith(QStringLiteral("To gain 10 lbs in 70 days")));
    auto page = show<FoodBudgetDialog>(&LogbookOpeners::foodBudget);
    const auto& sections = page->page()->sections();
    ASSERT_GE(sections.size(), 5u);
    EXPECT_EQ(sections[1].rows[1], (BudgetRow{"Food budget:", "(Weight required for BMR)."}));

    // A losing goal shows the figure, and both screens follow a change made elsewhere.
    setLosingGoal();
    notifier.apply(Notices{.dataChanged = true});
    // BMR 2234 + exercise 300 - goal 1000.
    EXPECT_EQ(box->budgetText(),
              QStringLiteral("To achieve the goals you have set, your food budget "
                             "is:  1534 calories."));
    EXPECT_EQ(page->page()->sections()[1].rows[1], (BudgetRow{"Food budget:", "1534 cal"}));
    EXPECT_GT(page->page()->contentHeight(), 0);
}

TEST_F(DayScreensTest, TheSummaryTableListsEveryDayAndHighlightsTheCurrentOne) {
    fillSixWeeks();
    (void)session.days().setCurrentDate(CalendarDate::fromDmy(20, 11, 2002));
    auto screen = show<SummaryTableDialog>(&LogbookOpeners::summaryTable);
    SummaryTableGrid* table = screen->table();
    EXPECT_EQ(table->grid().rowCount(), 43);
    EXPECT_EQ(table->text(0, 0), QStringLiteral("Date"));
    EXPECT_EQ(table->text(0, 6), QStringLiteral("SFat"));
    EXPECT_EQ(table->text(1, 0), QStringLiteral("10/11"));
    EXPECT_EQ(table->text(41, 0), QStringLiteral("11/20"));
    EXPECT_EQ(table->currentDayRow(), 41);
    // The current day's row is scrolled into view and painted highlighted.
    const GridRect cell = table->grid().cellRect(41, 3);
    const QRect row(cell.left, cell.top, cell.width(), cell.height());
    ASSERT_TRUE(table->viewport()->rect().contains(row.center()));
    const QImage picture = table->viewport()->grab().toImage();
    EXPECT_EQ(QColor(picture.pixel(row.left() + 2, row.center().y())),
              table->palette().color(QPalette::Highlight));

    // The grid paints the whole of its viewport, whatever resized it last.
    EXPECT_EQ(table->grid().clientHeight(), table->viewport()->height());
    EXPECT_EQ(table->grid().clientWidth(), table->viewport()->width());
    // Home and the arrows scroll through it from the keyboard.
    QTest::keyClick(table, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(table->grid().scrollPosition(Orientation::Vertical), 0);
    QTest::keyClick(table, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(table->grid().scrollPosition(Orientation::Vertical),
              table->grid().scrollLimit(Orientation::Vertical));
}

// With targets set, the summary table puts a dot beside the date of each day that met them and
// says so under the grid.
TEST_F(DayScreensTest, TargetsMarkTheDaysOfTheSummaryTableThatMetThem) {
    setLosingGoal();
    addDay(19, 11, 2002, 180.0f, 1800.0f);  // 60 g of protein
    addDay(20, 11, 2002, 180.0f, 1200.0f);  // 40 g
    auto screen = show<SummaryTableDialog>(&LogbookOpeners::summaryTable);
    SummaryTableGrid* table = screen->table();
    EXPECT_FALSE(screen->legend()->isVisible());  // no targets: no marks

    session.targets().of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Grams, 60.0};
    notifier.apply(Notices{.dataChanged = true});
    EXPECT_TRUE(screen->legend()->isVisible());
    EXPECT_TRUE(table->markedWithinTargets(1));
    EXPECT_FALSE(table->markedWithinTargets(2));
    // The dot is painted at the left of the marked date only.
    const QImage picture = table->viewport()->grab().toImage();
    const auto inkAtLeft = [&](int row) {
        const GridRect cell = table->grid().cellRect(row, 0);
        const QColor background = QColor(picture.pixel(cell.left + 1, cell.top + 1));
        int ink = 0;
        for (int x = cell.left + 3; x < cell.left + 9; ++x) {
            for (int y = cell.top + 2; y < cell.top + cell.height() - 2; ++y) {
                ink += QColor(picture.pixel(x, y)) != background ? 1 : 0;
            }
        }
        return ink;
    };
    EXPECT_GT(inkAtLeft(1), 4);
    EXPECT_EQ(inkAtLeft(2), 0);
}

// Tab walks every control of a screen, each named for assistive technology, and comes back.
void expectTabWalk(QWidget& screen, int expectedStops) {
    QWidget* start = QApplication::focusWidget();
    ASSERT_NE(start, nullptr) << screen.windowTitle().toStdString();
    QSet<QWidget*> seen;
    QWidget* at = start;
    for (int i = 0; i < 40; ++i) {
        EXPECT_FALSE(at->accessibleName().isEmpty())
            << screen.windowTitle().toStdString() << ": " << at->metaObject()->className();
        seen.insert(at);
        QTest::keyClick(at, Qt::Key_Tab);
        at = QApplication::focusWidget();
        if (at == start) {
            break;
        }
    }
    EXPECT_EQ(at, start) << screen.windowTitle().toStdString();
    QStringList where;
    for (QWidget* w : seen) {
        where << QString::fromLatin1(w->metaObject()->className()) + QLatin1Char('/') +
                     w->window()->windowTitle();
    }
    EXPECT_EQ(seen.size(), expectedStops)
        << screen.windowTitle().toStdString() << " " << where.join(QLatin1Char(' ')).toStdString();
}

// Presses Alt+menu, then the entries' mnemonics.
void menuKeys(QWidget& screen, Qt::Key menu, std::initializer_list<Qt::Key> entries) {
    QTest::keyClick(&screen, menu, Qt::AltModifier);
    for (Qt::Key key : entries) {
        (void)QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; });
        QWidget* popup = QApplication::activePopupWidget();
        ASSERT_NE(popup, nullptr) << "no menu open for "
                                  << QKeySequence(key).toString().toStdString();
        QTest::keyClick(popup, key);
    }
}

TEST_F(DayScreensTest, EveryScreenIsReachedUsedAndLeftWithTheKeyboard) {
    fillSixWeeks();
    LogbookDialog logbook(LogbookForm(session.days()), notifier, nullptr, screens());
    logbook.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&logbook));
    // OK, the arrows, the date, four buttons (Meals and Exercise disabled here), the water and
    // the strip of screens.
    expectTabWalk(logbook, 8);

    // The screen on top, once the event loop has opened it: a button's mnemonic clicks it the
    // way a tap would, with the press shown first.
    const auto top = [&logbook] {
        (void)QTest::qWaitFor([&logbook] { return QApplication::activeModalWidget() != &logbook; });
        auto* screen = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (screen != nullptr && screen != &logbook) {
            screen->activateWindow();
            EXPECT_TRUE(
                QTest::qWaitFor([screen] { return QApplication::activeWindow() == screen; }));
        }
        return screen;
    };
    // Escape acts as OK (Cancel on the range of days), and the logbook is in front again.
    const auto leave = [&logbook](QDialog* screen) {
        QTest::keyClick(screen, Qt::Key_Escape);
        EXPECT_FALSE(screen->isVisible());
        logbook.activateWindow();
        EXPECT_TRUE(
            QTest::qWaitFor([&logbook] { return QApplication::activeWindow() == &logbook; }));
    };

    // Weigh in with Alt+W, type, leave with Escape.
    QTest::keyClick(&logbook, Qt::Key_W, Qt::AltModifier);
    auto* weighIn = qobject_cast<WeighInDialog*>(top());
    ASSERT_NE(weighIn, nullptr);
    expectTabWalk(*weighIn, 2);
    weighIn->weightEdit()->setFocus();
    weighIn->weightEdit()->selectAll();
    QTest::keyClicks(weighIn->weightEdit(), QStringLiteral("190"));
    leave(weighIn);
    EXPECT_EQ(logbook.figureText(LogbookDialog::Figure::Weight), QStringLiteral("190  lbs"));

    // The BMR screen: Tab to a level, choose it with Space.
    QTest::keyClick(&logbook, Qt::Key_B, Qt::AltModifier);
    auto* activity = qobject_cast<ActivityDialog*>(top());
    ASSERT_NE(activity, nullptr);
    activity->levelButton(3)->setFocus();
    QTest::keyClick(activity->levelButton(3), Qt::Key_Space);
    EXPECT_EQ(session.days().currentRecord()->level(), 3);
    expectTabWalk(*activity, 3);  // OK, the checked level, Set as Daily Default
    leave(activity);

    // The menus: journal, budget page and box, summary table, range of days.
    menuKeys(logbook, Qt::Key_O, {Qt::Key_J});
    auto* journal = qobject_cast<JournalDialog*>(top());
    ASSERT_NE(journal, nullptr);
    expectTabWalk(*journal, 3);
    journal->editor()->setFocus();
    QTest::keyClicks(journal->editor(), QStringLiteral(" Tired."));
    leave(journal);
    EXPECT_EQ(session.days().currentRecord()->note(),
              "Walked to the market.\r\nSlept well. Tired.");

    for (const Qt::Key key : {Qt::Key_B, Qt::Key_X, Qt::Key_S}) {
        menuKeys(logbook, Qt::Key_O, {key});
        QDialog* screen = top();
        ASSERT_NE(screen, nullptr);
        EXPECT_NE(screen, &logbook);
        expectTabWalk(*screen, key == Qt::Key_X ? 1 : 2);
        leave(screen);
    }

    menuKeys(logbook, Qt::Key_R, {Qt::Key_D, Qt::Key_R});
    auto* range = qobject_cast<DayRangeDialog*>(top());
    ASSERT_NE(range, nullptr);
    expectTabWalk(*range, 4);
    leave(range);  // Cancel: nothing deleted
    EXPECT_EQ(session.store().days().size(), 42u);
}

// The program's tour on the demo user, as `nutrovex --tour` takes it: every screen opens on its
// data and is saved at the default size, at twice the pixel density and in a dark palette.
TEST(Tour, EveryScreenOpensOnTheDemoUser) {
    test::TempDir root;
    FixedClock clock{CalendarDate::fromDmy(21, 11, 2002)};
    std::ostringstream said;
    std::ostringstream err;
    const std::vector<std::string> args;
    ASSERT_EQ(tool::makeDemo(tool::GlobalOptions{root.path().string()}, args, said, err, clock,
                             shippedCatalogue()),
              tool::kExitOk)
        << err.str();
    MemorySettings settings;
    Session session(root.path(), clock, settings, shippedCatalogue());
    std::string reason;
    ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
    (void)session.initialLoad();
    ASSERT_TRUE(session.switchUser(tool::kDemoUserName).ok());
    SessionNotifier notifier(session);

    // Four months of days make a valid measurement, and a plausible one.
    FoodBudgetDialog budget(FoodBudgetForm(session.days()), notifier, nullptr);
    const std::vector<BudgetSection>& sections = budget.page()->sections();
    ASSERT_EQ(sections.size(), 6u);
    EXPECT_EQ(sections[5].heading, "Measured");
    ASSERT_FALSE(sections[5].rows.empty());
    EXPECT_EQ(sections[5].rows[0].label, "Maintenance (28 days):");
    const int maintenance = std::stoi(sections[5].rows[0].value);
    EXPECT_GT(maintenance, 1500);
    EXPECT_LT(maintenance, 3500);

    QTemporaryDir temp;
    ASSERT_TRUE(temp.isValid());
    // NUTROVEX_SCREENSHOT_DIR keeps the pictures for a person to look at.
    const QString keep = qEnvironmentVariable("NUTROVEX_SCREENSHOT_DIR");
    const QDir out(keep.isEmpty() ? temp.path() : keep);
    CMainFrame frame(MainFrameForm(session), notifier, FrameOpeners{});
    frame.show();
    const std::vector<TourStop> stops = allTourStops(session, notifier);
    const QStringList failures = runTour(out.path(), stops, &frame);
    EXPECT_TRUE(failures.isEmpty()) << failures.join(u'\n').toStdString();
    EXPECT_GT(stops.size(), 30u);
    for (const TourStop& s : stops) {
        const QImage normal(out.filePath(s.name + QStringLiteral(".png")));
        const QImage twice(out.filePath(s.name + QStringLiteral("@2x.png")));
        const QImage dark(out.filePath(QStringLiteral("dark/") + s.name + QStringLiteral(".png")));
        EXPECT_EQ(dark.size(), normal.size()) << s.name.toStdString();
        // The date picker keeps its own small size over the screen that opens it.
        if (s.name == QStringLiteral("calendar-picker")) {
            EXPECT_FALSE(normal.isNull() || twice.isNull());
            continue;
        }
        EXPECT_EQ(normal.size(), QSize(kDefaultWindowWidth, kDefaultWindowHeight))
            << s.name.toStdString();
        EXPECT_EQ(twice.size(), 2 * normal.size()) << s.name.toStdString();
    }
}

}  // namespace
}  // namespace nutrovex
