#pragma once

#include <array>
#include <string>

#include "core/DayRecord.h"
#include "core/FoodItem.h"

namespace nutrovex {

inline constexpr const char* kSummaryLabel = "Summary:";
inline constexpr const char* kToggleNutrientsText = "Toggle Nutrients";

// A value of the meals screen: calories "%1.0f", the other nutrients "%1.1fg".
[[nodiscard]] std::string mealsValueText(int nutrient, float value);
// The short label of a nutrient: "Cal", "Carb", "Fib", "Prot", "Fat", "SFat".
[[nodiscard]] const char* nutrientLabel(int nutrient);

// Three label and value pairs, top to bottom.
struct MealsColumn {
    std::array<std::string, 3> labels;
    std::array<std::string, 3> values;
};

// The meals screen: the totals of each food group of the current day and of the whole day. Which
// three nutrients the group cells show is the caller's flag, kept for the whole run.
class MealsForm {
public:
    // day is null when the current date has no record: everything shows 0.
    MealsForm(const DayRecord* day, bool& showFats) : m_day(day), m_showFats(&showFats) {}

    // Calories, carbohydrate and protein, or fiber, fat and saturated fat after a toggle.
    [[nodiscard]] MealsColumn groupCell(int group) const;
    // The day's six totals in two columns: calories, carbohydrate, protein; fiber, fat, sat. fat.
    [[nodiscard]] std::array<MealsColumn, 2> summary() const;
    void toggleNutrients() { *m_showFats = !*m_showFats; }
    [[nodiscard]] bool showsFats() const { return *m_showFats; }

private:
    [[nodiscard]] MealsColumn column(const Nutrients& totals, std::array<int, 3> nutrients) const;

    const DayRecord* m_day;
    bool* m_showFats;
};

}  // namespace nutrovex
