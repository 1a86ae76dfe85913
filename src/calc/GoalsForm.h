#pragma once

#include <string>
#include <string_view>

#include "core/CalendarDate.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

class UserProfile;

// What the goals screen shows, always read back from the profile.
struct GoalsView {
    std::string startWeight;  // whole number in display units, empty when not entered
    std::string goalWeight;
    std::string unit;  // "lbs" or "kg"
    std::string startDate;
    std::string targetDate;
    std::string sentence;  // under "Calorie Calculator"
};

// The goals screen: start and goal weights with their dates, and the goal sentence. Every change is
// stored at once and the plan recomputed.
class GoalsForm {
public:
    explicit GoalsForm(UserProfile& profile) : m_profile(&profile) {}

    [[nodiscard]] GoalsView view() const;

    // Both weight fields as typed; 0 or empty is "not entered".
    [[nodiscard]] Notices enterWeights(std::string_view startText, std::string_view goalText);
    // The start date; a target date not after it moves to the day after it.
    [[nodiscard]] Notices setStartDate(const CalendarDate& date);
    // The target date, or the day after the start date when it is not after it.
    [[nodiscard]] Notices setTargetDate(const CalendarDate& date);

    [[nodiscard]] static std::string startDateCaption() { return "Start Date"; }
    [[nodiscard]] static std::string targetDateCaption() { return "Target Date"; }
    [[nodiscard]] static ScreenMessage confirmReset();
    // Clears the goals (after the person confirmed); the dates restart at today.
    [[nodiscard]] Notices reset(const CalendarDate& today);

private:
    UserProfile* m_profile;
};

}  // namespace nutrovex
