#include <gtest/gtest.h>

#include <vector>

#include "foods/CatalogueOps.h"
#include "foods/CatalogueTree.h"
#include "foods/FoodFields.h"

namespace nutrovex {
namespace {

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
    f.unitIndex = unitByte(ServingUnit::Gram);
    f.amount = 1.0;
    f.calories = 100;
    for (int n = 1; n < kNutrientCount; ++n) {
        f.grams[static_cast<std::size_t>(n)] = 1.0;
    }
    f.meal = 0;
    return f;
}

TEST(FoodFields, MealIsPreselectedByTheHourWithDeliberateGaps) {
    const struct {
        int hour;
        uint16_t meal;
    } cases[] = {{10, 3}, {5, 0},  {13, 1}, {19, 2}, {20, 3}, {4, 3},
                 {9, 0},  {11, 1}, {14, 3}, {15, 3}, {16, 2}, {0, 3}};
    for (const auto& c : cases) {
        EXPECT_EQ(mealForHour(c.hour), c.meal) << c.hour;
    }
}

TEST(FoodFields, TheFirstInvalidFieldTakesTheFocusInOrder) {
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

TEST(FoodFields, SettersClampAndReportOnlyATopClamp) {
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

TEST(FoodFields, UnitsOfferedForLoggingFollowTheReferences) {
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
