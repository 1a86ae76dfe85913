#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/UserStore.h"
#include "foods/CatalogueOps.h"
#include "foods/CatalogueTree.h"
#include "foods/FoodForms.h"
#include "foods/LogFoodForm.h"
#include "logbook/DayCursor.h"

namespace nutrovex {
namespace {

CalendarDate at(int hour, int minute = 0) {
    CalendarDate d = CalendarDate::fromDmy(25, 9, 2002);
    d.hour = static_cast<int16_t>(hour);
    d.minute = static_cast<int16_t>(minute);
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

FoodValueFields validFields() {
    FoodValueFields f;
    f.units = allUnits();
    f.unitIndex = 12;
    f.amount = 1.0;
    f.calories = 100;
    for (int n = 1; n < kNutrientCount; ++n) {
        f.grams[static_cast<std::size_t>(n)] = 1.0;
    }
    f.meal = 0;
    return f;
}

TEST(FoodForms, MealIsPreselectedByTheHourWithDeliberateGaps) {
    const struct {
        int hour, minute;
        uint16_t meal;
    } cases[] = {{10, 30, 3}, {5, 0, 0},  {13, 59, 1}, {19, 59, 2}, {20, 0, 3}, {4, 59, 3},
                 {9, 59, 0},  {11, 0, 1}, {14, 0, 3},  {15, 59, 3}, {16, 0, 2}, {0, 0, 3}};
    FoodCatalogue catalogue;
    for (const auto& c : cases) {
        EXPECT_EQ(mealForHour(c.hour), c.meal) << c.hour;
        FixedClock clock(at(c.hour, c.minute));
        UserStore store(clock);
        DayCursor days(store);
        const LogFoodForm form(catalogue, days, {}, 0, 0, 0);
        EXPECT_EQ(form.fields.meal, c.meal) << c.hour << ":" << c.minute;
    }
}

TEST(FoodForms, TheFirstInvalidFieldTakesTheFocusInOrder) {
    using F = FoodField;
    const struct {
        const char* what;
        void (*spoil)(FoodValueFields&);
        FoodField focus;
    } cases[] = {
        {"valid", [](FoodValueFields&) {}, F::None},
        {"amount 0.005", [](FoodValueFields& f) { f.amount = 0.005; }, F::None},
        {"amount 0.004", [](FoodValueFields& f) { f.amount = 0.004; }, F::Amount},
        {"amount 0", [](FoodValueFields& f) { f.amount = 0.0; }, F::Amount},
        {"amount empty", [](FoodValueFields& f) { f.amount.reset(); }, F::Amount},
        {"no unit", [](FoodValueFields& f) { f.unitIndex = -1; }, F::Unit},
        {"unit past the list", [](FoodValueFields& f) { f.unitIndex = 15; }, F::Unit},
        {"amount before unit",
         [](FoodValueFields& f) {
             f.amount.reset();
             f.unitIndex = -1;
         },
         F::Amount},
        {"unit before calories",
         [](FoodValueFields& f) {
             f.unitIndex = -1;
             f.calories.reset();
         },
         F::Unit},
        {"calories before protein",
         [](FoodValueFields& f) {
             f.calories.reset();
             f.grams[kProtein].reset();
         },
         F::Calories},
        {"protein before fat",
         [](FoodValueFields& f) {
             f.grams[kFat].reset();
             f.grams[kProtein].reset();
         },
         F::Protein},
        {"fat before carbohydrate",
         [](FoodValueFields& f) {
             f.grams[kCarbohydrate].reset();
             f.grams[kFat].reset();
         },
         F::Fat},
        {"carbohydrate before fiber",
         [](FoodValueFields& f) {
             f.grams[kFiber].reset();
             f.grams[kCarbohydrate].reset();
         },
         F::Carbohydrate},
        {"fiber before saturated fat",
         [](FoodValueFields& f) {
             f.grams[kSaturatedFat].reset();
             f.grams[kFiber].reset();
         },
         F::Fiber},
        {"saturated fat", [](FoodValueFields& f) { f.grams[kSaturatedFat].reset(); },
         F::SaturatedFat},
    };
    for (const auto& c : cases) {
        FoodValueFields f = validFields();
        c.spoil(f);
        EXPECT_EQ(firstInvalidField(f), c.focus) << c.what;
    }
}

TEST(FoodForms, SettersClampAndReportOnlyATopClamp) {
    FoodItem f;
    EXPECT_TRUE(setNutrientReportingClamp(f, kCalories, 12000.0f));
    EXPECT_FLOAT_EQ(f.nutrients[kCalories], 10000.0f);
    EXPECT_FALSE(setNutrientReportingClamp(f, kCalories, 10000.0f));
    EXPECT_TRUE(setNutrientReportingClamp(f, kFat, 1000.5f));
    EXPECT_FLOAT_EQ(f.nutrients[kFat], 1000.0f);
    EXPECT_FALSE(setNutrientReportingClamp(f, kFat, -5.0f));
    EXPECT_FLOAT_EQ(f.nutrients[kFat], 0.0f);
}

// The units from first to last, in list order.
std::vector<ServingUnit> unitsFrom(ServingUnit first, ServingUnit last) {
    return {kServingUnits.begin() + unitByte(first), kServingUnits.begin() + unitByte(last) + 1};
}

TEST(FoodForms, UnitsOfferedForLoggingFollowTheReferences) {
    FoodItem both = rice();
    // Volume by the cup, weight by the grams.
    EXPECT_EQ(loggingUnits(both), unitsFrom(ServingUnit::Pinch, ServingUnit::Kilogram));
    FoodItem bagel;
    bagel.setReference({1.0f, ServingUnit::Item, 0});
    bagel.setServing({1.0f, ServingUnit::Item, 0});
    // An item reference allows only the item: volumes and weights would measure against nothing.
    EXPECT_EQ(loggingUnits(bagel), std::vector<ServingUnit>{ServingUnit::Item});
    FoodItem unmeasured;  // no reference at all: anything may be logged
    unmeasured.setServing({1.0f, ServingUnit::Item, 0});
    EXPECT_EQ(loggingUnits(unmeasured), allUnits());
    FoodItem milk;
    milk.setReference({1.0f, ServingUnit::Cup, 0});
    milk.setServing({1.0f, ServingUnit::Cup, 0});
    EXPECT_EQ(loggingUnits(milk), unitsFrom(ServingUnit::Pinch, ServingUnit::Millilitre));
    FoodItem slice = bagel;
    slice.setReference({30.0f, ServingUnit::Gram, 0}, true);
    EXPECT_EQ(loggingUnits(slice), unitsFrom(ServingUnit::Ounce, ServingUnit::Item));
}

class CatalogueForms : public ::testing::Test {
protected:
    CatalogueForms() : store(clock), days(store) {
        (void)addCategory(catalogue, 5, "Grains");
        (void)addFoodItem(catalogue, 5, 0, rice());
    }

    FoodItemForm filledNewItem(const char* name) {
        FoodItemForm form = FoodItemForm::newItem(catalogue, 5, 0);
        form.name = name;
        return form;
    }

    FoodCatalogue catalogue;
    FixedClock clock{at(8)};
    UserStore store;
    DayCursor days;
};

TEST_F(CatalogueForms, ANewItemStartsAsOneCupAndStoresItsServingAsReference) {
    FoodItemForm form = filledNewItem("  Barley ");
    EXPECT_EQ(form.caption(), std::string("New Food Item"));
    EXPECT_EQ(form.fields.amount, 1.0);
    EXPECT_EQ(form.fields.unit(), ServingUnit::Cup);
    EXPECT_EQ(form.fields.calories, 0u);
    form.fields.amount = 0.5;
    form.fields.calories = 99999;  // typed, then OK without leaving the field
    form.fields.grams[kProtein] = 11.5;
    const FormResult r = form.accept();
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
    EXPECT_EQ(r.notices, (Notices{.catalogue = true, .dataChanged = true}));
    EXPECT_FALSE(catalogue.modified);  // the session marks it
}

TEST_F(CatalogueForms, NewItemRefusalsKeepTheCatalogue) {
    FoodItemForm dup = filledNewItem("Rice ");
    FormResult r = dup.accept();
    ASSERT_FALSE(r.done());
    EXPECT_EQ(r.message, (ScreenMessage{"You entered a duplicate or invalid name.", "New Food Item",
                                        MessageKind::Warning}));
    EXPECT_EQ(r.focus, FoodField::Name);

    FoodItemForm blank = filledNewItem("   ");
    EXPECT_TRUE(blank.okEnabled());
    EXPECT_EQ(blank.accept().focus, FoodField::Name);
    EXPECT_FALSE(filledNewItem("").okEnabled());

    FoodItemForm tiny = filledNewItem("Oats");
    tiny.fields.amount = 0.004;
    r = tiny.accept();
    EXPECT_EQ(r.message, (ScreenMessage{"You have an invalid nutrient value.", "New Food Item",
                                        MessageKind::Warning}));
    EXPECT_EQ(r.focus, FoodField::Amount);

    for (int i = 1; i < 100; ++i) {
        ASSERT_TRUE(filledNewItem(("Grain " + std::to_string(i)).c_str()).accept().done()) << i;
    }
    r = filledNewItem("Millet").accept();
    ASSERT_FALSE(r.done());
    EXPECT_EQ(r.message, (ScreenMessage{"You can enter a maximum of 100 food items per category.",
                                        "New Food Item", MessageKind::Warning}));
    EXPECT_EQ(catalogue.groups[5][0].foods.size(), 100u);

    // Editing an item of the full category is allowed, under its own name too.
    FoodItemForm edit = FoodItemForm::editItem(catalogue, 5, 0, 99);
    ASSERT_EQ(edit.name, "Rice");
    const PackedKey oldKey = catalogue.groups[5][0].foods[99].key;
    edit.fields.calories = 150;
    r = edit.accept();
    ASSERT_TRUE(r.done());
    EXPECT_EQ(r.position, 99);
    EXPECT_FLOAT_EQ(catalogue.groups[5][0].foods[99].nutrients[kCalories], 150.0f);
    EXPECT_NE(catalogue.groups[5][0].foods[99].key, oldKey);

    FoodItemForm clash = FoodItemForm::editItem(catalogue, 5, 0, 99);
    clash.name = "Grain 1";
    r = clash.accept();
    EXPECT_EQ(r.message, (ScreenMessage{"You entered a duplicate or invalid name.",
                                        "Edit Food Item", MessageKind::Warning}));
}

TEST_F(CatalogueForms, ShownValuesFollowTheServing) {
    FoodItemForm form = FoodItemForm::editItem(catalogue, 5, 0, 0);
    EXPECT_EQ(form.fields.calories, 130u);
    form.amountChanged(50.0);
    EXPECT_EQ(form.fields.calories, 65u);
    EXPECT_NEAR(*form.fields.grams[kCarbohydrate], 14.0, 1e-5);
    form.unitChosen(10);  // 50 oz of the 100 g reference
    EXPECT_EQ(form.fields.calories, 1843u);
    EXPECT_NEAR(*form.fields.grams[kCarbohydrate], 396.893, 0.01);
}

TEST_F(CatalogueForms, TypedValuesAreScaledWhenTheServingChanges) {
    FoodItem bagel;
    bagel.name = "Bagel";
    bagel.setReference({1.0f, ServingUnit::Item, 0});
    bagel.setServing({1.0f, ServingUnit::Item, 0});
    bagel.nutrients = {245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.2f};
    ASSERT_EQ(addFoodItem(catalogue, 5, 0, bagel), 0);
    const auto check = [](FoodItemForm form, const char* what) {
        ASSERT_TRUE(form.valid()) << what;
        ASSERT_EQ(form.fields.calories, 245u) << what;
        form.caloriesEdited(300u);
        form.gramsEdited(kFat, 2.5);
        form.amountChanged(2.0);
        EXPECT_EQ(form.fields.calories, 600u) << what;
        EXPECT_NEAR(*form.fields.grams[kFat], 5.0, 1e-6) << what;
        EXPECT_NEAR(*form.fields.grams[kProtein], 20.0, 1e-6) << what;  // untouched: scaled
        form.caloriesEdited(99999u);
        EXPECT_TRUE(form.caloriesLeft()) << what;
        form.amountChanged(1.0);
        EXPECT_EQ(form.fields.calories, 10000u) << what;
    };
    check(FoodItemForm::editItem(catalogue, 5, 0, 0), "edit");
    check(FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {}), "insert");
}

TEST_F(CatalogueForms, TheSmallestServingIsAcceptedAsStoredAgainAndAgain) {
    FoodItemForm insert = FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {});
    insert.fields.amount = kMinServingAmount;
    ASSERT_TRUE(insert.accept().done());
    // The entry now holds 0.005 as a float, a hair below the double 0.005: OK unchanged passes.
    FoodItemForm edit = FoodItemForm::editLoggedEntry(days, {5, kSortByMeal, 0}, 0);
    ASSERT_TRUE(edit.valid());
    EXPECT_LT(*edit.fields.amount, kMinServingAmount);
    const FormResult r = edit.accept();
    EXPECT_TRUE(r.done()) << (r.message ? r.message->text : "");
    FoodItemForm tiny = FoodItemForm::editLoggedEntry(days, {5, kSortByMeal, 0}, 0);
    tiny.fields.amount = 0.0049;
    EXPECT_EQ(tiny.accept().focus, FoodField::Amount);
}

TEST_F(CatalogueForms, CategoryDialogRefusesTheTwoHundredFiftyFirstButStillRenames) {
    CategoryNameForm fresh(catalogue, 5, kNoPosition, false);
    EXPECT_EQ(fresh.caption(), std::string("New Category"));
    EXPECT_FALSE(fresh.okEnabled());
    fresh.text = " Grains ";
    FormResult r = fresh.accept();
    EXPECT_EQ(r.message, (ScreenMessage{"You entered a duplicate or invalid category.",
                                        "New Category", MessageKind::Warning}));
    EXPECT_EQ(r.focus, FoodField::Name);
    EXPECT_EQ(r.notices, Notices{});
    for (int i = 0; i < 249; ++i) {
        CategoryNameForm form(catalogue, 5, kNoPosition, false);
        form.text = "Kind " + std::to_string(100 + i);
        ASSERT_TRUE(form.accept().done()) << i;
    }
    CategoryNameForm extra(catalogue, 5, kNoPosition, false);
    extra.text = "Pasta";
    r = extra.accept();
    ASSERT_FALSE(r.done());
    EXPECT_EQ(r.message, (ScreenMessage{"You can enter a maximum of 250 categories per food group.",
                                        "New Category", MessageKind::Warning}));
    EXPECT_EQ(r.focus, FoodField::Cancel);
    EXPECT_EQ(catalogue.groups[5].size(), 250u);

    CategoryNameForm edit(catalogue, 5, 0, true);
    EXPECT_EQ(edit.caption(), std::string("Edit Category"));
    EXPECT_EQ(edit.text, "Grains");
    edit.text = "  Whole grains";
    r = edit.accept();
    ASSERT_TRUE(r.done());
    EXPECT_EQ(r.notices, (Notices{.catalogue = true, .dataChanged = true}));
    EXPECT_EQ(catalogue.groups[5][r.position].name.str(), "Whole grains");
    EXPECT_EQ(catalogue.groups[5][r.position].foods.size(), 1u);
    // The catalogue is to be saved and every open screen redrawn.
    EXPECT_EQ(r.notices, (Notices{.catalogue = true, .dataChanged = true}));
}

TEST_F(CatalogueForms, InsertFoodLogsIntoTheCurrentDayAndEditEntryReplacesIt) {
    store.header.keyCounter.value = 40;
    FoodItemForm insert = FoodItemForm::insertIntoDay(catalogue, 5, 0, 0, days, {});
    EXPECT_TRUE(insert.nameReadOnly());
    EXPECT_EQ(insert.fields.meal, 0);  // eight in the morning
    insert.fields.amount = 200.0;
    insert.fields.calories = 260;
    insert.fields.meal = 2;
    ASSERT_EQ(days.currentRecord(), nullptr);
    FormResult r = insert.accept();
    ASSERT_TRUE(r.done());
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
    EXPECT_EQ(r.notices, (Notices{.userData = true, .dataChanged = true}));

    FoodItemForm edit = FoodItemForm::editLoggedEntry(days, {kAllFoodsGroup, kSortByMeal, 0}, 0);
    EXPECT_EQ(edit.caption(), std::string(""));
    EXPECT_EQ(edit.fields.meal, 2);
    edit.fields.meal = 0;
    edit.name = "Brown rice";
    r = edit.accept();
    ASSERT_TRUE(r.done());
    EXPECT_EQ(day->group(5)[0].name.str(), "Brown rice");
    EXPECT_EQ(day->group(5)[0].meal, 0);
    EXPECT_EQ(day->group(5)[0].key.value, 41u);
    EXPECT_TRUE(sameFood(day->group(5)[0], day->allFoods()[0]));
    EXPECT_EQ(day->allFoods().size(), 1u);
}

TEST(TreeMenus, PasteIntoAFullGroupOrCategorySaysWhy) {
    FoodCatalogue c;
    for (int i = 0; i < 250; ++i) {
        ASSERT_NE(addCategory(c, 4, "Kind " + std::to_string(100 + i)), kNoPosition);
    }
    ASSERT_NE(addCategory(c, 3, "Nuts"), kNoPosition);
    for (int i = 0; i < 100; ++i) {
        FoodItem f;
        f.name = "Nut " + std::to_string(100 + i);
        ASSERT_NE(addFoodItem(c, 3, 0, f), kNoPosition);
    }
    CatalogueClipboard clip;
    ASSERT_TRUE(clip.copyCategory(c, 4, 0));
    TreePaste p = pasteIntoTree(clip, c, TreeNode::Group, 4, kNoPosition);
    EXPECT_EQ(p.position, kNoPosition);
    EXPECT_EQ(p.message, (ScreenMessage{"You can enter a maximum of 250 categories per food group.",
                                        "Paste Category", MessageKind::Warning}));
    EXPECT_EQ(p.notices, Notices{});
    EXPECT_EQ(c.groups[4].size(), 250u);
    p = pasteIntoTree(clip, c, TreeNode::Category, 3, 0);  // room in group 3
    EXPECT_EQ(p.position, 0);
    EXPECT_FALSE(p.message);
    EXPECT_EQ(p.notices, (Notices{.catalogue = true}));
    EXPECT_EQ(c.groups[3][p.position].name.str(), "Kind 100");

    ASSERT_TRUE(clip.copyFood(c, 3, 1, 0));
    p = pasteIntoTree(clip, c, TreeNode::Food, 3, 1);
    EXPECT_EQ(p.position, kNoPosition);
    EXPECT_EQ(p.message, (ScreenMessage{"You can enter a maximum of 100 food items per category.",
                                        "Paste Food", MessageKind::Warning}));
    EXPECT_EQ(c.groups[3][1].foods.size(), 100u);
    // Nothing held for the node: no paste, nothing said.
    p = pasteIntoTree(clip, c, TreeNode::Group, 4, kNoPosition);
    EXPECT_EQ(p.position, kNoPosition);
    EXPECT_FALSE(p.message);
}

TEST(TreeMenus, EntriesFollowTheNodeAndTheClipboard) {
    FoodCatalogue c;
    (void)addCategory(c, 0, "Cakes");
    FoodItem f;
    f.name = "Sponge";
    (void)addFoodItem(c, 0, 0, f);
    CatalogueClipboard clip;
    const TreeMenuState groupEmpty = treeMenuState(TreeNode::Group, clip);
    EXPECT_EQ(groupEmpty, (TreeMenuState{.insertCategory = true, .deleteAllCategories = true}));
    ASSERT_TRUE(clip.copyFood(c, 0, 0, 0));
    EXPECT_FALSE(treeMenuState(TreeNode::Group, clip).paste);
    EXPECT_TRUE(treeMenuState(TreeNode::Category, clip).paste);
    EXPECT_TRUE(treeMenuState(TreeNode::Food, clip).paste);
    ASSERT_TRUE(clip.copyCategory(c, 0, 0));
    EXPECT_TRUE(treeMenuState(TreeNode::Group, clip).paste);
    EXPECT_FALSE(treeMenuState(TreeNode::Food, clip).paste);
    EXPECT_EQ(treeMenuState(TreeNode::Food, clip), (TreeMenuState{.cut = true,
                                                                  .copy = true,
                                                                  .rename = true,
                                                                  .insertCategory = true,
                                                                  .insertFood = true,
                                                                  .deleteCategory = true,
                                                                  .deleteFood = true}));
    EXPECT_EQ(confirmDeleteAllCategories(2),
              (Confirmation{{"Are you sure you want to delete all categories and food items under "
                             "the 'Meat, Poultry, Fish, Eggs' food group?",
                             "Delete All Categories", MessageKind::Warning}}));
    EXPECT_TRUE(confirmDeleteFoodItem("Sponge").noIsDefault);
    EXPECT_EQ(renameRefusal(TreeNode::Food),
              (ScreenMessage{"You entered a duplicate or invalid name.", "Rename Food",
                             MessageKind::Warning}));
}

}  // namespace
}  // namespace nutrovex
