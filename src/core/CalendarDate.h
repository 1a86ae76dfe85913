#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace nutrovex {

// A calendar date with its clock parts, as the system clock reports it. Only month, day and year
// are stored in files; all arithmetic goes through the 16-bit packed form.
struct CalendarDate {
    int16_t second = 0;
    int16_t minute = 0;
    int16_t hour = 0;
    int16_t day = 0;
    int16_t month = 0;
    int16_t year = 0;
    int16_t weekday = 0;  // 0 Sunday, as the clock reports it

    [[nodiscard]] bool isEmpty() const { return month == 0 && day == 0 && year == 0; }

    // A date of the given day at midnight, weekday computed.
    static CalendarDate fromDmy(int day, int month, int year);
};

// Where "now" comes from. Tests fix it; the program reads the local time.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual CalendarDate now() const = 0;
};

class SystemClock final : public Clock {
public:
    [[nodiscard]] CalendarDate now() const override;
};

class FixedClock final : public Clock {
public:
    explicit FixedClock(CalendarDate now) : m_now(now) {}
    [[nodiscard]] CalendarDate now() const override { return m_now; }
    void set(CalendarDate now) { m_now = now; }

private:
    CalendarDate m_now;
};

// Packed form: day in bits 11-15, month in bits 7-10, years since 1904 in bits 0-6.
[[nodiscard]] uint16_t packDate(const CalendarDate& date);
// Writes day, month and year; the clock parts and weekday are left as they are.
void unpackDate(uint16_t packed, CalendarDate& date);

// The Gregorian rule: every fourth year, but not centuries unless divisible by 400.
[[nodiscard]] constexpr bool isLeapYearNumber(int32_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}
// Days in month 1..12 of the year; 0 for any other month.
[[nodiscard]] int daysInMonth(int month, int32_t year);
[[nodiscard]] bool isLeapYear(uint16_t packed);
[[nodiscard]] int32_t dayNumber(uint16_t packed);
[[nodiscard]] int32_t weekdayOf(uint16_t packed);
[[nodiscard]] inline int32_t dayNumber(const CalendarDate& d) {
    return dayNumber(packDate(d));
}

// Comparisons by year, month and day only. A date compared with the very same object is
// neither equal, earlier nor later: callers always compare two distinct dates.
[[nodiscard]] bool datesEqual(const CalendarDate& a, const CalendarDate& b);
[[nodiscard]] bool dateEarlier(const CalendarDate& a, const CalendarDate& b);
[[nodiscard]] bool dateEarlierOrEqual(const CalendarDate& a, const CalendarDate& b);
[[nodiscard]] bool dateLater(const CalendarDate& a, const CalendarDate& b);

// Copies source into date, then moves both n days (back when n < 0). Month 0 never moves and the
// year wraps within 1904..2031.
void stepDate(CalendarDate& date, CalendarDate& source, int n);
[[nodiscard]] CalendarDate steppedDate(const CalendarDate& source, int n);

extern const char* const kMonthNames[12];
extern const char* const kWeekdayNames[7];

// "Sunday March 3, 2002". Fills the buffer after clearing it; when the text fits (capacity at
// least its length) capacity becomes the text's length, otherwise capacity - 1 characters are
// copied and the rest stays zero.
void longDateText(const CalendarDate& date, std::span<char> buffer, uint16_t& capacity);
[[nodiscard]] std::string longDateText(const CalendarDate& date);

}  // namespace nutrovex
