#pragma once

#include <cstdint>

#include "core/FoodItem.h"

namespace nutrovex {

class DayRecord;
class UserProfile;

inline constexpr float kMaxGroupTotal = 9999.0f;
inline constexpr uint32_t kMaxExerciseTotal = 99999;

// The six sums of a list of logged foods (nutrient × serving ratio, single precision), each sum
// held to 9999 after every food.
[[nodiscard]] Nutrients foodListTotals(const FoodList& foods);
// The sums of one food group of the day (0..7); group 8 gives the day totals, unstored. Any other
// index gives zeros.
[[nodiscard]] Nutrients groupTotals(const DayRecord& day, int group);
// The day totals: the clamped sums of groups 0..7 added up, not clamped themselves.
[[nodiscard]] Nutrients computeDayTotals(const DayRecord& day);
// Computes the day totals and stores them in the day; returns them.
Nutrients dayTotals(DayRecord& day);

// Whole calories from a total: truncated toward zero and kept to 32 bits.
[[nodiscard]] uint32_t wholeCalories(float calories);

struct ExerciseTotals {
    uint32_t calories = 0;
    uint32_t minutes = 0;
};
// The day's exercise calories and minutes. Calories above 99999 become 99999, and so do the
// calories (not the minutes) when the minutes pass 99999.
[[nodiscard]] ExerciseTotals exerciseTotals(const DayRecord& day);

// Brings a day's computed figures up to date after its foods, exercises, weight or level changed:
// the totals and calories in, the BMR at levels 1..4, the exercise calories and minutes.
void recomputeDay(DayRecord& day, const UserProfile& profile);

}  // namespace nutrovex
