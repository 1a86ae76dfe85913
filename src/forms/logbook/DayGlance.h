#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/CalendarDate.h"

namespace nutrovex {

class DayRecord;
class UserProfile;
struct MacroTargets;

// One food or exercise line of the day at a glance: its name, how much, and its calories.
struct GlanceLine {
    std::string name;
    std::string amount;    // "1.5 cup", "30 min"
    std::string calories;  // "245 cal"

    friend bool operator==(const GlanceLine&, const GlanceLine&) = default;
};

// A meal of the day (or the exercises) with its lines and their calories together.
struct GlanceGroup {
    std::string heading;  // "Breakfast", ..., "Exercise"
    std::string total;    // "420 cal"
    std::vector<GlanceLine> lines;
    std::string more;  // "and 12 more" when the group holds more lines than the glance shows

    friend bool operator==(const GlanceGroup&, const GlanceGroup&) = default;
};

// The logbook's day at a glance: what was eaten by meal, the exercises, and what is left of the
// food budget, with the reason when a figure is missing.
struct DayGlance {
    std::vector<GlanceGroup> groups;  // meals that have foods in meal order, then the exercises
    std::string emptyText;            // "Nothing logged on this day." when there are no groups
    std::string leftLabel;            // "Left today:", "Over today:", "Left:", "Over:"
    std::string leftValue;            // "605 cal"; "---" without a food budget
    // How the figure comes about, or why there is none.
    std::string leftExplanation;
    std::string bmrNote;  // why the day's BMR is 0; empty when it is not
    // Eaten against the person's targets, one line each; empty when no target is set.
    std::vector<std::string> targetLines;

    friend bool operator==(const DayGlance&, const DayGlance&) = default;
};

// A glance shows at most this many lines of a meal; the rest are counted.
inline constexpr std::size_t kGlanceLinesPerGroup = 12;

// The glance of a date. day is null when the date has no record; its computed figures (exercise
// calories, BMR) must be up to date. targets may be null.
[[nodiscard]] DayGlance dayGlance(const CalendarDate& date, const DayRecord* day,
                                  const UserProfile& profile, const MacroTargets* targets,
                                  const CalendarDate& today);

// "1.5", "2", "0.25": an amount without trailing zeros, at most two decimals.
[[nodiscard]] std::string shortAmount(float amount);

}  // namespace nutrovex
