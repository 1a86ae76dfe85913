#include "logbook/ExerciseLog.h"

#include <algorithm>

#include "calc/Bmr.h"
#include "calc/ExerciseCalories.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "logbook/WeighIn.h"

namespace nutrovex {

ScreenMessage weightNeededMessage() {
    return {"You must enter your weight before calories can be calculated.", "Calories",
            MessageKind::Warning};
}

ScreenMessage timeNeededMessage() {
    return {"You must enter an exercise time before calories can be calculated.", "Calories",
            MessageKind::Warning};
}

ScreenMessage specifyExerciseMessage() {
    return {"Please specify exercise time and calculate calories", "Exercise Log",
            MessageKind::Warning};
}

ScreenMessage pasteLimitMessage() {
    return {
        "Due to the maximum exercise limit not all of the exercise items were pasted from "
        "the clipboard.",
        "Paste Exercise", MessageKind::Warning};
}

ScreenMessage confirmDeleteExercises() {
    return {"Are you sure you want to delete the selected exercises?", "Exercise",
            MessageKind::Question};
}

uint16_t countFromEdit(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    unsigned value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return 0;
        }
        value = value * 10 + static_cast<unsigned>(c - '0');
        if (value > 0xFFFF) {
            return 0;
        }
    }
    return static_cast<uint16_t>(value);
}

ExerciseForm::ExerciseForm(const ExerciseEntry& entry) {
    m_cursor.select({static_cast<int16_t>(entry.type), entry.variant, entry.third});
    if (userDefined()) {
        name = entry.name.str();
    }
    minutes = std::to_string(entry.minutes);
    calories = std::to_string(entry.calories);
}

void ExerciseForm::chooseType(int16_t type) {
    m_cursor.setType(type);
    minutes.clear();
    calories.clear();
}

std::optional<ScreenMessage> ExerciseForm::computeCalories(const DayRecord* day) {
    if (day == nullptr) {
        return weightNeededMessage();
    }
    const int16_t typedMinutes = wholeFromEdit(minutes);
    const int16_t pounds = weightToWhole(day->weight(), false).value;
    if (pounds <= 0) {
        return weightNeededMessage();
    }
    if (typedMinutes <= 0) {
        return timeNeededMessage();
    }
    if (userDefined()) {
        return std::nullopt;
    }
    const ExerciseCaloriesResult r =
        computeExerciseCalories(m_cursor.selection(), pounds, typedMinutes);
    if (r.ok) {
        calories = std::to_string(r.calories);
    }
    return std::nullopt;
}

std::optional<ExerciseEntry> ExerciseForm::entry() const {
    const uint16_t cal = countFromEdit(calories);
    const uint16_t min = countFromEdit(minutes);
    if (cal == 0 || min == 0) {
        return std::nullopt;
    }
    ExerciseEntry e;
    e.type = static_cast<uint16_t>(m_cursor.type());
    e.variant = m_cursor.variant();
    e.third = m_cursor.subVariant();
    e.name = userDefined() ? std::string_view(name) : std::string_view(exerciseTypeName(e.type));
    e.minutes = min;
    e.calories = cal;
    return e;
}

void ExerciseClipboard::copy(const DayRecord& day, std::span<const Position> rows) {
    m_entries.clear();
    for (const Position row : rows) {
        if (row < day.exercises().size()) {
            m_entries.push_back(day.exercises()[row]);
        }
    }
}

const ExerciseList* ExerciseLog::exercises() {
    const DayRecord* day = m_days->currentRecord();
    return day != nullptr ? &day->exercises() : nullptr;
}

Notices ExerciseLog::changedDay(DayRecord& day) {
    recomputeDay(day, m_days->store().profile);
    return Notices{.userData = true, .dataChanged = true};
}

std::optional<ScreenMessage> ExerciseLog::calories() {
    return form.computeCalories(m_days->currentRecord());
}

Outcome ExerciseLog::log() {
    std::optional<ExerciseEntry> e = form.entry();
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
    form.minutes.clear();
    form.calories.clear();
    return {.notices = n};
}

void ExerciseLog::copy(std::span<const Position> rows) {
    if (const DayRecord* day = m_days->currentRecord()) {
        m_clipboard->copy(*day, rows);
    }
}

Notices ExerciseLog::cut(std::span<const Position> rows) {
    copy(rows);
    return deleteRows(rows);
}

Outcome ExerciseLog::paste() {
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
    return out;
}

Notices ExerciseLog::deleteRows(std::span<const Position> rows) {
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || rows.empty()) {
        return {};
    }
    // From the last row up, so the rows still to go keep their positions.
    std::vector<Position> sorted(rows.begin(), rows.end());
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    for (auto it = sorted.rbegin(); it != sorted.rend(); ++it) {
        (void)day->removeExercise(*it);
    }
    return changedDay(*day);
}

Outcome ExerciseLog::replace(Position row, const ExerciseForm& edited) {
    std::optional<ExerciseEntry> e = edited.entry();
    if (!e) {
        return {.message = specifyExerciseMessage()};
    }
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr || row >= day->exercises().size()) {
        return {};
    }
    const ExerciseEntry& old = day->exercises()[row];
    e->key = old.key;
    e->byte = old.byte;
    if (!day->replaceExercise(row, std::move(*e))) {
        return {.message = dayFullMessage("Edit Exercise")};  // the longer entry does not fit
    }
    return {.notices = changedDay(*day)};
}

}  // namespace nutrovex
