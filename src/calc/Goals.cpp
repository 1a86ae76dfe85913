#include "calc/Goals.h"

#include <cstdlib>

#include "calc/Bmr.h"
#include "core/UserProfile.h"

namespace nutrovex {

const char* const kNoGoalSentence =
    "After inputting your personal information and goals, the calorie calculator will "
    "automatically display the calories you need to remove from your diet each day.";

void computeGoalPlan(GoalPlan& plan, float startWeight, const CalendarDate& startDate,
                     float goalWeight, const CalendarDate& goalDate) {
    plan.valid = 0;
    const WholeResult start = weightToWhole(startWeight, false);
    const WholeResult goal = weightToWhole(goalWeight, false);
    if (!start.ok || !goal.ok || start.value < 0 || goal.value < 0) {
        return;
    }
    const int32_t days = dayNumber(goalDate) - dayNumber(startDate);
    plan.days = static_cast<uint32_t>(days);
    if (days <= 0) {
        return;
    }
    const int32_t change = int32_t{start.value} - int32_t{goal.value};
    plan.change = static_cast<uint32_t>(change);
    plan.perDay = static_cast<uint32_t>(change * kCaloriesPerPound / days);
    plan.valid = 1;
}

void recomputeGoalPlan(UserProfile& profile) {
    GoalPlan plan = profile.plan();
    computeGoalPlan(plan, profile.startWeight(), profile.startDate(), profile.goalWeight(),
                    profile.goalDate());
    profile.setPlan(plan);
}

namespace {

std::optional<int32_t> planValue(const GoalPlan& plan, uint32_t value) {
    if (plan.valid == 0) {
        return std::nullopt;
    }
    return static_cast<int32_t>(value);
}

}  // namespace

std::optional<int32_t> planDays(const GoalPlan& plan) {
    return planValue(plan, plan.days);
}

std::optional<int32_t> planWeightChange(const GoalPlan& plan) {
    return planValue(plan, plan.change);
}

std::optional<int32_t> planCaloriesPerDay(const GoalPlan& plan) {
    return planValue(plan, plan.perDay);
}

const char* weightUnitLabel(bool metric) {
    return metric ? "kg" : "lbs";
}

int32_t displayedWeightChange(int32_t pounds, bool metric) {
    if (!metric) {
        return pounds;
    }
    const auto magnitude = static_cast<float>(std::abs(int64_t{pounds}));
    const int32_t kg = weightToWhole(magnitude, true).value;
    return pounds < 0 ? -kg : kg;
}

std::string goalSentence(const GoalPlan& plan, bool metric) {
    const auto change = planWeightChange(plan);
    const auto days = planDays(plan);
    const auto perDay = planCaloriesPerDay(plan);
    if (!change || !days || !perDay) {
        return kNoGoalSentence;
    }
    // Widened so that negating a stored value read from a file cannot overflow.
    const int64_t shown = displayedWeightChange(*change, metric);
    const int64_t calories = *perDay;
    const bool gain = shown < 0;
    return std::string(gain ? "To gain " : "To lose ") + std::to_string(gain ? -shown : shown) +
           ' ' + weightUnitLabel(metric) + " in " + std::to_string(*days) +
           " days, you will need to eat " + std::to_string(gain ? -calories : calories) +
           (gain ? " more" : " fewer") + " calories per day than your body burns.";
}

float weightFromEntry(int32_t typed, bool metric) {
    if (typed <= 0) {
        return kNotEntered;
    }
    float pounds = static_cast<float>(typed);
    if (metric) {
        pounds *= 2.21f;
    }
    return pounds > kMaxEnteredWeight ? kMaxEnteredWeight : pounds;
}

}  // namespace nutrovex
