#include "core/FoodItem.h"

#include "core/ServingUnits.h"

namespace nutrovex {

const char* const kFoodGroupNames[9] = {"Sweets, Fats, Oils",        "Milk, Yogurt, Cheese",
                                        "Meat, Poultry, Fish, Eggs", "Vegetables",
                                        "Fruits, Fruit Juice",       "Bread, Cereal, Rice, Pasta",
                                        "Drinks, Beer, Wine, Soda",  "Restaurants, Other",
                                        "Summary (All Foods)"};

const char* const kMealNames[kMealCount] = {"Breakfast", "Lunch", "Dinner", "Snack"};

float clampNutrient(int nutrient, float value) {
    const float top = nutrient == kCalories ? kMaxFoodCalories : kMaxNutrientGrams;
    if (!(value >= 0.0f)) {  // negative or NaN
        return 0.0f;
    }
    return value > top ? top : value;
}

void FoodItem::updateRatio() {
    ratio = servingFactor(referenceFor(serving.unit), serving);
}

void FoodItem::setServing(const ServingQuantity& s) {
    serving = s;
    updateRatio();
}

void FoodItem::setReference(const ServingQuantity& s, bool keepOther) {
    if (s.isWeight()) {
        ref1 = s;
        if (!keepOther) {
            ref2 = {};
        }
    } else {
        ref2 = s;
        if (!keepOther) {
            ref1 = {};
        }
    }
    updateRatio();
}

void FoodCategory::copyFrom(const FoodCategory& other) {
    if (this == &other) {
        return;
    }
    key = other.key;
    byte = other.byte;
    name = other.name;
    foods.assign(other.foods.begin(), other.foods.end());
}

}  // namespace nutrovex
