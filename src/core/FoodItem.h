#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/PackedKey.h"
#include "core/ServingQuantity.h"
#include "core/Text.h"

namespace nutrovex {

inline constexpr int kNutrientCount = 6;
enum Nutrient { kCalories = 0, kCarbohydrate, kFiber, kProtein, kFat, kSaturatedFat };
using Nutrients = std::array<float, kNutrientCount>;

inline constexpr int kFoodGroupCount = 8;  // groups 0..7; list 8 is every food of a day
inline constexpr int kAllFoodsGroup = 8;
extern const char* const kFoodGroupNames[9];

inline constexpr int kMealCount = 4;
extern const char* const kMealNames[kMealCount];

// The largest calories and grams of any other nutrient a food holds.
inline constexpr float kMaxFoodCalories = 10000.0f;
inline constexpr float kMaxNutrientGrams = 1000.0f;

// Calories to 0..10000, gram values to 0..1000.
[[nodiscard]] float clampNutrient(int nutrient, float value);

// A catalogue food, or a logged copy of one. ref1 is the weight reference serving, ref2 the
// volume-or-item one. The members are ordered to leave no padding but the last: a catalogue and
// a logbook hold hundreds of thousands of these.
struct FoodItem {
    PackedKey key;
    Text name;
    Text text2;
    ServingQuantity serving;
    ServingQuantity ref1;
    ServingQuantity ref2;
    Nutrients nutrients{};
    float ratio = 0.0f;
    uint16_t meal = 0;
    uint16_t group = 0;
    uint8_t loggedFlag = 0;
    // In memory only, never stored: the order in which entries came into their day list (0 for
    // entries read from a file), so that of two equal names the newer shows first alphabetically.
    uint16_t insertSerial = 0;

    // The reference serving that a serving of the given unit is measured against.
    [[nodiscard]] const ServingQuantity& referenceFor(ServingUnit unit) const {
        return (isVolumeUnit(unit) || unit == ServingUnit::Item) ? ref2 : ref1;
    }
    // Recomputes the serving ratio from the serving and its reference.
    void updateRatio();
    void setServing(const ServingQuantity& s);
    // A volume or item serving becomes ref2, a weight serving ref1; the other is cleared unless
    // keepOther is set.
    void setReference(const ServingQuantity& s, bool keepOther = false);
    void setNutrient(int nutrient, float value) {
        nutrients[static_cast<std::size_t>(nutrient)] = clampNutrient(nutrient, value);
    }
    // The nutrient for the serving in use: nutrient × ratio, in single precision.
    [[nodiscard]] float shownNutrient(int nutrient) const {
        return nutrients[static_cast<std::size_t>(nutrient)] * ratio;
    }
};

static_assert(sizeof(FoodItem) == 112);

using FoodList = std::vector<FoodItem>;

// A category of the food catalogue: its key, byte and name, and its foods.
struct FoodCategory {
    PackedKey key;
    uint8_t byte = 0;
    Text name;
    FoodList foods;

    // Copies key, byte and name, and a new copy of every food in order.
    void copyFrom(const FoodCategory& other);
};

}  // namespace nutrovex
