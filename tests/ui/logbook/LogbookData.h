#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "ui/ScreenSession.h"
#include "ui/logbook/DayScreens.h"

namespace nutrovex::test {

// The logbook's screens on a session whose today is 21 November 2002: "Zerbu", a 30-year-old
// man of 70 in whose default level is 2 ("Light : Sitting").
class LogbookScreens : public ScreenSession {
protected:
    LogbookScreens() : ScreenSession(at(21, 11, 2002)) {}

    void SetUp() override {
        ScreenSession::SetUp();
        UserProfile& profile = session.store().profile;
        profile.setHeight(70.0f);
        profile.setAge(30);
        (void)profile.setDefaultLevel(2);
    }

    // A 200 lb to 190 lb goal over 35 days: 1000 calories a day.
    void setLosingGoal() { setGoal(200.0f, 190.0f, 35); }
    // 150 lb to 160 lb over 70 days: a gain of 500 a day.
    void setGainingGoal() { setGoal(150.0f, 160.0f, 70); }

    // A day with a weigh-in (none when pounds is negative), one food of the given calories and
    // an exercise, recomputed as the screens would leave it.
    DayRecord& addDay(int d, int m, int y, float pounds, float calories = 0.0f,
                      uint16_t exerciseCalories = 0) {
        UserStore& store = session.store();
        const Position at =
            store.insertDay(std::make_unique<DayRecord>(CalendarDate::fromDmy(d, m, y)));
        DayRecord& day = store.dayAt(at);
        if (pounds >= 0.0f) {
            setDayWeight(day, pounds, store.profile);
        }
        if (calories > 0.0f) {
            FoodItem food;
            food.name = "Dal";
            food.group = 5;
            food.ratio = 1.0f;
            food.nutrients = {calories,         calories / 8.0f,  calories / 100.0f,
                              calories / 30.0f, calories / 40.0f, calories / 120.0f};
            day.group(5).push_back(food);
            rebuildAllFoods(day);
        }
        if (exerciseCalories > 0) {
            ExerciseEntry walk;
            walk.calories = exerciseCalories;
            walk.minutes = 30;
            (void)day.appendExercise(walk);
        }
        recomputeDay(day, store.profile);
        (void)dayTotals(day);
        return day;
    }

    // The logbook's own screens on this session.
    LogbookOpeners screens() { return dayScreens(session, notifier); }

private:
    void setGoal(float start, float goal, int days) {
        UserProfile& profile = session.store().profile;
        const CalendarDate from = CalendarDate::fromDmy(1, 11, 2002);
        profile.setStartWeight(start);
        profile.setStartDate(from);
        profile.setGoalWeight(goal);
        profile.setGoalDate(steppedDate(from, days));
        recomputeGoalPlan(profile);
    }
};

}  // namespace nutrovex::test
