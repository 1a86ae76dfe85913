#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "forms/exercise/EditExerciseForm.h"
#include "forms/exercise/ExerciseChoice.h"
#include "logbook/DayCursor.h"
#include "logbook/ExerciseLog.h"

namespace nutrovex {

[[nodiscard]] ScreenMessage pasteLimitMessage();  // "Due to the maximum exercise limit ..."

// One exercise of the day as the grid shows it.
struct ExerciseRow {
    std::string name;
    std::string minutes;
    std::string calories;

    friend bool operator==(const ExerciseRow&, const ExerciseRow&) = default;
};

// The grid's selection: the rows from the anchor to the current one (either order), or every
// row after "Select All". Rows are the day's exercises, 0 first; -1 while the day has none.
struct ExerciseRowSelection {
    int anchor = -1;
    int current = -1;
    bool all = false;

    friend bool operator==(const ExerciseRowSelection&, const ExerciseRowSelection&) = default;
};

struct ExerciseLogView {
    std::string date;  // long form
    ExerciseChoiceView choice;
    std::vector<ExerciseRow> rows;
    ExerciseRowSelection selection;
    bool pasteEnabled = false;  // the clipboard holds exercises
};

// The exercise log of the logbook's current date: choose an exercise, compute or type its
// calories, log it; the day's exercises are copied, cut, pasted, deleted and edited. It writes
// into the day; the user's data is saved when the screen closes.
class ExerciseLogForm {
public:
    ExerciseLogForm(DayCursor& days, ExerciseClipboard& clipboard);

    using Field = ExerciseChoice::Field;
    enum class Command : uint8_t {
        Calories,   // fills the calories, or says what is missing
        Log,        // appends the entry (creating the day first when needed), clears the numbers
        Copy,       // the selected rows
        Cut,        // copy, then remove the rows; no question is asked
        Paste,      // appends the clipboard's entries, creating the day first when needed
        SelectAll,  // every row
        Delete,     // the selected rows, after confirmation
    };

    [[nodiscard]] ExerciseLogView view() const;
    void edit(Field field, std::string_view text) { m_choice.edit(field, text); }
    // The grid's anchor and current row; the rows come clamped to the day's exercises.
    void select(int anchor, int current);
    // The selected rows, first to last; empty without any.
    [[nodiscard]] std::vector<Position> selectedRows() const;
    [[nodiscard]] std::optional<ScreenMessage> confirmation(Command id) const;
    Outcome command(Command id);
    // "Edit..." on the first selected row; none without a selection.
    [[nodiscard]] std::optional<EditExerciseForm> editSelected() const;
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    [[nodiscard]] const ExerciseList* exercises() const;
    // Recomputes the changed day; the user's data is then to be saved.
    Notices changedDay(DayRecord& day);
    Outcome log();
    Outcome paste();
    Notices deleteRows(const std::vector<Position>& rows);
    // After the rows changed: a selection past them moves to the first row.
    void keepSelectionInRows();
    void selectRow(int row);

    DayCursor* m_days;
    ExerciseClipboard* m_clipboard;
    ExerciseChoice m_choice;
    ExerciseRowSelection m_selection;
};

}  // namespace nutrovex
