#include <gtest/gtest.h>

#include <memory>

#include "core/UserStore.h"
#include "foods/DayFoods.h"
#include "foods/FoodGridForm.h"
#include "foods/FoodTestUtil.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

FoodItem logged(const char* name, uint16_t meal, uint16_t group, uint32_t key) {
    return test::loggedFood(name, meal, group, key, 50.0f);
}

class FoodGridFormTest : public ::testing::Test {
protected:
    FoodGridFormTest() : clock(CalendarDate::fromDmy(10, 3, 2026)), store(clock), days(store) {
        days.ensureCurrentDay();
        DayRecord& day = *days.currentRecord();
        uint32_t key = 1;
        for (const char* name : {"Apple", "Pear", "Plum", "Fig"}) {
            (void)insertLoggedFood(day, logged(name, 1, 4, key++), 4, kSortByMeal);
        }
        (void)insertLoggedFood(day, logged("Bread", 0, 5, key++), 5, kSortByMeal);
    }

    FixedClock clock;
    UserStore store;
    DayCursor days;
    FoodRunState state;
};

TEST_F(FoodGridFormTest, RowsMapToFoodsAndSelectionsBeyondTheFoodsAreCutToSize) {
    FoodGridForm form(days, state, 4);
    const int first = form.rows().firstFoodRow;
    ASSERT_EQ(form.rows().foodCount, 4);
    EXPECT_EQ(form.rowOfFood(0), first);
    EXPECT_EQ(form.rowOfFood(4), -1);
    EXPECT_EQ(form.foodAtRow(first + 3), Position{3});
    EXPECT_FALSE(form.foodAtRow(first - 1).has_value());  // the header
    EXPECT_FALSE(form.foodAtRow(first + 4).has_value());  // the totals

    // Everything selected, headers and totals included: copy takes the four foods, delete nothing.
    const RowRange all{0, static_cast<int>(form.rows().rows.size()) - 1};
    EXPECT_TRUE(form.canCopy(all));
    EXPECT_FALSE(form.canDelete(all));
    form.copy(all);
    EXPECT_EQ(state.clipboard.foods().size(), 4u);
    EXPECT_FALSE(form.deleteRows(all).any());
    EXPECT_EQ(days.currentRecord()->group(4).size(), 4u);
}

TEST_F(FoodGridFormTest, DeletingRowsTakesTheirTwinsAndRedrawsEveryScreen) {
    FoodGridForm form(days, state, kAllFoodsGroup);
    const int first = form.rows().firstFoodRow;
    // Meal order: Bread (breakfast), then Apple, Fig, Pear, Plum; rows 2..4 are Apple, Fig, Pear.
    const Notices n = form.deleteRows({first + 3, first + 1});
    EXPECT_TRUE(n.userData);
    EXPECT_TRUE(n.dataChanged);
    const DayRecord& day = *days.currentRecord();
    ASSERT_EQ(day.group(4).size(), 1u);
    EXPECT_EQ(day.group(4)[0].name.str(), "Plum");
    EXPECT_EQ(day.allFoods().size(), 2u);
    EXPECT_EQ(form.rows().foodCount, 2);  // the form read the day again
}

TEST_F(FoodGridFormTest, CopiedFoodsPasteIntoAnotherDayAndGroup) {
    FoodGridForm fruit(days, state, 4);
    const int first = fruit.rows().firstFoodRow;
    fruit.copy({first, first + 1});
    ASSERT_TRUE(fruit.canPaste());

    days.nextDay();
    FoodGridForm bread(days, state, 5);
    const PasteOutcome out = bread.paste();
    EXPECT_TRUE(out.complete);
    EXPECT_TRUE(out.notices.dataChanged);
    ASSERT_NE(days.currentRecord(), nullptr);
    EXPECT_EQ(days.currentRecord()->group(5).size(), 2u);  // pasting into a group moves the food
    EXPECT_EQ(bread.rows().foodCount, 2);
}

TEST_F(FoodGridFormTest, SortAndViewCommandsAreSharedByEveryGrid) {
    FoodGridForm fruit(days, state, 4);
    EXPECT_TRUE(fruit.command(FoodLogCommand::SortAlphabetical).userData);
    const int first = fruit.rows().firstFoodRow;
    EXPECT_EQ(fruit.rows().rows[static_cast<std::size_t>(first) + 1].text, "Fig");
    FoodGridForm all(days, state, kAllFoodsGroup);
    EXPECT_EQ(all.view().sortMode, kSortAlphabetical);
    (void)all.command(FoodLogCommand::NutrientToggle);
    EXPECT_EQ(fruit.view().nutrientView, 1);
    EXPECT_EQ(fruit.view().shownGroup, 4);
}

}  // namespace
}  // namespace nutrovex
