#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/FoodItem.h"
#include "core/MacroTargets.h"

namespace nutrovex {
class DayRecord;
class UserProfile;
}  // namespace nutrovex

namespace nutrovex {

// How far a day has come towards each of the person's targets. Every figure is in grams except
// the percentages, which are shares of the day's food budget in calories (4 a gram of protein or
// carbohydrate, 9 a gram of fat or saturated fat).
struct TargetLine {
    TargetNutrient nutrient = TargetNutrient::Protein;
    std::optional<MacroTarget> target;  // as set; the rest is meaningful only when set
    // The target in grams: as set, or its share of the budget; none for a percentage on a day
    // without a budget.
    std::optional<double> grams;
    // The target as a share of the budget; none for fibre or on a day without a budget.
    std::optional<double> percent;
    double eaten = 0.0;
    std::optional<double> eatenPercent;
    std::optional<double> left;  // grams - eaten: negative when more was eaten
    bool within = false;
};

// Protein, carbohydrate and fat are met within this share of their grams either way; fibre is met
// from its grams up, and the saturated-fat limit up to its grams.
inline constexpr double kTargetTolerance = 0.10;

struct TargetProgress {
    std::array<TargetLine, kTargetNutrientCount> lines{};
    bool anySet = false;
    // Every set target is met (and at least one is set): what the summary table marks.
    bool dayWithin = false;

    [[nodiscard]] const TargetLine& of(TargetNutrient n) const {
        return lines[static_cast<std::size_t>(n)];
    }
};

// Grams eaten of each target nutrient, in kTargetNutrients order.
using TargetGrams = std::array<double, kTargetNutrientCount>;
// The grams of a day's six totals (core/FoodItem.h order).
[[nodiscard]] TargetGrams targetGramsOf(const Nutrients& totals);

// The day's progress from its food budget (nullopt, or 0 or less, when it has none) and what was
// eaten.
[[nodiscard]] TargetProgress targetProgress(const MacroTargets& targets,
                                            std::optional<int32_t> budget,
                                            const TargetGrams& eaten);
[[nodiscard]] inline TargetProgress targetProgress(const MacroTargets& targets,
                                                   std::optional<int32_t> budget,
                                                   const Nutrients& totals) {
    return targetProgress(targets, budget, targetGramsOf(totals));
}

// A logged day's progress, as the meals screen, the food budget page, the logbook and the summary
// table show it: the day's food budget (its exercise counted afresh) and its totals, computed from
// its foods. The day's stored figures are not changed.
[[nodiscard]] TargetProgress dayTargetProgress(const MacroTargets& targets, const DayRecord& day,
                                               const UserProfile& profile);

// One line as a screen shows it: "Protein: 80.5 g of 150.0 g, 69.5 g left", "... 12.0 g over",
// "Saturated fat: 8.0 g of at most 20.0 g, 12.0 g left", "Protein: 80.5 g; 30.0% of the food
// budget, which this day does not have". Empty when the target is not set.
[[nodiscard]] std::string targetLineText(const TargetLine& line);

// The lines of every set target for a day (null: a date without a record, nothing eaten and no
// budget); empty when targets is null or sets none.
[[nodiscard]] std::vector<std::string> dayTargetLines(const MacroTargets* targets,
                                                      const DayRecord* day,
                                                      const UserProfile& profile);

}  // namespace nutrovex
