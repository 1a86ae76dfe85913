#pragma once

#include <cstdint>
#include <string_view>

#include "core/CalendarDate.h"
#include "core/GoalPlan.h"
#include "core/Text.h"

namespace nutrovex {

enum ProfileFlag : uint16_t {
    kFlagHeight = 0x8000,
    kFlagAge = 0x4000,
    kFlagGender = 0x2000,
    kFlagStartWeight = 0x1000,
    kFlagStartDate = 0x0800,
    kFlagGoalWeight = 0x0400,
    kFlagGoalDate = 0x0200,
    kFlagGoalPlan = 0x0100,
    kFlagDefaultLevel = 0x0080,
    kFlagUnits = 0x0040,
};

inline constexpr uint16_t kPersonalResetFlags = 0xE080;
inline constexpr uint16_t kGoalsResetFlags = 0x1F00;
inline constexpr uint16_t kFullResetFlags = 0xFFC1;  // a fixed word, not the union of the two
inline constexpr std::size_t kMaxDisplayName = 40;
inline constexpr float kNotEntered = -1.0f;

// Every stored field of a profile, as the file holds them.
struct ProfileFields {
    uint8_t byte = 0;
    Text text1;
    Text displayName;
    Text userName;
    float height = kNotEntered;  // inches
    int16_t age = -1;
    uint16_t gender = 0;              // 0 male, 1 female
    float startWeight = kNotEntered;  // pounds
    CalendarDate startDate;
    float goalWeight = kNotEntered;
    CalendarDate goalDate;
    GoalPlan plan;
    uint16_t defaultLevel = 2;
    uint16_t units = 0;  // 0 pounds and inches, 1 kilograms and centimetres
    uint16_t flags = kFullResetFlags;
};

// The user's personal information and goal. Setters compare first, refuse out-of-range values
// (returning false) and mark what they changed in the flags word.
class UserProfile {
public:
    UserProfile() = default;
    explicit UserProfile(const CalendarDate& today) { reset(today); }

    [[nodiscard]] const ProfileFields& fields() const { return m; }
    // Raw access for readers and writers, which store the values as they stand.
    [[nodiscard]] ProfileFields& rawFields() { return m; }

    [[nodiscard]] std::string_view displayName() const { return m.displayName.view(); }
    [[nodiscard]] std::string_view userName() const { return m.userName.view(); }
    [[nodiscard]] float height() const { return m.height; }
    [[nodiscard]] int16_t age() const { return m.age; }
    [[nodiscard]] uint16_t gender() const { return m.gender; }
    [[nodiscard]] float startWeight() const { return m.startWeight; }
    [[nodiscard]] const CalendarDate& startDate() const { return m.startDate; }
    [[nodiscard]] float goalWeight() const { return m.goalWeight; }
    [[nodiscard]] const CalendarDate& goalDate() const { return m.goalDate; }
    [[nodiscard]] const GoalPlan& plan() const { return m.plan; }
    [[nodiscard]] uint16_t defaultLevel() const { return m.defaultLevel; }
    [[nodiscard]] uint16_t units() const { return m.units; }
    [[nodiscard]] bool metric() const { return m.units == 1; }
    [[nodiscard]] uint16_t flags() const { return m.flags; }

    [[nodiscard]] bool setDisplayName(std::string_view name);
    void setUserName(std::string_view name) { m.userName = name; }
    bool setHeight(float inches);
    bool setAge(int age);
    [[nodiscard]] bool setGender(unsigned gender);
    bool setStartWeight(float pounds);
    bool setStartDate(const CalendarDate& date);
    bool setGoalWeight(float pounds);
    bool setGoalDate(const CalendarDate& date);
    [[nodiscard]] bool setDefaultLevel(unsigned level);
    [[nodiscard]] bool setUnits(unsigned units);
    // Stores a freshly computed plan and marks it changed.
    void setPlan(const GoalPlan& plan);

    void resetPersonal();
    void resetGoals(const CalendarDate& today);
    void reset(const CalendarDate& today);

private:
    ProfileFields m;
};

}  // namespace nutrovex
