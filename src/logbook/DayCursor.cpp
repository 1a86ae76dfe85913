#include "logbook/DayCursor.h"

#include <memory>

#include "calc/Totals.h"

namespace nutrovex {

bool DayCursor::setCurrentDate(const CalendarDate& date) {
    const CalendarDate copy = date;  // date may be the current date itself
    m_currentDate = copy;
    return find();
}

// The logbook's binary search: mid leans to the upper half, and the loop ends either on the
// record of the date or with the insertion point for it.
bool DayCursor::find() {
    const Position count = this->count();
    m_found = false;
    m_index = 0;
    if (count == 0) {
        return false;
    }
    const CalendarDate& current = m_currentDate;
    int lo = 0;
    int hi = count - 1;
    for (;;) {
        int mid = lo + (hi - lo) / 2 + 1;
        if (mid > hi) {
            mid = hi;
        }
        m_index = static_cast<Position>(mid);
        m_found = true;
        const CalendarDate& recordDate = m_store->dayAt(m_index).date();
        if (datesEqual(current, recordDate)) {
            m_currentDate = recordDate;
            return true;
        }
        if (dateEarlier(current, recordDate)) {
            if (mid == lo) {
                m_found = false;
                return false;
            }
            hi = mid == hi ? mid - 1 : mid;
        } else {
            if (mid == hi) {
                m_found = false;
                m_index = static_cast<Position>(mid + 1);
                return false;
            }
            lo = mid;
        }
    }
}

bool DayCursor::seek(SeekMode mode) {
    const Position count = this->count();
    Position at = 0;
    switch (mode) {
        case SeekMode::Find:
            return find();
        case SeekMode::First:
            at = 0;
            break;
        case SeekMode::Second:
            at = 1;
            break;
        case SeekMode::Last:
            at = count == 0 ? 0 : static_cast<Position>(count - 1);
            break;
    }
    if (at >= count) {
        // Nothing there: the date stays and the cursor is settled on it again.
        find();
        return false;
    }
    m_index = at;
    m_found = true;
    m_currentDate = m_store->dayAt(at).date();
    return true;
}

void DayCursor::revalidate() {
    const Position count = this->count();
    const CalendarDate& current = m_currentDate;
    if (m_found) {
        if (m_index < count && datesEqual(m_store->dayAt(m_index).date(), current)) {
            return;
        }
    } else if (m_index <= count &&
               (m_index == count || dateLater(m_store->dayAt(m_index).date(), current)) &&
               (m_index == 0 || dateEarlier(m_store->dayAt(m_index - 1).date(), current))) {
        return;
    }
    find();
}

DayRecord* DayCursor::currentRecord() {
    revalidate();
    return m_found ? &m_store->dayAt(m_index) : nullptr;
}

DayRecord* DayCursor::currentDay() {
    DayRecord* day = currentRecord();
    if (day != nullptr) {
        const Nutrients totals = dayTotals(*day);
        day->caloriesIn = wholeCalories(totals[0]);
        const ExerciseTotals exercise = exerciseTotals(*day);
        day->exerciseCalories = exercise.calories;
        day->exerciseMinutes = exercise.minutes;
    }
    return day;
}

DayRecord* DayCursor::ensureCurrentRecord(bool* created) {
    if (created != nullptr) {
        *created = false;
    }
    if (DayRecord* day = currentRecord()) {
        return day;
    }
    const Position at = m_store->insertDay(std::make_unique<DayRecord>(m_currentDate));
    if (at == kNoPosition) {
        return nullptr;
    }
    m_index = at;
    m_found = true;
    if (created != nullptr) {
        *created = true;
    }
    return currentRecord();
}

void DayCursor::deleteCurrentDay() {
    if (currentRecord() == nullptr) {
        return;
    }
    (void)m_store->removeDay(m_index);
    find();
}

void DayCursor::deleteRange(const CalendarDate& start, const CalendarDate& end) {
    const CalendarDate remembered = m_currentDate;
    const CalendarDate last = end;
    setCurrentDate(start);
    while (dateEarlierOrEqual(m_currentDate, last)) {
        deleteCurrentDay();
        const CalendarDate before = m_currentDate;
        stepDay(1);
        // A date that cannot move on (an invalid month, or the last packable day wrapping back
        // to 1904) ends the walk instead of looping for ever.
        if (!dateLater(m_currentDate, before)) {
            break;
        }
    }
    setCurrentDate(remembered);
}

void DayCursor::deleteAllDays(bool keepProfile) {
    const CalendarDate today = m_store->today();
    m_store->removeAllDays();
    m_store->firstDayChunk = 3;
    if (!keepProfile) {
        m_store->profile.reset(today);
    }
    setCurrentDate(today);
}

bool DayCursor::stepDay(int n) {
    return setCurrentDate(steppedDate(m_currentDate, n));
}

}  // namespace nutrovex
