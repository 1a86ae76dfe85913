#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/DayRecord.h"
#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/MacroTargets.h"
#include "core/ScreenMessage.h"
#include "foods/FoodRunState.h"
#include "forms/foods/FoodGridForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

inline constexpr const char* kSummaryLabel = "Summary:";

// A value of the meals screen: calories "%1.0f", the other nutrients "%1.1fg".
[[nodiscard]] std::string mealsValueText(int nutrient, float value);
// The short label of a nutrient: "Cal", "Carb", "Fib", "Prot", "Fat", "SFat".
[[nodiscard]] const char* nutrientLabel(int nutrient);

// Three label and value pairs, top to bottom.
struct MealsColumn {
    std::array<std::string, 3> labels;
    std::array<std::string, 3> values;
};

struct MealsView {
    std::string date;  // long form
    // Each food group: calories, carbohydrate and protein, or fiber, fat and saturated fat after
    // a toggle.
    std::array<MealsColumn, kFoodGroupCount> groups;
    // The day's six totals in two columns: calories, carbohydrate, protein; fiber, fat, sat. fat.
    std::array<MealsColumn, 2> summary;
    // The day against the person's targets, one line each ("Protein: 43.0 g of 70.0 g, 27.0 g
    // left"); empty when no target is set.
    std::vector<std::string> targetLines;
};

// The meals screen: the totals of each food group of the current day and of the whole day; a
// group opens its foods of the day. Which three nutrients the group cells show is kept for the
// whole run. Closing it writes what the screens opened from it changed.
class MealsForm {
public:
    // targets, when given, are the person's; the summary shows the day against them.
    MealsForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state,
              const MacroTargets* targets = nullptr)
        : m_catalogue(&catalogue), m_days(&days), m_state(&state), m_targets(targets) {}

    enum class Command : uint8_t { ToggleNutrients };

    [[nodiscard]] MealsView view() const;
    Outcome command(Command id);
    // The day's food screen of a group, 0 to 8 (8 for all foods).
    [[nodiscard]] FoodGridForm groupForm(int group) const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Both; }

private:
    [[nodiscard]] MealsColumn column(const Nutrients& totals, std::array<int, 3> nutrients) const;

    FoodCatalogue* m_catalogue;
    DayCursor* m_days;
    FoodRunState* m_state;
    const MacroTargets* m_targets;
};

}  // namespace nutrovex
