#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/CalendarDate.h"
#include "core/GoalPlan.h"

namespace nutrovex {

class UserProfile;

inline constexpr int32_t kCaloriesPerPound = 3500;
inline constexpr float kMaxEnteredWeight = 999.0f;

// Fills plan from the four goal fields. A plan that cannot be computed is only marked not valid:
// its other values stay as they were, except days when it is the dates that fail.
void computeGoalPlan(GoalPlan& plan, float startWeight, const CalendarDate& startDate,
                     float goalWeight, const CalendarDate& goalDate);
// Recomputes the profile's stored plan from its goal fields and marks the plan changed.
void recomputeGoalPlan(UserProfile& profile);

// The plan's values, signed; nullopt when the plan is not valid.
[[nodiscard]] std::optional<int32_t> planDays(const GoalPlan& plan);
[[nodiscard]] std::optional<int32_t> planWeightChange(const GoalPlan& plan);  // pounds, + = lose
[[nodiscard]] std::optional<int32_t> planCaloriesPerDay(const GoalPlan& plan);

// "lbs" or "kg".
[[nodiscard]] const char* weightUnitLabel(bool metric);
// A weight change in whole pounds as shown: in kilograms for a metric user, sign kept.
[[nodiscard]] int32_t displayedWeightChange(int32_t pounds, bool metric);

// The sentence of the goals screen and of the food budget's goal box.
[[nodiscard]] std::string goalSentence(const GoalPlan& plan, bool metric);
extern const char* const kNoGoalSentence;

// The stored weight for a whole number typed into a goals weight field (0 when empty): nothing
// above 0 is "not entered" (-1.0); kilograms convert at 2.21 pounds each; at most 999.0.
[[nodiscard]] float weightFromEntry(int32_t typed, bool metric);

}  // namespace nutrovex
