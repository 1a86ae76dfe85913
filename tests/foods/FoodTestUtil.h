#pragma once

#include <cstdint>

#include "core/FoodItem.h"

namespace nutrovex::test {

// A food as the day's lists hold it: logged, with a key, in a meal and a group, served in items.
inline FoodItem loggedFood(const char* name, uint16_t meal, uint16_t group, uint32_t key,
                           float calories, float amount = 1.0f) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.meal = meal;
    f.group = group;
    f.key.value = key;
    f.loggedFlag = 1;
    f.setReference({amount, ServingUnit::Item, 0});
    f.setServing({amount, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    return f;
}

}  // namespace nutrovex::test
