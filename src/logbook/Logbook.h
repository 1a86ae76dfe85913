#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/CalendarDate.h"
#include "core/Position.h"

namespace nutrovex {

class DayRecord;
class UserProfile;

// Every text the logbook form shows, in the order it draws them.
struct LogbookFigures {
    std::string date;      // "Wednesday September 25, 2002"
    std::string weight;    // "154  lbs" or "---  lbs"
    std::string meals;     // "1500"
    std::string bmr;       // "- 1700" or "0"
    std::string exercise;  // "- 360" or "0"
    std::string total;     // "- 560" or "120"
    std::string record;    // "Record: 2 of 3" or "Record: -- of 2"
    std::string goal;      // "Goal: -500 cal", or empty while the goals are incomplete
    std::string water;     // "3"

    friend bool operator==(const LogbookFigures&, const LogbookFigures&) = default;
};

// The weight line's unit.
[[nodiscard]] const char* logbookWeightUnit(bool metric);
// "- %d" for a positive amount of calories taken away, "%d" otherwise.
[[nodiscard]] std::string subtractedCalories(long calories);
// The net total: meals rounded half up, less BMR and exercise.
[[nodiscard]] long netCalories(float mealCalories, int bmr, uint32_t exerciseCalories);
[[nodiscard]] std::string netTotalText(long net);
[[nodiscard]] std::string goalLine(const UserProfile& profile);
// The figures of a date; day is null when the date has no record.
[[nodiscard]] LogbookFigures logbookFigures(const CalendarDate& date, const DayRecord* day,
                                            const UserProfile& profile, bool found, Position index,
                                            uint16_t count);

inline constexpr int kMaxWater = 99;
inline constexpr std::size_t kWaterMaxChars = 2;

}  // namespace nutrovex
