#include "calc/Totals.h"

#include "calc/Bmr.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {

Nutrients foodListTotals(const FoodList& foods) {
    Nutrients sums{};
    for (const FoodItem& food : foods) {
        for (int n = 0; n < kNutrientCount; ++n) {
            float& sum = sums[static_cast<std::size_t>(n)];
            sum += food.shownNutrient(n);
            if (sum > kMaxGroupTotal) {
                sum = kMaxGroupTotal;
            }
        }
    }
    return sums;
}

Nutrients groupTotals(const DayRecord& day, int group) {
    if (group == kAllFoodsGroup) {
        return computeDayTotals(day);
    }
    if (group < 0 || group >= kFoodGroupCount) {
        return {};
    }
    return foodListTotals(day.group(group));
}

Nutrients computeDayTotals(const DayRecord& day) {
    Nutrients totals{};
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const Nutrients sums = foodListTotals(day.group(g));
        for (std::size_t n = 0; n < totals.size(); ++n) {
            totals[n] += sums[n];
        }
    }
    return totals;
}

Nutrients dayTotals(DayRecord& day) {
    const Nutrients totals = computeDayTotals(day);
    day.setTotals(totals);
    return totals;
}

uint32_t wholeCalories(float calories) {
    // What a float-to-unsigned conversion does on the machines the files come from: truncate to
    // a 64-bit integer and keep its low 32 bits; NaN and values beyond that range give 0.
    if (!(calories > -9.2e18f && calories < 9.2e18f)) {
        return 0;
    }
    return static_cast<uint32_t>(static_cast<int64_t>(calories));
}

ExerciseTotals exerciseTotals(const DayRecord& day) {
    ExerciseTotals t;
    for (const ExerciseEntry& e : day.exercises()) {
        t.calories += e.calories;
        t.minutes += e.minutes;
    }
    if (t.calories > kMaxExerciseTotal) {
        t.calories = kMaxExerciseTotal;
    }
    if (t.minutes > kMaxExerciseTotal) {
        t.calories = kMaxExerciseTotal;  // deliberately the calories, not the minutes
    }
    return t;
}

void recomputeDay(DayRecord& day, const UserProfile& profile) {
    day.caloriesIn = wholeCalories(dayTotals(day)[kCalories]);
    if (day.level() >= kLevelBed && day.level() <= kLevelWalking) {
        const BmrResult r = computeBmr(profile, day.level(), day.weight());
        (void)day.setBmr(r.ok ? r.bmr
                              : 0);  // a BMR above 9999 leaves the old one, as setting it does
    }
    const ExerciseTotals t = exerciseTotals(day);
    day.exerciseCalories = t.calories;
    day.exerciseMinutes = t.minutes;
}

}  // namespace nutrovex
