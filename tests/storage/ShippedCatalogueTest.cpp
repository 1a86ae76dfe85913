#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>

#include "core/Names.h"
#include "data/ShippedCatalogue.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/StorageTestUtil.h"
#include "storage/UserList.h"

namespace nutrovex {
namespace {

TEST(ShippedCatalogue, IsAValidCatalogueWithFoodsInEveryGroup) {
    FoodCatalogue c;
    const StorageStatus s = readCatalogueFile(shippedCatalogue(), c, {"FoodDB.ddb"});
    ASSERT_TRUE(s.ok()) << s.message();
    EXPECT_EQ(c.header.version, 4);
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
    std::set<uint32_t> keys;
    uint32_t highest = 0;
    std::size_t foods = 0;
    std::size_t weighed = 0;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        EXPECT_EQ(c.header.groupNames[g], kStoredGroupNames[g]);
        const CategoryList& list = c.groups[g];
        ASSERT_FALSE(list.empty()) << "group " << g;
        for (std::size_t k = 0; k < list.size(); ++k) {
            const FoodCategory& cat = list[k];
            if (k > 0) {
                EXPECT_LT(compareNames(list[k - 1].name, cat.name), 0) << cat.name.view();
            }
            EXPECT_TRUE(keys.insert(cat.key.value).second);
            highest = std::max(highest, cat.key.value);
            ASSERT_FALSE(cat.foods.empty()) << cat.name.view();
            for (std::size_t i = 0; i < cat.foods.size(); ++i) {
                const FoodItem& f = cat.foods[i];
                SCOPED_TRACE(f.name.str());
                if (i > 0) {
                    EXPECT_LT(compareNames(cat.foods[i - 1].name, f.name), 0);
                }
                EXPECT_LE(f.name.size(), 20u);
                EXPECT_EQ(f.text2, f.name);
                EXPECT_EQ(f.group, g);
                EXPECT_EQ(f.loggedFlag, 1);
                EXPECT_EQ(f.referenceFor(f.serving.unit), f.serving);
                EXPECT_EQ(f.ratio, 1.0f);
                // A household serving may know its weight in grams beside it.
                if (!f.serving.isWeight() && f.ref1.amount != 0.0f) {
                    EXPECT_EQ(f.ref1.unit, ServingUnit::Gram);
                    ++weighed;
                }
                EXPECT_TRUE(keys.insert(f.key.value).second);
                highest = std::max(highest, f.key.value);
                for (int n = 0; n < kNutrientCount; ++n) {
                    EXPECT_EQ(f.nutrients[n], clampNutrient(n, f.nutrients[n]));
                }
                EXPECT_LE(f.nutrients[kSaturatedFat], f.nutrients[kFat]);
                EXPECT_LE(f.nutrients[kFiber], f.nutrients[kCarbohydrate]);
                // Calories agree roughly with 4 kcal/g of digestible carbohydrate and protein, 2
                // of fibre and 9 of fat: measured energy departs from that by up to a half, a
                // column out of place by far more. Alcohol, vinegar's acid and the sugar alcohols
                // of diet syrup bring their own.
                const bool ownEnergy = cat.name == "Beer and Wine" || f.name == "Vanilla extract" ||
                                       f.name == "Diet syrup" ||
                                       f.name.view().substr(0, 7) == "Vinegar";
                if (!ownEnergy) {
                    const float energy = 4 * (f.nutrients[kCarbohydrate] - f.nutrients[kFiber] +
                                              f.nutrients[kProtein]) +
                                         2 * f.nutrients[kFiber] + 9 * f.nutrients[kFat];
                    const float calories = f.nutrients[kCalories];
                    EXPECT_TRUE(std::fabs(energy - calories) <= 30.0f ||
                                (calories >= 0.5f * energy && calories <= 1.6f * energy))
                        << calories << " kcal against " << energy;
                }
                ++foods;
            }
        }
    }
    EXPECT_EQ(c.header.keyCounter.value, highest);
    EXPECT_GE(foods, 4000u);
    EXPECT_GE(weighed, 2500u);
}

// A food without a household measure in the source is 100 g of it with the source's values; one
// with a measure is that measure, its weight the weight reference and its values the source's
// for that weight; an everyday food keeps its own serving.
TEST(ShippedCatalogue, HoldsTheSourcesFoodsBesideTheEverydayFoods) {
    FoodCatalogue c;
    ASSERT_TRUE(readCatalogueFile(shippedCatalogue(), c, {"FoodDB.ddb"}).ok());
    const auto find = [&](int group, std::string_view category,
                          std::string_view name) -> const FoodItem* {
        for (const FoodCategory& cat : c.groups[group]) {
            if (cat.name == category) {
                for (const FoodItem& f : cat.foods) {
                    if (f.name == name) {
                        return &f;
                    }
                }
            }
        }
        return nullptr;
    };
    // Canned Atlantic cod, per 100 g: 105 kcal, 22.76 g protein, 0.86 g fat, 0.167 g saturated.
    const FoodItem* cod = find(2, "Fish A-O", "Cod, canned");
    ASSERT_NE(cod, nullptr);
    EXPECT_EQ(cod->serving, (ServingQuantity{100.0f, ServingUnit::Gram, 0}));
    EXPECT_EQ(cod->ref2, ServingQuantity{});
    EXPECT_EQ(cod->nutrients, (Nutrients{105.0f, 0.0f, 0.0f, 22.76f, 0.86f, 0.167f}));
    // Whole milk, per 100 g: 61 kcal, 4.8 g carbohydrate, 3.15 protein, 3.25 fat, 1.865
    // saturated; a cup weighs 244 g.
    const FoodItem* milk = find(1, "Milk", "Milk, whole");
    ASSERT_NE(milk, nullptr);
    EXPECT_EQ(milk->serving, (ServingQuantity{1.0f, ServingUnit::Cup, 0}));
    EXPECT_EQ(milk->ref2, milk->serving);
    EXPECT_EQ(milk->ref1, (ServingQuantity{244.0f, ServingUnit::Gram, 0}));
    EXPECT_EQ(milk->nutrients, (Nutrients{149.0f, 11.712f, 0.0f, 7.686f, 7.93f, 4.551f}));
    const FoodItem* bagel = find(5, "Bread", "Bagel");
    ASSERT_NE(bagel, nullptr);
    EXPECT_EQ(bagel->serving, (ServingQuantity{1.0f, ServingUnit::Item, 0}));
    EXPECT_EQ(bagel->ref1, ServingQuantity{});
    EXPECT_EQ(bagel->nutrients[kCalories], 245.0f);
}

TEST(ShippedCatalogue, BecomesANewUsersCatalogueAtTheFirstLoad) {
    test::TempDir dir;
    ASSERT_TRUE(installTemplateCatalogue(dir.path(), shippedCatalogue()).ok());
    UserList users(dir.path());
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(users.add("Zerbu").ok());
    FoodCatalogue c;
    ASSERT_TRUE(setCataloguePath(c, users, *users.userFolder("Zerbu") / "UserDB.ddb").ok());
    EXPECT_EQ(loadCatalogue(c, templateCataloguePath(dir.path())).outcome, CatalogueLoad::Copied);
    const std::size_t foods = c.foodCount();
    EXPECT_GE(foods, 500u);
    EXPECT_EQ(loadCatalogue(c, templateCataloguePath(dir.path())).outcome, CatalogueLoad::Read);
    EXPECT_EQ(c.foodCount(), foods);
}

}  // namespace
}  // namespace nutrovex
