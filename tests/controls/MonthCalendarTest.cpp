#include <gtest/gtest.h>

#include "controls/MonthCalendar.h"

namespace nutrovex {
namespace {

FixedClock clockAt(int day, int month, int year) {
    return FixedClock(CalendarDate::fromDmy(day, month, year));
}

// Months count from 0 here; a day the shown month lacks is cut to its last day.
TEST(MonthCalendar, MonthsCountFromZeroAndDaysAreCutToTheMonth) {
    EXPECT_EQ(MonthCalendar::daysInMonth(0, 2002), 31);
    EXPECT_EQ(MonthCalendar::daysInMonth(1, 2000), 29);
    EXPECT_EQ(MonthCalendar::daysInMonth(1, 1900), 28);
    EXPECT_EQ(MonthCalendar::daysInMonth(3, 2002), 30);

    const FixedClock clock = clockAt(1, 1, 2002);
    MonthCalendar cal(clock);
    cal.setDate(2000, 1, 29);
    EXPECT_EQ(cal.day(), 29);
    cal.setDate(1900, 1, 29);
    EXPECT_EQ(cal.day(), 28);
}

// The month grid's weekday formula agrees with the logbook's own date arithmetic on every day
// the packed dates can hold.
TEST(MonthCalendar, WeekdaysAgreeWithTheDateArithmetic) {
    const FixedClock clock = clockAt(1, 1, 2002);
    MonthCalendar cal(clock);
    for (int32_t year = 1904; year <= 2031; ++year) {
        for (int32_t month = 0; month < 12; ++month) {
            cal.setDate(year, month, 1);
            for (int32_t day = 1; day <= cal.daysInShownMonth(); ++day) {
                const CalendarDate d = CalendarDate::fromDmy(day, month + 1, year);
                ASSERT_EQ(cal.weekdayOf(day), d.weekday) << day << "/" << month + 1 << "/" << year;
                // Every day sits in its weekday's column, and the cell gives the day back.
                const GridCell cell = cal.cellOfDay(day);
                ASSERT_EQ(cell.column, d.weekday);
                ASSERT_EQ(cal.dayInCell(cell.row, cell.column), day);
                ASSERT_GE(cell.row, MonthCalendar::kFirstWeekRow);
                ASSERT_LT(cell.row, MonthCalendar::kRows);
            }
        }
    }
}

TEST(MonthCalendar, TheFirstWeekRowStartsOnSunday) {
    const FixedClock clock = clockAt(1, 1, 2002);
    MonthCalendar cal(clock);
    cal.setDate(2002, 8, 1);  // 1 September 2002 was a Sunday
    EXPECT_EQ(cal.shift(), -1);
    EXPECT_EQ(cal.cellOfDay(1), (GridCell{2, 0}));
    EXPECT_EQ(cal.cellOfDay(30), (GridCell{6, 1}));
    EXPECT_EQ(cal.dayInCell(6, 2), 0);

    cal.setDate(2002, 5, 1);  // 1 June 2002 was a Saturday: six empty cells before it
    for (int32_t column = 0; column < 6; ++column) {
        EXPECT_EQ(cal.dayInCell(2, column), 0) << column;
    }
    EXPECT_EQ(cal.dayInCell(2, 6), 1);
    EXPECT_EQ(cal.cellOfDay(30), (GridCell{7, 0}));  // the sixth week row is needed

    // Title and initials rows hold no days.
    EXPECT_EQ(cal.dayInCell(0, 3), 0);
    EXPECT_EQ(cal.dayInCell(1, 6), 0);
}

TEST(MonthCalendar, SteppingMonthsWrapsYearsAndReducesTheDay) {
    const FixedClock clock = clockAt(1, 1, 2002);
    MonthCalendar cal(clock);
    cal.setDate(2002, 2, 31);
    cal.previousMonth();
    EXPECT_EQ(cal.month(), 1);
    EXPECT_EQ(cal.day(), 28);
    cal.setDate(2004, 2, 31);
    cal.previousMonth();
    EXPECT_EQ(cal.day(), 29);
    cal.nextMonth();
    EXPECT_EQ(cal.day(), 29);  // a reduced day stays reduced

    cal.setDate(2002, 11, 15);
    EXPECT_EQ(cal.title(), "December 2002");
    cal.nextMonth();
    EXPECT_EQ(cal.title(), "January 2003");
    EXPECT_EQ(cal.day(), 15);
    cal.previousMonth();
    EXPECT_EQ(cal.title(), "December 2002");
}

TEST(MonthCalendar, TodayIsMarkedOnlyInItsOwnMonth) {
    const FixedClock clock = clockAt(25, 9, 2002);
    MonthCalendar cal(clock);
    EXPECT_EQ(cal.year(), 2002);
    EXPECT_EQ(cal.month(), 8);
    EXPECT_EQ(cal.day(), 25);
    ASSERT_TRUE(cal.todayCell().has_value());
    EXPECT_EQ(*cal.todayCell(), (GridCell{5, 3}));  // a Wednesday in the fourth week
    EXPECT_EQ(cal.selectedCell(), *cal.todayCell());
    cal.nextMonth();
    EXPECT_FALSE(cal.todayCell().has_value());
    cal.setDate(2003, 8, 1);
    EXPECT_FALSE(cal.todayCell().has_value());
}

TEST(MonthCalendar, SelectingADayOutsideTheMonthIsRefused) {
    const FixedClock clock = clockAt(10, 2, 2002);
    MonthCalendar cal(clock);
    EXPECT_FALSE(cal.selectDay(29));
    EXPECT_FALSE(cal.selectDay(0));
    EXPECT_EQ(cal.day(), 10);
    EXPECT_TRUE(cal.selectDay(28));
    EXPECT_EQ(cal.day(), 28);
}

TEST(MonthCalendar, TitleTapsStepOnTheOuterColumnsOnly) {
    using A = MonthCalendar::TitleAction;
    const A expected[] = {A::Previous, A::Previous, A::None, A::None, A::None, A::Next, A::Next};
    for (int32_t column = 0; column < 7; ++column) {
        EXPECT_EQ(MonthCalendar::titleAction(column), expected[column]) << column;
    }
}

// Keys walk the days across the month's edges: a day, a week, and over the year's end.
TEST(MonthCalendar, MovingByDaysCrossesMonthsAndYears) {
    const FixedClock clock = clockAt(1, 1, 2002);
    MonthCalendar cal(clock);
    struct Case {
        int year, month, day, by;
        int wantYear, wantMonth, wantDay;
    };
    const Case cases[] = {
        {2026, 10, 1, -1, 2026, 9, 31},  // 1 November, back a day
        {2026, 10, 30, 1, 2026, 11, 1},  // 30 November, on a day
        {2026, 10, 3, -7, 2026, 9, 27},  // a week back over the edge
        {2026, 11, 28, 7, 2027, 0, 4},   // a week on over the year's end
        {2024, 2, 1, -1, 2024, 1, 29},   // into a leap February
        {2026, 0, 15, -400, 2024, 11, 11}, {2026, 5, 15, 0, 2026, 5, 15},
    };
    for (const Case& c : cases) {
        cal.setDate(c.year, c.month, c.day);
        ASSERT_TRUE(cal.moveDays(c.by)) << c.day << '/' << c.month << " by " << c.by;
        EXPECT_EQ(cal.year(), c.wantYear) << c.day << '/' << c.month << " by " << c.by;
        EXPECT_EQ(cal.month(), c.wantMonth) << c.day << '/' << c.month << " by " << c.by;
        EXPECT_EQ(cal.day(), c.wantDay) << c.day << '/' << c.month << " by " << c.by;
    }
    EXPECT_EQ(cal.dayName(25), "June 25, 2026");

    // A step the owner does not allow leaves the day where it was; moves inside the month stay.
    cal.setDate(2026, 10, 2);
    cal.setCanGoBack(false);
    EXPECT_FALSE(cal.moveDays(-2));
    EXPECT_EQ(cal.day(), 2);
    EXPECT_TRUE(cal.moveDays(-1));
    EXPECT_EQ(cal.day(), 1);
    cal.setDate(2026, 10, 29);
    cal.setCanGoForward(false);
    EXPECT_FALSE(cal.moveDays(7));
    EXPECT_EQ(cal.month(), 10);
}

}  // namespace
}  // namespace nutrovex
