#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/LogFoodForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

FoodItem perItem(const char* name, float calories) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setReference({1.0f, ServingUnit::Item, 0});
    f.setServing({1.0f, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    f.setNutrient(kProtein, 4.0f);
    return f;
}

class LogFood : public ::testing::Test {
protected:
    LogFood() : store(clock), days(store) {
        days.setCurrentDate(CalendarDate::fromDmy(25, 9, 2002));
        (void)addCategory(catalogue, 5, "Bagels");
        (void)addCategory(catalogue, 5, "Breads");
        (void)addCategory(catalogue, 0, "Empty");
        for (const char* n : {"Plain", "Onion", "Sesame"}) {
            (void)addFoodItem(catalogue, 5, 0, perItem(n, 250.0f));
        }
        (void)addFoodItem(catalogue, 5, 1, perItem("Rye", 80.0f));
        catalogue.modified = false;
    }

    FoodCatalogue catalogue;
    FixedClock clock{CalendarDate::fromDmy(25, 9, 2002)};  // midnight: a snack
    UserStore store;
    DayCursor days;
};

TEST_F(LogFood, InitialPositionsAreUsedOnceThenTheFirstEntries) {
    LogFoodForm form(catalogue, days, {}, 5, 0, 2);
    EXPECT_EQ(form.group(), 5);
    EXPECT_EQ(form.foodNames(), (std::vector<std::string_view>{"Onion", "Plain", "Sesame"}));
    EXPECT_EQ(form.selectedCopy().name.str(), "Sesame");
    EXPECT_EQ(form.fields.calories, 250u);
    EXPECT_EQ(form.fields.unit(), ServingUnit::Item);
    form.selectCategory(1);
    EXPECT_EQ(form.selectedCopy().name.str(), "Rye");
    form.selectCategory(0);
    EXPECT_EQ(form.selectedCopy().name.str(), "Onion");  // the initial item was used up

    LogFoodForm negative(catalogue, days, {}, -1, -1, -1);
    EXPECT_EQ(negative.group(), 0);
    EXPECT_EQ(negative.category(), 0);
}

TEST_F(LogFood, EmptyGroupsAndCategoriesDisableWhatTheyCannotFill) {
    LogFoodForm form(catalogue, days, {}, 5, 0, 0);
    ASSERT_TRUE(form.valuesEnabled());
    form.selectGroup(0);  // one category, no food
    EXPECT_TRUE(form.categoryListEnabled());
    EXPECT_FALSE(form.valuesEnabled());
    EXPECT_FALSE(form.fields.amount.has_value());
    EXPECT_FALSE(form.fields.calories.has_value());
    EXPECT_FALSE(form.fields.grams[kSaturatedFat].has_value());
    EXPECT_EQ(form.log().status, FormResult::Status::Stay);
    form.selectGroup(3);  // no category at all
    EXPECT_FALSE(form.categoryListEnabled());
    EXPECT_EQ(form.category(), -1);
    EXPECT_FALSE(form.valuesEnabled());
}

TEST_F(LogFood, ValuesFollowTheAmountAndCaloriesAreCappedOnLeaving) {
    LogFoodForm form(catalogue, days, {}, 5, 0, 1);  // Plain
    form.amountChanged(2.5);
    EXPECT_EQ(form.fields.calories, 625u);
    EXPECT_DOUBLE_EQ(*form.fields.grams[kProtein], 10.0);
    form.caloriesEdited(12000);
    EXPECT_TRUE(form.caloriesLeft());
    EXPECT_EQ(form.fields.calories, 10000u);
    EXPECT_FLOAT_EQ(form.selectedCopy().nutrients[kCalories], 10000.0f);
    form.gramsEdited(kFat, 1500.0);
    EXPECT_FLOAT_EQ(form.selectedCopy().nutrients[kFat], 1000.0f);
    EXPECT_FALSE(form.caloriesLeft());
}

TEST_F(LogFood, LoggingCreatesTheDayAndFilesTwoCopies) {
    store.header.keyCounter.value = 9;
    LogFoodForm form(catalogue, days, {5, kSortAlphabetical, 0}, 5, 0, 2);  // Sesame
    EXPECT_EQ(form.fields.meal, 3);
    form.fields.amount = 0.004;
    FormResult r = form.log();
    EXPECT_EQ(r.message, (ScreenMessage{"You have an invalid nutrient value.", "Insert Food",
                                        MessageKind::Warning}));
    EXPECT_EQ(r.focus, FoodField::Amount);
    EXPECT_EQ(days.currentRecord(), nullptr);
    EXPECT_EQ(r.notices, Notices{});

    form.fields.amount = 0.005;
    form.fields.calories = 300;
    form.fields.meal = 0;
    r = form.log();
    ASSERT_TRUE(r.done());
    DayRecord* day = days.currentRecord();
    ASSERT_NE(day, nullptr);
    ASSERT_EQ(day->group(5).size(), 1u);
    const FoodItem& e = day->group(5)[0];
    EXPECT_EQ(e.key.value, 10u);
    EXPECT_EQ(e.loggedFlag, 1);
    EXPECT_EQ(e.meal, 0);
    EXPECT_FLOAT_EQ(e.serving.amount, 0.005f);
    EXPECT_FLOAT_EQ(e.nutrients[kCalories], 300.0f);
    EXPECT_FLOAT_EQ(e.ratio, 1.0f);
    EXPECT_TRUE(sameFood(e, day->allFoods()[0]));
    EXPECT_EQ(r.notices, (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(form.nextInitialGroup(), 5);

    // Another food of the same group, shown alphabetically: "Onion" comes first.
    form.selectItem(0);
    EXPECT_TRUE(form.log().done());
    EXPECT_EQ(form.loggedPosition(), 0);
    EXPECT_EQ(day->group(5).size(), 2u);
    EXPECT_EQ(day->allFoods().size(), 2u);

    // Deleting the catalogue food leaves the logged copies alone.
    ASSERT_TRUE(deleteFoodItem(catalogue, 5, 0, 0));
    EXPECT_EQ(day->group(5)[0].name.str(), "Onion");
    EXPECT_EQ(day->allFoods()[0].name.str(), "Onion");
}

TEST_F(LogFood, AFullDayRefusesTheFoodAndTheScreenStays) {
    store.header.keyCounter.value = 9;
    (void)days.ensureCurrentDay();
    DayRecord& day = *days.currentRecord();
    const FoodItem filler = perItem("A long name for a food", 10.0f);
    while (dayHasRoomFor(day, foodSize(filler))) {
        ASSERT_NE(insertLoggedFood(day, filler, 0, kSortByMeal), kNoPosition);
    }
    const std::size_t before = day.allFoods().size();
    LogFoodForm form(catalogue, days, {5, kSortAlphabetical, 0}, 5, 0, 2);  // Sesame
    const FormResult r = form.log();
    EXPECT_EQ(r.status, FormResult::Status::Stay);
    EXPECT_EQ(r.message, dayFullMessage("Insert Food"));
    EXPECT_EQ(r.notices, Notices{});
    EXPECT_EQ(day.allFoods().size(), before);
    EXPECT_TRUE(day.group(5).empty());
    EXPECT_EQ(store.header.keyCounter.value, 9u);  // no key spent

    // The same food goes in once the day has room again.
    ASSERT_TRUE(removeLoggedFood(day, 0, kSortByMeal, 0));
    EXPECT_TRUE(form.log().done());
    EXPECT_EQ(day.group(5).size(), 1u);
}

TEST_F(LogFood, LoggingTheSameFoodTwiceKeepsBothNewestFirst) {
    LogFoodForm form(catalogue, days, {}, 5, 0, 0);
    ASSERT_TRUE(form.log().done());
    ASSERT_TRUE(form.log().done());
    const DayRecord* day = days.currentRecord();
    ASSERT_EQ(day->group(5).size(), 2u);
    EXPECT_GT(day->group(5)[0].key.value, day->group(5)[1].key.value);
    EXPECT_GT(day->allFoods()[0].key.value, day->allFoods()[1].key.value);
    EXPECT_EQ(store.days().size(), 1u);
}

TEST_F(LogFood, CatalogueCommandsReselectAndMarkTheCatalogueChanged) {
    LogFoodForm form(catalogue, days, {}, 5, 0, 2);
    EXPECT_EQ(form.notices(), Notices{});
    EXPECT_EQ(form.confirmDeleteFood()->message.text,
              "Do you wish to delete the food item 'Sesame'?");
    EXPECT_TRUE(form.confirmDeleteFood()->noIsDefault);
    form.deleteFood();  // the last one: the new last is selected
    EXPECT_EQ(form.item(), 1);
    EXPECT_EQ(form.selectedCopy().name.str(), "Plain");
    EXPECT_TRUE(form.catalogueChanged());
    EXPECT_EQ(form.notices(), (Notices{.catalogue = true}));
    EXPECT_FALSE(catalogue.modified);  // the session marks it

    EXPECT_EQ(
        form.confirmDeleteCategory()->message,
        (ScreenMessage{"Do you wish to delete the category 'Bagels' and all of its food items?",
                       "Delete Category", MessageKind::Warning}));
    form.deleteCategory();
    EXPECT_EQ(form.category(), 0);
    EXPECT_EQ(form.selectedCopy().name.str(), "Rye");

    const Position made = addCategory(catalogue, 5, "Crackers");
    ASSERT_EQ(made, 1);
    form.categoryCreated(made);
    EXPECT_EQ(form.category(), 1);
    EXPECT_FALSE(form.valuesEnabled());
    form.selectFood(5, 0, 0);
    EXPECT_EQ(form.selectedCopy().name.str(), "Rye");
}

}  // namespace
}  // namespace nutrovex
