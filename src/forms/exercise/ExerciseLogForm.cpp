#include "forms/exercise/ExerciseLogForm.h"

#include <algorithm>

#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"

namespace nutrovex {

ScreenMessage pasteLimitMessage() {
    return {
        "Due to the maximum exercise limit not all of the exercise items were pasted from "
        "the clipboard.",
        "Paste Exercise", MessageKind::Warning};
}

ExerciseLogForm::ExerciseLogForm(DayCursor& days, ExerciseClipboard& clipboard)
    : m_days(&days), m_clipboard(&clipboard) {
    keepSelectionInRows();
}

const ExerciseList* ExerciseLogForm::exercises() const {
    const DayRecord* day = m_days->currentRecord();
    return day != nullptr ? &day->exercises() : nullptr;
}

ExerciseLogView ExerciseLogForm::view() const {
    ExerciseLogView v;
    v.date = longDateText(m_days->currentDate());
    v.choice = m_choice.view();
    if (const ExerciseList* list = exercises()) {
        for (const ExerciseEntry& e : *list) {
            v.rows.push_back({e.name.str(), std::to_string(e.minutes), std::to_string(e.calories)});
        }
    }
    v.selection = m_selection;
    v.pasteEnabled = !m_clipboard->empty();
    return v;
}

void ExerciseLogForm::select(int anchor, int current) {
    m_selection = {anchor, current, false};
}

std::vector<Position> ExerciseLogForm::selectedRows() const {
    const ExerciseList* list = exercises();
    const int count = list ? static_cast<int>(list->size()) : 0;
    int first = std::min(m_selection.anchor, m_selection.current);
    int last = std::max(m_selection.anchor, m_selection.current);
    if (m_selection.all) {
        first = 0;
        last = count - 1;
    }
    std::vector<Position> rows;
    for (int r = std::max(first, 0); r <= std::min(last, count - 1); ++r) {
        rows.push_back(static_cast<Position>(r));
    }
    return rows;
}

void ExerciseLogForm::keepSelectionInRows() {
    const ExerciseList* list = exercises();
    const int count = list ? static_cast<int>(list->size()) : 0;
    const int current = m_selection.current >= count || m_selection.current < 0
                            ? (count > 0 ? 0 : -1)
                            : m_selection.current;
    m_selection = {current, current, false};
}

void ExerciseLogForm::selectRow(int row) {
    m_selection = {row, row, false};
}

std::optional<EditExerciseForm> ExerciseLogForm::editSelected() const {
    const std::vector<Position> rows = selectedRows();
    if (rows.empty()) {
        return std::nullopt;
    }
    return EditExerciseForm(*m_days, rows.front());
}

std::optional<ScreenMessage> ExerciseLogForm::confirmation(Command id) const {
    if (id != Command::Delete || selectedRows().empty()) {
        return std::nullopt;
    }
    return ScreenMessage{"Are you sure you want to delete the selected exercises?", "Exercise",
                         MessageKind::Question};
}

Notices ExerciseLogForm::changedDay(DayRecord& day) {
    recomputeDay(day, m_days->store().profile);
    return Notices{.userData = true, .dataChanged = true};
}

Outcome ExerciseLogForm::command(Command id) {
    switch (id) {
        case Command::Calories:
            return {.message = m_choice.computeCalories(m_days->currentRecord())};
        case Command::Log:
            return log();
        case Command::Copy:
            if (const DayRecord* day = m_days->currentRecord()) {
                m_clipboard->copy(*day, selectedRows());
            }
            keepSelectionInRows();
            return {};
        case Command::Cut: {
            const std::vector<Position> rows = selectedRows();
            if (const DayRecord* day = m_days->currentRecord(); day != nullptr && !rows.empty()) {
                m_clipboard->copy(*day, rows);
                return {.notices = deleteRows(rows)};
            }
            return {};
        }
        case Command::Paste:
            return paste();
        case Command::SelectAll:
            m_selection.all = true;
            return {};
        case Command::Delete:
            return {.notices = deleteRows(selectedRows())};
    }
    return {};
}

Outcome ExerciseLogForm::log() {
    std::optional<ExerciseEntry> e = m_choice.entry();
    if (!e) {
        return {.message = specifyExerciseMessage()};
    }
    DayRecord* day = m_days->ensureCurrentRecord();
    if (day == nullptr) {
        return {};  // the day list is full: nothing to log into
    }
    UserStore& store = m_days->store();
    const PackedKey counter = store.header.keyCounter;
    e->key = store.nextEntryKey();
    if (day->appendExercise(std::move(*e)) == kNoPosition) {
        store.header.keyCounter = counter;
        return {.message = dayFullMessage("Exercise Log")};
    }
    const Notices n = changedDay(*day);
    m_choice.clearNumbers();
    selectRow(static_cast<int>(day->exercises().size()) - 1);
    return {.notices = n};
}

Outcome ExerciseLogForm::paste() {
    if (m_clipboard->empty()) {
        return {};
    }
    DayRecord* day = m_days->ensureCurrentRecord();
    if (day == nullptr) {
        return {};
    }
    bool complete = true;
    UserStore& store = m_days->store();
    for (const ExerciseEntry& held : m_clipboard->entries()) {
        // A pasted entry is a new entry: its key comes from the user's counter, so no two
        // entries of the file share one.
        ExerciseEntry e = held;
        const PackedKey counter = store.header.keyCounter;
        e.key = store.nextEntryKey();
        if (day->appendExercise(std::move(e)) == kNoPosition) {
            store.header.keyCounter = counter;
            complete = false;
            break;
        }
    }
    Outcome out{.notices = changedDay(*day)};
    if (!complete) {
        out.message = pasteLimitMessage();
    }
    keepSelectionInRows();
    return out;
}

Notices ExerciseLogForm::deleteRows(const std::vector<Position>& rows) {
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || rows.empty()) {
        return {};
    }
    // From the last row up, so the rows still to go keep their positions.
    for (auto it = rows.rbegin(); it != rows.rend(); ++it) {
        (void)day->removeExercise(*it);
    }
    const Notices n = changedDay(*day);
    keepSelectionInRows();
    return n;
}

}  // namespace nutrovex
