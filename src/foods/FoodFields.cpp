#include "foods/FoodFields.h"

#include <algorithm>
#include <cstdio>

#include "core/Format.h"
#include "core/ServingUnits.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/FoodFinder.h"
#include "foods/FoodLogRows.h"

namespace nutrovex {

namespace {

// Gram fields in the order a refusal looks at them.
constexpr std::pair<int, FoodField> kGramFocusOrder[] = {{kProtein, FoodField::Protein},
                                                         {kFat, FoodField::Fat},
                                                         {kCarbohydrate, FoodField::Carbohydrate},
                                                         {kFiber, FoodField::Fiber},
                                                         {kSaturatedFat, FoodField::SaturatedFat}};

double clampField(double value, double top) {
    if (!(value >= 0.0)) {
        return 0.0;
    }
    return value > top ? top : value;
}

}  // namespace

std::optional<ServingUnit> FoodValueFields::unit() const {
    if (unitIndex < 0 || static_cast<std::size_t>(unitIndex) >= units.size()) {
        return std::nullopt;
    }
    return units[static_cast<std::size_t>(unitIndex)];
}

bool FoodValueFields::selectUnit(ServingUnit unit) {
    const auto it = std::find(units.begin(), units.end(), unit);
    unitIndex = it == units.end() ? -1 : static_cast<int>(it - units.begin());
    return unitIndex >= 0;
}

void FoodValueFields::clearValues() {
    amount.reset();
    calories.reset();
    for (auto& g : grams) {
        g.reset();
    }
}

std::vector<ServingUnit> allUnits() {
    return {kServingUnits.begin(), kServingUnits.end()};
}

std::vector<ServingUnit> loggingUnits(const FoodItem& item) {
    std::vector<ServingUnit> units;
    for (const ServingUnit u : kServingUnits) {
        const ServingQuantity& ref = item.referenceFor(u);
        const bool fromReference =
            ref.amount != 0.0f && isKnownUnit(ref.unit) && unitsCompatible(ref.unit, u);
        if (fromReference || u == item.serving.unit) {
            units.push_back(u);
        }
    }
    // Only a food without any reference serving (or with nothing usable) may be measured in
    // anything; an "item" reference allows just the item.
    const auto usable = [](const ServingQuantity& ref) {
        return ref.amount != 0.0f && isKnownUnit(ref.unit);
    };
    if (units.empty() || (!usable(item.ref1) && !usable(item.ref2))) {
        return allUnits();
    }
    return units;
}

void showItem(FoodValueFields& fields, const FoodItem& item, std::vector<ServingUnit> units) {
    fields.units = std::move(units);
    fields.amount = clampField(item.serving.amount, kMaxServingAmount);
    (void)fields.selectUnit(item.serving.unit);
    showValues(fields, item);
}

void showValues(FoodValueFields& fields, const FoodItem& item) {
    const int calories = shownCalories(item.shownNutrient(kCalories));
    fields.calories = static_cast<uint32_t>(std::max(calories, 0));
    for (int n = 1; n < kNutrientCount; ++n) {
        fields.grams[static_cast<std::size_t>(n)] =
            clampField(item.shownNutrient(n), kMaxGramField);
    }
}

bool capCaloriesField(FoodValueFields& fields) {
    if (fields.calories && *fields.calories > kMaxCaloriesField) {
        fields.calories = kMaxCaloriesField;
        return true;
    }
    return false;
}

void caloriesTyped(FoodValueFields& fields, FoodItem& working, std::optional<uint32_t> calories) {
    fields.calories = calories;
    if (calories) {
        working.setNutrient(kCalories, static_cast<float>(*calories));
    }
}

void gramsTyped(FoodValueFields& fields, FoodItem& working, int nutrient,
                std::optional<double> grams) {
    if (nutrient <= kCalories || nutrient >= kNutrientCount) {
        return;
    }
    fields.grams[static_cast<std::size_t>(nutrient)] = grams;
    if (grams) {
        working.setNutrient(nutrient, static_cast<float>(*grams));
    }
}

bool caloriesFieldLeft(FoodValueFields& fields, FoodItem& working) {
    if (!capCaloriesField(fields)) {
        return false;
    }
    working.setNutrient(kCalories, static_cast<float>(*fields.calories));
    return true;
}

FoodField firstInvalidField(const FoodValueFields& fields) {
    // The amount is stored in single precision: 0.005 must pass as the float it becomes.
    if (!fields.amount ||
        !(static_cast<float>(*fields.amount) >= static_cast<float>(kMinServingAmount))) {
        return FoodField::Amount;
    }
    if (!fields.unit()) {
        return FoodField::Unit;
    }
    if (!fields.calories) {
        return FoodField::Calories;
    }
    for (const auto& [nutrient, field] : kGramFocusOrder) {
        if (!fields.grams[static_cast<std::size_t>(nutrient)]) {
            return field;
        }
    }
    return FoodField::None;
}

bool setNutrientReportingClamp(FoodItem& item, int nutrient, float value) {
    item.setNutrient(nutrient, value);
    return value > item.nutrients[static_cast<std::size_t>(nutrient)];
}

FoodItem buildEntry(const FoodItem& working, const FoodValueFields& fields, bool withMeal) {
    FoodItem entry = working;
    const ServingQuantity serving{static_cast<float>(fields.amount.value_or(0.0)),
                                  fields.unit().value_or(ServingUnit::Pinch), working.serving.sub};
    entry.serving = serving;
    entry.setReference(serving);  // the serving is its own reference: ratio 1
    (void)setNutrientReportingClamp(entry, kCalories,
                                    static_cast<float>(fields.calories.value_or(0)));
    for (int n = 1; n < kNutrientCount; ++n) {
        (void)setNutrientReportingClamp(
            entry, n, static_cast<float>(fields.grams[static_cast<std::size_t>(n)].value_or(0.0)));
    }
    if (withMeal) {
        entry.meal = static_cast<uint16_t>(fields.meal);
    }
    return entry;
}

uint16_t mealForHour(int hour) {
    if (hour >= 5 && hour <= 9) {
        return 0;
    }
    if (hour >= 11 && hour <= 13) {
        return 1;
    }
    if (hour >= 16 && hour <= 19) {
        return 2;
    }
    return 3;
}

}  // namespace nutrovex
