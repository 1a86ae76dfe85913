#pragma once

#include <cstdint>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/Position.h"
#include "core/UserStore.h"

namespace nutrovex {

enum class SeekMode : uint8_t { Find, First, Second, Last };

// The logbook's cursor on the open user's days: the current date (today at first), whether a
// record exists for it, and its position, which is the insertion point when there is none. The
// days stay in the store; this class only positions on them and creates or removes them.
class DayCursor {
public:
    explicit DayCursor(UserStore& store) : m_store(&store), m_currentDate(store.today()) {}

    [[nodiscard]] UserStore& store() { return *m_store; }
    [[nodiscard]] const UserStore& store() const { return *m_store; }
    [[nodiscard]] const CalendarDate& currentDate() const { return m_currentDate; }
    [[nodiscard]] bool currentFound() const { return m_found; }
    // 0-based: the record's index when found, otherwise where a record for the date would go.
    [[nodiscard]] Position currentIndex() const { return m_index; }
    [[nodiscard]] uint16_t count() const { return static_cast<uint16_t>(m_store->days().size()); }

    // current date := date, then a find.
    bool setCurrentDate(const CalendarDate& date);
    // Positions on the list; false when nothing was found (an empty list always fails, and then
    // the current date stays as it was).
    bool seek(SeekMode mode);

    // The record of the current date with its totals, calories in and exercise figures brought
    // up to date, or null when the date has no record.
    [[nodiscard]] DayRecord* currentDay();
    // The record of the current date as it stands, without recomputing anything.
    [[nodiscard]] DayRecord* currentRecord();
    // The record of the current date, created first when it is missing (created says so); null
    // when the day list is full. Every command that types into the day starts here.
    DayRecord* ensureCurrentRecord(bool* created = nullptr);
    // Creates the record for the current date when it is missing; true when it already existed.
    bool ensureCurrentDay() {
        bool created = false;
        return ensureCurrentRecord(&created) != nullptr && !created;
    }

    // Removes the current date's record, if any; the date stays current without a record.
    void deleteCurrentDay();
    // Removes every record dated from start to end, both included; the current date is kept.
    void deleteRange(const CalendarDate& start, const CalendarDate& end);
    // Removes every record (and resets the profile unless kept); the current date becomes today.
    void deleteAllDays(bool keepProfile);

    bool first() { return seek(SeekMode::First); }
    bool last() { return seek(SeekMode::Last); }
    // One calendar day on, or back, record or not.
    bool nextDay() { return stepDay(1); }
    bool previousDay() { return stepDay(-1); }

private:
    bool stepDay(int n);
    bool find();
    // Re-positions when the store changed under the cursor (a load, a reset, another insert).
    void revalidate();

    UserStore* m_store;
    CalendarDate m_currentDate;
    Position m_index = 0;
    bool m_found = false;
};

}  // namespace nutrovex
