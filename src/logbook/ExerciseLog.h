#pragma once

#include <span>
#include <vector>

#include "core/ExerciseEntry.h"
#include "core/Position.h"

namespace nutrovex {

class DayRecord;

// The exercise clipboard: private to the program, held until it ends.
class ExerciseClipboard {
public:
    [[nodiscard]] const std::vector<ExerciseEntry>& entries() const { return m_entries; }
    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    // Replaces the content with copies of the entries at the given rows.
    void copy(const DayRecord& day, std::span<const Position> rows);

private:
    std::vector<ExerciseEntry> m_entries;
};

}  // namespace nutrovex
