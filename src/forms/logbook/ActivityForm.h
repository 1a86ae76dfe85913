#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

extern const char* const kActivityQuestion;  // "Excluding exercise, how would you describe ..."
extern const char* const kBmrOptionsAdvice;  // "BMR options are available when ..."
inline constexpr std::size_t kBmrMaxChars = 4;

// What the activity/BMR screen shows for the current day.
struct ActivityView {
    uint16_t level = 0;          // the checked level, 1..5; 0 checks none
    bool levelsEnabled = false;  // the five levels and "Set as Daily Default"
    bool bmrEnabled = false;     // the BMR edit, only at level 5
    std::string bmr;             // "%d" of the day's BMR; empty without a day
    std::string date;            // the current date, long form

    friend bool operator==(const ActivityView&, const ActivityView&) = default;
};

// The activity/BMR screen of the logbook's current day. It writes into the day; the user's data
// is saved when the screen closes.
class ActivityForm {
public:
    explicit ActivityForm(DayCursor& days) : m_days(&days) {}

    enum class Field : uint8_t { Bmr };
    enum class Command : uint8_t {
        // The five level buttons: 5 clears the BMR for the person to type; the day is recomputed.
        Level1 = 1,
        Level2,
        Level3,
        Level4,
        Level5,
        // The checked level becomes the profile's default; days with a level keep theirs.
        SetAsDailyDefault,
    };

    // The day's level, or the profile's default without a day. The levels can be chosen only on a
    // day with a level and an entered weight, for a profile with height and age.
    [[nodiscard]] ActivityView view() const;
    // A change the person made to the BMR edit: its whole value becomes the day's BMR, at level 5.
    Outcome edit(Field field, std::string_view text);
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    Outcome chooseLevel(uint16_t level);

    DayCursor* m_days;
};

}  // namespace nutrovex
