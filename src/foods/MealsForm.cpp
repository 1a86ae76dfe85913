#include "foods/MealsForm.h"

#include <cstdio>

#include "calc/Totals.h"

namespace nutrovex {

std::string mealsValueText(int nutrient, float value) {
    char text[48];
    if (nutrient == kCalories) {
        std::snprintf(text, sizeof text, "%1.0f", static_cast<double>(value));
    } else {
        std::snprintf(text, sizeof text, "%1.1fg", static_cast<double>(value));
    }
    return text;
}

const char* nutrientLabel(int nutrient) {
    static const char* const kLabels[kNutrientCount] = {"Cal",  "Carb", "Fib",
                                                        "Prot", "Fat",  "SFat"};
    return nutrient >= 0 && nutrient < kNutrientCount ? kLabels[nutrient] : "";
}

MealsColumn MealsForm::column(const Nutrients& totals, std::array<int, 3> nutrients) const {
    MealsColumn c;
    for (std::size_t i = 0; i < 3; ++i) {
        const int n = nutrients[i];
        c.labels[i] = nutrientLabel(n);
        c.values[i] = mealsValueText(n, totals[static_cast<std::size_t>(n)]);
    }
    return c;
}

MealsColumn MealsForm::groupCell(int group) const {
    const Nutrients totals = m_day ? groupTotals(*m_day, group) : Nutrients{};
    return *m_showFats ? column(totals, {kFiber, kFat, kSaturatedFat})
                       : column(totals, {kCalories, kCarbohydrate, kProtein});
}

std::array<MealsColumn, 2> MealsForm::summary() const {
    const Nutrients totals = m_day ? computeDayTotals(*m_day) : Nutrients{};
    return {column(totals, {kCalories, kCarbohydrate, kProtein}),
            column(totals, {kFiber, kFat, kSaturatedFat})};
}

}  // namespace nutrovex
