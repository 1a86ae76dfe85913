#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/FoodCatalogue.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/Confirmation.h"
#include "foods/FoodClipboard.h"
#include "foods/FoodLogRows.h"
#include "foods/FoodRunState.h"
#include "foods/RecentFoods.h"
#include "forms/foods/FoodItemForm.h"
#include "forms/foods/LogFoodForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// Selected grid rows, first to last (inclusive, either order).
struct RowRange {
    int first = 0;
    int last = -1;

    friend bool operator==(const RowRange&, const RowRange&) = default;
};

struct FoodGridView {
    const char* title = "";  // the list's name: a food group's, or "Summary (All Foods)"
    std::string date;        // the current date, long form
    FoodLogView log;         // the list, sort mode and nutrient view
    FoodLogRows rows;
    RowRange selection;
    // Copy takes the food rows among the selected ones; Delete and Cut need every selected row
    // to be a food row.
    bool canCopy = false;
    bool canDelete = false;
    bool canPaste = false;
};

// The day's food screen for one list (0..8): its rows and what its commands do to the current
// day. The sort mode and nutrient view are the run's own, shared with every other food screen.
class FoodGridForm {
public:
    FoodGridForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state, int shownGroup);

    enum class Command : uint8_t {
        Copy,
        Cut,
        Paste,   // selects the last food pasted; a message when not every food fitted
        Delete,  // after confirmation
        SortAlphabetical,
        SortByMeal,
        SortToggle,
        NutrientToggle,
        // Copy Meal From Yesterday: breakfast, lunch, dinner, snack.
        CopyBreakfast,
        CopyLunch,
        CopyDinner,
        CopySnack,
    };

    [[nodiscard]] FoodGridView view() const;
    // The grid's selected rows.
    void select(RowRange rows);
    // Selects the food at a presented position of a list, when that is this list: the row of a
    // food logged by another screen.
    void selectFood(int group, Position presented);
    [[nodiscard]] std::optional<Confirmation> confirmation(Command id) const;
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

    // The screens the grid opens: Edit on a food row edits that entry; on any other row, and for
    // Insert Food Item, Log Food opens on the list's group (the group it opened with last, for all
    // foods).
    [[nodiscard]] std::optional<FoodItemForm> editForm(int row) const;
    [[nodiscard]] LogFoodForm logFoodForm() const;

    // What Copy To and Save Meal as Recipe take: copies of the food rows among the selected ones,
    // or of one meal's entries (0 breakfast to 3 snack) of the list.
    [[nodiscard]] int shownGroup() const { return m_group; }
    [[nodiscard]] FoodList selectedFoods() const;
    [[nodiscard]] FoodList mealFoods(int meal) const;

private:
    [[nodiscard]] FoodLogView logView() const;
    [[nodiscard]] FoodLogRows rows() const;
    [[nodiscard]] int rowOfFood(const FoodLogRows& rows, Position presented) const;
    [[nodiscard]] std::optional<FoodSelection> foodRows(bool whole) const;
    Outcome copied(CopyOutcome outcome);

    FoodCatalogue* m_catalogue;
    DayCursor* m_days;
    FoodRunState* m_state;
    int m_group;
    RowRange m_selection;
};

}  // namespace nutrovex
