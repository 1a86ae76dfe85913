#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "calc/Totals.h"
#include "core/StoredSize.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/FoodCsv.h"
#include "forms/foods/LogFoodForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

using Command = LogFoodForm::Command;

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

    // The food the lists show selected.
    static std::string_view selected(const LogFoodForm& form) {
        const LogFoodView v = form.view();
        return v.item < 0 ? std::string_view() : v.foodNames[static_cast<std::size_t>(v.item)];
    }

    FoodCatalogue catalogue;
    FixedClock clock{CalendarDate::fromDmy(25, 9, 2002)};  // midnight: a snack
    UserStore store;
    DayCursor days;
    FoodRunState run;
};

TEST_F(LogFood, InitialPositionsAreUsedOnceThenTheFirstEntries) {
    LogFoodForm form(catalogue, days, run, 5, 0, 2);
    EXPECT_EQ(form.view().group, 5);
    EXPECT_EQ(form.view().foodNames, (std::vector<std::string_view>{"Onion", "Plain", "Sesame"}));
    EXPECT_EQ(selected(form), "Sesame");
    EXPECT_EQ(form.view().fields.calories, 250u);
    EXPECT_EQ(form.view().fields.unit(), ServingUnit::Item);
    (void)form.edit(FoodField::Category, "Breads");
    EXPECT_EQ(selected(form), "Rye");
    (void)form.edit(FoodField::Category, "Bagels");
    EXPECT_EQ(selected(form), "Onion");  // the initial item was used up

    // Without a group: the one Log Food opened with last.
    run.nextLogGroup = 5;
    LogFoodForm again(catalogue, days, run, -1);
    EXPECT_EQ(again.view().group, 5);
    EXPECT_EQ(again.view().category, 0);
}

TEST_F(LogFood, EmptyGroupsAndCategoriesDisableWhatTheyCannotFill) {
    LogFoodForm form(catalogue, days, run, 5, 0, 0);
    ASSERT_TRUE(form.view().valuesEnabled);
    (void)form.edit(FoodField::Group, kFoodGroupNames[0]);  // one category, no food
    LogFoodView v = form.view();
    EXPECT_TRUE(v.categoryListEnabled);
    EXPECT_FALSE(v.valuesEnabled);
    EXPECT_FALSE(v.fields.amount.has_value());
    EXPECT_FALSE(v.fields.calories.has_value());
    EXPECT_FALSE(v.fields.grams[kSaturatedFat].has_value());
    (void)form.command(Command::Log);
    EXPECT_EQ(form.result().status, FormResult::Status::Stay);
    (void)form.edit(FoodField::Group, kFoodGroupNames[3]);  // no category at all
    v = form.view();
    EXPECT_FALSE(v.categoryListEnabled);
    EXPECT_EQ(v.category, -1);
    EXPECT_FALSE(v.valuesEnabled);
}

TEST_F(LogFood, ValuesFollowTheAmountAndCaloriesAreCapped) {
    LogFoodForm form(catalogue, days, run, 5, 0, 1);  // Plain
    (void)form.edit(FoodField::Amount, "2.5");
    EXPECT_EQ(form.view().fields.calories, 625u);
    EXPECT_DOUBLE_EQ(*form.view().fields.grams[kProtein], 10.0);
    (void)form.edit(FoodField::Calories, "12000");
    EXPECT_EQ(form.view().fields.calories, 10000u);
    (void)form.edit(FoodField::Amount, "1");
    (void)form.edit(FoodField::Calories, "300");
    (void)form.edit(FoodField::Amount, "2");
    EXPECT_EQ(form.view().fields.calories, 600u);  // the typed value, scaled
}

TEST_F(LogFood, LoggingCreatesTheDayAndFilesTwoCopies) {
    store.header.keyCounter.value = 9;
    run.view = {5, kSortAlphabetical, 0};
    LogFoodForm form(catalogue, days, run, 5, 0, 2);  // Sesame
    EXPECT_EQ(form.view().fields.meal, 3);
    (void)form.edit(FoodField::Amount, "0.004");
    Outcome o = form.command(Command::Log);
    EXPECT_EQ(o.message, (ScreenMessage{"You have an invalid nutrient value.", "Insert Food",
                                        MessageKind::Warning}));
    EXPECT_EQ(form.result().focus, FoodField::Amount);
    EXPECT_EQ(days.currentRecord(), nullptr);
    EXPECT_EQ(o.notices, Notices{});

    (void)form.edit(FoodField::Amount, "0.005");
    (void)form.edit(FoodField::Calories, "300");
    (void)form.edit(FoodField::Meal, "Breakfast");
    o = form.command(Command::Log);
    ASSERT_TRUE(form.result().done());
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
    EXPECT_EQ(o.notices, (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(run.nextLogGroup, 5);

    // Another food of the same group, shown alphabetically: "Onion" comes first.
    (void)form.edit(FoodField::Food, "Onion");
    (void)form.command(Command::Log);
    EXPECT_TRUE(form.result().done());
    EXPECT_EQ(form.result().position, 0);
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
    run.view = {5, kSortAlphabetical, 0};
    LogFoodForm form(catalogue, days, run, 5, 0, 2);  // Sesame
    const Outcome o = form.command(Command::Log);
    EXPECT_EQ(form.result().status, FormResult::Status::Stay);
    EXPECT_EQ(o.message, dayFullMessage("Insert Food"));
    EXPECT_EQ(o.notices, Notices{});
    EXPECT_EQ(day.allFoods().size(), before);
    EXPECT_TRUE(day.group(5).empty());
    EXPECT_EQ(store.header.keyCounter.value, 9u);  // no key spent

    // The same food goes in once the day has room again.
    ASSERT_TRUE(removeLoggedFood(day, 0, kSortByMeal, 0));
    (void)form.command(Command::Log);
    EXPECT_TRUE(form.result().done());
    EXPECT_EQ(day.group(5).size(), 1u);
}

TEST_F(LogFood, LoggingTheSameFoodTwiceKeepsBothNewestFirst) {
    LogFoodForm form(catalogue, days, run, 5, 0, 0);
    (void)form.command(Command::Log);
    ASSERT_TRUE(form.result().done());
    (void)form.command(Command::Log);
    ASSERT_TRUE(form.result().done());
    const DayRecord* day = days.currentRecord();
    ASSERT_EQ(day->group(5).size(), 2u);
    EXPECT_GT(day->group(5)[0].key.value, day->group(5)[1].key.value);
    EXPECT_GT(day->allFoods()[0].key.value, day->allFoods()[1].key.value);
    EXPECT_EQ(store.days().size(), 1u);

    // A recent food is logged again as it was, with the meal shown.
    LogFoodForm recent(catalogue, days, run, 0);
    ASSERT_FALSE(recent.view().recentFoods.empty());
    recent.selectRecent(0);
    (void)recent.edit(FoodField::Meal, "Lunch");
    EXPECT_EQ(recent.command(Command::LogAgain).notices.userData, true);
    EXPECT_EQ(day->group(5).size(), 3u);
    EXPECT_EQ(recent.result().group, 5);
}

TEST_F(LogFood, CatalogueCommandsReselectAndSayTheCatalogueChanged) {
    LogFoodForm form(catalogue, days, run, 5, 0, 2);
    EXPECT_EQ(form.confirmation(Command::DeleteFood)->message.text,
              "Do you wish to delete the food item 'Sesame'?");
    EXPECT_TRUE(form.confirmation(Command::DeleteFood)->noIsDefault);
    // The last one: the new last is selected.
    EXPECT_EQ(form.command(Command::DeleteFood).notices,
              (Notices{.catalogue = true, .dataChanged = true}));
    EXPECT_EQ(form.view().item, 1);
    EXPECT_EQ(selected(form), "Plain");
    EXPECT_FALSE(catalogue.modified);  // the session marks it

    EXPECT_EQ(
        form.confirmation(Command::DeleteCategory)->message,
        (ScreenMessage{"Do you wish to delete the category 'Bagels' and all of its food items?",
                       "Delete Category", MessageKind::Warning}));
    (void)form.command(Command::DeleteCategory);
    EXPECT_EQ(form.view().category, 0);
    EXPECT_EQ(selected(form), "Rye");

    // A category made by the category screen, then a food found by the find screen.
    CategoryNameForm made = form.newCategoryForm();
    (void)made.edit(FoodField::Name, "Crackers");
    (void)made.command(CategoryNameForm::Command::Ok);
    ASSERT_EQ(made.result().position, 1);
    form.select(5, made.result().position, -1);
    EXPECT_EQ(form.view().category, 1);
    EXPECT_FALSE(form.view().valuesEnabled);
    form.select(5, 0, 0);
    EXPECT_EQ(selected(form), "Rye");
}

// A person logs 150 g of milled raw rice (per 100 g: 356 kcal, 81.05 g carbohydrate, 2.81 fibre,
// 7.94 protein, 0.52 fat, 0.184 saturated fat): the form and the day show the values of 150 g.
TEST(LogFoodRice, LoggedAt150GramsItCountsItsValuesTimesOneAndAHalf) {
    FoodCatalogue catalogue;
    ASSERT_TRUE(importFoodsCsv(catalogue, std::string(kFoodCsvHeader) +
                                              "\n5,Cereals and Millets,\"Rice, raw, milled\",100,"
                                              "g,356,81.05,2.81,7.94,0.52,0.184\n")
                    .refused.empty());
    const FixedClock clock{CalendarDate::fromDmy(21, 11, 2026)};
    UserStore store(clock);
    DayCursor days(store);
    FoodRunState run;

    LogFoodForm form(catalogue, days, run, 5);
    (void)form.edit(FoodField::Category, "Cereals and Millets");
    (void)form.edit(FoodField::Food, "Rice, raw, milled");
    EXPECT_EQ(form.view().fields.amount, 100.0);
    EXPECT_EQ(form.view().fields.calories, 356u);

    (void)form.edit(FoodField::Amount, "150");
    EXPECT_EQ(form.view().fields.calories, 534u);
    const double shown[] = {0, 121.575, 4.215, 11.91, 0.78, 0.276};
    for (int n = 1; n < kNutrientCount; ++n) {
        EXPECT_NEAR(*form.view().fields.grams[static_cast<std::size_t>(n)], shown[n], 1e-4) << n;
    }
    (void)form.command(Command::Log);
    ASSERT_TRUE(form.result().done());

    const DayRecord* day = days.currentDay();
    ASSERT_NE(day, nullptr);
    const Nutrients totals = computeDayTotals(*day);
    EXPECT_EQ(wholeCalories(totals[kCalories]), 534u);
    for (int n = 1; n < kNutrientCount; ++n) {
        EXPECT_NEAR(totals[static_cast<std::size_t>(n)], shown[n], 1e-4) << n;
    }
}

// Foods of the source with a household measure log as that measure and as any weight, or another
// unit of the measure's kind, each by the food's own weight of its measure. The expected values
// are the source's figures per 100 g times the grams eaten; calories may differ by the rounding
// of the serving's whole calories, scaled to the grams eaten, and the shown whole calories.
TEST(LogFoodShipped, HouseholdMeasuresAndWeightsLogTheSourcesValues) {
    FoodCatalogue catalogue;
    std::ifstream csv(NUTROVEX_FOODS_CSV, std::ios::binary);
    ASSERT_TRUE(csv.good());
    ASSERT_TRUE(importFoodsCsv(catalogue, std::string(std::istreambuf_iterator<char>(csv), {}))
                    .refused.empty());
    const FixedClock clock{CalendarDate::fromDmy(21, 11, 2026)};

    using enum ServingUnit;
    const struct {
        int group;
        const char* category;
        const char* food;
        ServingQuantity shown;  // the household serving it opens with
        double shownGrams;      // what that serving weighs
        ServingQuantity logged;
        double grams;                               // what the logged serving weighs
        std::array<double, kNutrientCount> per100;  // the source's values per 100 g
    } cases[] = {
        // A cup of whole milk weighs 244 g.
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {1, Cup, 0},
         244,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {150, Gram, 0},
         150,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {1, Pint, 0},
         488,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        // A medium banana weighs 118 g.
        {4,
         "Fruit A-F",
         "Bananas, raw",
         {1, Item, 0},
         118,
         {2, Item, 0},
         236,
         {89, 22.84, 2.6, 1.09, 0.33, 0.112}},
        {4,
         "Fruit A-F",
         "Bananas, raw",
         {1, Item, 0},
         118,
         {150, Gram, 0},
         150,
         {89, 22.84, 2.6, 1.09, 0.33, 0.112}},
        // A tablespoon of olive oil weighs 13.5 g; a teaspoon is a third of it.
        {0,
         "Oils",
         "Olive oil",
         {1, Tablespoon, 0},
         13.5,
         {1, Teaspoon, 0},
         4.5,
         {884, 0, 0, 0, 100, 13.808}},
        {0,
         "Oils",
         "Olive oil",
         {1, Tablespoon, 0},
         13.5,
         {100, Gram, 0},
         100,
         {884, 0, 0, 0, 100, 13.808}},
        // A cup of cooked rice weighs 158 g; an ounce is 28.34952 g.
        {5,
         "Rice and Pasta",
         "Rice, cooked",
         {1, Cup, 0},
         158,
         {3, Ounce, 0},
         85.04856,
         {130, 28.17, 0.4, 2.69, 0.28, 0.077}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.food) + " " + std::to_string(c.logged.amount) + " " +
                     unitName(c.logged.unit));
        UserStore store(clock);
        DayCursor days(store);
        FoodRunState run;
        LogFoodForm form(catalogue, days, run, c.group);
        (void)form.edit(FoodField::Category, c.category);
        (void)form.edit(FoodField::Food, c.food);
        LogFoodView v = form.view();
        ASSERT_GE(v.item, 0);
        ASSERT_EQ(v.foodNames[static_cast<std::size_t>(v.item)], c.food);
        EXPECT_EQ(v.fields.amount, c.shown.amount);
        EXPECT_EQ(v.fields.unit(), c.shown.unit);

        (void)form.edit(FoodField::Unit, unitName(c.logged.unit));
        ASSERT_EQ(form.view().fields.unit(), c.logged.unit) << "the unit is offered";
        std::ostringstream amount;
        amount << c.logged.amount;
        (void)form.edit(FoodField::Amount, amount.str());
        v = form.view();
        const double eaten = c.grams / 100.0;
        EXPECT_NEAR(*v.fields.calories, c.per100[kCalories] * eaten,
                    0.5 + 0.5 * c.grams / c.shownGrams);
        for (int n = 1; n < kNutrientCount; ++n) {
            EXPECT_NEAR(*v.fields.grams[n], c.per100[n] * eaten, 1e-3 + 2e-3 * c.per100[n] * eaten)
                << n;
        }
        (void)form.command(Command::Log);
        ASSERT_TRUE(form.result().done());
        const DayRecord* day = days.currentDay();
        ASSERT_NE(day, nullptr);
        const Nutrients totals = computeDayTotals(*day);
        EXPECT_EQ(wholeCalories(totals[kCalories]), *v.fields.calories);
        for (int n = 1; n < kNutrientCount; ++n) {
            EXPECT_NEAR(totals[n], *v.fields.grams[n], 1e-4) << n;
        }
    }
}

}  // namespace
}  // namespace nutrovex
