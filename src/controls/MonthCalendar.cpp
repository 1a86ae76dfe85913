#include "controls/MonthCalendar.h"

#include <array>
#include <cstdio>

namespace nutrovex {

namespace {

constexpr std::array<int32_t, 12> kDaysPerMonth = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Whole-number division and remainder as the weekday formula uses them, kept non-negative for
// the years before 1 that a hostile date could ask for.
int32_t floorMod(int64_t a, int32_t b) {
    const auto r = static_cast<int32_t>(a % b);
    return r < 0 ? r + b : r;
}

}  // namespace

MonthCalendar::MonthCalendar(const Clock& clock) {
    const CalendarDate now = clock.now();
    m_todayYear = now.year;
    m_todayMonth = now.month - 1;
    m_todayDay = now.day;
    m_year = m_todayYear;
    m_month = m_todayMonth;
    m_day = m_todayDay;
    if (m_month < 0 || m_month > 11) {
        m_month = 0;
    }
    clampDay();
}

bool MonthCalendar::isLeapYear(int32_t year) {
    return isLeapYearNumber(year);
}

int32_t MonthCalendar::daysInMonth(int32_t month, int32_t year) {
    if (month < 0 || month > 11) {
        return 0;
    }
    return kDaysPerMonth[static_cast<std::size_t>(month)] +
           (month == 1 && isLeapYear(year) ? 1 : 0);
}

void MonthCalendar::clampDay() {
    const int32_t last = daysInShownMonth();
    if (m_day > last) {
        m_day = last;
    }
    if (m_day < 1) {
        m_day = 1;
    }
}

void MonthCalendar::setDate(int32_t year, int32_t month, int32_t day) {
    m_year = year;
    m_month = month >= 0 && month <= 11 ? month : 0;
    m_day = day;
    clampDay();
}

bool MonthCalendar::selectDay(int32_t day) {
    if (day < 1 || day > daysInShownMonth()) {
        return false;
    }
    m_day = day;
    return true;
}

int32_t MonthCalendar::weekdayOf(int32_t day) const {
    int64_t n = day;
    for (int32_t m = 0; m < m_month; ++m) {
        n += daysInMonth(m, m_year);
    }
    const int64_t y = static_cast<int64_t>(m_year) - 1;
    return floorMod(n + y / 400 - y / 100 + y / 4 + y, 7);
}

int32_t MonthCalendar::shift() const {
    const int32_t w = weekdayOf(0);
    return w == 6 ? -1 : w;
}

GridCell MonthCalendar::cellOfDay(int32_t day) const {
    const int32_t index = day + shift();
    return {index / kColumns + kFirstWeekRow, index % kColumns};
}

int32_t MonthCalendar::dayInCell(int32_t row, int32_t column) const {
    if (row < kFirstWeekRow || column < 0 || column >= kColumns) {
        return 0;
    }
    const int32_t day = (row - kFirstWeekRow) * kColumns - shift() + column;
    return day >= 1 && day <= daysInShownMonth() ? day : 0;
}

std::optional<GridCell> MonthCalendar::todayCell() const {
    if (m_year != m_todayYear || m_month != m_todayMonth || m_todayDay < 1 ||
        m_todayDay > daysInShownMonth()) {
        return std::nullopt;
    }
    return cellOfDay(m_todayDay);
}

std::string MonthCalendar::title() const {
    char text[48];
    std::snprintf(text, sizeof text, "%s %d", kMonthNames[m_month], m_year);
    return text;
}

std::string MonthCalendar::dayName(int32_t day) const {
    char text[64];
    std::snprintf(text, sizeof text, "%s %d, %d", kMonthNames[m_month], day, m_year);
    return text;
}

bool MonthCalendar::moveDays(int32_t days) {
    int64_t day = static_cast<int64_t>(m_day) + days;
    int32_t month = m_month;
    int32_t year = m_year;
    while (day < 1) {
        if (!m_canGoBack) {
            return false;
        }
        if (--month < 0) {
            month = 11;
            --year;
        }
        day += daysInMonth(month, year);
    }
    while (day > daysInMonth(month, year)) {
        if (!m_canGoForward) {
            return false;
        }
        day -= daysInMonth(month, year);
        if (++month > 11) {
            month = 0;
            ++year;
        }
    }
    m_year = year;
    m_month = month;
    m_day = static_cast<int32_t>(day);
    return true;
}

void MonthCalendar::nextMonth() {
    if (++m_month > 11) {
        m_month = 0;
        ++m_year;
    }
    clampDay();
}

void MonthCalendar::previousMonth() {
    if (--m_month < 0) {
        m_month = 11;
        --m_year;
    }
    clampDay();
}

MonthCalendar::TitleAction MonthCalendar::titleAction(int32_t column) {
    if (column == 0 || column == 1) {
        return TitleAction::Previous;
    }
    if (column == 5 || column == 6) {
        return TitleAction::Next;
    }
    return TitleAction::None;
}

}  // namespace nutrovex
