#pragma once

#include <cstdint>
#include <vector>

#include "core/DayRecord.h"
#include "core/FoodItem.h"
#include "core/Position.h"

namespace nutrovex {

// The two orders a day list presents: its own order, which keeps meals together (breakfast,
// lunch, dinner, snack, each by name), and alphabetical. Any mode but 0 presents names.
inline constexpr uint16_t kSortByMeal = 0;
inline constexpr uint16_t kSortAlphabetical = 1;

// A list's positions in the order the sort mode presents. The alphabetical order is by name
// order; of byte-equal names the later insert stands first (entries read from a file keep their
// meal order among themselves).
[[nodiscard]] std::vector<Position> presentedOrder(const FoodList& list, uint16_t sortMode);
// The list index of the entry shown at a presented position, or kNoPosition.
[[nodiscard]] Position listIndexOf(const FoodList& list, uint16_t sortMode, Position presented);
// The presented position of the entry at a list index.
[[nodiscard]] Position presentedIndexOf(const FoodList& list, uint16_t sortMode, Position index);

// Where food goes in meal order: before the first entry of a later meal, or of the same meal
// whose name is not less than its own, so a newer food stands before an equal older one.
[[nodiscard]] std::size_t mealInsertionPoint(const FoodList& list, const FoodItem& food);
// Inserts food in its place; returns its presented position, or kNoPosition when memory fails
// (the list is then unchanged).
Position insertOrdered(FoodList& list, FoodItem food, uint16_t sortMode);

// Logs entry into the day: one copy into the list of its food group and one into the all-foods
// list. For a target group other than 8 the all-foods list is filled first, else the group list;
// the presented position in the list filled second is returned. On failure (no valid food group,
// no room left in the day's stored record, no memory) the day is unchanged and kNoPosition is
// returned.
Position insertLoggedFood(DayRecord& day, const FoodItem& entry, int targetGroup,
                          uint16_t sortMode);
// Removes the entry shown at a presented position of list `shownGroup` (0..8) with its twin in
// the other list (the all-foods list, or the list of the entry's food group).
bool removeLoggedFood(DayRecord& day, int shownGroup, uint16_t sortMode, Position presented);
// Replaces that entry and its twin by edited, placed again by the ordered insert; returns the new
// presented position in the shown list, or kNoPosition (and the day unchanged).
Position replaceLoggedFood(DayRecord& day, int shownGroup, uint16_t sortMode, Position presented,
                           const FoodItem& edited);

// The entry shown at a presented position, or null.
[[nodiscard]] const FoodItem* presentedFood(const DayRecord& day, int shownGroup, uint16_t sortMode,
                                            Position presented);

// Two copies of one logged food: every field equal, floats bit for bit.
[[nodiscard]] bool sameFood(const FoodItem& a, const FoodItem& b);

}  // namespace nutrovex
