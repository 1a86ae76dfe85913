#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foods/CatalogueOps.h"

namespace nutrovex {
namespace {

std::vector<std::string> categoryNames(const FoodCatalogue& c, int group) {
    std::vector<std::string> names;
    for (const FoodCategory& cat : c.groups[static_cast<std::size_t>(group)]) {
        names.push_back(cat.name.str());
    }
    return names;
}

std::vector<std::string> foodNames(const FoodCatalogue& c, int group, Position category) {
    std::vector<std::string> names;
    for (const FoodItem& f : c.groups[static_cast<std::size_t>(group)][category].foods) {
        names.push_back(f.name.str());
    }
    return names;
}

FoodItem food(const char* name) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setNutrient(kCalories, 100.0f);
    return f;
}

TEST(CatalogueOps, CategoriesKeepNameOrderAndRefuseByteEqualDuplicates) {
    FoodCatalogue c;
    for (const char* n : {"Rice", "bagels", "rice", "Apples", "Bagels"}) {
        ASSERT_NE(addCategory(c, 2, n), kNoPosition) << n;
    }
    EXPECT_EQ(categoryNames(c, 2),
              (std::vector<std::string>{"Apples", "bagels", "Bagels", "rice", "Rice"}));
    EXPECT_EQ(addCategory(c, 2, "Rice"), kNoPosition);
    EXPECT_EQ(addCategory(c, 2, ""), kNoPosition);
    EXPECT_EQ(addCategory(c, 8, "Other"), kNoPosition);
    EXPECT_EQ(addCategory(c, -1, "Other"), kNoPosition);
    EXPECT_EQ(findCategory(c, 2, "rice"), 3);
    EXPECT_EQ(findCategory(c, 2, "RICE"), kNoPosition);
    EXPECT_EQ(c.groups[2].size(), 5u);
}

TEST(CatalogueOps, FreshKeysComeFromTheCatalogueCounter) {
    FoodCatalogue c;
    c.header.keyCounter.value = 0x80000000u | 41;  // upper fields stay as stored
    ASSERT_EQ(addCategory(c, 0, "Oils"), 0);
    EXPECT_EQ(c.groups[0][0].key.value, 0x80000000u | 42);
    FoodItem f = food("Butter");
    f.key.value = 7;
    f.group = 6;
    ASSERT_EQ(addFoodItem(c, 0, 0, f), 0);
    const FoodItem& added = c.groups[0][0].foods[0];
    EXPECT_EQ(added.key.value, 0x80000000u | 43);
    EXPECT_EQ(added.group, 0);
    EXPECT_EQ(added.loggedFlag, 1);
    EXPECT_EQ(c.header.keyCounter.serial(), 43u);
    // A refused add takes no key.
    EXPECT_EQ(addFoodItem(c, 0, 0, f), kNoPosition);
    EXPECT_EQ(c.header.keyCounter.serial(), 43u);
}

TEST(CatalogueOps, GroupChunksFollowEveryAddAndDelete) {
    FoodCatalogue c;
    ASSERT_EQ(c.header.groupChunks, (std::array<uint16_t, 8>{1, 2, 3, 4, 5, 6, 7, 8}));
    ASSERT_NE(addCategory(c, 0, "A"), kNoPosition);
    EXPECT_EQ(c.header.groupChunks, (std::array<uint16_t, 8>{1, 3, 4, 5, 6, 7, 8, 9}));
    ASSERT_NE(addCategory(c, 5, "B"), kNoPosition);
    ASSERT_NE(addCategory(c, 5, "C"), kNoPosition);
    EXPECT_EQ(c.header.groupChunks, (std::array<uint16_t, 8>{1, 3, 4, 5, 6, 7, 10, 11}));
    ASSERT_TRUE(deleteCategory(c, 0, 0));
    EXPECT_EQ(c.header.groupChunks, (std::array<uint16_t, 8>{1, 2, 3, 4, 5, 6, 9, 10}));
    deleteAllCategories(c, 5);
    EXPECT_TRUE(c.groups[5].empty());
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
    EXPECT_EQ(c.header.groupChunks, (std::array<uint16_t, 8>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_FALSE(deleteCategory(c, 5, 0));
}

// Only the session marks the catalogue modified; every change gives it a new revision, so the
// finder's index knows it is stale, and a refusal leaves the revision alone.
TEST(CatalogueOps, EveryChangeMovesTheRevisionAndNoneMarksModified) {
    FoodCatalogue c;
    uint64_t revision = c.revision;
    const auto expectChange = [&](bool changedExpected, const char* what) {
        EXPECT_FALSE(c.modified) << what;
        EXPECT_EQ(c.revision != revision, changedExpected) << what;
        revision = c.revision;
    };
    ASSERT_NE(addCategory(c, 1, "Cheese"), kNoPosition);
    expectChange(true, "add category");
    ASSERT_NE(addFoodItem(c, 1, 0, food("Brie")), kNoPosition);
    expectChange(true, "add food");
    FoodItem edited = food("Brie");
    edited.nutrients[kCalories] = 330.0f;
    ASSERT_NE(replaceFoodItem(c, 1, 0, 0, edited), kNoPosition);
    expectChange(true, "edit food");
    CatalogueClipboard clipboard;
    ASSERT_TRUE(clipboard.copyFood(c, 1, 0, 0));
    expectChange(false, "copy food");
    ASSERT_NE(clipboard.pasteFood(c, 1, 0), kNoPosition);
    expectChange(true, "paste food");
    ASSERT_TRUE(clipboard.cutFood(c, 1, 0, 1));
    expectChange(true, "cut food");
    ASSERT_TRUE(clipboard.copyCategory(c, 1, 0));
    ASSERT_NE(clipboard.pasteCategory(c, 2), kNoPosition);
    expectChange(true, "paste category");
    deleteAllCategories(c, 2);
    expectChange(true, "delete all categories");
    EXPECT_EQ(addCategory(c, 1, "Cheese"), kNoPosition);
    expectChange(false, "duplicate category");
    EXPECT_EQ(renameFoodItem(c, 1, 0, 0, "Brie"), kNoPosition);
    expectChange(false, "rename to a taken name");
    EXPECT_NE(renameFoodItem(c, 1, 0, 0, "Camembert"), kNoPosition);
    expectChange(true, "rename food");
    EXPECT_NE(renameCategory(c, 1, 0, "Soft cheese"), kNoPosition);
    expectChange(true, "rename category");
    EXPECT_TRUE(deleteFoodItem(c, 1, 0, 0));
    expectChange(true, "delete food");
    EXPECT_FALSE(deleteFoodItem(c, 1, 0, 0));
    expectChange(false, "delete missing food");
}

TEST(CatalogueOps, GroupOfTwoHundredFiftyIsFullButItsCategoriesStillRename) {
    FoodCatalogue c;
    for (int i = 0; i < 250; ++i) {
        ASSERT_NE(addCategory(c, 3, "Cat" + std::to_string(1000 + i)), kNoPosition);
    }
    EXPECT_TRUE(groupIsFull(c, 3));
    EXPECT_FALSE(groupIsFull(c, 4));
    const Position pos = renameCategory(c, 3, 0, "Zucchini");
    EXPECT_EQ(pos, 249);
    EXPECT_EQ(c.groups[3][249].name.str(), "Zucchini");
    EXPECT_EQ(c.groups[3].size(), 250u);
}

TEST(CatalogueOps, RenameCategoryKeepsKeyAndFoodsAndMovesInNameOrder) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 4, "Apples"), kNoPosition);
    ASSERT_NE(addCategory(c, 4, "Melons"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 4, 0, food("Fuji")), kNoPosition);
    const PackedKey key = c.groups[4][0].key;
    EXPECT_EQ(renameCategory(c, 4, 0, "Melons"), kNoPosition);
    EXPECT_EQ(renameCategory(c, 4, 0, "Apples"), kNoPosition);  // its own name counts as taken
    EXPECT_EQ(renameCategory(c, 4, 0, "melons"), 0);            // differs in case only
    EXPECT_EQ(renameCategory(c, 4, 0, "Pears"), 1);
    EXPECT_EQ(categoryNames(c, 4), (std::vector<std::string>{"Melons", "Pears"}));
    EXPECT_EQ(c.groups[4][1].key, key);
    EXPECT_EQ(foodNames(c, 4, 1), (std::vector<std::string>{"Fuji"}));
}

TEST(CatalogueOps, RenamingAFoodGivesItAFreshKeyAndSetsBothNames) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 5, "Breads"), kNoPosition);
    for (const char* n : {"Bagel", "Rye", "Naan"}) {
        ASSERT_NE(addFoodItem(c, 5, 0, food(n)), kNoPosition);
    }
    const FoodItem before = c.groups[5][0].foods[0];
    ASSERT_EQ(before.name.str(), "Bagel");
    EXPECT_EQ(renameFoodItem(c, 5, 0, 0, "Rye"), kNoPosition);
    EXPECT_EQ(renameFoodItem(c, 5, 0, 0, "Wheat roll"), 2);
    const FoodItem& after = c.groups[5][0].foods[2];
    EXPECT_EQ(after.name.str(), "Wheat roll");
    EXPECT_EQ(after.text2.str(), "Wheat roll");
    EXPECT_NE(after.key, before.key);
    EXPECT_EQ(after.key.serial(), c.header.keyCounter.serial());
    EXPECT_EQ(after.nutrients, before.nutrients);
    EXPECT_EQ(foodNames(c, 5, 0), (std::vector<std::string>{"Naan", "Rye", "Wheat roll"}));
}

TEST(CatalogueOps, EditingAFoodIsNotADuplicateOfItselfButIsOfAnother) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 0, "Oils"), kNoPosition);
    for (int i = 0; i < 100; ++i) {
        ASSERT_NE(addFoodItem(c, 0, 0, food(("Oil " + std::to_string(100 + i)).c_str())),
                  kNoPosition);
    }
    ASSERT_TRUE(categoryIsFull(c.groups[0][0]));
    FoodItem edited = c.groups[0][0].foods[0];
    edited.setNutrient(kFat, 14.0f);
    EXPECT_EQ(replaceFoodItem(c, 0, 0, 0, edited), 0);  // a full category still edits
    EXPECT_FLOAT_EQ(c.groups[0][0].foods[0].nutrients[kFat], 14.0f);
    edited.name = "Oil 150";
    EXPECT_EQ(replaceFoodItem(c, 0, 0, 0, edited), kNoPosition);
    edited.name = "olive";
    EXPECT_EQ(replaceFoodItem(c, 0, 0, 0, edited), 99);
    EXPECT_EQ(c.groups[0][0].foods[99].text2.str(), "olive");
    EXPECT_EQ(c.groups[0][0].foods.size(), 100u);
}

TEST(CatalogueOps, RiceAndriceStandSideBySideWithriceFirst) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 5, "Grains"), kNoPosition);
    EXPECT_EQ(addFoodItem(c, 5, 0, food("Rice")), 0);
    EXPECT_EQ(addFoodItem(c, 5, 0, food("rice")), 0);
    EXPECT_EQ(addFoodItem(c, 5, 0, food("Rice")), kNoPosition);
    EXPECT_EQ(foodNames(c, 5, 0), (std::vector<std::string>{"rice", "Rice"}));
}

TEST(CatalogueClipboard, HoldsOneCategoryOrOneFoodNeverBoth) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 0, "Cakes"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 0, 0, food("Sponge")), kNoPosition);
    CatalogueClipboard clip;
    ASSERT_TRUE(clip.copyCategory(c, 0, 0));
    EXPECT_TRUE(clip.holdsCategory());
    ASSERT_TRUE(clip.copyFood(c, 0, 0, 0));
    EXPECT_FALSE(clip.holdsCategory());
    EXPECT_TRUE(clip.holdsFood());
    // A paste on a group node does nothing now.
    EXPECT_EQ(clip.pasteCategory(c, 1), kNoPosition);
    EXPECT_TRUE(c.groups[1].empty());
    ASSERT_TRUE(clip.copyCategory(c, 0, 0));
    EXPECT_FALSE(clip.holdsFood());
    EXPECT_EQ(clip.pasteFood(c, 0, 0), kNoPosition);
    EXPECT_EQ(c.groups[0][0].foods.size(), 1u);
}

TEST(CatalogueClipboard, PastedFoodNamesAreMadeUnique) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 5, "Breads"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 5, 0, food("Bagel")), kNoPosition);
    const std::string twenty = "Whole wheat pita 6in";  // 20 characters
    ASSERT_EQ(twenty.size(), 20u);
    ASSERT_NE(addFoodItem(c, 5, 0, food(twenty.c_str())), kNoPosition);
    CatalogueClipboard clip;
    ASSERT_TRUE(clip.copyFood(c, 5, 0, findFoodItem(c.groups[5][0], "Bagel")));
    ASSERT_NE(clip.pasteFood(c, 5, 0), kNoPosition);
    ASSERT_NE(clip.pasteFood(c, 5, 0), kNoPosition);
    ASSERT_TRUE(clip.copyFood(c, 5, 0, findFoodItem(c.groups[5][0], twenty)));
    ASSERT_NE(clip.pasteFood(c, 5, 0), kNoPosition);
    ASSERT_NE(clip.pasteFood(c, 5, 0), kNoPosition);
    EXPECT_EQ(foodNames(c, 5, 0),
              (std::vector<std::string>{"Bagel", "Bagel1", "Bagel2", "Whole wheat pita 6i1",
                                        "Whole wheat pita 6i2", twenty}));
    // The second name, which the find searches, is the pasted name too.
    for (const FoodItem& f : c.groups[5][0].foods) {
        EXPECT_EQ(f.text2.str(), f.name.str());
    }
}

TEST(CatalogueClipboard, PasteFoodIntoAnotherGroupAndIntoAFullCategory) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 5, "Breads"), kNoPosition);
    ASSERT_NE(addCategory(c, 7, "Deli"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 5, 0, food("Bagel")), kNoPosition);
    CatalogueClipboard clip;
    ASSERT_TRUE(clip.cutFood(c, 5, 0, 0));
    EXPECT_TRUE(c.groups[5][0].foods.empty());
    EXPECT_EQ(clip.pasteFood(c, 7, 0), 0);
    const FoodItem& moved = c.groups[7][0].foods[0];
    EXPECT_EQ(moved.name.str(), "Bagel");
    EXPECT_EQ(moved.group, 7);
    for (int i = 0; i < 99; ++i) {
        ASSERT_NE(clip.pasteFood(c, 7, 0), kNoPosition) << i;
    }
    EXPECT_EQ(c.groups[7][0].foods.back().name.str(), "Bagel99");
    EXPECT_EQ(clip.pasteFood(c, 7, 0), kNoPosition);
    EXPECT_EQ(c.groups[7][0].foods.size(), 100u);
}

TEST(CatalogueClipboard, PastedCategoryGetsAUniqueNameAFreshKeyAndItsFoods) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 1, "Cheese"), kNoPosition);
    ASSERT_NE(addFoodItem(c, 1, 0, food("Brie")), kNoPosition);
    ASSERT_NE(addFoodItem(c, 1, 0, food("Gouda")), kNoPosition);
    CatalogueClipboard clip;
    ASSERT_TRUE(clip.copyCategory(c, 1, 0));
    EXPECT_EQ(clip.pasteCategory(c, 1), 1);
    EXPECT_EQ(clip.pasteCategory(c, 6), 0);
    EXPECT_EQ(categoryNames(c, 1), (std::vector<std::string>{"Cheese", "Cheese1"}));
    EXPECT_NE(c.groups[1][1].key, c.groups[1][0].key);
    EXPECT_EQ(c.groups[6][0].name.str(), "Cheese");
    EXPECT_EQ(foodNames(c, 6, 0), (std::vector<std::string>{"Brie", "Gouda"}));
    EXPECT_EQ(c.groups[6][0].foods[1].group, 6);
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
    ASSERT_TRUE(clip.cutCategory(c, 1, 0));
    EXPECT_EQ(categoryNames(c, 1), (std::vector<std::string>{"Cheese1"}));
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
}

}  // namespace
}  // namespace nutrovex
