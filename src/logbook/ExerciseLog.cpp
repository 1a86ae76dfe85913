#include "logbook/ExerciseLog.h"

#include "core/DayRecord.h"

namespace nutrovex {

void ExerciseClipboard::copy(const DayRecord& day, std::span<const Position> rows) {
    m_entries.clear();
    for (const Position row : rows) {
        if (row < day.exercises().size()) {
            m_entries.push_back(day.exercises()[row]);
        }
    }
}

}  // namespace nutrovex
