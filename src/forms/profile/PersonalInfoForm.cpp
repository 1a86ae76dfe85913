#include "forms/profile/PersonalInfoForm.h"

#include <algorithm>

#include "calc/Bmr.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

namespace {

constexpr int kMaxFeet = 9;
constexpr int kMaxInches = 11;
constexpr int kMaxCentimetres = 302;
constexpr int kMaxAge = 100;
constexpr const char* kDefaultUser = "Zerbu";

std::vector<std::string> numbersUpTo(int last) {
    std::vector<std::string> out;
    out.reserve(static_cast<std::size_t>(last) + 1);
    for (int i = 0; i <= last; ++i) {
        out.push_back(std::to_string(i));
    }
    return out;
}

// The stored height for the height selections under the given units.
float heightFromSelections(bool metric, int first, int second) {
    if (metric) {
        const int cm = std::clamp(first, 0, kMaxCentimetres);
        return cm == 0 ? kNotEntered : static_cast<float>(cm) * 0.39370078f;
    }
    const int feet = std::clamp(first, 0, kMaxFeet);
    const int inches = std::clamp(second, 0, kMaxInches);
    if (feet == 0 && inches == 0) {
        return kNotEntered;
    }
    return static_cast<float>(feet * 12 + inches);
}

struct Personal {
    std::string name;
    float height;
    int16_t age;
    uint16_t gender;
    uint16_t units;
    bool operator==(const Personal&) const = default;
};

Personal personalOf(const UserProfile& p) {
    return {std::string(p.displayName()), p.height(), p.age(), p.gender(), p.units()};
}

PersonalInfoEntry entryFor(const PersonalInfoView& v) {
    return {v.name, v.units, v.firstHeight, v.secondHeight, v.age, v.gender};
}

// The position of a list entry by its text; -1 when the list has no such entry.
int indexOf(const std::vector<std::string>& list, std::string_view text) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] == text) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace

int wholeNumberFromText(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ') {
        ++i;
    }
    const bool negative = i < text.size() && text[i] == '-';
    if (negative) {
        ++i;
    }
    long long value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = std::min(value * 10 + (text[i] - '0'), 1'000'000'000LL);
    }
    return static_cast<int>(negative ? -value : value);
}

PersonalInfoForm::PersonalInfoForm(UserProfile& profile, DayCursor* days)
    : m_profile(&profile), m_days(days) {}

const std::vector<std::string>& PersonalInfoForm::unitChoices() {
    static const std::vector<std::string> kUnits{"lbs-inches", "kg-cm"};
    return kUnits;
}

const std::vector<std::string>& PersonalInfoForm::genderChoices() {
    static const std::vector<std::string> kGenders{"Male", "Female"};
    return kGenders;
}

const std::vector<std::string>& PersonalInfoForm::inchChoices() {
    static const std::vector<std::string> kInches = numbersUpTo(kMaxInches);
    return kInches;
}

PersonalInfoView PersonalInfoForm::view() const {
    static const std::vector<std::string> kFeet = numbersUpTo(kMaxFeet);
    static const std::vector<std::string> kCentimetres = numbersUpTo(kMaxCentimetres);
    const UserProfile& p = *m_profile;
    PersonalInfoView v;
    v.name = p.displayName() == kDefaultUser ? std::string() : std::string(p.displayName());
    v.units = p.metric() ? 1 : 0;
    const float height = p.height();
    if (p.metric()) {
        v.firstHeightChoices = kCentimetres;
        v.firstHeightStart = 170;
        v.secondHeightShown = false;
        v.firstHeightUnit = "cm";
        const WholeResult cm = heightToWhole(height, true);
        v.firstHeight = cm.ok && height >= 0.0f ? std::min<int>(cm.value, kMaxCentimetres) : -1;
    } else {
        v.firstHeightChoices = kFeet;
        v.firstHeightUnit = "ft";
        v.secondHeightUnit = "in";
        if (height >= 0.0f) {
            const int feet = static_cast<int>(height * 0.083333336f);
            const int inches = static_cast<int>(height - static_cast<float>(feet * 12));
            v.firstHeight = std::clamp(feet, 0, kMaxFeet);
            v.secondHeight = std::clamp(inches, 0, kMaxInches);
        }
    }
    v.age = p.age() < 0 ? std::string() : std::to_string(p.age());
    v.gender = p.gender() == 1 ? 1 : 0;
    return v;
}

Outcome PersonalInfoForm::edit(Field field, std::string_view text) {
    // The other fields as the screen shows them: what is stored, and a refused age as typed.
    PersonalInfoEntry entry = entryFor(view());
    if (m_refusedAge) {
        entry.age = *m_refusedAge;
    }
    switch (field) {
        case Field::Name:
            entry.name = text;
            break;
        case Field::Units:
            entry.units = indexOf(unitChoices(), text);
            break;
        case Field::FirstHeight:
            entry.firstHeight = indexOf(view().firstHeightChoices, text);
            break;
        case Field::SecondHeight:
            entry.secondHeight = indexOf(inchChoices(), text);
            break;
        case Field::Age:
            entry.age = text;
            break;
        case Field::Gender:
            entry.gender = indexOf(genderChoices(), text);
            break;
    }
    return save(entry);
}

Outcome PersonalInfoForm::save(const PersonalInfoEntry& entry) {
    UserProfile& p = *m_profile;
    const Personal before = personalOf(p);
    Outcome outcome;

    (void)p.setDisplayName(entry.name.substr(0, kMaxDisplayName));
    // The height is read in the units it was shown in, so a switch of units keeps it.
    p.setHeight(heightFromSelections(p.metric(), entry.firstHeight, entry.secondHeight));
    (void)p.setUnits(entry.units == 1 ? 1 : 0);
    const int age = wholeNumberFromText(entry.age);
    if (age < 0 || age > kMaxAge) {
        outcome.message = ageRefusal();
    } else {
        // 0 (or nothing) is "not entered": the message speaks of 1 to 100, yet 0 is accepted.
        // The profile itself keeps ages below 100, so a typed 100 passes here and is not stored.
        (void)p.setAge(age == 0 ? -1 : age);
    }
    (void)p.setGender(entry.gender == 1 ? 1 : 0);

    if (!(personalOf(p) == before)) {
        outcome.notices.userData = true;
        outcome.notices.dataChanged = true;
        outcome.save = SavePoint::UserData;
        if (DayRecord* day = m_days != nullptr ? m_days->currentRecord() : nullptr) {
            recomputeDay(*day, p);
        }
    }
    // A refused age stays on the screen as typed, for the person to correct.
    m_refusedAge = outcome.message ? std::optional<std::string>(entry.age) : std::nullopt;
    return outcome;
}

ScreenMessage PersonalInfoForm::ageRefusal() {
    return {"The age entered is not valid, please enter a value between 1 and 100.", "Age",
            MessageKind::Warning};
}

std::optional<ScreenMessage> PersonalInfoForm::confirmation(Command) {
    return ScreenMessage{
        "A reset will clear all fields.  Do you wish to reset your personal information?",
        "Personal Information", MessageKind::Question};
}

Outcome PersonalInfoForm::command(Command) {
    m_profile->resetPersonal();
    m_refusedAge.reset();
    return {.notices = {.userData = true, .dataChanged = true, .personalInfoReset = true},
            .save = SavePoint::UserData};
}

}  // namespace nutrovex
