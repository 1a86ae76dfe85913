#pragma once

#include <cstdint>
#include <optional>

#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/Confirmation.h"
#include "foods/FoodClipboard.h"
#include "foods/FoodLogRows.h"
#include "foods/FoodRunState.h"
#include "foods/RecentFoods.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// Selected grid rows, first to last (inclusive, either order).
struct RowRange {
    int first = 0;
    int last = -1;
};

// The day's food screen for one list (0..8): its rows and what its commands do to the current
// day. The sort mode and nutrient view are the run's own, shared with every other food screen.
class FoodGridForm {
public:
    FoodGridForm(DayCursor& days, FoodRunState& state, int shownGroup);

    [[nodiscard]] const FoodLogRows& rows() const { return m_rows; }
    [[nodiscard]] FoodLogView view() const;
    [[nodiscard]] int shownGroup() const { return m_group; }
    // The list's name: a food group's, or "Summary (All Foods)".
    [[nodiscard]] const char* title() const;
    // Reads the current day's rows again.
    void refresh();

    // The grid row of a food shown at a presented position, or -1.
    [[nodiscard]] int rowOfFood(Position presented) const;
    // The presented position of the food on a grid row, or none for any other row.
    [[nodiscard]] std::optional<Position> foodAtRow(int row) const;

    // Copy takes the food rows among the selected ones; Delete and Cut need every selected row
    // to be a food row.
    [[nodiscard]] bool canCopy(RowRange selected) const;
    [[nodiscard]] bool canDelete(RowRange selected) const;
    [[nodiscard]] bool canPaste() const { return m_state->clipboard.canPaste(); }

    void copy(RowRange selected);
    Notices cut(RowRange selected);
    [[nodiscard]] static Confirmation confirmDelete() { return confirmDeleteFoods(); }
    Notices deleteRows(RowRange selected);
    PasteOutcome paste();
    // Sorting and the nutrient view; both are part of the user's data.
    Notices command(FoodLogCommand command);
    CopyOutcome copyMealFromYesterday(uint16_t meal);

private:
    [[nodiscard]] std::optional<FoodSelection> foodRows(RowRange selected, bool whole) const;
    Notices changed(Notices notices);

    DayCursor* m_days;
    FoodRunState* m_state;
    int m_group;
    FoodLogRows m_rows;
};

}  // namespace nutrovex
