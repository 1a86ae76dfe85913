#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "calc/Bmr.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

class UserProfile;

inline constexpr std::size_t kWeightMaxChars = 3;
extern const char* const kWeighInAdvice;        // "You must weigh in each day ..."
extern const char* const kWeighInTimingAdvice;  // "Tracking weight loss ..."

// The weight typed into the weigh-in screen, in the user's display unit, as the pounds stored.
// 0 (or nothing) is the no-weight marker; kilograms convert by the serving units' factors; more
// than the edit's three digits is kept to 999.
[[nodiscard]] float storedWeightFromEntry(int16_t typed, bool metric);
// The day's weight as the weigh-in and the logbook show it: whole pounds, or kilograms by the
// serving units' conversion, so a metric entry reads back as typed (the 2.21 factor of
// weightToWhole belongs to the goal weights and BMR). Fails with -1 for no weight.
[[nodiscard]] WholeResult dayWeightToWhole(float pounds, bool metric);
// Reads an edit the way the screen does: a signed whole number, 0 when there is none.
[[nodiscard]] int16_t wholeFromEdit(std::string_view text);

// What the weigh-in screen shows.
struct WeighInView {
    std::string date;    // long form
    std::string weight;  // whole number in the display unit, or empty
    std::string unit;    // "kg" or "lbs"

    friend bool operator==(const WeighInView&, const WeighInView&) = default;
};

// The weigh-in screen's rules. It writes into the current day while the person types; the logbook
// saves when the screen closes.
class WeighIn {
public:
    explicit WeighIn(DayCursor& days) : m_days(&days) {}

    // On opening and whenever the data changed.
    [[nodiscard]] WeighInView view();
    // A change the person made to the weight edit (the screen's own writes are not passed on).
    // An entry below 1 never creates a day; 0 on an existing day erases its weight. Storing the
    // weight settles the day's activity level and BMR.
    Notices weightEdited(std::string_view text);

private:
    DayCursor* m_days;
};

inline constexpr std::size_t kMaxNoteChars = 512;
extern const char* const kNoJournalText;  // "Enter daily notes here."

// The daily journal's rules: the note is written with every change, but only into a day that
// exists; the journal never creates one.
class Journal {
public:
    explicit Journal(DayCursor& days) : m_days(&days) {}

    // The editor's text on opening and whenever the data changed.
    [[nodiscard]] std::string load();
    // The editor's whole text after a change; the user's data changed when it was kept. More than
    // 512 characters are never in the editor: anything past them is dropped.
    Notices textChanged(std::string_view text);
    // Enter starts a new line at the very end, wherever the caret stood: the editor's new text
    // (the caller puts the caret at its end). At the limit nothing is added.
    std::string enterPressed(std::string_view editorText);

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
