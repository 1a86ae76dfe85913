#include <gtest/gtest.h>

#include <QAccessible>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <tuple>

#include "ui/Screenshot.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/controls/MonthGrid.h"

namespace nutrovex {
namespace {

QPoint centreOf(const MonthGrid& grid, GridCell cell) {
    const GridRect r = grid.grid().cellRect(cell.row, cell.column);
    return {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
}

class CalendarPicker : public ::testing::Test {
protected:
    FixedClock clock{CalendarDate::fromDmy(25, 9, 2002)};
    CalendarPickerDialog dialog{clock};
    MonthGrid& month = *dialog.monthGrid();

    void SetUp() override {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    void tap(GridCell cell) {
        QTest::mouseClick(month.viewport(), Qt::LeftButton, {}, centreOf(month, cell));
    }
};

TEST_F(CalendarPicker, TappingADaySelectsItAndEmptyCellsDoNothing) {
    dialog.setDate(2002, 8, 10);
    QSignalSpy spy(&month, &MonthGrid::daySelected);
    tap(month.calendar().cellOfDay(25));
    EXPECT_EQ(dialog.day(), 25);
    EXPECT_EQ(dialog.weekday(), 3);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.last().at(0).toInt(), 2002);
    EXPECT_EQ(spy.last().at(1).toInt(), 8);
    EXPECT_EQ(spy.last().at(2).toInt(), 25);

    tap({6, 2});  // after the 30th
    tap({1, 4});  // a weekday initial
    EXPECT_EQ(dialog.day(), 25);
    EXPECT_EQ(month.grid().current(), month.calendar().cellOfDay(25));
    EXPECT_EQ(spy.count(), 1);

    // Keys move like taps.
    QTest::keyClick(&month, Qt::Key_Right);
    EXPECT_EQ(dialog.day(), 26);
    QTest::keyClick(&month, Qt::Key_Up);
    EXPECT_EQ(dialog.day(), 19);
    EXPECT_EQ(spy.count(), 3);
}

// From the keyboard alone every date is reached: the arrows cross the month's edges, Page Up and
// Page Down step a month, Enter picks and Escape cancels.
TEST_F(CalendarPicker, TheKeysReachADateInAnotherMonthAndPickIt) {
    dialog.setDate(2002, 8, 26);
    month.setFocus();
    QSignalSpy back(&month, &MonthGrid::previousMonthShown);
    QTest::keyClick(&month, Qt::Key_Down);  // a week on: 3 October
    EXPECT_EQ(std::tuple(dialog.year(), dialog.month(), dialog.day()), std::tuple(2002, 9, 3));
    QTest::keyClick(&month, Qt::Key_Up);
    QTest::keyClick(&month, Qt::Key_PageUp);  // 26 August
    EXPECT_EQ(back.count(), 2);
    QTest::keyClick(&month, Qt::Key_Home);
    QTest::keyClick(&month, Qt::Key_Left);  // 31 July
    EXPECT_EQ(std::tuple(dialog.year(), dialog.month(), dialog.day()), std::tuple(2002, 6, 31));
    EXPECT_EQ(month.grid().current(), month.calendar().cellOfDay(31));
    QTest::keyClick(&month, Qt::Key_PageDown);
    QTest::keyClick(&month, Qt::Key_End);
    EXPECT_EQ(std::tuple(dialog.month(), dialog.day()), std::tuple(7, 31));
    // The month is the grid's name; the days are named in full under their weekdays.
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(&month);
    EXPECT_EQ(iface->text(QAccessible::Name), QStringLiteral("August 2002, Calendar"));
    QAccessibleTableInterface* table = iface->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), MonthCalendar::kWeekRows);
    EXPECT_EQ(table->columnDescription(6), QStringLiteral("Saturday"));
    const GridCell last = month.calendar().cellOfDay(31);
    QAccessibleInterface* day = table->cellAt(last.row - MonthCalendar::kFirstWeekRow, last.column);
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->text(QAccessible::Name), QStringLiteral("August 31, 2002"));
    EXPECT_TRUE(day->state().selected);
    EXPECT_TRUE(day->state().focused);
    EXPECT_EQ(iface->focusChild(), day);
    EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name), QString());  // before the 1st
    EXPECT_FALSE(table->selectRow(1));

    QTest::keyClick(&month, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(std::tuple(dialog.month(), dialog.day()), std::tuple(7, 31));
}

TEST_F(CalendarPicker, EscapeCancels) {
    month.setFocus();
    QTest::keyClick(&month, Qt::Key_PageUp);
    QTest::keyClick(&month, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(CalendarPicker, TheTitleStepsMonthsOnItsOuterColumns) {
    dialog.setDate(2002, 2, 31);
    QSignalSpy back(&month, &MonthGrid::previousMonthShown);
    tap({0, 1});
    EXPECT_EQ(dialog.month(), 1);
    EXPECT_EQ(dialog.day(), 28);
    EXPECT_EQ(month.grid().current(), month.calendar().cellOfDay(28));
    EXPECT_EQ(back.count(), 1);
    tap({0, 3});
    EXPECT_EQ(dialog.month(), 1);
    dialog.setDate(2002, 11, 5);
    tap({0, 6});
    EXPECT_EQ(month.calendar().title(), "January 2003");
    month.setCanGoForward(false);
    tap({0, 5});
    EXPECT_EQ(dialog.month(), 0);
}

TEST_F(CalendarPicker, OkAcceptsAndTheCaptionBecomesTheTitle) {
    const QString standard = dialog.windowTitle();
    dialog.setCaption(QString());
    EXPECT_EQ(dialog.windowTitle(), standard);
    dialog.setCaption(QStringLiteral("Start Date"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Start Date"));
    EXPECT_EQ(dialog.okButton()->text(), QStringLiteral("OK"));
    EXPECT_EQ(dialog.cancelButton()->text(), QStringLiteral("Cancel"));

    tap(month.calendar().cellOfDay(12));
    test::saveScreenshot(dialog, QStringLiteral("calendar-picker"));
    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.year(), 2002);
    EXPECT_EQ(dialog.month(), 8);
    EXPECT_EQ(dialog.day(), 12);
}

TEST_F(CalendarPicker, CancelRejects) {
    QTest::mouseClick(dialog.cancelButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

}  // namespace
}  // namespace nutrovex
