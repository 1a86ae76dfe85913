#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/ScreenMessage.h"

namespace nutrovex {

class UserProfile;

// What the personal information screen shows, always read back from the profile.
struct PersonalInfoView {
    std::string name;  // empty while the profile keeps the default user's name
    int units = 0;     // index into unitChoices()
    std::vector<std::string> firstHeightChoices;  // feet or centimetres
    int firstHeight = -1;                         // -1 selects nothing: height not entered
    int secondHeight = -1;                        // inches
    bool secondHeightShown = true;
    std::string firstHeightUnit;   // "ft" or "cm"
    std::string secondHeightUnit;  // "in", or empty in centimetres
    std::string age;               // whole years, empty when not entered
    int gender = 0;                // index into genderChoices()
};

// What the person has on the screen when one field changes: every field is read and stored.
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
    explicit PersonalInfoForm(UserProfile& profile) : m_profile(&profile) {}

    [[nodiscard]] PersonalInfoView view() const;
    [[nodiscard]] static const std::vector<std::string>& unitChoices();
    [[nodiscard]] static const std::vector<std::string>& genderChoices();
    [[nodiscard]] static const std::vector<std::string>& inchChoices();

    // Stores the whole screen. An age outside 0..100 is not stored and the outcome carries the age
    // message; the other fields are stored all the same.
    [[nodiscard]] Outcome save(const PersonalInfoEntry& entry);

    [[nodiscard]] static ScreenMessage ageRefusal();
    [[nodiscard]] static ScreenMessage confirmReset();
    // Clears the personal fields (after the person confirmed).
    [[nodiscard]] Notices reset();

private:
    UserProfile* m_profile;
};

// The whole number a person typed: an optional minus and the digits before anything else; 0 when
// there are none. Very long numbers saturate instead of overflowing.
[[nodiscard]] int wholeNumberFromText(std::string_view text);

}  // namespace nutrovex
