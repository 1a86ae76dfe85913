#include <gtest/gtest.h>

#include <array>
#include <string>

#include "core/CalendarDate.h"

namespace nutrovex {
namespace {

CalendarDate dmy(int d, int m, int y) {
    CalendarDate date;
    date.day = static_cast<int16_t>(d);
    date.month = static_cast<int16_t>(m);
    date.year = static_cast<int16_t>(y);
    return date;
}

struct StepCase {
    CalendarDate from;
    int n;
    CalendarDate to;
};

TEST(CalendarDate, StepsAcrossMonthsYearsAndLeapDays) {
    const StepCase cases[] = {
        {dmy(28, 2, 2000), 1, dmy(29, 2, 2000)},  // 2000 is a leap year
        {dmy(29, 2, 2000), 1, dmy(1, 3, 2000)},     {dmy(28, 2, 2001), 1, dmy(1, 3, 2001)},
        {dmy(1, 3, 2004), -1, dmy(29, 2, 2004)},    {dmy(1, 3, 2003), -1, dmy(28, 2, 2003)},
        {dmy(30, 4, 2002), 1, dmy(1, 5, 2002)},     {dmy(31, 1, 2002), 1, dmy(1, 2, 2002)},
        {dmy(31, 12, 2002), 1, dmy(1, 1, 2003)},    {dmy(1, 1, 2003), -1, dmy(31, 12, 2002)},
        {dmy(1, 5, 2002), -1, dmy(30, 4, 2002)},    {dmy(1, 8, 2002), -1, dmy(31, 7, 2002)},
        {dmy(31, 12, 2031), 1, dmy(1, 1, 1904)},  // the 7-bit year wraps
        {dmy(1, 1, 1904), -1, dmy(31, 12, 2031)},   {dmy(25, 9, 2002), 365, dmy(25, 9, 2003)},
        {dmy(25, 9, 2003), -365, dmy(25, 9, 2002)}, {dmy(1, 1, 2004), 366, dmy(1, 1, 2005)},
        {dmy(15, 0, 2002), 40, dmy(15, 0, 2002)},  // month 0 never moves forward
        {dmy(1, 0, 2002), -3, dmy(1, 0, 2002)},    // nor back from its first day
        {dmy(20, 0, 2002), -3, dmy(17, 0, 2002)},  // but a later day steps down, whatever the month
        {dmy(5, 13, 2002), 2, dmy(5, 13, 2002)},
    };
    for (const StepCase& c : cases) {
        CalendarDate source = c.from;
        source.hour = 7;
        source.weekday = 4;
        CalendarDate result;
        stepDate(result, source, c.n);
        EXPECT_EQ(result.day, c.to.day)
            << c.from.day << "/" << c.from.month << "/" << c.from.year << " + " << c.n;
        EXPECT_EQ(result.month, c.to.month);
        EXPECT_EQ(result.year, c.to.year);
        // The source moves too, and neither the clock parts nor the weekday are touched.
        EXPECT_EQ(source.day, c.to.day);
        EXPECT_EQ(result.hour, 7);
        EXPECT_EQ(result.weekday, 4);
    }
}

TEST(CalendarDate, StepOfZeroOnlyCopies) {
    CalendarDate source = dmy(3, 5, 2002);
    source.minute = 12;
    CalendarDate result = dmy(1, 1, 1999);
    stepDate(result, source, 0);
    EXPECT_EQ(result.day, 3);
    EXPECT_EQ(result.minute, 12);
}

TEST(CalendarDate, PackedFormWrapsYearsIntoSevenBits) {
    EXPECT_EQ(packDate(dmy(25, 9, 2002)), (25 << 11) | (9 << 7) | 98);
    CalendarDate back;
    unpackDate(packDate(dmy(25, 9, 2002)), back);
    EXPECT_EQ(back.year, 2002);
    unpackDate(packDate(dmy(1, 1, 2032)), back);
    EXPECT_EQ(back.year, 1904);
    unpackDate(packDate(dmy(1, 1, 1903)), back);
    EXPECT_EQ(back.year, 2031);
}

TEST(CalendarDate, LeapYears) {
    const std::pair<int, bool> years[] = {{2000, true}, {2001, false}, {2004, true},
                                          {1904, true}, {2031, false}, {2028, true}};
    for (const auto& [year, leap] : years) {
        EXPECT_EQ(isLeapYear(packDate(dmy(1, 1, year))), leap) << year;
    }
}

TEST(CalendarDate, MonthLengthsFollowTheLeapRule) {
    const struct {
        int month;
        int32_t year;
        int days;
    } cases[] = {
        {2, 2000, 29}, {2, 1900, 28}, {2, 2100, 28},  {2, 2004, 29}, {2, 2002, 28},
        {1, 2002, 31}, {4, 2002, 30}, {12, 2002, 31}, {0, 2002, 0},  {13, 2002, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(daysInMonth(c.month, c.year), c.days) << c.month << "/" << c.year;
    }
}

TEST(CalendarDate, DayNumbersCountDaysAndGiveTheWeekday) {
    // Consecutive days differ by one across a year end and a leap day.
    EXPECT_EQ(dayNumber(dmy(1, 1, 2003)) - dayNumber(dmy(31, 12, 2002)), 1);
    EXPECT_EQ(dayNumber(dmy(1, 3, 2004)) - dayNumber(dmy(28, 2, 2004)), 2);
    EXPECT_EQ(dayNumber(dmy(25, 9, 2003)) - dayNumber(dmy(25, 9, 2002)), 365);
    const struct {
        CalendarDate date;
        int weekday;
    } known[] = {
        {dmy(1, 1, 1904), 5},    // a Friday
        {dmy(25, 9, 2002), 3},   // a Wednesday
        {dmy(29, 2, 2000), 2},   // a Tuesday
        {dmy(21, 11, 2026), 6},  // a Saturday
        {dmy(31, 12, 2031), 3},  // a Wednesday
    };
    for (const auto& k : known) {
        EXPECT_EQ(weekdayOf(packDate(k.date)), k.weekday) << k.date.year;
    }
    // Over the whole range the weekday advances by one a day and stays within 0..6.
    CalendarDate d = dmy(1, 1, 1904);
    int32_t previous = weekdayOf(packDate(d));
    for (int i = 0; i < 46000; ++i) {
        d = steppedDate(d, 1);
        const int32_t w = weekdayOf(packDate(d));
        ASSERT_GE(w, 0);
        ASSERT_LE(w, 6);
        ASSERT_EQ(w, (previous + 1) % 7) << d.day << "/" << d.month << "/" << d.year;
        previous = w;
        if (d.year == 2031 && d.month == 12 && d.day == 31) {
            break;
        }
    }
}

TEST(CalendarDate, ComparisonsIgnoreTheClockButNotTheObject) {
    CalendarDate morning = dmy(3, 5, 2002);
    morning.hour = 8;
    CalendarDate evening = dmy(3, 5, 2002);
    evening.hour = 20;
    evening.second = 31;
    EXPECT_TRUE(datesEqual(morning, evening));
    EXPECT_TRUE(dateEarlierOrEqual(morning, evening));
    EXPECT_FALSE(dateEarlier(morning, evening));
    EXPECT_FALSE(dateLater(morning, evening));
    // The very same object is neither equal, earlier nor later.
    EXPECT_FALSE(datesEqual(morning, morning));
    EXPECT_FALSE(dateEarlierOrEqual(morning, morning));
    EXPECT_FALSE(dateEarlier(morning, morning));
    EXPECT_FALSE(dateLater(morning, morning));
    // Year first, then month, then day.
    EXPECT_TRUE(dateEarlier(dmy(31, 12, 2001), dmy(1, 1, 2002)));
    EXPECT_TRUE(dateEarlier(dmy(30, 4, 2002), dmy(1, 5, 2002)));
    EXPECT_TRUE(dateLater(dmy(2, 5, 2002), dmy(1, 5, 2002)));
}

TEST(CalendarDate, EmptyDateHasNoMonthDayOrYear) {
    EXPECT_TRUE(CalendarDate{}.isEmpty());
    CalendarDate withClock;
    withClock.hour = 5;
    EXPECT_TRUE(withClock.isEmpty());
    EXPECT_FALSE(dmy(0, 0, 1).isEmpty());
}

TEST(CalendarDate, LongTextNamesTheComputedWeekday) {
    CalendarDate d = dmy(25, 9, 2002);
    d.weekday = 0;  // the stored weekday is not what the text uses
    EXPECT_EQ(longDateText(d), "Wednesday September 25, 2002");
}

TEST(CalendarDate, LongTextFillsTheBufferWithinItsCapacity) {
    const CalendarDate d = dmy(3, 5, 2002);  // "Friday May 3, 2002", 18 characters
    std::array<char, 40> buffer{};
    buffer.fill('x');

    uint16_t capacity = 40;
    longDateText(d, buffer, capacity);
    EXPECT_EQ(std::string(buffer.data()), "Friday May 3, 2002");
    EXPECT_EQ(capacity, 18);

    buffer.fill('x');
    capacity = 18;  // exactly the length still counts as fitting
    longDateText(d, buffer, capacity);
    EXPECT_EQ(std::string(buffer.data(), 18), "Friday May 3, 2002");
    EXPECT_EQ(buffer[18], '\0');
    EXPECT_EQ(capacity, 18);

    buffer.fill('x');
    capacity = 7;  // cut to capacity - 1 characters, the rest cleared
    longDateText(d, buffer, capacity);
    EXPECT_EQ(std::string(buffer.data()), "Friday");
    EXPECT_EQ(capacity, 7);
    EXPECT_EQ(buffer[39], '\0');
}

TEST(CalendarDate, FixedClockGivesNow) {
    CalendarDate now = dmy(21, 11, 2026);
    now.hour = 9;
    FixedClock clock(now);
    EXPECT_EQ(clock.now().hour, 9);
    EXPECT_TRUE(datesEqual(clock.now(), now));
}

}  // namespace
}  // namespace nutrovex
