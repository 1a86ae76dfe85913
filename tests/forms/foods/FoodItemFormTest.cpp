#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HostileNames.h"
#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFinder.h"
#include "forms/foods/CategoryNameForm.h"
#include "forms/foods/FoodItemForm.h"
#include "logbook/DayCursor.h"
#include "storage/CatalogueFile.h"

namespace nutrovex {
namespace {

using test::hostileNames;
using test::shown;

CalendarDate at(int hour) {
    CalendarDate d = CalendarDate::fromDmy(25, 9, 2002);
    d.hour = static_cast<int16_t>(hour);
    return d;
}

// 100 g of rice with 130 cal, and a second reference of 1 cup.
FoodItem rice() {
    FoodItem f;
    f.name = "Rice";
    f.text2 = "Rice";
    f.setReference({100.0f, ServingUnit::Gram, 0});
    f.setReference({1.0f, ServingUnit::Cup, 0}, true);
    f.setServing({100.0f, ServingUnit::Gram, 0});
    f.nutrients = {130.0f, 28.0f, 0.4f, 2.7f, 0.3f, 0.1f};
    return f;
}

class CatalogueForms : public ::testing::Test {
protected:
    CatalogueForms() : store(clock), days(store) {
        (void)addCategory(catalogue, 5, "Grains");
        (void)addFoodItem(catalogue, 5, 0, rice());
    }

    FoodItemForm filledNewItem(const char* name) {
        FoodItemForm form = FoodItemForm::newItem(catalogue, 5, 0);
        (void)form.edit(FoodField::Name, name);
        return form;
    }
    // OK: what changed, with the refusal when there was one.
    static Outcome ok(FoodItemForm& form) { return form.command(FoodItemForm::Command::Ok); }

    FoodCatalogue catalogue;
    FixedClock clock{at(8)};
    UserStore store;
    DayCursor days;
};

TEST_F(CatalogueForms, ANewItemStartsAsOneCupAndStoresItsServingAsReference) {
    FoodItemForm form = filledNewItem("  Barley ");
    EXPECT_EQ(form.view().caption, "New Food Item");
    EXPECT_EQ(form.view().fields.amount, 1.0);
    EXPECT_EQ(form.view().fields.unit(), ServingUnit::Cup);
    EXPECT_EQ(form.view().fields.calories, 0u);
    (void)form.edit(FoodField::Amount, "0.5");
    (void)form.edit(FoodField::Calories, "99999");
    (void)form.edit(FoodField::Protein, "11.5");
    const Outcome stored = ok(form);
    const FormResult& r = form.result();
    ASSERT_TRUE(r.done());
    EXPECT_EQ(r.group, 5);
    EXPECT_EQ(r.category, 0);
    EXPECT_EQ(r.position, 0);  // Barley before Rice
    const FoodItem& f = catalogue.groups[5][0].foods[0];
    EXPECT_EQ(f.name.str(), "Barley");
    EXPECT_EQ(f.text2.str(), "Barley");
    EXPECT_EQ(f.serving, (ServingQuantity{0.5f, ServingUnit::Cup, 0}));
    EXPECT_EQ(f.ref2, f.serving);
    EXPECT_EQ(f.ref1, ServingQuantity{});
    EXPECT_FLOAT_EQ(f.ratio, 1.0f);
    EXPECT_FLOAT_EQ(f.nutrients[kCalories], 10000.0f);
    EXPECT_FLOAT_EQ(f.nutrients[kProtein], 11.5f);
    EXPECT_EQ(f.group, 5);
    EXPECT_EQ(f.loggedFlag, 1);
    EXPECT_EQ(stored.notices, (Notices{.catalogue = true, .dataChanged = true}));
    EXPECT_EQ(form.close(), SavePoint::Nothing);  // the screen that opened it saves
    EXPECT_FALSE(catalogue.modified);             // the session marks it
}

TEST_F(CatalogueForms, NewItemRefusalsKeepTheCatalogue) {
    FoodItemForm dup = filledNewItem("Rice ");
    Outcome o = ok(dup);
    ASSERT_FALSE(dup.result().done());
    EXPECT_EQ(o.message, (ScreenMessage{"You entered a duplicate or invalid name.", "New Food Item",
                                        MessageKind::Warning}));
    EXPECT_EQ(dup.result().focus, FoodField::Name);

    FoodItemForm blank = filledNewItem("   ");
    EXPECT_TRUE(blank.view().okEnabled);
    (void)ok(blank);
    EXPECT_EQ(blank.result().focus, FoodField::Name);
    EXPECT_FALSE(filledNewItem("").view().okEnabled);

    FoodItemForm tiny = filledNewItem("Oats");
    (void)tiny.edit(FoodField::Amount, "0.004");
    o = ok(tiny);
    EXPECT_EQ(o.message, (ScreenMessage{"You have an invalid nutrient value.", "New Food Item",
                                        MessageKind::Warning}));
    EXPECT_EQ(tiny.result().focus, FoodField::Amount);

    for (int i = 1; i < 100; ++i) {
        FoodItemForm grain = filledNewItem(("Grain " + std::to_string(i)).c_str());
        (void)ok(grain);
        ASSERT_TRUE(grain.result().done()) << i;
    }
    FoodItemForm millet = filledNewItem("Millet");
    o = ok(millet);
    ASSERT_FALSE(millet.result().done());
    EXPECT_EQ(o.message, (ScreenMessage{"You can enter a maximum of 100 food items per category.",
                                        "New Food Item", MessageKind::Warning}));
    EXPECT_EQ(catalogue.groups[5][0].foods.size(), 100u);

    // Editing an item of the full category is allowed, under its own name too.
    FoodItemForm edit = FoodItemForm::editItem(catalogue, 5, 0, 99);
    ASSERT_EQ(edit.view().name, "Rice");
    const PackedKey oldKey = catalogue.groups[5][0].foods[99].key;
    (void)edit.edit(FoodField::Calories, "150");
    (void)ok(edit);
    ASSERT_TRUE(edit.result().done());
    EXPECT_EQ(edit.result().position, 99);
    EXPECT_FLOAT_EQ(catalogue.groups[5][0].foods[99].nutrients[kCalories], 150.0f);
    EXPECT_NE(catalogue.groups[5][0].foods[99].key, oldKey);

    FoodItemForm clash = FoodItemForm::editItem(catalogue, 5, 0, 99);
    (void)clash.edit(FoodField::Name, "Grain 1");
    o = ok(clash);
    EXPECT_EQ(o.message, (ScreenMessage{"You entered a duplicate or invalid name.",
                                        "Edit Food Item", MessageKind::Warning}));
}

TEST_F(CatalogueForms, ShownValuesFollowTheServing) {
    FoodItemForm form = FoodItemForm::editItem(catalogue, 5, 0, 0);
    EXPECT_EQ(form.view().fields.calories, 130u);
    (void)form.edit(FoodField::Amount, "50");
    EXPECT_EQ(form.view().fields.calories, 65u);
    EXPECT_NEAR(*form.view().fields.grams[kCarbohydrate], 14.0, 1e-5);
    (void)form.edit(FoodField::Unit, "oz");  // 50 oz of the 100 g reference
    EXPECT_EQ(form.view().fields.calories, 1843u);
    EXPECT_NEAR(*form.view().fields.grams[kCarbohydrate], 396.893, 0.01);
}

TEST_F(CatalogueForms, TypedValuesAreScaledWhenTheServingChanges) {
    FoodItem bagel;
    bagel.name = "Bagel";
    bagel.setReference({1.0f, ServingUnit::Item, 0});
    bagel.setServing({1.0f, ServingUnit::Item, 0});
    bagel.nutrients = {245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.2f};
    ASSERT_EQ(addFoodItem(catalogue, 5, 0, bagel), 0);
    const auto check = [](FoodItemForm form, const char* what) {
        ASSERT_EQ(form.view().fields.calories, 245u) << what;
        (void)form.edit(FoodField::Calories, "300");
        (void)form.edit(FoodField::Fat, "2.5");
        (void)form.edit(FoodField::Amount, "2");
        FoodValueFields shown = form.view().fields;
        EXPECT_EQ(shown.calories, 600u) << what;
        EXPECT_NEAR(*shown.grams[kFat], 5.0, 1e-6) << what;
        EXPECT_NEAR(*shown.grams[kProtein], 20.0, 1e-6) << what;  // untouched: scaled
        (void)form.edit(FoodField::Calories, "99999");
        EXPECT_EQ(form.view().fields.calories, 10000u) << what;  // the most the field takes
        (void)form.edit(FoodField::Amount, "1");
        EXPECT_EQ(form.view().fields.calories, 10000u) << what;
    };
    check(FoodItemForm::editItem(catalogue, 5, 0, 0), "edit");
    check(FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {}), "insert");
}

TEST_F(CatalogueForms, InsertFoodNamesTheDayItLogsInto) {
    const FoodItemForm insert = FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {});
    EXPECT_EQ(insert.view().date, longDateText(days.currentDate()));
    EXPECT_FALSE(insert.view().date.empty());
    EXPECT_EQ(FoodItemForm::editItem(catalogue, 5, 0, 0).view().date, "");
}

TEST_F(CatalogueForms, TheSmallestServingIsAcceptedAsStoredAgainAndAgain) {
    FoodItemForm insert = FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {});
    (void)insert.edit(FoodField::Amount, "0.005");
    (void)ok(insert);
    ASSERT_TRUE(insert.result().done());
    // The entry now holds 0.005 as a float, a hair below the double 0.005: OK unchanged passes.
    FoodItemForm edit = FoodItemForm::editLoggedEntry(days, {5, kSortByMeal, 0}, 0);
    EXPECT_LT(*edit.view().fields.amount, kMinServingAmount);
    const Outcome o = ok(edit);
    EXPECT_TRUE(edit.result().done()) << (o.message ? o.message->text : "");
    FoodItemForm tiny = FoodItemForm::editLoggedEntry(days, {5, kSortByMeal, 0}, 0);
    (void)tiny.edit(FoodField::Amount, "0.0049");
    (void)ok(tiny);
    EXPECT_EQ(tiny.result().focus, FoodField::Amount);
}

TEST_F(CatalogueForms, CategoryDialogRefusesTheTwoHundredFiftyFirstButStillRenames) {
    using Ok = CategoryNameForm::Command;
    CategoryNameForm fresh(catalogue, 5, kNoPosition, false);
    EXPECT_EQ(fresh.view().caption, "New Category");
    EXPECT_FALSE(fresh.view().okEnabled);
    (void)fresh.edit(FoodField::Name, " Grains ");
    Outcome o = fresh.command(Ok::Ok);
    EXPECT_EQ(o.message, (ScreenMessage{"You entered a duplicate or invalid category.",
                                        "New Category", MessageKind::Warning}));
    EXPECT_EQ(fresh.result().focus, FoodField::Name);
    EXPECT_EQ(o.notices, Notices{});
    for (int i = 0; i < 249; ++i) {
        CategoryNameForm form(catalogue, 5, kNoPosition, false);
        (void)form.edit(FoodField::Name, "Kind " + std::to_string(100 + i));
        (void)form.command(Ok::Ok);
        ASSERT_TRUE(form.result().done()) << i;
    }
    CategoryNameForm extra(catalogue, 5, kNoPosition, false);
    (void)extra.edit(FoodField::Name, "Pasta");
    o = extra.command(Ok::Ok);
    ASSERT_FALSE(extra.result().done());
    EXPECT_EQ(o.message, (ScreenMessage{"You can enter a maximum of 250 categories per food group.",
                                        "New Category", MessageKind::Warning}));
    EXPECT_EQ(extra.result().focus, FoodField::Cancel);
    EXPECT_EQ(catalogue.groups[5].size(), 250u);

    CategoryNameForm edit(catalogue, 5, 0, true);
    EXPECT_EQ(edit.view().caption, "Edit Category");
    EXPECT_EQ(edit.view().text, "Grains");
    (void)edit.edit(FoodField::Name, "  Whole grains");
    o = edit.command(Ok::Ok);
    const FormResult& r = edit.result();
    ASSERT_TRUE(r.done());
    EXPECT_EQ(catalogue.groups[5][r.position].name.str(), "Whole grains");
    EXPECT_EQ(catalogue.groups[5][r.position].foods.size(), 1u);
    // The catalogue is to be saved and every open screen redrawn.
    EXPECT_EQ(o.notices, (Notices{.catalogue = true, .dataChanged = true}));
}

TEST_F(CatalogueForms, InsertFoodLogsIntoTheCurrentDayAndEditEntryReplacesIt) {
    store.header.keyCounter.value = 40;
    FoodItemForm insert = FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {});
    EXPECT_TRUE(insert.view().nameReadOnly);
    EXPECT_EQ(insert.view().fields.meal, 0);  // eight in the morning
    (void)insert.edit(FoodField::Amount, "200");
    (void)insert.edit(FoodField::Calories, "260");
    (void)insert.edit(FoodField::Meal, "Dinner");
    ASSERT_EQ(days.currentRecord(), nullptr);
    Outcome o = ok(insert);
    ASSERT_TRUE(insert.result().done());
    DayRecord* day = days.currentRecord();
    ASSERT_NE(day, nullptr);
    ASSERT_EQ(day->group(5).size(), 1u);
    const FoodItem& entry = day->group(5)[0];
    EXPECT_EQ(entry.key.value, 41u);
    EXPECT_EQ(entry.loggedFlag, 1);
    EXPECT_EQ(entry.meal, 2);
    EXPECT_EQ(entry.serving, (ServingQuantity{200.0f, ServingUnit::Gram, 0}));
    EXPECT_EQ(entry.ref1, entry.serving);
    EXPECT_TRUE(sameFood(entry, day->allFoods()[0]));
    EXPECT_EQ(o.notices, (Notices{.userData = true, .dataChanged = true}));

    FoodItemForm edit = FoodItemForm::editLoggedEntry(days, {kAllFoodsGroup, kSortByMeal, 0}, 0);
    EXPECT_EQ(edit.view().caption, "");
    EXPECT_EQ(edit.view().fields.meal, 2);
    (void)edit.edit(FoodField::Meal, "Breakfast");
    (void)edit.edit(FoodField::Name, "Brown rice");
    (void)ok(edit);
    ASSERT_TRUE(edit.result().done());
    EXPECT_EQ(day->group(5)[0].name.str(), "Brown rice");
    EXPECT_EQ(day->group(5)[0].meal, 0);
    EXPECT_EQ(day->group(5)[0].key.value, 41u);
    EXPECT_TRUE(sameFood(day->group(5)[0], day->allFoods()[0]));
    EXPECT_EQ(day->allFoods().size(), 1u);
}

TEST(HostileFoodNames, TheCategoryAndFoodFormsRefuseOrStoreThem) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 4, "Plain"), kNoPosition);
    for (const std::string& name : hostileNames()) {
        CategoryNameForm category(c, 3, kNoPosition, false);
        (void)category.edit(FoodField::Name, name);
        const Outcome added = category.command(CategoryNameForm::Command::Ok);
        if (category.result().done()) {
            // The screen's field holds at most 20 characters; the form stores what it is given.
            EXPECT_EQ(c.groups[3][category.result().position].name.view(), stripBlanks(name))
                << shown(name);
        } else {
            ASSERT_TRUE(added.message.has_value()) << shown(name);
            EXPECT_FALSE(added.message->text.empty()) << shown(name);
        }

        FoodItemForm food = FoodItemForm::newItem(c, 4, 0);
        (void)food.edit(FoodField::Name, name);
        const Outcome logged = food.command(FoodItemForm::Command::Ok);
        if (food.result().done()) {
            EXPECT_EQ(c.groups[4][food.result().category].foods[food.result().position].name.view(),
                      stripBlanks(name))
                << shown(name);
        } else {
            ASSERT_TRUE(logged.message.has_value()) << shown(name);
        }
    }
    // The catalogue writes, reads back strictly and holds the same names.
    ByteBuffer bytes;
    ASSERT_TRUE(writeCatalogueFile(c, bytes).ok());
    FoodCatalogue back;
    ASSERT_TRUE(readCatalogueFile(bytes.bytes(), back, {"FoodDB.ddb"}).ok());
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        ASSERT_EQ(back.groups[g].size(), c.groups[g].size());
    }
}

}  // namespace
}  // namespace nutrovex
