#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "calc/FoodBudget.h"
#include "charts/WeightTrend.h"
#include "core/CalendarDate.h"
#include "core/GoalPlan.h"
#include "core/UserStore.h"

namespace nutrovex {

class UserProfile;

// What a person's own logbook says they burn: the average intake of the logged days of a window,
// less what the weight trend says was stored in the body meanwhile.
inline constexpr int32_t kMaintenanceWindowDays = kTrendWindowDays;
inline constexpr int kMinLoggedDays = 14;
inline constexpr int kMinWeighIns = 2;
// The lowest daily budget ever suggested.
inline constexpr int32_t kLowestSuggestedBudget = 1200;

// One day of the logbook as the measurement sees it: its date's day number, its weight in pounds
// (not a weigh-in unless positive) and its food calories.
struct DaySample {
    int32_t day = 0;
    float weight = -1.0f;
    double calories = 0.0;
};

struct Maintenance {
    bool valid = false;
    double calories = 0.0;            // per day; meaningful only when valid
    int loggedDays = 0;               // dates of the window with food calories above 0
    int weighIns = 0;                 // dates of the window with a weigh-in
    std::optional<float> trendStart;  // the trend the window starts from
    std::optional<float> trendEnd;    // the trend at the current date
    int32_t trendDays = 0;            // the days the trend's change is spread over

    [[nodiscard]] int missingLoggedDays() const;
    [[nodiscard]] int missingWeighIns() const;
    // The trend's change per week over the window, in pounds.
    [[nodiscard]] std::optional<double> weeklyRate() const;
};

// The 28 days ending at currentDay, inclusive. The trend starts from the day before the window,
// or from the first weigh-in of the whole logbook when that falls inside the window. Several
// records of one date count as one day (their calories added). Days after currentDay are ignored.
[[nodiscard]] Maintenance measureMaintenance(std::span<const DaySample> days, int32_t currentDay);
// Over a logbook's days, with each day's calories computed from its foods.
[[nodiscard]] Maintenance measureMaintenance(const DayList& days, const CalendarDate& current);

// Whole calories, rounded half away from zero and held to the 32-bit range.
[[nodiscard]] int32_t roundedMaintenance(double calories);

// "8 more days of food logging and 1 more weigh-in"; empty when nothing is missing.
[[nodiscard]] std::string missingForMaintenance(const Maintenance& m);

// The measured maintenance less the goal's calories a day, never below 1200; nullopt when the
// measurement or the plan is not valid.
[[nodiscard]] std::optional<int32_t> suggestedBudget(const Maintenance& m, const GoalPlan& plan);

// "2,310 cal".
[[nodiscard]] std::string groupedCalories(int64_t calories);

// The food budget page's "Measured" section for the current date, in the user's units:
// "Maintenance (28 days):", "Suggested budget:" (with a valid goal plan) and "Trend:", or a line
// saying what is still missing.
[[nodiscard]] BudgetSection measuredSection(const Maintenance& m, const UserProfile& profile);
[[nodiscard]] BudgetSection measuredSection(const UserStore& store, const CalendarDate& current);

}  // namespace nutrovex
