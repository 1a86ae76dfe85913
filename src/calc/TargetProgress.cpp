#include "calc/TargetProgress.h"

#include <cmath>

#include "calc/FoodBudget.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/Format.h"

namespace nutrovex {

namespace {

bool met(TargetNutrient n, double grams, double eaten) {
    switch (n) {
        case TargetNutrient::Fiber:
            return eaten >= grams;
        case TargetNutrient::SaturatedFat:
            return eaten <= grams;
        case TargetNutrient::Protein:
        case TargetNutrient::Carbohydrate:
        case TargetNutrient::Fat:
            break;
    }
    return std::fabs(eaten - grams) <= grams * kTargetTolerance;
}

}  // namespace

TargetGrams targetGramsOf(const Nutrients& totals) {
    TargetGrams grams{};
    for (const TargetNutrient n : kTargetNutrients) {
        grams[static_cast<std::size_t>(n)] =
            totals[static_cast<std::size_t>(targetNutrientIndex(n))];
    }
    return grams;
}

TargetProgress targetProgress(const MacroTargets& targets, std::optional<int32_t> budget,
                              const TargetGrams& eaten) {
    TargetProgress progress;
    // A budget of nothing has no shares.
    const std::optional<double> calories =
        budget && *budget > 0 ? std::optional<double>(*budget) : std::nullopt;
    bool allMet = true;
    for (const TargetNutrient n : kTargetNutrients) {
        TargetLine& line = progress.lines[static_cast<std::size_t>(n)];
        line.nutrient = n;
        line.target = targets.of(n);
        line.eaten = eaten[static_cast<std::size_t>(n)];
        const std::optional<double> perGram = caloriesPerGram(n);
        if (calories && perGram) {
            // Products first: whole figures then divide exactly where they can.
            line.eatenPercent = line.eaten * *perGram * 100.0 / *calories;
        }
        if (!line.target) {
            continue;
        }
        progress.anySet = true;
        if (line.target->kind == MacroTarget::Kind::Grams) {
            line.grams = line.target->value;
            if (calories && perGram) {
                line.percent = line.target->value * *perGram * 100.0 / *calories;
            }
        } else if (calories && perGram) {
            line.percent = line.target->value;
            line.grams = *calories * line.target->value / (100.0 * *perGram);
        }
        if (line.grams) {
            line.left = *line.grams - line.eaten;
            line.within = met(n, *line.grams, line.eaten);
        }
        allMet = allMet && line.within;
    }
    progress.dayWithin = progress.anySet && allMet;
    return progress;
}

TargetProgress dayTargetProgress(const MacroTargets& targets, const DayRecord& day,
                                 const UserProfile& profile) {
    return targetProgress(targets, foodBudgetCalories(day, profile, exerciseTotals(day).calories),
                          computeDayTotals(day));
}

std::string targetLineText(const TargetLine& line) {
    if (!line.target) {
        return {};
    }
    const char* label = targetLabel(line.nutrient);
    if (!line.grams) {
        return formatText("%s: %.1f g; %.1f%% of the food budget, which this day does not have",
                          label, line.eaten, line.target->value);
    }
    const char* limit = line.nutrient == TargetNutrient::SaturatedFat ? "at most " : "";
    const double left = line.left.value_or(0.0);
    // A left-over that rounds to nothing is not "over".
    if (left >= -0.05) {
        return formatText("%s: %.1f g of %s%.1f g, %.1f g left", label, line.eaten, limit,
                          *line.grams, std::fabs(left));
    }
    return formatText("%s: %.1f g of %s%.1f g, %.1f g over", label, line.eaten, limit, *line.grams,
                      -left);
}

std::vector<std::string> dayTargetLines(const MacroTargets* targets, const DayRecord* day,
                                        const UserProfile& profile) {
    std::vector<std::string> lines;
    if (targets == nullptr || !targets->any()) {
        return lines;
    }
    const TargetProgress progress = day != nullptr
                                        ? dayTargetProgress(*targets, *day, profile)
                                        : targetProgress(*targets, std::nullopt, TargetGrams{});
    for (const TargetLine& line : progress.lines) {
        if (std::string text = targetLineText(line); !text.empty()) {
            lines.push_back(std::move(text));
        }
    }
    return lines;
}

}  // namespace nutrovex
