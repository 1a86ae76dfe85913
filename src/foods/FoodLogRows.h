#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/DayRecord.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/DayFoods.h"

namespace nutrovex {

class UserStore;

inline constexpr const char* kFoodLogHeader = "Food Log";
inline constexpr const char* kNoFoodsText = "Use menu items to insert a food item.";
inline constexpr const char* kTotalsText = "Totals";
inline constexpr const char* kExerciseLogHeader = "Exercise Log";
// Drawn in a grid cell that has no row.
inline constexpr const char* kToggleHintText = "Use Nutrient Toggle to switch the nutrient values.";

inline constexpr uint16_t kNutrientViewCount = 3;

// How the day's foods are shown: the group chosen on the logbook screen (8 = all foods), the sort
// mode and which pair of nutrients a row shows. All three last for the whole run.
struct FoodLogView {
    int shownGroup = 0;
    uint16_t sortMode = kSortByMeal;
    uint16_t nutrientView = 0;
};

enum class FoodLogCommand : uint16_t {
    SortAlphabetical = 32813,
    SortByMeal = 32814,
    SortToggle = 32824,
    SortAlphaBlds = 32990,
    NutrientToggle = 32844,
};

// Sets or flips the sort mode or the nutrient view; the view is part of the user's data.
Notices applyViewCommand(FoodLogView& view, FoodLogCommand command);

enum class LogRowKind : uint8_t {
    FoodHeader,
    Food,
    NoFoods,
    FoodTotals,
    ExerciseHeader,
    Exercise,
    ExerciseTotals
};

// One row of the food log list, as texts. Headers, the no-food line and "Totals" are in text.
struct LogRow {
    LogRowKind kind = LogRowKind::Food;
    std::string text;  // food or exercise name, or the row's fixed text
    std::string serving;
    std::array<std::string, kNutrientCount> nutrients;  // in nutrient order
    std::string meal;
    std::string minutes;   // exercise rows
    std::string calories;  // exercise rows and the exercise totals
    // A food row's position in the presented order, an exercise row's index in the day.
    Position entry = kNoPosition;
};

struct FoodLogRows {
    std::vector<LogRow> rows;
    Position firstFoodRow = kNoPosition;  // the row index of the first food row, if any
    Position foodCount = 0;
};

// The rows of a day's food log list for one list (0..8), foods in the presented order, then the
// exercises. day is null when the date has no record.
[[nodiscard]] FoodLogRows foodLogRows(const DayRecord* day, int shownGroup, uint16_t sortMode);

// The two nutrient texts a food or totals row shows in a view: calories and carbohydrate,
// protein and fiber, or fat and saturated fat.
[[nodiscard]] std::pair<int, int> viewNutrients(uint16_t nutrientView);

// "%d  cal", "%1.1fg  Carb", "%1.1fg  Fib", "%1.1fg  Prot", "%1.1fg  Fat", "%1.1fg  SFat".
[[nodiscard]] std::string nutrientText(int nutrient, float value);
// "%1.2f %s": amount and unit name.
[[nodiscard]] std::string servingText(const ServingQuantity& serving);
// The meal's name, or an empty text for any other code.
[[nodiscard]] const char* mealName(uint16_t meal);
// Calories as shown: value + 0.5, cut to a whole number.
[[nodiscard]] int shownCalories(float value);

}  // namespace nutrovex
