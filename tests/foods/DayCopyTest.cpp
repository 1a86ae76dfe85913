#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "FoodTestUtil.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/DayCopy.h"
#include "foods/DayFoods.h"

namespace nutrovex {
namespace {

const CalendarDate kMonday = CalendarDate::fromDmy(18, 11, 2002);
const CalendarDate kFriday = CalendarDate::fromDmy(22, 11, 2002);

ExerciseEntry exercise(const std::string& name, uint16_t minutes, uint16_t calories, uint32_t key) {
    ExerciseEntry e;
    e.key.value = key;
    e.name = name;
    e.minutes = minutes;
    e.calories = calories;
    return e;
}

class DayCopyTest : public ::testing::Test {
protected:
    DayCopyTest() : clock(kFriday), store(clock) {}

    void SetUp() override {
        store.header.keyCounter.value = 40;
        auto monday = std::make_unique<DayRecord>(kMonday);
        for (const FoodItem& f :
             {test::loggedFood("Oats", 0, 5, 31, 150), test::loggedFood("Milk", 0, 1, 32, 120),
              test::loggedFood("Soup", 1, 3, 33, 90), test::loggedFood("Apple", 3, 4, 34, 80)}) {
            ASSERT_NE(insertLoggedFood(*monday, f, f.group, kSortByMeal), kNoPosition);
        }
        monday->appendExercise(exercise("Running", 30, 360, 35));
        store.insertDay(std::move(monday));
    }

    DayRecord& monday() { return *store.dayOf(kMonday); }

    FixedClock clock;
    UserStore store;
};

TEST_F(DayCopyTest, AMealGoesToAnotherDateWithFreshKeysAndItsValues) {
    const FoodList breakfast = mealEntries(monday(), kAllFoodsGroup, 0);
    ASSERT_EQ(breakfast.size(), 2u);
    const DayCopyReport report = copyIntoDay(store, kFriday, breakfast, {});
    EXPECT_TRUE(report.complete());
    EXPECT_EQ(report.foodsCopied, 2u);
    EXPECT_TRUE(report.dayCreated);
    EXPECT_TRUE(report.notices.userData && report.notices.dataChanged && report.notices.dayCreated);

    const DayRecord* friday = store.dayOf(kFriday);
    ASSERT_NE(friday, nullptr);
    ASSERT_EQ(friday->allFoods().size(), 2u);
    const FoodItem& oats = friday->group(5).at(0);
    EXPECT_EQ(oats.name, "Oats");
    EXPECT_EQ(oats.meal, 0);
    EXPECT_FLOAT_EQ(oats.shownNutrient(kCalories), 150.0f);
    EXPECT_EQ(friday->group(1).at(0).name, "Milk");
    // Keys from the person's counter, in the order given (the meal's order: Milk, Oats).
    EXPECT_EQ(friday->group(1).at(0).key.value, 41u);
    EXPECT_EQ(oats.key.value, 42u);
    EXPECT_EQ(store.header.keyCounter.value, 42u);
    // The stored totals follow the foods.
    EXPECT_FLOAT_EQ(friday->totals()[kCalories], 270.0f);
    // The source day is as it was.
    EXPECT_EQ(monday().allFoods().size(), 4u);
    EXPECT_EQ(monday().group(5).at(0).key.value, 31u);
}

TEST_F(DayCopyTest, AWholeDayAndSelectedRowsJoinWhatADayHolds) {
    const DayEntries all = wholeDayEntries(monday());
    EXPECT_EQ(all.foods.size(), 4u);
    ASSERT_EQ(all.exercises.size(), 1u);
    ASSERT_TRUE(copyIntoDay(store, kFriday, all.foods, all.exercises).complete());

    // Alphabetically the second and third rows of the day: Milk and Oats.
    const FoodList rows =
        selectedEntries(monday(), FoodLogView{kAllFoodsGroup, kSortAlphabetical, 0}, {1, 2});
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].name, "Milk");
    EXPECT_EQ(rows[1].name, "Oats");
    const DayCopyReport again = copyIntoDay(store, kFriday, rows, {});
    EXPECT_FALSE(again.dayCreated);
    EXPECT_FALSE(again.notices.dayCreated);

    const DayRecord* friday = store.dayOf(kFriday);
    ASSERT_NE(friday, nullptr);
    EXPECT_EQ(friday->allFoods().size(), 6u);
    EXPECT_EQ(friday->group(5).size(), 2u);
    ASSERT_EQ(friday->exercises().size(), 1u);
    EXPECT_EQ(friday->exercises()[0].name, "Running");
    EXPECT_EQ(friday->exercises()[0].calories, 360);
    EXPECT_EQ(friday->exercises()[0].key.value, 45u);  // after the day's four foods
    EXPECT_EQ(store.header.keyCounter.value, 47u);
    EXPECT_EQ(store.days().size(), 2u);
    // Rows past the list's end are not there to copy.
    EXPECT_EQ(selectedEntries(monday(), FoodLogView{kAllFoodsGroup, 0, 0}, {3, 5}).size(), 1u);
}

// Fills the day with foods until it has room for a little more than two small foods only.
void fillAlmost(DayRecord& day, uint32_t& key) {
    while (kMaxPayloadSize - daySize(day) >= 260 + 161) {
        FoodItem filler = test::loggedFood("", 2, 7, ++key, 1);
        filler.name = std::string(200, 'f');
        filler.text2 = Text::null();  // 60 + 200 bytes
        ASSERT_NE(insertLoggedFood(day, filler, 7, kSortByMeal), kNoPosition);
    }
}

TEST_F(DayCopyTest, AFullDayTakesWhatFitsAndNamesWhatItLeftOut) {
    auto friday = std::make_unique<DayRecord>(kFriday);
    uint32_t key = 100;
    fillAlmost(*friday, key);
    const std::size_t before = friday->allFoods().size();
    store.insertDay(std::move(friday));
    store.header.keyCounter.value = 500;

    const std::string longName(190, 'L');  // 61 + 380 bytes: more than the room left
    FoodItem big = test::loggedFood("", 0, 5, 1, 100);
    big.name = longName;
    big.text2 = longName;
    FoodItem tea = test::loggedFood("Tea", 0, 6, 2, 2);
    tea.text2 = Text::null();
    FoodItem jam = test::loggedFood("Jam", 0, 0, 3, 50);
    jam.text2 = Text::null();
    const std::vector<FoodItem> foods = {big, tea, big, jam};
    const std::vector<ExerciseEntry> exercises = {exercise(std::string(300, 'W'), 10, 50, 4)};

    const DayCopyReport report = copyIntoDay(store, kFriday, foods, exercises, "Copy Day");
    EXPECT_EQ(report.foodsCopied, 2u);
    EXPECT_EQ(report.foodsLeftOut, (std::vector<std::string>{longName, longName}));
    EXPECT_EQ(report.exercisesCopied, 0u);
    EXPECT_EQ(report.exercisesLeftOut, std::vector<std::string>{std::string(300, 'W')});
    EXPECT_FALSE(report.complete());
    ASSERT_TRUE(report.message.has_value());
    EXPECT_EQ(report.message->caption, "Copy Day");
    EXPECT_EQ(report.message->text, "This day holds as much as one day can: 2 of 4 foods (" +
                                        longName + ", " + longName + ") and 1 of 1 exercise (" +
                                        std::string(300, 'W') + ") could not be copied.");
    EXPECT_TRUE(report.notices.userData);

    const DayRecord* day = store.dayOf(kFriday);
    EXPECT_EQ(day->allFoods().size(), before + 2);
    EXPECT_EQ(day->group(6).back().name, "Tea");
    EXPECT_EQ(day->group(0).back().name, "Jam");
    EXPECT_LE(daySize(*day), kMaxPayloadSize);  // still saved whole
    // Only what went in spent a key.
    EXPECT_EQ(store.header.keyCounter.value, 502u);
    EXPECT_EQ(day->group(6).back().key.value, 501u);
}

TEST_F(DayCopyTest, ADateNoDayCanHaveIsRefused) {
    const FoodList foods = mealEntries(monday(), kAllFoodsGroup, 0);
    for (const CalendarDate& date :
         {CalendarDate::fromDmy(30, 2, 2003), CalendarDate::fromDmy(1, 1, 2032),
          CalendarDate::fromDmy(31, 12, 1903), CalendarDate{}}) {
        const DayCopyReport report = copyIntoDay(store, date, foods, {});
        ASSERT_TRUE(report.message.has_value());
        EXPECT_EQ(report.message->text, "Choose a date from 1/1/1904 to 12/31/2031.");
        EXPECT_EQ(report.foodsCopied, 0u);
        EXPECT_FALSE(report.notices.any());
    }
    EXPECT_EQ(store.days().size(), 1u);
    EXPECT_EQ(store.header.keyCounter.value, 40u);
    EXPECT_TRUE(isStorableDate(CalendarDate::fromDmy(29, 2, 2004)));
    EXPECT_TRUE(isStorableDate(CalendarDate::fromDmy(31, 12, 2031)));
}

}  // namespace
}  // namespace nutrovex
