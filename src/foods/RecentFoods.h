#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "core/UserStore.h"
#include "foods/FoodLogRows.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

inline constexpr std::size_t kRecentFoodCount = 20;
inline constexpr const char* kRecentLabel = "Recent:";
inline constexpr const char* kLogAgainText = "Lo&g Again";

// The last distinct foods the user logged, newest first: the latest day first and, within a day,
// the latest logged entry first (the higher key serial). Foods are the same when their names are
// byte for byte equal; each keeps the serving, values and meal it was last logged with.
[[nodiscard]] std::vector<FoodItem> recentFoods(const UserStore& store,
                                                std::size_t count = kRecentFoodCount);

// The entry text of a recent food: "name, serving".
[[nodiscard]] std::string recentFoodText(const FoodItem& food);

struct CopyOutcome {
    Notices notices;
    std::size_t copied = 0;
    // The presented position, in the shown list, of the last food copied.
    Position lastPosition = kNoPosition;
    // Set when the day had no room left for a food.
    std::optional<ScreenMessage> message;
};

// Logs a food again into the current day (created when missing) with its serving and values as
// they were, a fresh key and the given meal.
CopyOutcome logAgain(DayCursor& days, const FoodLogView& view, const FoodItem& food, uint16_t meal);

// Puts the entries of one meal that the day before the current date holds in the shown list
// (every group for the all-foods list) into the current day, created when needed.
CopyOutcome copyMealFromYesterday(DayCursor& days, const FoodLogView& view, uint16_t meal);

}  // namespace nutrovex
