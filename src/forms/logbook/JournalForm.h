#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

inline constexpr std::size_t kMaxNoteChars = 512;
extern const char* const kNoJournalText;  // "Enter daily notes here."

struct JournalView {
    std::string text;  // the editor's text, line breaks as CR LF
    std::string date;  // the current date, long form
};

// The daily journal of the logbook's current date: the note is written with every change, but
// only into a day that exists; the journal never creates one, and what is typed for a date
// without a record is not kept. The user's data is saved when the screen closes.
class JournalForm {
public:
    explicit JournalForm(DayCursor& days) : m_days(&days) {}

    enum class Field : uint8_t { Note };
    enum class Command : uint8_t {
        // Enter: a new line at the very end, wherever the caret stood; at the limit nothing is
        // added.
        NewLine,
    };

    // The stored note, or "Enter daily notes here." for a date without a record (or what was
    // typed there since).
    [[nodiscard]] JournalView view() const;
    // The editor's whole text after a change; anything past 512 characters is dropped (the
    // screen's editor never holds more).
    Outcome edit(Field field, std::string_view text);
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    DayCursor* m_days;
    std::optional<std::string> m_unkept;  // typed for a date without a record
};

}  // namespace nutrovex
