#pragma once

#include <array>
#include <cstdint>

#include "core/CalendarDate.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/Text.h"

namespace nutrovex {

enum DayFlag : uint16_t {
    kDayFlagWeight = 0x8000,
    kDayFlagLevel = 0x1000,  // activity level or BMR
};

// Every stored field of a day, as the file holds them.
struct DayFields {
    CalendarDate date;
    float weight = -1.0f;  // pounds; negative means no weigh-in
    Text note;
    uint16_t word = 0;  // the water count of the day
    uint16_t level = 0;
    int16_t bmr = 0;
    uint16_t flags = 0;
    Nutrients totals{};
    std::array<FoodList, kFoodGroupCount> groups;
    ExerciseList exercises;
};

// Meal order: Breakfast, Lunch, Dinner, Snack, each meal's foods by name; foods of one meal and
// name keep their order. The lists of a day are kept so; the all-foods list, made by joining the
// groups' lists, is put so.
void putInMealOrder(FoodList& list);

// One logged date: weigh-in, activity and BMR, foods by group, exercises, water and notes.
class DayRecord {
public:
    explicit DayRecord(const CalendarDate& date) { m.date = date; }

    [[nodiscard]] const DayFields& fields() const { return m; }
    // Raw access for readers, writers and the day's own calculations.
    [[nodiscard]] DayFields& rawFields() { return m; }

    [[nodiscard]] const CalendarDate& date() const { return m.date; }
    [[nodiscard]] float weight() const { return m.weight; }
    [[nodiscard]] std::string_view note() const { return m.note.view(); }
    [[nodiscard]] uint16_t water() const { return m.word; }
    [[nodiscard]] uint16_t level() const { return m.level; }
    [[nodiscard]] int16_t bmr() const { return m.bmr; }
    [[nodiscard]] uint16_t flags() const { return m.flags; }
    [[nodiscard]] const Nutrients& totals() const { return m.totals; }
    [[nodiscard]] const FoodList& group(int g) const {
        return g == kAllFoodsGroup ? allFoods() : m.groups[static_cast<std::size_t>(g)];
    }
    [[nodiscard]] FoodList& group(int g) {
        return g == kAllFoodsGroup ? allFoods() : m.groups[static_cast<std::size_t>(g)];
    }
    [[nodiscard]] const FoodList& allFoods() const {
        buildAllFoodsIfDeferred();
        return m_allFoods;
    }
    [[nodiscard]] FoodList& allFoods() {
        buildAllFoodsIfDeferred();
        return m_allFoods;
    }
    // The all-foods list becomes every food of the groups, in meal order, when it is next used.
    // A load defers it so: twenty years of days are read without a second copy of every food,
    // and a day's list is made when the day is shown.
    void deferAllFoods() {
        m_allFoods.clear();
        m_allFoods.shrink_to_fit();
        m_allFoodsDeferred = true;
    }
    [[nodiscard]] const ExerciseList& exercises() const { return m.exercises; }

    void setNote(std::string_view note) { m.note = note; }
    void setWater(uint16_t count) { m.word = count; }
    // 1..5 accepted; 0 and 6 or more refused.
    [[nodiscard]] bool setLevel(unsigned level);
    // 0..9999 accepted.
    [[nodiscard]] bool setBmr(int bmr);
    void setTotals(const Nutrients& totals) { m.totals = totals; }

    // Exercise entries by position; appending returns the new position or kNoPosition.
    Position appendExercise(ExerciseEntry entry);
    [[nodiscard]] bool replaceExercise(Position pos, ExerciseEntry entry);
    [[nodiscard]] bool removeExercise(Position pos);
    [[nodiscard]] ExerciseList& exercisesForEdit() { return m.exercises; }

    // Figures computed by the day recomputation; not stored in the file.
    uint32_t caloriesIn = 0;
    uint32_t exerciseCalories = 0;
    uint32_t exerciseMinutes = 0;

private:
    void buildAllFoodsIfDeferred() const {
        if (m_allFoodsDeferred) {
            m_allFoodsDeferred = false;
            std::size_t n = 0;
            for (const FoodList& list : m.groups) {
                n += list.size();
            }
            m_allFoods.reserve(n);
            for (const FoodList& list : m.groups) {
                m_allFoods.insert(m_allFoods.end(), list.begin(), list.end());
            }
            putInMealOrder(m_allFoods);
        }
    }

    DayFields m;
    // A second copy of every food of the day, in meal order; made from the groups at its first
    // use when deferred.
    mutable FoodList m_allFoods;
    mutable bool m_allFoodsDeferred = false;
};

// Empties the all-foods list and fills it with copies of the foods of groups 0..7, in meal order.
void rebuildAllFoods(DayRecord& day);

}  // namespace nutrovex
