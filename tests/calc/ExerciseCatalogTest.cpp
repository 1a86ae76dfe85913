#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calc/ExerciseCatalog.h"

namespace nutrovex {
namespace {

using Names = std::vector<std::string>;

Names toNames(ExerciseNames names) {
    return Names(names.begin(), names.end());
}

TEST(ExerciseCatalog, NamesByIndexAgreeWithTheListsAndEndWithTheUserDefinedEntry) {
    const Names types = toNames(exerciseTypeNames());
    ASSERT_EQ(types.size(), static_cast<std::size_t>(kExerciseTypeCount));
    for (int t = 0; t < kExerciseTypeCount; ++t) {
        EXPECT_EQ(exerciseTypeName(t), types[static_cast<std::size_t>(t)]) << t;
        EXPECT_FALSE(types[static_cast<std::size_t>(t)].empty()) << t;
    }
    // Spot checks where the pickers and the formulas meet: the first type, the one with the most
    // variants, and the user-defined entry last.
    EXPECT_EQ(types.front(), "Aerobics");
    EXPECT_EQ(toNames(exerciseVariantNames(0)), (Names{"General", "Step", "Water"}));
    EXPECT_EQ(toNames(exerciseVariantNames(25)).size(), 7u);
    EXPECT_EQ(exerciseTypeName(kUserDefinedExercise), std::string("User Defined Exercise"));
    EXPECT_EQ(kUserDefinedExercise, kExerciseTypeCount - 1);

    EXPECT_STREQ(exerciseTypeName(-1), "");
    EXPECT_STREQ(exerciseTypeName(kExerciseTypeCount), "");
    EXPECT_TRUE(exerciseVariantNames(kExerciseTypeCount).empty());
    EXPECT_TRUE(exerciseVariantNames(-1).empty());
}

TEST(ExerciseCatalog, OnlyTheDesignsVariantsHaveSubVariants) {
    const struct {
        int type;
        int variant;
        Names subs;
    } withSubs[] = {
        {0, 0, {"Low Impact", "High Impact"}},
        {0, 1, {"Low Impact", "High Impact"}},
        {2, 0, {"Moderate", "Vigorous"}},
        {2, 1, {"BMX-Mtn.", "12-13.9 mph", "14-15.9 mph"}},
        {14, 0, {"Moderate", "Vigorous"}},
        {15, 0, {"5.0 mph", "5.2 mph", "6.0 mph", "6.7 mph", "7.5 mph", "8.6 mph", "10  mph"}},
        {17, 0, {"Cross-country", "Downhill"}},
        {23, 0, {"3.5 mph", "4.0 mph", "4.5 mph"}},
        {25, 2, {"Power", "Manual"}},
        {25, 4, {"Snow Blower", "Manual"}},
    };
    int leaves = 0;
    for (int t = 0; t < kExerciseTypeCount; ++t) {
        const int variants = static_cast<int>(exerciseVariantNames(t).size());
        leaves += variants == 0 ? 1 : 0;
        for (int v = 0; v < variants; ++v) {
            Names expected;
            for (const auto& w : withSubs) {
                if (w.type == t && w.variant == v) {
                    expected = w.subs;
                }
            }
            EXPECT_EQ(toNames(exerciseSubVariantNames(t, v)), expected) << t << "/" << v;
            leaves += expected.empty() ? 1 : static_cast<int>(expected.size());
        }
    }
    // 69 leaves: the user-defined exercise and the 68 that have formulas.
    EXPECT_EQ(leaves, 69);
    EXPECT_TRUE(exerciseSubVariantNames(0, 2).empty());
    EXPECT_TRUE(exerciseSubVariantNames(0, 3).empty());
    EXPECT_TRUE(exerciseSubVariantNames(1, 0).empty());
}

TEST(ExerciseCursor, StartsOnTheFirstLeaf) {
    const ExerciseCursor cursor;
    EXPECT_EQ(cursor.selection(), (ExerciseSelection{0, 0, 0}));
    EXPECT_EQ(cursor.variantCount(), 3);
    EXPECT_EQ(cursor.subVariantCount(), 2);
    EXPECT_STREQ(ExerciseCursor::typeNames()[cursor.type()], "Aerobics");
    EXPECT_STREQ(cursor.variantNames()[0], "General");
    EXPECT_STREQ(cursor.subVariantNames()[0], "Low Impact");
}

TEST(ExerciseCursor, SettingALevelSelectsTheFirstEntryBelowOrNone) {
    const struct {
        int16_t type;
        ExerciseSelection expected;
        int variantCount;
        int subCount;
    } types[] = {
        {15, {15, 0, 0}, 2, 7},    // Running: General, 5.0 mph
        {4, {4, 0, -1}, 2, 0},     // Football: Touch has no sub-variants
        {1, {1, -1, -1}, 0, 0},    // Basketball has no variants
        {26, {26, -1, -1}, 0, 0},  // User Defined Exercise
        {27, {27, -1, -1}, 0, 0},  // outside the catalogue: kept, nothing below
        {-1, {-1, -1, -1}, 0, 0},
    };
    for (const auto& c : types) {
        ExerciseCursor cursor;
        cursor.setSubVariant(1);
        cursor.setType(c.type);
        EXPECT_EQ(cursor.selection(), c.expected) << c.type;
        EXPECT_EQ(cursor.variantCount(), c.variantCount) << c.type;
        EXPECT_EQ(cursor.subVariantCount(), c.subCount) << c.type;
    }

    ExerciseCursor cursor;
    cursor.setVariant(2);  // Aerobics Water
    EXPECT_EQ(cursor.selection(), (ExerciseSelection{0, 2, -1}));
    EXPECT_EQ(cursor.subVariantCount(), 0);
    cursor.setVariant(1);  // Step
    EXPECT_EQ(cursor.selection(), (ExerciseSelection{0, 1, 0}));
    cursor.setSubVariant(1);
    EXPECT_STREQ(cursor.subVariantNames()[cursor.subVariant()], "High Impact");
    cursor.setVariant(9);
    EXPECT_EQ(cursor.selection(), (ExerciseSelection{0, 9, -1}));
}

TEST(ExerciseCursor, SelectRestoresALoggedEntry) {
    ExerciseCursor cursor;
    cursor.select({25, 4, 1});
    EXPECT_EQ(cursor.selection(), (ExerciseSelection{25, 4, 1}));
    EXPECT_STREQ(cursor.variantNames()[4], "Shoveling");
    EXPECT_STREQ(cursor.subVariantNames()[1], "Manual");
    EXPECT_EQ(cursor.variantCount(), 7);
}

}  // namespace
}  // namespace nutrovex
