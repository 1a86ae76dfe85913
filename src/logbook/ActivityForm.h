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
inline constexpr const char* kSetAsDailyDefaultText = "Set as Daily Default";
inline constexpr std::size_t kBmrMaxChars = 4;

// What the activity/BMR screen shows for the current day.
struct ActivityView {
    uint16_t level = 0;          // the checked level, 1..5; 0 checks none
    bool levelsEnabled = false;  // the five levels and "Set as Daily Default"
    bool bmrEnabled = false;     // the BMR edit, only at level 5
    std::string bmr;             // "%d" of the day's BMR; empty without a day

    friend bool operator==(const ActivityView&, const ActivityView&) = default;
};

// The activity/BMR screen's rules, on the logbook's current day.
class ActivityForm {
public:
    explicit ActivityForm(DayCursor& days) : m_days(&days) {}

    // The day's level, or the profile's default without a day. The levels can be chosen only on a
    // day with a level and an entered weight, for a profile with height and age.
    [[nodiscard]] ActivityView view();
    // A level button: 5 clears the BMR for the person to type; the day is recomputed.
    Notices chooseLevel(uint16_t level);
    // A change the person made to the BMR edit: its whole value becomes the day's BMR.
    Notices bmrEdited(std::string_view text);
    // The checked level becomes the profile's default; days with a level keep theirs.
    Notices setAsDailyDefault(uint16_t checkedLevel);

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
