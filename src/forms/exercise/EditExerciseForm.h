#pragma once

#include <string_view>

#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "forms/exercise/ExerciseChoice.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

// "Edit Exercise": the exercise at a row of the current day in the exercise choice. Log stores it
// back with its key kept; the exercise log it is opened from saves when it closes.
class EditExerciseForm {
public:
    EditExerciseForm(DayCursor& days, Position row);

    using Field = ExerciseChoice::Field;
    enum class Command : uint8_t {
        Calories,  // fills the calories, or says what is missing
        Log,       // replaces the entry; the refusal when minutes or calories are missing
    };

    [[nodiscard]] ExerciseChoiceView view() const { return m_choice.view(); }
    void edit(Field field, std::string_view text) { m_choice.edit(field, text); }
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
    Position m_row;
    ExerciseChoice m_choice;
};

}  // namespace nutrovex
