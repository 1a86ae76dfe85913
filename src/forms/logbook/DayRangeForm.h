#pragma once

#include <string>

#include "core/CalendarDate.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

struct DayRangeView {
    std::string startText;  // long form
    std::string endText;
    CalendarDate start;  // where the date pickers open
    CalendarDate end;
};

// "Select a range of days": start and end, the end always after the start; OK deletes every
// record of the range, both ends included. It opens on today to tomorrow.
class DayRangeForm {
public:
    explicit DayRangeForm(DayCursor& days);

    enum class Field : uint8_t { Start, End };
    enum class Command : uint8_t { Delete };

    [[nodiscard]] DayRangeView view() const;
    [[nodiscard]] const Clock& clock() const { return m_days->store().clock(); }
    // A new start puts the end on the day after it; an end on or before the start becomes the
    // day after the start.
    Outcome pickDate(Field field, const CalendarDate& date);
    // No question is asked.
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
    CalendarDate m_start;
    CalendarDate m_end;
};

}  // namespace nutrovex
