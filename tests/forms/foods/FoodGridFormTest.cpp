#include <gtest/gtest.h>

#include <memory>

#include "core/UserStore.h"
#include "foods/DayFoods.h"
#include "foods/FoodTestUtil.h"
#include "forms/foods/FoodGridForm.h"
#include "forms/foods/MealsForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

using Command = FoodGridForm::Command;

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

    FoodGridForm grid(int group) { return FoodGridForm(catalogue, days, state, group); }

    FixedClock clock;
    UserStore store;
    DayCursor days;
    FoodCatalogue catalogue;
    FoodRunState state;
};

TEST_F(FoodGridFormTest, TheGridLogFoodAndInsertFoodNameTheirDay) {
    EXPECT_EQ(grid(4).view().date, "Tuesday March 10, 2026");
    EXPECT_EQ(grid(4).logFoodForm().view().date, "Tuesday March 10, 2026");
    const FoodItemForm insert = grid(4).logFoodForm().newFoodItemForm();
    EXPECT_EQ(insert.view().date, "");  // a catalogue food belongs to no day
    const std::optional<FoodItemForm> entry = grid(4).editForm(grid(4).view().rows.firstFoodRow);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->view().date, "Tuesday March 10, 2026");
}

TEST_F(FoodGridFormTest, RowsMapToFoodsAndSelectionsBeyondTheFoodsAreCutToSize) {
    FoodGridForm form = grid(4);
    const FoodGridView v = form.view();
    const int first = v.rows.firstFoodRow;
    ASSERT_EQ(v.rows.foodCount, 4);
    EXPECT_EQ(v.selection, (RowRange{first, first}));  // it opens on the first food
    EXPECT_STREQ(v.title, "Fruits, Fruit Juice");
    EXPECT_TRUE(form.editForm(first + 3).has_value());
    EXPECT_FALSE(form.editForm(first - 1).has_value());  // the header: Log Food instead
    EXPECT_FALSE(form.editForm(first + 4).has_value());  // the totals

    // Everything selected, headers and totals included: copy takes the four foods, delete nothing.
    form.select({0, static_cast<int>(v.rows.rows.size()) - 1});
    EXPECT_TRUE(form.view().canCopy);
    EXPECT_FALSE(form.view().canDelete);
    EXPECT_FALSE(form.confirmation(Command::Delete));
    (void)form.command(Command::Copy);
    EXPECT_EQ(state.clipboard.foods().size(), 4u);
    EXPECT_FALSE(form.command(Command::Delete).notices.any());
    EXPECT_EQ(days.currentRecord()->group(4).size(), 4u);
}

TEST_F(FoodGridFormTest, DeletingRowsTakesTheirTwinsAndRedrawsEveryScreen) {
    FoodGridForm form = grid(kAllFoodsGroup);
    const int first = form.view().rows.firstFoodRow;
    // Meal order: Bread (breakfast), then Apple, Fig, Pear, Plum; rows 2..4 are Apple, Fig, Pear.
    form.select({first + 3, first + 1});
    ASSERT_TRUE(form.confirmation(Command::Delete));
    const Outcome o = form.command(Command::Delete);
    EXPECT_TRUE(o.notices.userData);
    EXPECT_TRUE(o.notices.dataChanged);
    const DayRecord& day = *days.currentRecord();
    ASSERT_EQ(day.group(4).size(), 1u);
    EXPECT_EQ(day.group(4)[0].name.str(), "Plum");
    EXPECT_EQ(day.allFoods().size(), 2u);
    EXPECT_EQ(form.view().rows.foodCount, 2);  // the form read the day again
    EXPECT_EQ(form.view().selection, (RowRange{first + 1, first + 1}));
}

TEST_F(FoodGridFormTest, CopiedFoodsPasteIntoAnotherDayAndGroup) {
    FoodGridForm fruit = grid(4);
    const int first = fruit.view().rows.firstFoodRow;
    fruit.select({first, first + 1});
    (void)fruit.command(Command::Copy);
    ASSERT_TRUE(fruit.view().canPaste);

    days.nextDay();
    FoodGridForm bread = grid(5);
    const Outcome out = bread.command(Command::Paste);
    EXPECT_FALSE(out.message);
    EXPECT_TRUE(out.notices.dataChanged);
    ASSERT_NE(days.currentRecord(), nullptr);
    EXPECT_EQ(days.currentRecord()->group(5).size(), 2u);  // pasting into a group moves the food
    const FoodGridView v = bread.view();
    EXPECT_EQ(v.rows.foodCount, 2);
    // The last food pasted is selected.
    EXPECT_EQ(v.selection.first, v.rows.firstFoodRow + 1);
}

TEST_F(FoodGridFormTest, SortAndViewCommandsAreSharedByEveryGrid) {
    FoodGridForm fruit = grid(4);
    EXPECT_TRUE(fruit.command(Command::SortAlphabetical).notices.userData);
    const FoodGridView v = fruit.view();
    EXPECT_EQ(v.rows.rows[static_cast<std::size_t>(v.rows.firstFoodRow) + 1].text, "Fig");
    FoodGridForm all = grid(kAllFoodsGroup);
    EXPECT_EQ(all.view().log.sortMode, kSortAlphabetical);
    (void)all.command(Command::NutrientToggle);
    EXPECT_EQ(fruit.view().log.nutrientView, 1);
    EXPECT_EQ(fruit.view().log.shownGroup, 4);
}

TEST_F(FoodGridFormTest, LogFoodOpensOnTheListsGroupOrTheLastOneForAllFoods) {
    EXPECT_EQ(grid(5).logFoodForm().view().group, 5);
    state.nextLogGroup = 3;
    EXPECT_EQ(grid(kAllFoodsGroup).logFoodForm().view().group, 3);
}

TEST(MealsForm, FormatsCaloriesWholeAndGramsWithOneDecimal) {
    const struct {
        int nutrient;
        float value;
        const char* text;
    } cases[] = {
        {kCalories, 0.0f, "0"},       {kCalories, 149.5f, "150"},
        {kCalories, 9999.0f, "9999"}, {kCarbohydrate, 0.0f, "0.0g"},
        {kFat, 12.25f, "12.2g"},      {kSaturatedFat, 1000.0f, "1000.0g"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(mealsValueText(c.nutrient, c.value), c.text) << c.value;
    }
}

FoodItem food(uint16_t group, float calories, float carbohydrate, float fiber,
              float amount = 1.0f) {
    FoodItem f;
    f.name = "Food";
    f.group = group;
    f.setReference({1.0f, ServingUnit::Item, 0});
    f.setServing({amount, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    f.setNutrient(kCarbohydrate, carbohydrate);
    f.setNutrient(kFiber, fiber);
    f.setNutrient(kProtein, 2.25f);
    f.setNutrient(kFat, 1.04f);
    f.setNutrient(kSaturatedFat, 0.5f);
    return f;
}

class MealsFormTest : public ::testing::Test {
protected:
    FixedClock clock{CalendarDate::fromDmy(1, 3, 2026)};
    UserStore store{clock};
    DayCursor days{store};
    FoodCatalogue catalogue;
    FoodRunState state;
    MealsForm form{catalogue, days, state};
};

TEST_F(MealsFormTest, ADayWithoutRecordShowsZeroEverywhere) {
    const MealsView v = form.view();
    EXPECT_EQ(v.date, "Sunday March 1, 2026");
    EXPECT_EQ(v.groups[3].labels, (std::array<std::string, 3>{"Cal", "Carb", "Prot"}));
    EXPECT_EQ(v.groups[3].values, (std::array<std::string, 3>{"0", "0.0g", "0.0g"}));
    EXPECT_EQ(v.summary[1].labels, (std::array<std::string, 3>{"Fib", "Fat", "SFat"}));
    EXPECT_EQ(v.summary[1].values, (std::array<std::string, 3>{"0.0g", "0.0g", "0.0g"}));
}

TEST_F(MealsFormTest, GroupCellsToggleBetweenTheTwoTriplesAndTheSummaryKeepsAllSix) {
    days.ensureCurrentDay();
    DayRecord& day = *days.currentRecord();
    // Ten foods of 1500 calories: the group shows its clamped 9999.
    for (int i = 0; i < 10; ++i) {
        day.group(2).push_back(food(2, 1500.0f, 10.0f, 1.0f));
        day.allFoods().push_back(day.group(2).back());
    }
    day.group(4).push_back(food(4, 52.0f, 13.8f, 2.4f, 2.0f));  // two servings
    day.group(4).push_back(food(4, 300.0f, 1.0f, 1.0f, 0.0f));  // a zero serving adds nothing

    MealsView v = form.view();
    EXPECT_EQ(v.groups[2].values, (std::array<std::string, 3>{"9999", "100.0g", "22.5g"}));
    EXPECT_EQ(v.groups[4].values, (std::array<std::string, 3>{"104", "27.6g", "4.5g"}));
    EXPECT_EQ(v.groups[0].values, (std::array<std::string, 3>{"0", "0.0g", "0.0g"}));
    EXPECT_EQ(v.summary[0].values, (std::array<std::string, 3>{"10103", "127.6g", "27.0g"}));

    (void)form.command(MealsForm::Command::ToggleNutrients);
    EXPECT_TRUE(state.mealsShowFats);  // the run holds the choice for every later screen
    v = form.view();
    EXPECT_EQ(v.groups[4].labels, (std::array<std::string, 3>{"Fib", "Fat", "SFat"}));
    EXPECT_EQ(v.groups[4].values, (std::array<std::string, 3>{"4.8g", "2.1g", "1.0g"}));
    EXPECT_EQ(v.summary[0].labels, (std::array<std::string, 3>{"Cal", "Carb", "Prot"}));
    (void)form.command(MealsForm::Command::ToggleNutrients);
    EXPECT_EQ(form.view().groups[4].labels[0], "Cal");
    // Closing writes what the screens opened from it changed: the catalogue and the user's data.
    EXPECT_EQ(form.close(), SavePoint::Both);
    EXPECT_EQ(form.groupForm(4).view().log.shownGroup, 4);
}

}  // namespace
}  // namespace nutrovex
