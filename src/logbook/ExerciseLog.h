#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "calc/ExerciseCatalog.h"
#include "core/ExerciseEntry.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

class DayRecord;

// The refusals and questions of the exercise screens.
[[nodiscard]] ScreenMessage weightNeededMessage();     // "You must enter your weight ..."
[[nodiscard]] ScreenMessage timeNeededMessage();       // "You must enter an exercise time ..."
[[nodiscard]] ScreenMessage specifyExerciseMessage();  // "Please specify exercise time ..."
[[nodiscard]] ScreenMessage pasteLimitMessage();       // "Due to the maximum exercise limit ..."
[[nodiscard]] ScreenMessage confirmDeleteExercises();  // "Are you sure ... exercises?"

// An edit that takes digits only, as a whole number: 0 when empty, not a number or past 65535.
[[nodiscard]] uint16_t countFromEdit(std::string_view text);

// The choice and the edits shared by the exercise log and the "Edit Exercise" dialog.
class ExerciseForm {
public:
    ExerciseForm() = default;
    // The edit dialog opens on a logged entry.
    explicit ExerciseForm(const ExerciseEntry& entry);

    [[nodiscard]] const ExerciseCursor& selection() const { return m_cursor; }
    // A new type sets its first variant and sub-variant (or none) and clears minutes and
    // calories.
    void chooseType(int16_t type);
    void chooseVariant(int16_t variant) { m_cursor.setVariant(variant); }
    void chooseSubVariant(int16_t sub) { m_cursor.setSubVariant(sub); }

    [[nodiscard]] bool userDefined() const { return m_cursor.type() == kUserDefinedExercise; }
    [[nodiscard]] bool variantsShown() const { return !userDefined(); }
    [[nodiscard]] bool variantsEnabled() const { return m_cursor.variantCount() > 0; }
    [[nodiscard]] bool subVariantsEnabled() const { return m_cursor.subVariantCount() > 0; }
    [[nodiscard]] bool nameShown() const { return userDefined(); }
    // "Log" needs both numbers; "Calories" needs the minutes and a catalogue exercise.
    [[nodiscard]] bool logEnabled() const { return !minutes.empty() && !calories.empty(); }
    [[nodiscard]] bool caloriesEnabled() const { return !minutes.empty() && !userDefined(); }

    // The "Calories" button: fills the calories edit from the day's weight and the minutes, or
    // gives the refusal to show. A user-defined exercise is left to the person.
    [[nodiscard]] std::optional<ScreenMessage> computeCalories(const DayRecord* day);
    // The entry the edits describe, or nullopt when minutes or calories read as 0 (the screen
    // shows specifyExerciseMessage()).
    [[nodiscard]] std::optional<ExerciseEntry> entry() const;

    std::string name;  // the name edit of a user-defined exercise
    std::string minutes;
    std::string calories;

private:
    ExerciseCursor m_cursor;
};

// The exercise clipboard: private to the program, held until it ends.
class ExerciseClipboard {
public:
    [[nodiscard]] const std::vector<ExerciseEntry>& entries() const { return m_entries; }
    [[nodiscard]] bool empty() const { return m_entries.empty(); }
    // Replaces the content with copies of the entries at the given rows.
    void copy(const DayRecord& day, std::span<const Position> rows);

private:
    std::vector<ExerciseEntry> m_entries;
};

// The exercise log screen for the logbook's current date.
class ExerciseLog {
public:
    ExerciseLog(DayCursor& days, ExerciseClipboard& clipboard)
        : m_days(&days), m_clipboard(&clipboard) {}

    ExerciseForm form;

    // The day's exercises, for the grid; empty without a day.
    [[nodiscard]] const ExerciseList* exercises();

    [[nodiscard]] std::optional<ScreenMessage> calories();
    // "Log": appends the entry to the day (creating the day first when needed), recomputes it and
    // clears the minutes and calories; or the refusal.
    [[nodiscard]] Outcome log();

    void copy(std::span<const Position> rows);
    // Copy, then remove the rows; no question is asked.
    Notices cut(std::span<const Position> rows);
    // Appends the clipboard's entries in order, creating the day first when needed; the limit
    // message when not all of them could be added.
    [[nodiscard]] Outcome paste();
    // On Yes of confirmDeleteExercises().
    Notices deleteRows(std::span<const Position> rows);
    // The "Edit Exercise" dialog's "Log": replaces the entry at row (its key kept).
    [[nodiscard]] Outcome replace(Position row, const ExerciseForm& edited);

private:
    // Recomputes the changed day; the user's data is then to be saved.
    Notices changedDay(DayRecord& day);

    DayCursor* m_days;
    ExerciseClipboard* m_clipboard;
};

}  // namespace nutrovex
