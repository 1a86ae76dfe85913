#include "core/UserProfile.h"

namespace nutrovex {

namespace {

template <typename T>
void store(T& field, const T& value, uint16_t& flags, uint16_t flag) {
    if (!(field == value)) {
        field = value;
        flags |= flag;
    }
}

void storeDate(CalendarDate& field, const CalendarDate& value, uint16_t& flags, uint16_t flag) {
    if (!datesEqual(field, value)) {
        field = value;
        flags |= flag;
    }
}

}  // namespace

bool UserProfile::setDisplayName(std::string_view name) {
    if (name.size() > kMaxDisplayName) {
        return false;
    }
    if (!(m.displayName == name)) {
        m.displayName = name;
    }
    return true;
}

bool UserProfile::setHeight(float inches) {
    store(m.height, inches, m.flags, kFlagHeight);
    return true;
}

bool UserProfile::setAge(int age) {
    if (age > 99) {
        return false;
    }
    store(m.age, static_cast<int16_t>(age < 0 ? -1 : age), m.flags, kFlagAge);
    return true;
}

bool UserProfile::setGender(unsigned gender) {
    if (gender > 1) {
        return false;
    }
    store(m.gender, static_cast<uint16_t>(gender), m.flags, kFlagGender);
    return true;
}

bool UserProfile::setStartWeight(float pounds) {
    store(m.startWeight, pounds, m.flags, kFlagStartWeight);
    return true;
}

bool UserProfile::setStartDate(const CalendarDate& date) {
    storeDate(m.startDate, date, m.flags, kFlagStartDate);
    return true;
}

bool UserProfile::setGoalWeight(float pounds) {
    store(m.goalWeight, pounds, m.flags, kFlagGoalWeight);
    return true;
}

bool UserProfile::setGoalDate(const CalendarDate& date) {
    storeDate(m.goalDate, date, m.flags, kFlagGoalDate);
    return true;
}

bool UserProfile::setDefaultLevel(unsigned level) {
    if (level < 1 || level > 5) {
        return false;
    }
    store(m.defaultLevel, static_cast<uint16_t>(level), m.flags, kFlagDefaultLevel);
    return true;
}

bool UserProfile::setUnits(unsigned units) {
    if (units > 1) {
        return false;
    }
    store(m.units, static_cast<uint16_t>(units), m.flags, kFlagUnits);
    return true;
}

void UserProfile::setPlan(const GoalPlan& plan) {
    m.plan = plan;
    m.flags |= kFlagGoalPlan;
}

void UserProfile::resetPersonal() {
    m.displayName.clear();
    m.height = kNotEntered;
    m.age = -1;
    m.gender = 0;
    m.defaultLevel = 2;
    m.flags |= kPersonalResetFlags;
}

void UserProfile::resetGoals(const CalendarDate& today) {
    m.startWeight = kNotEntered;
    m.goalWeight = kNotEntered;
    m.startDate = today;
    m.goalDate = steppedDate(today, 1);
    m.plan = {};
    m.flags |= kGoalsResetFlags;
}

void UserProfile::reset(const CalendarDate& today) {
    resetPersonal();
    resetGoals(today);
    m.flags = kFullResetFlags;
}

}  // namespace nutrovex
