#pragma once

#include <optional>
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
    CalendarDate start;    // where the date picker opens
    CalendarDate target;
};

// The goals screen: start and goal weights with their dates, and the goal sentence. Every change is
// stored and saved at once, and the plan recomputed.
class GoalsForm {
public:
    GoalsForm(UserProfile& profile, const Clock& clock) : m_profile(&profile), m_clock(&clock) {}

    enum class Field : uint8_t { StartWeight, GoalWeight, StartDate, TargetDate };
    enum class Command : uint8_t { Reset };

    [[nodiscard]] GoalsView view() const;
    [[nodiscard]] const Clock& clock() const { return *m_clock; }
    [[nodiscard]] static std::string startDateCaption() { return "Start Date"; }
    [[nodiscard]] static std::string targetDateCaption() { return "Target Date"; }

    // A weight as typed, once complete; both weights are then stored as the screen shows them
    // (0 or empty is "not entered").
    Outcome edit(Field field, std::string_view text);
    // A date picked on the calendar. A target date not after the start date becomes the day after
    // it; so does a target date that a later start date passed.
    Outcome pickDate(Field field, const CalendarDate& date);
    // The question before Reset.
    [[nodiscard]] static std::optional<ScreenMessage> confirmation(Command id);
    // Reset clears the goals (after the person confirmed); the dates restart at today.
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    UserProfile* m_profile;
    const Clock* m_clock;
};

}  // namespace nutrovex
