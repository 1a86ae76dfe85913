#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ScreenMessage.h"

namespace nutrovex {

class DayCursor;
class UserProfile;

// What the personal information screen shows, always read back from the profile.
struct PersonalInfoView {
    std::string name;  // empty while the profile keeps the default user's name
    int units = 0;     // index into unitChoices()
    std::vector<std::string> firstHeightChoices;  // feet or centimetres
    int firstHeight = -1;                         // -1 selects nothing: height not entered
    int firstHeightStart = 5;  // where Up and Down begin in a blank height: a typical adult's
    int secondHeight = -1;     // inches
    bool secondHeightShown = true;
    std::string firstHeightUnit;   // "ft" or "cm"
    std::string secondHeightUnit;  // "in", or empty in centimetres
    std::string age;               // whole years, empty when not entered
    int gender = 0;                // index into genderChoices()
};

// What the person has on the screen: every field is read and stored when one of them changes.
struct PersonalInfoEntry {
    std::string name;
    int units = 0;
    int firstHeight = -1;  // the selections under the units stored before this change
    int secondHeight = -1;
    std::string age;
    int gender = 0;
};

// The personal information screen: name, units, height, age and gender, saved at every change.
class PersonalInfoForm {
public:
    // With the logbook's days, an edit of height, age or gender also brings the current day's
    // BMR up to date; the other days keep the BMR they were logged with.
    explicit PersonalInfoForm(UserProfile& profile, DayCursor* days = nullptr);

    enum class Field : uint8_t { Name, Units, FirstHeight, SecondHeight, Age, Gender };
    enum class Command : uint8_t { Reset };

    [[nodiscard]] PersonalInfoView view() const;
    [[nodiscard]] static const std::vector<std::string>& unitChoices();
    [[nodiscard]] static const std::vector<std::string>& genderChoices();
    [[nodiscard]] static const std::vector<std::string>& inchChoices();
    [[nodiscard]] static ScreenMessage ageRefusal();

    // A field's complete value (the person left the edit, or chose an entry of a list, given by
    // its text): the whole screen is stored and saved at once. An age outside 0..100 is not
    // stored, the outcome carries the age message and the typed age stays on the screen; the
    // other fields are stored all the same.
    Outcome edit(Field field, std::string_view text);
    // The question before Reset.
    [[nodiscard]] static std::optional<ScreenMessage> confirmation(Command id);
    // Reset clears the personal fields (after the person confirmed).
    Outcome command(Command id);
    [[nodiscard]] SavePoint close() const { return SavePoint::UserData; }

private:
    Outcome save(const PersonalInfoEntry& entry);

    UserProfile* m_profile;
    DayCursor* m_days;
    std::optional<std::string> m_refusedAge;
};

// The whole number a person typed: an optional minus and the digits before anything else; 0 when
// there are none. Very long numbers saturate instead of overflowing.
[[nodiscard]] int wholeNumberFromText(std::string_view text);

}  // namespace nutrovex
