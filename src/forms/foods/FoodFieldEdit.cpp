#include "forms/foods/FoodFieldEdit.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "core/ServingUnits.h"
#include "foods/FoodLogRows.h"

namespace nutrovex {

namespace {

std::optional<double> numberOf(std::string_view text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::string copy(text);
    return std::strtod(copy.c_str(), nullptr);
}

std::optional<uint32_t> wholeOf(std::string_view text) {
    if (text.empty()) {
        return std::nullopt;
    }
    uint64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = std::min<uint64_t>(value * 10 + static_cast<uint64_t>(c - '0'), 0xFFFFFFFFu);
    }
    return static_cast<uint32_t>(value);
}

int gramNutrient(FoodField field) {
    switch (field) {
        case FoodField::Carbohydrate:
            return kCarbohydrate;
        case FoodField::Fiber:
            return kFiber;
        case FoodField::Protein:
            return kProtein;
        case FoodField::Fat:
            return kFat;
        case FoodField::SaturatedFat:
            return kSaturatedFat;
        default:
            return -1;
    }
}

}  // namespace

std::string numberText(std::optional<double> value) {
    if (!value) {
        return {};
    }
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", *value);
    return text;
}

bool editValueField(FoodValueFields& fields, FoodItem& working, FoodField field,
                    std::string_view text) {
    switch (field) {
        case FoodField::Amount:
            fields.amount = numberOf(text);
            working.serving.amount = static_cast<float>(fields.amount.value_or(0.0));
            working.updateRatio();
            showValues(fields, working);
            return true;
        case FoodField::Unit: {
            fields.unitIndex = -1;
            for (std::size_t i = 0; i < fields.units.size(); ++i) {
                if (text == unitName(fields.units[i])) {
                    fields.unitIndex = static_cast<int>(i);
                }
            }
            const std::optional<ServingUnit> unit = fields.unit();
            if (!unit) {
                return true;
            }
            working.serving.unit = *unit;
            working.updateRatio();
            fields.amount =
                std::clamp(static_cast<double>(working.serving.amount), 0.0, kMaxServingAmount);
            showValues(fields, working);
            return true;
        }
        case FoodField::Calories:
            caloriesTyped(fields, working, wholeOf(text));
            (void)caloriesFieldLeft(fields, working);
            return true;
        case FoodField::Meal:
            fields.meal = -1;
            for (uint16_t meal = 0; meal < kMealCount; ++meal) {
                if (text == mealName(meal)) {
                    fields.meal = meal;
                }
            }
            return true;
        default:
            if (const int nutrient = gramNutrient(field); nutrient > 0) {
                gramsTyped(fields, working, nutrient, numberOf(text));
                return true;
            }
            return false;
    }
}

}  // namespace nutrovex
