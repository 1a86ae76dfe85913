#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace nutrovex {

// A person's daily targets for protein, carbohydrate and fat, a fibre target and a saturated-fat
// limit, kept in the person's Targets.json. Each is either grams a day or a percentage of the
// day's food budget, whose calories turn into grams at 4 (protein, carbohydrate) and 9 (fat,
// saturated fat) calories a gram. Fibre is in grams only: it gives the body little of its energy,
// so a share of the budget says nothing about it.
enum class TargetNutrient : uint8_t { Protein, Carbohydrate, Fat, Fiber, SaturatedFat };
inline constexpr std::size_t kTargetNutrientCount = 5;
inline constexpr std::array<TargetNutrient, kTargetNutrientCount> kTargetNutrients = {
    TargetNutrient::Protein, TargetNutrient::Carbohydrate, TargetNutrient::Fat,
    TargetNutrient::Fiber, TargetNutrient::SaturatedFat};

// "protein", "carbohydrate", "fat", "fiber", "saturatedFat": the names in the file and the tool.
[[nodiscard]] const char* targetKey(TargetNutrient n);
// "Protein", "Carbohydrate", "Fat", "Fiber", "Saturated fat": as screens and messages name them.
[[nodiscard]] const char* targetLabel(TargetNutrient n);
// The nutrient's index in a food's or day's six values (core/FoodItem.h).
[[nodiscard]] int targetNutrientIndex(TargetNutrient n);
// Calories a gram: 4, 4, 9, none for fibre, 9.
[[nodiscard]] std::optional<double> caloriesPerGram(TargetNutrient n);

// The most grams a target may ask for: a day's total of one nutrient stays far below it.
inline constexpr double kMaxTargetGrams = 9999.0;

struct MacroTarget {
    enum class Kind : uint8_t { Grams, Percent };
    Kind kind = Kind::Grams;
    double value = 0.0;

    friend bool operator==(const MacroTarget&, const MacroTarget&) = default;
};

struct MacroTargets {
    std::array<std::optional<MacroTarget>, kTargetNutrientCount> targets{};

    [[nodiscard]] const std::optional<MacroTarget>& of(TargetNutrient n) const {
        return targets[static_cast<std::size_t>(n)];
    }
    [[nodiscard]] std::optional<MacroTarget>& of(TargetNutrient n) {
        return targets[static_cast<std::size_t>(n)];
    }
    [[nodiscard]] bool any() const;

    friend bool operator==(const MacroTargets&, const MacroTargets&) = default;
};

// Why a set of targets is refused, as a screen says it; nullopt when it is accepted. Grams are
// from 0 to 9999, percentages from 0 to 100 and never for fibre; when protein, carbohydrate and
// fat are all percentages they add up to 100 (to a tenth of a percent), and any of them that are
// percentages add up to at most 100.
[[nodiscard]] std::optional<std::string> targetsProblem(const MacroTargets& targets);

}  // namespace nutrovex
