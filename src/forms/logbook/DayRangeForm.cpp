#include "forms/logbook/DayRangeForm.h"

#include "core/UserStore.h"

namespace nutrovex {

DayRangeForm::DayRangeForm(DayCursor& days)
    : m_days(&days), m_start(days.store().clock().now()), m_end(steppedDate(m_start, 1)) {}

DayRangeView DayRangeForm::view() const {
    return {longDateText(m_start), longDateText(m_end), m_start, m_end};
}

Outcome DayRangeForm::pickDate(Field field, const CalendarDate& date) {
    if (field == Field::Start) {
        m_start = date;
        m_end = steppedDate(m_start, 1);
    } else {
        m_end = date;
        if (dateEarlierOrEqual(m_end, m_start)) {
            m_end = steppedDate(m_start, 1);
        }
    }
    return {};
}

Outcome DayRangeForm::command(Command) {
    if (m_days->store().dataFilePath.empty()) {
        return {};  // no user is open
    }
    m_days->deleteRange(m_start, m_end);
    return {.notices = {.userData = true, .dataChanged = true}};
}

}  // namespace nutrovex
