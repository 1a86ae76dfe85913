#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "controls/MWGrid.h"
#include "core/CalendarDate.h"

namespace nutrovex {

// One shown month of the date picker: Gregorian arithmetic and where each day sits in a grid of
// seven columns (Sunday first) whose row 0 is the title, row 1 the weekday initials and rows 2
// onward the weeks.
class MonthCalendar {
public:
    static constexpr int32_t kTitleRow = 0;
    static constexpr int32_t kInitialsRow = 1;
    static constexpr int32_t kFirstWeekRow = 2;
    static constexpr int32_t kWeekRows = 6;
    static constexpr int32_t kRows = kFirstWeekRow + kWeekRows;
    static constexpr int32_t kColumns = 7;
    static constexpr const char* kInitials[kColumns] = {"S", "M", "T", "W", "T", "F", "S"};

    // Shows today's month with today selected.
    explicit MonthCalendar(const Clock& clock);

    [[nodiscard]] static bool isLeapYear(int32_t year);
    // month 0 = January.
    [[nodiscard]] static int32_t daysInMonth(int32_t month, int32_t year);

    // The date to show: month 0-based, day 1-based (reduced to the month's last day).
    void setDate(int32_t year, int32_t month, int32_t day);
    [[nodiscard]] int32_t year() const { return m_year; }
    [[nodiscard]] int32_t month() const { return m_month; }
    [[nodiscard]] int32_t day() const { return m_day; }
    [[nodiscard]] int32_t daysInShownMonth() const { return daysInMonth(m_month, m_year); }
    // Selects a day of the shown month; false (nothing changes) when the month has no such day.
    bool selectDay(int32_t day);

    // 0 = Sunday, for day d of the shown month (d = 0 is the day before the 1st).
    [[nodiscard]] int32_t weekdayOf(int32_t day) const;
    // -1 when the day before the 1st is a Saturday (the 1st starts the first week row), else
    // that day's weekday.
    [[nodiscard]] int32_t shift() const;
    [[nodiscard]] GridCell cellOfDay(int32_t day) const;
    // The day shown in a cell of the week rows, or 0 for an empty cell or any other row.
    [[nodiscard]] int32_t dayInCell(int32_t row, int32_t column) const;
    [[nodiscard]] GridCell selectedCell() const { return cellOfDay(m_day); }
    // Only while today's month is shown.
    [[nodiscard]] std::optional<GridCell> todayCell() const;

    // "March 2002".
    [[nodiscard]] std::string title() const;

    // "November 25, 2026": a day of the shown month as a reader hears it.
    [[nodiscard]] std::string dayName(int32_t day) const;

    void nextMonth();
    void previousMonth();
    // Moves the selected day by days, into the months before or after when the steps allow;
    // false (nothing changes) when a step the move needs is not allowed.
    bool moveDays(int32_t days);
    [[nodiscard]] bool canGoBack() const { return m_canGoBack; }
    [[nodiscard]] bool canGoForward() const { return m_canGoForward; }
    void setCanGoBack(bool on) { m_canGoBack = on; }
    void setCanGoForward(bool on) { m_canGoForward = on; }

    // What a tap in the title row does: columns 0 and 1 step back, 5 and 6 forward.
    enum class TitleAction { None, Previous, Next };
    [[nodiscard]] static TitleAction titleAction(int32_t column);

private:
    void clampDay();

    int32_t m_year = 0;
    int32_t m_month = 0;
    int32_t m_day = 1;
    int32_t m_todayYear = 0;
    int32_t m_todayMonth = 0;
    int32_t m_todayDay = 0;
    bool m_canGoBack = true;
    bool m_canGoForward = true;
};

}  // namespace nutrovex
