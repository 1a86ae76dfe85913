#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/PackedKey.h"
#include "core/Position.h"
#include "core/UserProfile.h"

namespace nutrovex {

struct UserFileHeader {
    uint16_t version = 4;
    uint16_t word = 0;
    PackedKey keyCounter;  // the last key issued to a logged food or exercise
    uint16_t flags = 0;
};

// The weight chart's points: whole-pound values with their first value and step.
struct ChartPoints {
    std::vector<int16_t> values;
    int16_t first = 0;
    int16_t step = 0;
};

// The days of a user in ascending date order.
using DayList = std::vector<std::unique_ptr<DayRecord>>;

// Everything of the open user: header, profile, days and the logbook's current date.
class UserStore {
public:
    explicit UserStore(const Clock& clock);

    [[nodiscard]] const Clock& clock() const { return *m_clock; }
    [[nodiscard]] CalendarDate today() const { return m_clock->now(); }

    // Before a user is opened and when the open user is deleted.
    void reset(bool keepProfile = false);

    UserFileHeader header;
    UserProfile profile;
    uint16_t firstDayChunk = 3;
    // The day count as stored; kept equal to the list's size by insertDay and removeDay.
    uint16_t dayCount = 0;
    bool modified = false;
    std::filesystem::path dataFilePath;
    std::filesystem::path userFolderPath;
    std::array<std::string, 8> chartLabels;
    ChartPoints chartPoints;

    // The chart label of a slot; an index of 8 or more is an empty text.
    [[nodiscard]] std::string_view chartLabel(std::size_t index) const {
        return index < chartLabels.size() ? std::string_view(chartLabels[index])
                                          : std::string_view();
    }

    [[nodiscard]] const DayList& days() const { return m_days; }
    [[nodiscard]] DayRecord& dayAt(Position pos) { return *m_days[pos]; }
    [[nodiscard]] const DayRecord& dayAt(Position pos) const { return *m_days[pos]; }
    // Places the day before the first later date (after any day of the same date); returns its
    // position, or kNoPosition when the list is full.
    Position insertDay(std::unique_ptr<DayRecord> day);
    // The position of the first day of that date, or kNoPosition.
    [[nodiscard]] Position findDay(const CalendarDate& date) const;
    [[nodiscard]] DayRecord* dayOf(const CalendarDate& date);
    [[nodiscard]] bool removeDay(Position pos);
    void removeAllDays();

    // Issues the next key for a logged food or exercise entry.
    PackedKey nextEntryKey() { return nextKey(header.keyCounter); }

private:
    const Clock* m_clock;
    DayList m_days;
};

}  // namespace nutrovex
