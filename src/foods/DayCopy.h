#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/ScreenMessage.h"
#include "core/UserStore.h"
#include "foods/FoodClipboard.h"
#include "foods/FoodLogRows.h"

namespace nutrovex {

// Copying logged foods and exercises to any date of a person: what to copy (the selected rows, a
// meal, a whole day) and the copy itself.

// Copies of the selected entries of the shown list, in presented order; the rows past the list's
// end are not there to copy.
[[nodiscard]] FoodList selectedEntries(const DayRecord& day, const FoodLogView& view,
                                       FoodSelection selection);
// Copies of one meal's entries of a list (0..7, or 8 for every group), in list order.
[[nodiscard]] FoodList mealEntries(const DayRecord& day, int shownGroup, uint16_t meal);

struct DayEntries {
    FoodList foods;  // group by group
    ExerciseList exercises;
};
// Every food (of the eight groups, each once) and every exercise of a day.
[[nodiscard]] DayEntries wholeDayEntries(const DayRecord& day);

// Dates a day can be kept under: 1/1/1904 to 12/31/2031, a day its month has.
[[nodiscard]] bool isStorableDate(const CalendarDate& date);

struct DayCopyReport {
    std::size_t foodsCopied = 0;
    std::size_t exercisesCopied = 0;
    // What the day had no room for, by name, in the order given.
    std::vector<std::string> foodsLeftOut;
    std::vector<std::string> exercisesLeftOut;
    bool dayCreated = false;
    Notices notices;
    // Set when anything was left out, or nothing could be copied at all.
    std::optional<ScreenMessage> message;

    [[nodiscard]] bool complete() const {
        return foodsLeftOut.empty() && exercisesLeftOut.empty() && !message;
    }
};

// Copies foods and exercises into the day of `date` of the store, created when it has none. Each
// copy is a new entry: a fresh key from the store's counter, the values, serving, meal and group
// (of a food) as they are. A day takes what fits in its stored record, trying every entry in
// turn, and the report names what it left out; a day made for a copy that took nothing is removed
// again. The day's stored totals follow its foods. `caption` titles the message.
DayCopyReport copyIntoDay(UserStore& store, const CalendarDate& date,
                          std::span<const FoodItem> foods, std::span<const ExerciseEntry> exercises,
                          const std::string& caption = "Copy To");

}  // namespace nutrovex
