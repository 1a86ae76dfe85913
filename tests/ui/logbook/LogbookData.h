#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TempDir.h"
#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "session/Session.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// A running session on a fresh root with "Zerbu" open on a fixed today, 21 November 2002: a
// 30-year-old man of 70 in whose default level is 2 ("Light : Sitting").
class LogbookSession {
public:
    LogbookSession() {
        std::string reason;
        EXPECT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();
        EXPECT_TRUE(session.userOpen());
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

    FixedClock clock{CalendarDate::fromDmy(21, 11, 2002)};
    MemorySettings settings;
    TempDir dir;
    Session session{dir.path(), clock, settings, {}};
    SessionNotifier notifier{session};

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
