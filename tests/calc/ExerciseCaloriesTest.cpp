#include <gtest/gtest.h>

#include "calc/ExerciseCalories.h"

namespace nutrovex {
namespace {

// Expected values worked out by hand from the coefficient table:
// (minutes * A/59 -+ B/59) * weight * C, narrowed to single precision, truncated, capped.
TEST(ExerciseCalories, FormulasOfTheTable) {
    const struct {
        const char* what;
        ExerciseSelection selection;
        int16_t weight;
        int16_t minutes;
        uint16_t calories;
    } table[] = {
        {"Running 6.0 mph", {15, 0, 2}, 150, 30, 360},             // 360.32
        {"Running 10  mph capped", {15, 0, 6}, 300, 1000, 10000},  // 39586.26
        {"Running 10  mph at the limits", {15, 0, 6}, 32767, 32767, 10000},
        {"Sex, a minute at a pound", {25, 6, -1}, 1, 1, 0},  // 0.0106
        {"Golf using cart (+)", {6, 0, -1}, 200, 120, 670},  // 670.51
        {"Shoveling manual", {25, 4, 1}, 175, 20, 168},      // 168.43
        {"Gymnastics", {7, -1, -1}, 150, 60, 288},           // 288.29
        {"Horseback riding shares gymnastics", {9, -1, -1}, 150, 60, 288},
        {"Martial arts", {10, -1, -1}, 180, 45, 648},  // 648.19
        {"Rope jumping shares martial arts", {13, -1, -1}, 180, 45, 648},
        // 831.999975 in double is 832.0 in single precision: narrowed before truncating.
        {"Aerobics low impact", {0, 0, 0}, 291, 65, 832},
        {"Aerobics water ignores the sub-variant", {0, 2, -1}, 200, 30, 192},  // 192.16
        {"  ... any sub-variant", {0, 2, 5}, 200, 30, 192},
        {"Basketball ignores variant and sub-variant", {1, 3, 7}, 160, 40, 409},  // 409.48
    };
    for (const auto& c : table) {
        const ExerciseCaloriesResult r = computeExerciseCalories(c.selection, c.weight, c.minutes);
        EXPECT_TRUE(r.ok) << c.what;
        EXPECT_EQ(r.calories, c.calories) << c.what;
    }
}

TEST(ExerciseCalories, MissingInputsFailAndNonsenseSelectionsGiveZero) {
    const struct {
        const char* what;
        ExerciseSelection selection;
        int16_t weight;
        int16_t minutes;
        bool ok;
    } table[] = {
        {"no minutes", {15, 0, 2}, 150, 0, false},
        {"negative minutes", {15, 0, 2}, 150, -30, false},
        {"no weight", {15, 0, 2}, 0, 30, false},
        {"negative weight", {15, 0, 2}, -1, 30, false},
        {"user defined", {26, -1, -1}, 150, 30, false},
        {"user defined with a variant", {26, 0, 0}, 150, 30, false},
        {"type above the catalogue", {27, 0, 0}, 150, 30, true},
        {"negative type", {-1, 0, 0}, 150, 30, true},
        {"variant out of range", {0, 3, 0}, 150, 30, true},
        {"variant missing", {15, -1, -1}, 150, 30, true},
        {"sub-variant out of range", {15, 0, 7}, 150, 30, true},
        {"sub-variant missing", {15, 0, -1}, 150, 30, true},
    };
    for (const auto& c : table) {
        const ExerciseCaloriesResult r = computeExerciseCalories(c.selection, c.weight, c.minutes);
        EXPECT_EQ(r.ok, c.ok) << c.what;
        EXPECT_EQ(r.calories, 0) << c.what;
    }
}

TEST(ExerciseCalories, EveryLeafOfTheCatalogueHasAFormula) {
    int computed = 0;
    for (int16_t t = 0; t < kUserDefinedExercise; ++t) {
        ExerciseCursor cursor;
        cursor.setType(t);
        const int variants = cursor.variantCount();
        for (int16_t v = 0; v < (variants == 0 ? 1 : variants); ++v) {
            if (variants != 0) {
                cursor.setVariant(v);
            }
            const int subs = cursor.subVariantCount();
            for (int16_t s = 0; s < (subs == 0 ? 1 : subs); ++s) {
                if (subs != 0) {
                    cursor.setSubVariant(s);
                }
                const ExerciseCaloriesResult r =
                    computeExerciseCalories(cursor.selection(), 150, 60);
                EXPECT_TRUE(r.ok);
                // An hour at 150 lb burns from 108 (sex) to 1188 (running at 10 mph).
                EXPECT_GE(r.calories, 108) << t << "/" << v << "/" << s;
                EXPECT_LE(r.calories, 1188) << t << "/" << v << "/" << s;
                ++computed;
            }
        }
    }
    EXPECT_EQ(computed, 68);
}

}  // namespace
}  // namespace nutrovex
