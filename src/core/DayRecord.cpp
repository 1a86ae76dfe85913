#include "core/DayRecord.h"

#include "core/Names.h"
#include "core/StoredSize.h"

#include <algorithm>

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

void putInMealOrder(FoodList& list) {
    std::stable_sort(list.begin(), list.end(), [](const FoodItem& a, const FoodItem& b) {
        if (a.meal != b.meal) {
            return a.meal < b.meal;
        }
        return compareNames(a.name.view(), b.name.view()) < 0;
    });
}

void rebuildAllFoods(DayRecord& day) {
    FoodList& all = day.allFoods();
    all.clear();
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const FoodList& foods = day.group(g);
        all.insert(all.end(), foods.begin(), foods.end());
    }
    putInMealOrder(all);
}

Position DayRecord::appendExercise(ExerciseEntry entry) {
    if (m.exercises.size() >= kNoPosition || !dayHasRoomFor(*this, exerciseSize(entry))) {
        return kNoPosition;
    }
    m.exercises.push_back(std::move(entry));
    return static_cast<Position>(m.exercises.size() - 1);
}

bool DayRecord::replaceExercise(Position pos, ExerciseEntry entry) {
    if (pos >= m.exercises.size()) {
        return false;
    }
    const std::size_t before = exerciseSize(m.exercises[pos]);
    const std::size_t after = exerciseSize(entry);
    if (after > before && !dayHasRoomFor(*this, after - before)) {
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
