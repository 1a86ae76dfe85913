#include "forms/exercise/EditExerciseForm.h"

#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"

namespace nutrovex {

namespace {

ExerciseChoice choiceAt(DayCursor& days, Position row) {
    const DayRecord* day = days.currentRecord();
    if (day != nullptr && row < day->exercises().size()) {
        return ExerciseChoice(day->exercises()[row]);
    }
    return ExerciseChoice();
}

}  // namespace

EditExerciseForm::EditExerciseForm(DayCursor& days, Position row)
    : m_days(&days), m_row(row), m_choice(choiceAt(days, row)) {}

Outcome EditExerciseForm::command(Command id) {
    if (id == Command::Calories) {
        return {.message = m_choice.computeCalories(m_days->currentRecord())};
    }
    std::optional<ExerciseEntry> e = m_choice.entry();
    if (!e) {
        return {.message = specifyExerciseMessage()};
    }
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || m_row >= day->exercises().size()) {
        return {};
    }
    const ExerciseEntry& old = day->exercises()[m_row];
    e->key = old.key;
    e->byte = old.byte;
    if (!day->replaceExercise(m_row, std::move(*e))) {
        return {.message = dayFullMessage("Edit Exercise")};  // the longer entry does not fit
    }
    recomputeDay(*day, m_days->store().profile);
    return {.notices = {.userData = true, .dataChanged = true}};
}

}  // namespace nutrovex
