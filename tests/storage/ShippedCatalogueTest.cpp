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
                EXPECT_TRUE(keys.insert(f.key.value).second);
                highest = std::max(highest, f.key.value);
                for (int n = 0; n < kNutrientCount; ++n) {
                    EXPECT_EQ(f.nutrients[n], clampNutrient(n, f.nutrients[n]));
                }
                EXPECT_LE(f.nutrients[kSaturatedFat], f.nutrients[kFat]);
                EXPECT_LE(f.nutrients[kFiber], f.nutrients[kCarbohydrate]);
                // Calories agree roughly with 4 kcal/g of digestible carbohydrate and protein, 2
                // of fibre and 9 of fat: the measured energy of the food tables departs from that
                // by up to a half, an energy left in kJ or a column out of place by far more.
                // Alcohol brings its own.
                if (cat.name != "Beer and Wine") {
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
    EXPECT_GE(foods, 500u);
}

// A food of the composition tables, per 100 g with its energy turned from kJ into kcal and its
// carbohydrate counted with the fibre; and an everyday food kept with its own serving.
TEST(ShippedCatalogue, HoldsTheTablesFoodsPer100GramsBesideTheEverydayFoods) {
    constexpr uint8_t kGram = 12;
    constexpr uint8_t kItem = 14;
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
    const FoodItem* rice = find(5, "Cereals and Millets", "Rice, raw, milled");
    ASSERT_NE(rice, nullptr);
    EXPECT_EQ(rice->serving, (ServingQuantity{100.0f, kGram, 0}));
    const std::array<float, kNutrientCount> riceValues = {356.0f, 81.05f, 2.81f,
                                                          7.94f,  0.52f,  0.184f};
    for (int n = 0; n < kNutrientCount; ++n) {
        EXPECT_EQ(rice->nutrients[n], riceValues[n]) << n;
    }
    // Oils come without an energy figure in the tables: 37 kJ for each gram of fat.
    const FoodItem* oil = find(0, "Fats and Oils", "Coconut oil");
    ASSERT_NE(oil, nullptr);
    EXPECT_EQ(oil->nutrients[kCalories], 884.0f);
    const FoodItem* bagel = find(5, "Bread", "Bagel");
    ASSERT_NE(bagel, nullptr);
    EXPECT_EQ(bagel->serving, (ServingQuantity{1.0f, kItem, 0}));
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
