#include "forms/foods/MealsForm.h"

#include <cstdio>

#include "calc/TargetProgress.h"
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

MealsView MealsForm::view() const {
    const DayRecord* day = m_days->currentDay();
    MealsView v;
    v.date = longDateText(m_days->currentDate());
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const Nutrients totals = day ? groupTotals(*day, g) : Nutrients{};
        v.groups[static_cast<std::size_t>(g)] =
            m_state->mealsShowFats ? column(totals, {kFiber, kFat, kSaturatedFat})
                                   : column(totals, {kCalories, kCarbohydrate, kProtein});
    }
    const Nutrients totals = day ? computeDayTotals(*day) : Nutrients{};
    v.summary = {column(totals, {kCalories, kCarbohydrate, kProtein}),
                 column(totals, {kFiber, kFat, kSaturatedFat})};
    v.targetLines = dayTargetLines(m_targets, day, m_days->store().profile);
    return v;
}

Outcome MealsForm::command(Command) {
    m_state->mealsShowFats = !m_state->mealsShowFats;
    return {};
}

FoodGridForm MealsForm::groupForm(int group) const {
    return FoodGridForm(*m_catalogue, *m_days, *m_state, group);
}

}  // namespace nutrovex
