#include "core/DayRecord.h"

#include "calc/Bmr.h"
#include "core/UserProfile.h"

namespace nutrovex {

bool DayRecord::setLevel(unsigned level) {
    if (level < 1 || level > 5) {
        return false;
    }
    if (m.level != level) {
        m.level = static_cast<uint16_t>(level);
        m.flags |= kDayFlagLevel;
    }
    return true;
}

bool DayRecord::setBmr(int bmr) {
    if (bmr < 0 || bmr > 9999) {
        return false;
    }
    if (m.bmr != bmr) {
        m.bmr = static_cast<int16_t>(bmr);
        m.flags |= kDayFlagLevel;
    }
    return true;
}

void DayRecord::setWeight(float pounds, const UserProfile& profile) {
    if (pounds < 0.0f) {
        m.level = 0;
        m.bmr = 0;
    } else {
        if (m.level == 0) {
            m.level = profile.defaultLevel();
        }
        if (m.level != kLevelManual) {
            const BmrResult r = computeBmr(profile, m.level, pounds);
            (void)setBmr(r.ok ? r.bmr : 0);
        }
    }
    m.weight = pounds;
    m.flags |= kDayFlagWeight;
}

Position DayRecord::appendExercise(ExerciseEntry entry) {
    if (m.exercises.size() >= kNoPosition) {
        return kNoPosition;
    }
    m.exercises.push_back(std::move(entry));
    return static_cast<Position>(m.exercises.size() - 1);
}

bool DayRecord::replaceExercise(Position pos, ExerciseEntry entry) {
    if (pos >= m.exercises.size()) {
        return false;
    }
    m.exercises[pos] = std::move(entry);
    return true;
}

bool DayRecord::removeExercise(Position pos) {
    if (pos >= m.exercises.size()) {
        return false;
    }
    m.exercises.erase(m.exercises.begin() + pos);
    return true;
}

}  // namespace nutrovex
