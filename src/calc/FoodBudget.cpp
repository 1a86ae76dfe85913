#include "calc/FoodBudget.h"

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {

const char* const kNoBudgetText = "(Weight required for BMR).";
const char* const kBudgetFormulaText =
    "To reach your goal: BMR + exercise - goal, from average figures for your age, height and "
    "weight.";

namespace {

constexpr const char* kBudgetIntro = "To achieve the goals you have set, your food budget is:  ";

GoalPlan freshPlan(const UserProfile& profile) {
    GoalPlan plan = profile.plan();
    computeGoalPlan(plan, profile.startWeight(), profile.startDate(), profile.goalWeight(),
                    profile.goalDate());
    return plan;
}

std::string calText(int64_t calories) {
    return std::to_string(calories) + " cal";
}

// "%d %s" of a weight in display units, or "" when it is not entered.
std::string weightText(float pounds, bool metric) {
    const WholeResult w = weightToWhole(pounds, metric);
    return w.ok ? std::to_string(w.value) + ' ' + weightUnitLabel(metric) : std::string();
}

// The calories shown for a total: rounded half up.
int64_t roundedCalories(float total) {
    const double v = static_cast<double>(total) + 0.5;
    return v > -9.2e18 && v < 9.2e18 ? static_cast<int64_t>(v) : 0;
}

}  // namespace

std::optional<int32_t> foodBudgetCalories(const DayRecord* day, const UserProfile& profile) {
    return day == nullptr ? std::nullopt : foodBudgetCalories(*day, profile, day->exerciseCalories);
}

std::optional<int32_t> foodBudgetCalories(const DayRecord& day, const UserProfile& profile,
                                          uint32_t exerciseCalories) {
    if (day.level() == kLevelNone) {
        return std::nullopt;
    }
    const WholeResult weight = weightToWhole(day.weight(), false);
    if (!weight.ok || weight.value < 0 || profile.age() < 0 || profile.height() < 0.0f) {
        return std::nullopt;
    }
    const auto perDay = planCaloriesPerDay(freshPlan(profile));
    if (!perDay || *perDay < 0) {
        return std::nullopt;
    }
    // 32-bit arithmetic, as the figures are kept.
    return static_cast<int32_t>(static_cast<uint32_t>(day.bmr()) - static_cast<uint32_t>(*perDay) +
                                exerciseCalories);
}

std::string foodBudgetText(const DayRecord* day, const UserProfile& profile) {
    const std::optional<int32_t> budget = foodBudgetCalories(day, profile);
    return budget ? calText(*budget) : std::string(kNoBudgetText);
}

std::vector<BudgetSection> foodBudgetPage(const DayRecord* day, const UserProfile& profile) {
    const bool metric = profile.metric();
    std::string currentWeight = day != nullptr ? weightText(day->weight(), metric) : "";
    if (currentWeight.empty()) {
        currentWeight = "Please input daily weight.";
    }
    const float caloriesIn = day != nullptr ? day->totals()[kCalories] : 0.0f;
    const int64_t bmr = day != nullptr ? day->bmr() : 0;
    const int64_t exercise = day != nullptr ? day->exerciseCalories : 0;
    return {
        {"Weight",
         {{"Current Weight:", currentWeight},
          {"Target Weight:", weightText(profile.goalWeight(), metric)},
          {"Target Date:", longDateText(profile.goalDate())}}},
        {"Meals",
         {{"Calories In:", calText(roundedCalories(caloriesIn))},
          {"Food budget:", foodBudgetText(day, profile)},
          {"", kBudgetFormulaText}}},
        {"Activity Level",
         {{"Calories Out:", calText(bmr)},
          {"", "The calories you burned during the day through work and at rest."}}},
        {"Exercise",
         {{"Calories Out:", calText(exercise)},
          {"", "The calories you burn during the day through exercise."}}},
        {"Goals", {{"", goalSentence(freshPlan(profile), metric)}}},
    };
}

FoodBudgetBox foodBudgetBox(const DayRecord* day, const UserProfile& profile) {
    const std::optional<int32_t> budget = foodBudgetCalories(day, profile);
    return {"Food Budget",
            kBudgetIntro + (budget ? std::to_string(*budget) + " calories." : kNoBudgetText),
            "Food = BMR + Exercise - Goal", "Daily Calorie Goal",
            goalSentence(freshPlan(profile), profile.metric())};
}

}  // namespace nutrovex
