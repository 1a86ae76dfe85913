#pragma once

#include <cstddef>
#include <optional>

#include "core/DayRecord.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/Confirmation.h"
#include "foods/FoodLogRows.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// A run of selected food rows: the first row's position in the presented order and how many.
struct FoodSelection {
    Position first = 0;
    Position count = 0;
};

[[nodiscard]] Confirmation confirmDeleteFoods();

// Deletes the selected entries of the shown list with their twins: the entry at the first
// position as many times as rows were selected. Nothing happens unless the whole selection lies
// within the food rows; when entries were deleted the user's data is to be saved.
Notices deleteFoodRows(DayRecord& day, const FoodLogView& view, FoodSelection selection);

struct PasteOutcome {
    Notices notices;
    std::size_t pasted = 0;  // every held food processed, inserted or not
    bool complete = false;   // pasted equals the clipboard's size
    std::optional<ScreenMessage> message;
    // The presented position of the last food inserted into the shown list.
    Position lastPosition = kNoPosition;
};

// The food grid's own clipboard: copies of logged foods, kept for the whole run and shared by
// every day and group.
class FoodClipboard {
public:
    [[nodiscard]] const FoodList& foods() const { return m_foods; }
    [[nodiscard]] bool canPaste() const { return !m_foods.empty(); }

    // Replaces the held foods by copies of the selected entries, in presented order; stops
    // quietly where the rows end.
    void copy(const DayRecord& day, const FoodLogView& view, FoodSelection selection);
    // Copies, then deletes without asking.
    Notices cut(DayRecord& day, const FoodLogView& view, FoodSelection selection);
    // Pastes into the current day, creating it when needed. Pasting into a group (not the
    // all-foods list) moves each food into that group.
    PasteOutcome paste(DayCursor& days, const FoodLogView& view) const;

private:
    FoodList m_foods;
};

}  // namespace nutrovex
