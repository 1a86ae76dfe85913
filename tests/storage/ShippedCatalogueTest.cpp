#include <gtest/gtest.h>

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
    const StorageStatus s = readCatalogueFile(shippedCatalogue(), c, {"FoodDB.ddb", true});
    ASSERT_TRUE(s.ok()) << s.message();
    EXPECT_EQ(c.header.version, 4);
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
    std::set<uint32_t> keys;
    uint32_t highest = 0;
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
                // Calories agree with 4 kcal/g of carbohydrate and protein and 9 of fat, except
                // where alcohol brings its own.
                if (cat.name != "Beer and Wine") {
                    const float energy = 4 * (f.nutrients[kCarbohydrate] + f.nutrients[kProtein]) +
                                         9 * f.nutrients[kFat];
                    EXPECT_LE(std::fabs(energy - f.nutrients[kCalories]),
                              std::max(12.0f, 0.15f * f.nutrients[kCalories]));
                }
            }
        }
    }
    EXPECT_EQ(c.header.keyCounter.value, highest);
}

TEST(ShippedCatalogue, BecomesANewUsersCatalogueAtTheSecondLoad) {
    test::TempDir dir;
    ASSERT_TRUE(installTemplateCatalogue(dir.path(), shippedCatalogue()).ok());
    UserList users(dir.path());
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(users.add("Zerbu").ok());
    FoodCatalogue c;
    ASSERT_TRUE(setCataloguePath(c, users, *users.userFolder("Zerbu") / "UserDB.ddb").ok());
    EXPECT_EQ(loadCatalogue(c, templateCataloguePath(dir.path())).outcome, CatalogueLoad::Copied);
    EXPECT_EQ(loadCatalogue(c, templateCataloguePath(dir.path())).outcome, CatalogueLoad::Read);
    EXPECT_GT(c.foodCount(), 40u);
}

}  // namespace
}  // namespace nutrovex
