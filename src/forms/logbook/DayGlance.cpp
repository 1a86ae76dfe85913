#include "forms/logbook/DayGlance.h"

#include <cmath>
#include <optional>

#include "calc/Bmr.h"
#include "calc/FoodBudget.h"
#include "calc/Goals.h"
#include "calc/TargetProgress.h"
#include "core/DayRecord.h"
#include "core/Format.h"
#include "core/MacroTargets.h"
#include "core/ServingUnits.h"
#include "core/UserProfile.h"
#include "foods/FoodLogRows.h"

namespace nutrovex {

namespace {

std::string calories(long value) {
    return formatText("%ld cal", value);
}

// Rounded as the logbook's Meals figure rounds them, so the glance and the figures agree.
long roundedCalories(double value) {
    if (!std::isfinite(value) || std::fabs(value) > 2e9) {
        return 0;
    }
    return static_cast<long>(std::round(value));
}

std::optional<int32_t> goalCaloriesPerDay(const UserProfile& profile) {
    GoalPlan plan = profile.plan();
    computeGoalPlan(plan, profile.startWeight(), profile.startDate(), profile.goalWeight(),
                    profile.goalDate());
    return planCaloriesPerDay(plan);
}

bool weighedIn(const DayRecord* day) {
    if (day == nullptr) {
        return false;
    }
    const WholeResult w = weightToWhole(day->weight(), false);
    return w.ok && w.value >= 0;
}

bool profileMeasured(const UserProfile& profile) {
    return profile.age() >= 0 && profile.height() >= 0.0f;
}

// Why the day has no food budget, in the order the budget needs its inputs.
std::string missingBudgetReason(const DayRecord* day, const UserProfile& profile) {
    if (!weighedIn(day)) {
        return "No food budget: weigh in on this day to get its BMR.";
    }
    if (day->level() == kLevelNone) {
        return "No food budget: choose the day's activity level.";
    }
    if (!profileMeasured(profile)) {
        return "No food budget: enter your age and height in Personal Info.";
    }
    return "No food budget: set a weight goal to lose or keep weight.";
}

std::string bmrNote(const DayRecord* day, const UserProfile& profile) {
    if (day != nullptr && day->bmr() != 0) {
        return {};
    }
    if (!weighedIn(day)) {
        return "BMR is 0: no weigh-in on this day.";
    }
    if (day->level() == kLevelManual) {
        return "BMR is 0: it was entered by hand.";
    }
    if (!profileMeasured(profile)) {
        return "BMR is 0: your age and height are missing.";
    }
    return "BMR is 0: no activity level on this day.";
}

void addLine(GlanceGroup& group, GlanceLine line) {
    if (group.lines.size() < kGlanceLinesPerGroup) {
        group.lines.push_back(std::move(line));
    }
}

void countMore(GlanceGroup& group, std::size_t count) {
    if (count > group.lines.size()) {
        group.more = formatText("and %zu more", count - group.lines.size());
    }
}

void addMeals(const DayRecord& day, DayGlance& g) {
    // The four meals, then foods of any other meal code under "Other".
    for (int meal = 0; meal <= kMealCount; ++meal) {
        GlanceGroup group{meal < kMealCount ? kMealNames[meal] : "Other", {}, {}, {}};
        double total = 0.0;
        std::size_t count = 0;
        for (int list = 0; list < kFoodGroupCount; ++list) {
            for (const FoodItem& food : day.group(list)) {
                const bool inMeal = meal < kMealCount ? food.meal == meal : food.meal >= kMealCount;
                if (!inMeal) {
                    continue;
                }
                const float cal = food.shownNutrient(kCalories);
                total += static_cast<double>(cal);
                ++count;
                const char* unit = unitName(food.serving.unit);
                addLine(group, {std::string(food.name.view()),
                                shortAmount(food.serving.amount) + (unit != nullptr && *unit != '\0'
                                                                        ? std::string(" ") + unit
                                                                        : std::string()),
                                calories(shownCalories(cal))});
            }
        }
        if (count == 0) {
            continue;
        }
        group.total = calories(roundedCalories(total));
        countMore(group, count);
        g.groups.push_back(std::move(group));
    }
}

void addExercises(const DayRecord& day, DayGlance& g) {
    if (day.exercises().empty()) {
        return;
    }
    GlanceGroup group{"Exercise", calories(static_cast<long>(day.exerciseCalories)), {}, {}};
    for (const ExerciseEntry& e : day.exercises()) {
        addLine(group, {std::string(e.name.view()), formatText("%u min", unsigned{e.minutes}),
                        calories(e.calories)});
    }
    countMore(group, day.exercises().size());
    g.groups.push_back(std::move(group));
}

bool sameDate(const CalendarDate& a, const CalendarDate& b) {
    return a.day == b.day && a.month == b.month && a.year == b.year;
}

}  // namespace

std::string shortAmount(float amount) {
    if (!std::isfinite(amount)) {
        return "?";
    }
    std::string text = formatText("%.2f", static_cast<double>(amount));
    if (const std::size_t dot = text.find('.'); dot != std::string::npos) {
        while (text.back() == '0') {
            text.pop_back();
        }
        if (text.back() == '.') {
            text.pop_back();
        }
    }
    return text == "-0" ? "0" : text;
}

DayGlance dayGlance(const CalendarDate& date, const DayRecord* day, const UserProfile& profile,
                    const MacroTargets* targets, const CalendarDate& today) {
    DayGlance g;
    if (day != nullptr) {
        addMeals(*day, g);
        addExercises(*day, g);
    }
    if (g.groups.empty()) {
        g.emptyText = "Nothing logged on this day.";
    }

    const bool isToday = sameDate(date, today);
    const long eaten = day != nullptr ? roundedCalories(day->totals()[kCalories]) : 0;
    if (const std::optional<int32_t> budget = foodBudgetCalories(day, profile)) {
        const long left = static_cast<long>(*budget) - eaten;
        if (left >= 0) {
            g.leftLabel = isToday ? "Left today:" : "Left:";
        } else {
            g.leftLabel = isToday ? "Over today:" : "Over:";
        }
        g.leftValue = calories(std::labs(left));
        const long goal = goalCaloriesPerDay(profile).value_or(0);
        g.leftExplanation = formatText(
            "Food budget %ld cal (BMR %ld + exercise %ld - goal %ld) less %ld cal eaten.",
            static_cast<long>(*budget), static_cast<long>(day->bmr()),
            static_cast<long>(day->exerciseCalories), goal, eaten);
    } else {
        g.leftLabel = isToday ? "Left today:" : "Left:";
        g.leftValue = "---";
        g.leftExplanation = missingBudgetReason(day, profile);
    }
    g.bmrNote = bmrNote(day, profile);

    g.targetLines = dayTargetLines(targets, day, profile);
    return g;
}

}  // namespace nutrovex
