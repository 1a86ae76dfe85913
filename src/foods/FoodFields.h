#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodItem.h"

namespace nutrovex {

// The controls of the food forms that a refusal can put the focus on.
enum class FoodField : uint8_t {
    None,
    Name,
    Amount,
    Unit,
    Calories,
    Carbohydrate,
    Fiber,
    Protein,
    Fat,
    SaturatedFat,
    Cancel,
    Meal,
    // The lists of the forms that choose a food.
    Group,
    Category,
    Food,
};

inline constexpr std::size_t kAmountFieldChars = 8;
inline constexpr std::size_t kCaloriesFieldChars = 5;
inline constexpr std::size_t kGramFieldChars = 6;
inline constexpr int kAmountDecimals = 2;
inline constexpr int kGramDecimals = 1;
inline constexpr double kMinServingAmount = 0.005;
inline constexpr double kMaxServingAmount = 10000.0;
inline constexpr uint32_t kMaxCaloriesField = 10000;
inline constexpr double kMaxGramField = 1000.0;

inline constexpr const char* kInvalidNutrientMessage = "You have an invalid nutrient value.";
inline constexpr const char* kDuplicateFoodMessage = "You entered a duplicate or invalid name.";
inline constexpr const char* kDuplicateCategoryMessage =
    "You entered a duplicate or invalid category.";

// The value fields of every food form as the screen holds them: numeric fields hold a value or
// nothing (left empty), the digits-only calories edit a whole number or nothing.
struct FoodValueFields {
    std::optional<double> amount;
    std::vector<ServingUnit> units;  // the units offered, in list order
    int unitIndex = -1;              // the selected list position; -1 when none
    std::optional<uint32_t> calories;
    std::array<std::optional<double>, kNutrientCount> grams;  // by nutrient; [kCalories] unused
    int meal = -1;

    [[nodiscard]] std::optional<ServingUnit> unit() const;
    // Selects the unit in the list; false (nothing selected) when it is not offered.
    bool selectUnit(ServingUnit unit);
    // Empties the seven value fields.
    void clearValues();
};

// Every unit: the catalogue's editors define the reference serving themselves.
[[nodiscard]] std::vector<ServingUnit> allUnits();
// The units a logged serving of the item can be measured in: those with a reference serving it
// converts from, and the item's own serving unit. All units when the item has no reference.
// An "item" reference alone offers only "item": other units would measure against nothing.
[[nodiscard]] std::vector<ServingUnit> loggingUnits(const FoodItem& item);

// Shows an item: amount and unit of its serving, then its values.
void showItem(FoodValueFields& fields, const FoodItem& item, std::vector<ServingUnit> units);
// The six values as shown for the serving in use: calories × ratio + 0.5 cut to a whole number,
// grams × ratio, each held to its field's range.
void showValues(FoodValueFields& fields, const FoodItem& item);
// The calories field losing the focus: more than 10000 becomes 10000. True when it did.
bool capCaloriesField(FoodValueFields& fields);

// The value fields typed into, for the forms that keep a working copy of the item: the typed value
// goes into the field and, when it is a number, through the clamping setter into the item.
void caloriesTyped(FoodValueFields& fields, FoodItem& working, std::optional<uint32_t> calories);
void gramsTyped(FoodValueFields& fields, FoodItem& working, int nutrient,
                std::optional<double> grams);
// The calories field losing the focus: capped as capCaloriesField, the item following.
bool caloriesFieldLeft(FoodValueFields& fields, FoodItem& working);

// The first field that refuses the form, in focus order (amount, unit, calories, protein, fat,
// carbohydrate, fiber, saturated fat), or None.
[[nodiscard]] FoodField firstInvalidField(const FoodValueFields& fields);

// Sets a nutrient through the clamping setter; true when the value was cut at the top.
bool setNutrientReportingClamp(FoodItem& item, int nutrient, float value);

// The entry a valid form stores: the working item with the fields' serving made its reference
// serving too (ratio 1), calories and grams from the fields through the clamping setters, and
// the meal when the form has one.
[[nodiscard]] FoodItem buildEntry(const FoodItem& working, const FoodValueFields& fields,
                                  bool withMeal);

// The meal preselected at a local hour: 5-9 breakfast, 11-13 lunch, 16-19 dinner, and every
// other hour (the gaps included, deliberately) a snack.
[[nodiscard]] uint16_t mealForHour(int hour);

}  // namespace nutrovex
