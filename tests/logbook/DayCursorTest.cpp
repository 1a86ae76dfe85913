#include <gtest/gtest.h>

#include <algorithm>

#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "logbook/DayCursor.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using DayCursorTest = LogbookFixture;

// Against a linear scan: lists of 0..9 days on odd dates of March, every date from 1 to 2n+2.
TEST_F(DayCursorTest, FindLandsOnTheRecordOrItsInsertionPoint) {
    for (int n = 0; n <= 9; ++n) {
        store.reset();
        for (int i = 0; i < n; ++i) {
            addDay(2 * i + 1, 3, 2003);
        }
        for (int d = 1; d <= 2 * n + 2; ++d) {
            const bool exists = d % 2 == 1 && d < 2 * n + 1;
            const int expected = exists ? (d - 1) / 2 : std::min(d / 2, n);
            SCOPED_TRACE(testing::Message() << n << " days, date " << d);
            EXPECT_EQ(cursor.setCurrentDate(dmy(d, 3, 2003)), exists);
            EXPECT_EQ(cursor.currentFound(), exists);
            EXPECT_EQ(cursor.currentIndex(), expected);
            EXPECT_TRUE(currentIs(d, 3, 2003));
        }
    }
}

TEST_F(DayCursorTest, FirstSecondAndLastMoveTheDateToTheRecord) {
    EXPECT_FALSE(cursor.first());
    EXPECT_FALSE(cursor.last());
    EXPECT_TRUE(currentIs(21, 11, 2002));  // an empty list leaves the date alone

    addDay(3, 5, 2002);
    EXPECT_FALSE(cursor.seek(SeekMode::Second));
    EXPECT_TRUE(currentIs(21, 11, 2002));
    EXPECT_FALSE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 1);

    addDay(5, 5, 2002);
    addDay(9, 6, 2002);
    EXPECT_TRUE(cursor.seek(SeekMode::Second));
    EXPECT_TRUE(currentIs(5, 5, 2002));
    EXPECT_EQ(cursor.currentIndex(), 1);
    EXPECT_TRUE(cursor.last());
    EXPECT_TRUE(currentIs(9, 6, 2002));
    EXPECT_EQ(cursor.currentIndex(), 2);
    EXPECT_TRUE(cursor.first());
    EXPECT_TRUE(currentIs(3, 5, 2002));
    EXPECT_TRUE(cursor.currentFound());
}

TEST_F(DayCursorTest, NextAndPreviousWalkCalendarDaysNotRecords) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    ASSERT_TRUE(cursor.last());
    EXPECT_FALSE(cursor.nextDay());
    EXPECT_TRUE(currentIs(6, 5, 2002));
    EXPECT_FALSE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 2);
    EXPECT_TRUE(cursor.previousDay());
    EXPECT_TRUE(currentIs(5, 5, 2002));
    EXPECT_TRUE(cursor.currentFound());
    EXPECT_FALSE(cursor.previousDay());
    EXPECT_TRUE(currentIs(4, 5, 2002));
    EXPECT_EQ(cursor.currentIndex(), 1);

    EXPECT_FALSE(cursor.setCurrentDate(dmy(1, 3, 2004)));
    (void)cursor.previousDay();
    EXPECT_TRUE(currentIs(29, 2, 2004));
}

TEST_F(DayCursorTest, EnsureCreatesTheDayAtTheInsertionPointOnlyOnce) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    cursor.setCurrentDate(dmy(4, 5, 2002));
    EXPECT_EQ(cursor.currentRecord(), nullptr);
    EXPECT_FALSE(cursor.ensureCurrentDay());
    EXPECT_EQ(store.days().size(), 3u);
    EXPECT_EQ(store.dayCount, 3);
    EXPECT_TRUE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 1);
    EXPECT_EQ(store.dayAt(1).date().day, 4);

    EXPECT_TRUE(cursor.ensureCurrentDay());
    EXPECT_EQ(store.days().size(), 3u);

    // The record itself, and whether it was made just now.
    bool created = true;
    EXPECT_EQ(cursor.ensureCurrentRecord(&created), &store.dayAt(1));
    EXPECT_FALSE(created);
    cursor.setCurrentDate(dmy(9, 5, 2002));
    DayRecord* made = cursor.ensureCurrentRecord(&created);
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(created);
    EXPECT_EQ(made, &store.dayAt(3));
    EXPECT_EQ(made->date().day, 9);
}

TEST_F(DayCursorTest, AStaleCursorSettlesOnTheStoreAsItIsNow) {
    addDay(3, 5, 2002);
    cursor.setCurrentDate(dmy(3, 5, 2002));
    ASSERT_NE(cursor.currentRecord(), nullptr);
    // Another user is opened: the store is reset and filled without the cursor's help.
    store.reset();
    addDay(1, 1, 2002);
    addDay(2, 1, 2002);
    EXPECT_EQ(cursor.currentRecord(), nullptr);  // its date has no record in this store
    addDay(3, 5, 2002);
    const DayRecord* day = cursor.currentRecord();
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->date().month, 5);
    EXPECT_EQ(cursor.currentIndex(), 2);
}

TEST_F(DayCursorTest, CurrentDayRecomputesTheFiguresOfTheDay) {
    DayRecord& day = addDay(3, 5, 2002);
    FoodItem food;
    food.nutrients = {250.0f, 10.0f, 1.0f, 5.0f, 2.0f, 1.0f};
    food.ratio = 2.0f;
    day.group(3).push_back(food);
    ExerciseEntry run;
    run.minutes = 30;
    run.calories = 360;
    (void)day.appendExercise(run);
    (void)day.appendExercise(run);

    cursor.setCurrentDate(dmy(3, 5, 2002));
    EXPECT_EQ(cursor.currentRecord()->caloriesIn, 0u);  // untouched without recomputing
    const DayRecord* current = cursor.currentDay();
    ASSERT_NE(current, nullptr);
    EXPECT_FLOAT_EQ(current->totals()[0], 500.0f);
    EXPECT_EQ(current->caloriesIn, 500u);
    EXPECT_EQ(current->exerciseCalories, 720u);
    EXPECT_EQ(current->exerciseMinutes, 60u);
}

TEST_F(DayCursorTest, DeleteCurrentDayKeepsTheDate) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    cursor.setCurrentDate(dmy(4, 5, 2002));
    cursor.deleteCurrentDay();  // no record: nothing to remove
    EXPECT_EQ(store.days().size(), 2u);

    cursor.setCurrentDate(dmy(3, 5, 2002));
    cursor.deleteCurrentDay();
    EXPECT_EQ(store.days().size(), 1u);
    EXPECT_EQ(store.dayCount, 1);
    EXPECT_TRUE(currentIs(3, 5, 2002));
    EXPECT_FALSE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 0);
}

TEST_F(DayCursorTest, DeleteRangeTakesBothEndsAndOnlyTheDaysThatExist) {
    for (int d : {1, 2, 4, 7, 9, 10}) {
        addDay(d, 5, 2002);
    }
    cursor.setCurrentDate(dmy(20, 5, 2002));
    cursor.deleteRange(dmy(2, 5, 2002), dmy(9, 5, 2002));
    ASSERT_EQ(store.days().size(), 2u);
    EXPECT_EQ(store.dayAt(0).date().day, 1);
    EXPECT_EQ(store.dayAt(1).date().day, 10);
    EXPECT_TRUE(currentIs(20, 5, 2002));
    EXPECT_FALSE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 2);
}

TEST_F(DayCursorTest, DeleteRangeRestoresTheCurrentRecord) {
    addDay(28, 2, 2004);
    addDay(29, 2, 2004);
    addDay(1, 3, 2004);
    addDay(2, 3, 2004);
    cursor.setCurrentDate(dmy(2, 3, 2004));
    cursor.deleteRange(dmy(28, 2, 2004), dmy(1, 3, 2004));
    ASSERT_EQ(store.days().size(), 1u);
    EXPECT_TRUE(cursor.currentFound());
    EXPECT_EQ(cursor.currentIndex(), 0);
    EXPECT_TRUE(currentIs(2, 3, 2004));
}

TEST_F(DayCursorTest, DeleteRangeEndsAtTheLastPackableDay) {
    addDay(30, 12, 2031);
    addDay(31, 12, 2031);
    addDay(1, 1, 1904);
    cursor.deleteRange(dmy(30, 12, 2031), dmy(31, 12, 2031));
    ASSERT_EQ(store.days().size(), 1u);
    EXPECT_EQ(store.dayAt(0).date().year, 1904);
}

TEST_F(DayCursorTest, DeleteAllDaysGoesToTodayAndKeepsTheProfileOnRequest) {
    addDay(3, 5, 2002);
    addDay(21, 11, 2002);
    store.firstDayChunk = 7;
    store.profile.setHeight(70.0f);
    cursor.setCurrentDate(dmy(3, 5, 2002));
    cursor.deleteAllDays(true);
    EXPECT_TRUE(store.days().empty());
    EXPECT_EQ(store.dayCount, 0);
    EXPECT_EQ(store.firstDayChunk, 3);
    EXPECT_TRUE(currentIs(21, 11, 2002));
    EXPECT_FLOAT_EQ(store.profile.height(), 70.0f);

    cursor.deleteAllDays(false);
    EXPECT_LT(store.profile.height(), 0.0f);
}

}  // namespace
}  // namespace nutrovex
