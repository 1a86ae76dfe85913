#include "core/MacroTargets.h"

#include <cmath>

#include "core/FoodItem.h"
#include "core/Format.h"

namespace nutrovex {

const char* targetKey(TargetNutrient n) {
    switch (n) {
        case TargetNutrient::Protein:
            return "protein";
        case TargetNutrient::Carbohydrate:
            return "carbohydrate";
        case TargetNutrient::Fat:
            return "fat";
        case TargetNutrient::Fiber:
            return "fiber";
        case TargetNutrient::SaturatedFat:
            break;
    }
    return "saturatedFat";
}

const char* targetLabel(TargetNutrient n) {
    switch (n) {
        case TargetNutrient::Protein:
            return "Protein";
        case TargetNutrient::Carbohydrate:
            return "Carbohydrate";
        case TargetNutrient::Fat:
            return "Fat";
        case TargetNutrient::Fiber:
            return "Fiber";
        case TargetNutrient::SaturatedFat:
            break;
    }
    return "Saturated fat";
}

int targetNutrientIndex(TargetNutrient n) {
    switch (n) {
        case TargetNutrient::Protein:
            return kProtein;
        case TargetNutrient::Carbohydrate:
            return kCarbohydrate;
        case TargetNutrient::Fat:
            return kFat;
        case TargetNutrient::Fiber:
            return kFiber;
        case TargetNutrient::SaturatedFat:
            break;
    }
    return kSaturatedFat;
}

std::optional<double> caloriesPerGram(TargetNutrient n) {
    switch (n) {
        case TargetNutrient::Protein:
        case TargetNutrient::Carbohydrate:
            return 4.0;
        case TargetNutrient::Fat:
        case TargetNutrient::SaturatedFat:
            return 9.0;
        case TargetNutrient::Fiber:
            break;
    }
    return std::nullopt;
}

bool MacroTargets::any() const {
    for (const std::optional<MacroTarget>& t : targets) {
        if (t) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> targetsProblem(const MacroTargets& targets) {
    for (const TargetNutrient n : kTargetNutrients) {
        const std::optional<MacroTarget>& t = targets.of(n);
        if (!t) {
            continue;
        }
        const std::string label = targetLabel(n);
        if (t->kind == MacroTarget::Kind::Grams) {
            if (!(t->value >= 0.0)) {
                return label + " cannot be a negative number of grams.";
            }
            if (!(t->value <= kMaxTargetGrams)) {
                return label + " can be at most 9999 g.";
            }
        } else {
            if (!caloriesPerGram(n)) {
                return label +
                       " is set in grams only: it is not counted in the food budget's "
                       "calories.";
            }
            if (!(t->value >= 0.0 && t->value <= 100.0)) {
                return label + " must be a percentage from 0 to 100.";
            }
        }
    }
    double sum = 0.0;
    int percentages = 0;
    for (const TargetNutrient n :
         {TargetNutrient::Protein, TargetNutrient::Carbohydrate, TargetNutrient::Fat}) {
        const std::optional<MacroTarget>& t = targets.of(n);
        if (t && t->kind == MacroTarget::Kind::Percent) {
            sum += t->value;
            ++percentages;
        }
    }
    // Percentages are typed to a tenth: a set off by less than half of one adds up.
    constexpr double kSlack = 0.05 + 1e-9;
    if (percentages == 3 && std::fabs(sum - 100.0) > kSlack) {
        return formatText(
            "Protein, carbohydrate and fat add up to %.1f%% of the food budget; "
            "as percentages they must add up to 100%%.",
            sum);
    }
    if (sum > 100.0 + kSlack) {
        return formatText(
            "Protein, carbohydrate and fat add up to %.1f%% of the food budget, "
            "more than all of it.",
            sum);
    }
    return std::nullopt;
}

}  // namespace nutrovex
