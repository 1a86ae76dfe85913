#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/DayFoods.h"
#include "foods/FoodTestUtil.h"
#include "foods/RecentFoods.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

FoodItem logged(const char* name, uint16_t meal, uint16_t group, uint32_t serial, float amount) {
    return test::loggedFood(name, meal, group, serial, 80.0f, amount);
}

class RecentFoodsTest : public ::testing::Test {
protected:
    RecentFoodsTest() : clock(CalendarDate::fromDmy(10, 3, 2026)), store(clock), days(store) {}

    void log(int dayOfMonth, FoodItem f) {
        DayRecord* day = store.dayOf(CalendarDate::fromDmy(dayOfMonth, 3, 2026));
        if (!day) {
            store.insertDay(
                std::make_unique<DayRecord>(CalendarDate::fromDmy(dayOfMonth, 3, 2026)));
            day = store.dayOf(CalendarDate::fromDmy(dayOfMonth, 3, 2026));
        }
        ASSERT_NE(insertLoggedFood(*day, f, f.group, kSortByMeal), kNoPosition);
    }

    static std::vector<std::string> names(const FoodList& foods) {
        std::vector<std::string> out;
        for (const FoodItem& f : foods) {
            out.push_back(f.name.str() + "/" + std::to_string(f.meal));
        }
        return out;
    }

    FixedClock clock;
    UserStore store;
    DayCursor days;
};

TEST_F(RecentFoodsTest, NewestDayFirstLatestLoggedFirstEachNameOnce) {
    log(7, logged("Oats", 0, 5, 1, 1.0f));
    log(7, logged("Apple", 3, 4, 2, 1.0f));
    log(9, logged("Tea", 0, 6, 5, 1.0f));
    log(9, logged("Apple", 1, 4, 6, 2.0f));  // the later Apple wins, with its own serving
    log(9, logged("apple", 2, 4, 4, 1.0f));  // another name: letter case counts
    log(8, logged("Rice", 2, 5, 3, 1.0f));

    const std::vector<FoodItem> recent = recentFoods(store);
    EXPECT_EQ(names(recent),
              (std::vector<std::string>{"Apple/1", "Tea/0", "apple/2", "Rice/2", "Oats/0"}));
    EXPECT_FLOAT_EQ(recent.front().serving.amount, 2.0f);
    EXPECT_EQ(recentFoodText(recent.front()), "Apple, 2.00 item");

    EXPECT_EQ(names(recentFoods(store, 2)), (std::vector<std::string>{"Apple/1", "Tea/0"}));
    EXPECT_TRUE(recentFoods(UserStore(clock)).empty());
}

TEST_F(RecentFoodsTest, LoggingAgainMakesANewEntryWithItsServingInTheChosenMeal) {
    log(9, logged("Apple", 1, 4, 6, 2.0f));
    store.header.keyCounter.value = 6;
    days.setCurrentDate(CalendarDate::fromDmy(10, 3, 2026));  // no record yet
    const FoodItem apple = recentFoods(store).front();

    const FoodLogView view{4, kSortByMeal, 0};
    const CopyOutcome out = logAgain(days, view, apple, 3);

    EXPECT_EQ(out.copied, 1u);
    EXPECT_TRUE(out.notices.userData);
    EXPECT_TRUE(out.notices.dayCreated);
    const DayRecord* today = store.dayOf(CalendarDate::fromDmy(10, 3, 2026));
    ASSERT_NE(today, nullptr);
    ASSERT_EQ(today->group(4).size(), 1u);
    ASSERT_EQ(today->allFoods().size(), 1u);
    EXPECT_EQ(today->group(4)[0].meal, 3);
    EXPECT_EQ(today->group(4)[0].key.value, 7u);  // a fresh key
    EXPECT_FLOAT_EQ(today->group(4)[0].serving.amount, 2.0f);
    EXPECT_EQ(out.lastPosition, 0);
}

TEST_F(RecentFoodsTest, AFullDayTakesNoFoodAgainAndSaysWhy) {
    log(9, logged("Apple", 1, 4, 6, 2.0f));
    log(10, logged("Filler", 0, 2, 7, 1.0f));
    DayRecord& today = *store.dayOf(CalendarDate::fromDmy(10, 3, 2026));
    const FoodItem apple = recentFoods(store).back();
    ASSERT_EQ(apple.name.str(), "Apple");
    while (dayHasRoomFor(today, foodSize(apple))) {
        today.group(2).push_back(logged("Filler", 0, 2, 7, 1.0f));
    }
    rebuildAllFoods(today);
    store.header.keyCounter.value = 7;
    days.setCurrentDate(CalendarDate::fromDmy(10, 3, 2026));

    const CopyOutcome out = logAgain(days, {4, kSortByMeal, 0}, apple, 3);
    EXPECT_EQ(out.copied, 0u);
    EXPECT_EQ(out.message, dayFullMessage("Insert Food"));
    EXPECT_FALSE(out.notices.userData);
    EXPECT_TRUE(today.group(4).empty());
    EXPECT_EQ(store.header.keyCounter.value, 7u);
}

TEST_F(RecentFoodsTest, CopyingYesterdaysMealTakesOnlyThatMealOfTheShownList) {
    log(8, logged("Rice", 2, 5, 1, 1.0f));
    log(9, logged("Oats", 0, 5, 2, 1.0f));
    log(9, logged("Bread", 1, 5, 3, 1.0f));
    log(9, logged("Pasta", 1, 5, 4, 1.0f));
    log(9, logged("Juice", 1, 4, 5, 1.0f));
    store.header.keyCounter.value = 5;
    log(10, logged("Apple", 1, 4, 9, 1.0f));
    days.setCurrentDate(CalendarDate::fromDmy(10, 3, 2026));

    // The bread group: its lunch only.
    CopyOutcome out = copyMealFromYesterday(days, FoodLogView{5, kSortByMeal, 0}, 1);
    EXPECT_EQ(out.copied, 2u);
    EXPECT_TRUE(out.notices.userData);
    EXPECT_FALSE(out.notices.dayCreated);
    const DayRecord* today = store.dayOf(CalendarDate::fromDmy(10, 3, 2026));
    EXPECT_EQ(names(today->group(5)), (std::vector<std::string>{"Bread/1", "Pasta/1"}));
    EXPECT_EQ(today->allFoods().size(), 3u);

    // All foods: the lunch of every group, each into its own group.
    out = copyMealFromYesterday(days, FoodLogView{kAllFoodsGroup, kSortByMeal, 0}, 1);
    EXPECT_EQ(out.copied, 3u);
    EXPECT_EQ(names(today->group(4)), (std::vector<std::string>{"Apple/1", "Juice/1"}));
    EXPECT_EQ(today->allFoods().size(), 6u);

    // No dinner yesterday, and no day before the 8th: nothing happens, nothing to save.
    out = copyMealFromYesterday(days, FoodLogView{kAllFoodsGroup, kSortByMeal, 0}, 2);
    EXPECT_EQ(out.copied, 0u);
    EXPECT_FALSE(out.notices.any());
    days.setCurrentDate(CalendarDate::fromDmy(8, 3, 2026));
    EXPECT_FALSE(copyMealFromYesterday(days, FoodLogView{5, kSortByMeal, 0}, 2).notices.any());
}

}  // namespace
}  // namespace nutrovex
