#include <gtest/gtest.h>

#include <string>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/FoodItem.h"
#include "forms/logbook/DayRangeForm.h"
#include "forms/logbook/LogbookForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using Command = LogbookForm::Command;
using Field = LogbookForm::Field;

class LogbookTest : public LogbookFixture {
protected:
    LogbookFigures figures() { return logbook.view().figures; }
    Notices water(std::string_view text) { return logbook.edit(Field::Water, text).notices; }

    LogbookForm logbook{cursor};
};

TEST(LogbookTexts, SubtractedAndNetCalories) {
    struct Row {
        long value;
        const char* subtracted;
        const char* net;
    };
    const Row rows[] = {
        {0, "0", "0"},
        {1, "- 1", "1"},
        {1700, "- 1700", "1700"},
        {-5, "-5", "- 5"},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(subtractedCalories(r.value), r.subtracted) << r.value;
        EXPECT_EQ(netTotalText(r.value), r.net) << r.value;
    }
}

TEST(LogbookTexts, MealCaloriesAreRoundedHalfUpBeforeSubtracting) {
    struct Row {
        float meals;
        int bmr;
        uint32_t exercise;
        long net;
    };
    const Row rows[] = {
        {1499.5f, 1500, 0, 0},    {1499.4f, 1500, 0, -1}, {2000.0f, 1500, 360, 140},
        {0.0f, 1700, 360, -2060}, {0.49f, 0, 0, 0},       {0.5f, 0, 0, 1},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(netCalories(r.meals, r.bmr, r.exercise), r.net) << r.meals;
    }
}

TEST_F(LogbookTest, MealsAndTotalRoundHalvesTheSameWay) {
    const struct {
        float meals;
        const char* mealsText;
        const char* total;
    } rows[] = {
        {1498.5f, "1499", "1499"}, {2.5f, "3", "3"}, {0.5f, "1", "1"},
        {1498.4f, "1498", "1498"}, {0.4f, "0", "0"}, {10.5f, "11", "11"},
    };
    DayRecord& day = addDay(3, 5, 2002);
    FoodItem food;
    food.ratio = 1.0f;
    day.group(0).push_back(food);
    (void)logbook.command(Command::First);
    for (const auto& r : rows) {
        day.group(0)[0].nutrients[kCalories] = r.meals;
        const LogbookFigures f = figures();
        EXPECT_EQ(f.meals, r.mealsText) << r.meals;
        EXPECT_EQ(f.total, r.total) << r.meals;
    }
}

TEST_F(LogbookTest, FiguresOfADateWithoutARecord) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    (void)logbook.pickDate(Field::Date, dmy(4, 5, 2002));
    EXPECT_EQ(figures(), (LogbookFigures{.date = "Saturday May 4, 2002",
                                         .weight = "---  lbs",
                                         .meals = "0",
                                         .bmr = "0",
                                         .exercise = "0",
                                         .total = "0",
                                         .record = "Record: -- of 2",
                                         .goal = "",
                                         .water = "0"}));
}

TEST_F(LogbookTest, FiguresOfARecordedDay) {
    store.profile.setHeight(70.0f);
    store.profile.setAge(30);
    DayRecord& day = addDay(3, 5, 2002);
    setDayWeight(day, 180.0f, store.profile);  // level 2 from the profile: BMR 2234
    FoodItem food;
    food.nutrients[0] = 1499.5f;
    food.ratio = 1.0f;
    day.group(0).push_back(food);
    ExerciseEntry walk;
    walk.calories = 100;
    walk.minutes = 20;
    (void)day.appendExercise(walk);
    day.setWater(6);
    store.profile.setStartWeight(200.0f);
    store.profile.setGoalWeight(190.0f);
    store.profile.setStartDate(dmy(1, 5, 2002));
    store.profile.setGoalDate(dmy(5, 6, 2002));
    recomputeGoalPlan(store.profile);

    (void)logbook.command(Command::First);
    LogbookFigures f{.date = "Friday May 3, 2002",
                     .weight = "180  lbs",
                     .meals = "1500",
                     .bmr = "- 2234",
                     .exercise = "- 100",
                     .total = "- 834",
                     .record = "Record: 1 of 1",
                     .goal = "Goal: -1000 cal",
                     .water = "6"};
    EXPECT_EQ(figures(), f);

    ASSERT_TRUE(store.profile.setUnits(1));
    f.weight = "82  kg";  // 81.65 kg by the serving units' pound
    EXPECT_EQ(figures(), f);

    setDayWeight(day, -1.0f, store.profile);
    EXPECT_EQ(figures().weight, "---  kg");
}

TEST_F(LogbookTest, AWeightBelowOneShowsTheDashes) {
    setDayWeight(addDay(3, 5, 2002), 0.4f, store.profile);
    (void)logbook.command(Command::First);
    EXPECT_EQ(figures().weight, "---  lbs");
}

TEST_F(LogbookTest, WaterBetweenTwoDaysCreatesTheMiddleRecord) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    (void)logbook.pickDate(Field::Date, dmy(4, 5, 2002));
    EXPECT_EQ(figures().record, "Record: -- of 2");

    EXPECT_EQ(water("1"), (Notices{.userData = true, .dayCreated = true}));
    const LogbookFigures f = figures();
    EXPECT_EQ(f.record, "Record: 2 of 3");
    EXPECT_EQ(f.water, "1");
    EXPECT_EQ(store.dayAt(1).water(), 1);

    // A second change goes into the day that now exists.
    EXPECT_EQ(water("99"), Notices{.userData = true});
    EXPECT_EQ(logbook.view().water, 99);
    EXPECT_EQ(store.dayAt(1).water(), 99);
    EXPECT_EQ(store.days().size(), 3u);
}

TEST_F(LogbookTest, WaterTakesTwoDigitsAtMost) {
    (void)logbook.pickDate(Field::Date, dmy(4, 5, 2002));
    (void)water("993");
    EXPECT_EQ(store.dayAt(0).water(), 99);
    (void)water("");
    EXPECT_EQ(store.dayAt(0).water(), 0);
}

TEST_F(LogbookTest, EveryNavigationMarksTheDataModified) {
    addDay(3, 5, 2002);
    for (const Command c : {Command::Previous, Command::Next, Command::First, Command::Last,
                            Command::Today, Command::DeleteCurrentDay}) {
        const Outcome outcome = logbook.command(c);
        EXPECT_EQ(outcome.notices, (Notices{.userData = true, .dataChanged = true}));
        EXPECT_EQ(outcome.save, SavePoint::Nothing);  // the next save point writes it
    }
    EXPECT_EQ(logbook.pickDate(Field::Date, dmy(1, 1, 2003)).notices,
              (Notices{.userData = true, .dataChanged = true}));
}

TEST_F(LogbookTest, WithoutAnOpenUserNothingHappens) {
    addDay(3, 5, 2002);
    store.dataFilePath.clear();
    EXPECT_FALSE(logbook.view().userOpen);
    EXPECT_EQ(logbook.command(Command::First), Outcome{});
    EXPECT_EQ(logbook.command(Command::DeleteAllDays), Outcome{});
    EXPECT_EQ(water("4"), Notices{});
    EXPECT_TRUE(currentIs(21, 11, 2002));
    EXPECT_EQ(store.days().size(), 1u);
    EXPECT_FALSE(store.modified);
}

TEST_F(LogbookTest, TheEndOfARangeAlwaysFollowsItsStart) {
    using Range = DayRangeForm::Field;
    DayRangeForm range(cursor);
    EXPECT_EQ(range.view().startText, "Thursday November 21, 2002");
    EXPECT_EQ(range.view().endText, "Friday November 22, 2002");

    (void)range.pickDate(Range::Start, dmy(28, 2, 2003));
    EXPECT_EQ(range.view().end.day, 1);
    EXPECT_EQ(range.view().end.month, 3);

    (void)range.pickDate(Range::End, dmy(10, 3, 2003));
    EXPECT_EQ(range.view().end.day, 10);
    (void)range.pickDate(Range::End, dmy(28, 2, 2003));  // equal to the start
    EXPECT_EQ(range.view().end.day, 1);
    EXPECT_EQ(range.view().end.month, 3);
    (void)range.pickDate(Range::End, dmy(1, 1, 2003));  // before the start
    EXPECT_EQ(range.view().end.month, 3);

    (void)range.pickDate(Range::End, dmy(2, 3, 2003));
    (void)range.pickDate(Range::Start, dmy(1, 1, 2003));  // a new start resets the end
    EXPECT_EQ(range.view().end.day, 2);
    EXPECT_EQ(range.view().end.month, 1);
}

TEST_F(LogbookTest, ARangeWhoseEndEqualsItsStartDeletesTwoDays) {
    for (int d = 1; d <= 4; ++d) {
        addDay(d, 5, 2002);
    }
    (void)logbook.pickDate(Field::Date, dmy(4, 5, 2002));
    DayRangeForm range(cursor);
    (void)range.pickDate(DayRangeForm::Field::Start, dmy(2, 5, 2002));
    (void)range.pickDate(DayRangeForm::Field::End, dmy(2, 5, 2002));
    EXPECT_EQ(range.command(DayRangeForm::Command::Delete).notices,
              (Notices{.userData = true, .dataChanged = true}));
    ASSERT_EQ(store.days().size(), 2u);
    EXPECT_EQ(store.dayAt(0).date().day, 1);
    EXPECT_EQ(store.dayAt(1).date().day, 4);
    EXPECT_EQ(figures().record, "Record: 2 of 2");
}

TEST_F(LogbookTest, OnlyTheDeletionsAskFirst) {
    EXPECT_EQ(LogbookForm::confirmation(Command::DeleteCurrentDay),
              (ScreenMessage{"Are you sure you want to delete current day?", "Current Day",
                             MessageKind::Question}));
    EXPECT_EQ(LogbookForm::confirmation(Command::DeleteAllDays),
              (ScreenMessage{"Are you sure you want to delete all days?", "All Days",
                             MessageKind::Question}));
    EXPECT_FALSE(LogbookForm::confirmation(Command::Today));
}

TEST_F(LogbookTest, DeleteAllDaysKeepsTheProfile) {
    store.profile.setAge(40);
    addDay(3, 5, 2002);
    (void)logbook.command(Command::First);
    EXPECT_EQ(logbook.command(Command::DeleteAllDays).notices,
              (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(store.profile.age(), 40);
    EXPECT_TRUE(currentIs(21, 11, 2002));
    EXPECT_EQ(figures().record, "Record: -- of 0");
}

}  // namespace
}  // namespace nutrovex
