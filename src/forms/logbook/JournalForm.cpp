#include "forms/logbook/JournalForm.h"

#include "core/CalendarDate.h"

#include "core/DayRecord.h"

namespace nutrovex {

const char* const kNoJournalText = "Enter daily notes here.";

JournalView JournalForm::view() const {
    std::string date = longDateText(m_days->currentDate());
    if (const DayRecord* day = m_days->currentRecord()) {
        return {std::string(day->note()), std::move(date)};
    }
    return {m_unkept.value_or(kNoJournalText), std::move(date)};
}

Outcome JournalForm::edit(Field, std::string_view whole) {
    const std::string_view text = whole.substr(0, kMaxNoteChars);
    DayRecord* day = m_days->currentRecord();
    if (day == nullptr) {
        m_unkept = text;
        return {};
    }
    day->setNote(text);
    return {.notices = {.userData = true}};
}

Outcome JournalForm::command(Command) {
    std::string text = view().text;
    if (text.size() + 2 <= kMaxNoteChars) {
        text += "\r\n";
    }
    return edit(Field::Note, text);
}

}  // namespace nutrovex
