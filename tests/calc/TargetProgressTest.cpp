#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "calc/TargetProgress.h"
#include "core/DayRecord.h"
#include "core/MacroTargets.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

MacroTarget grams(double g) {
    return {MacroTarget::Kind::Grams, g};
}
MacroTarget percent(double p) {
    return {MacroTarget::Kind::Percent, p};
}

MacroTargets targetsOf(std::optional<MacroTarget> protein, std::optional<MacroTarget> carbohydrate,
                       std::optional<MacroTarget> fat, std::optional<MacroTarget> fiber = {},
                       std::optional<MacroTarget> saturatedFat = {}) {
    MacroTargets t;
    t.of(TargetNutrient::Protein) = protein;
    t.of(TargetNutrient::Carbohydrate) = carbohydrate;
    t.of(TargetNutrient::Fat) = fat;
    t.of(TargetNutrient::Fiber) = fiber;
    t.of(TargetNutrient::SaturatedFat) = saturatedFat;
    return t;
}

// Calories, carbohydrate, fiber, protein, fat, saturated fat.
Nutrients dayTotals(float carbohydrate, float fiber, float protein, float fat, float saturated) {
    return {1900.0f, carbohydrate, fiber, protein, fat, saturated};
}

TEST(MacroTargets, SetsThatAreRefusedSayWhy) {
    const struct {
        const char* what;
        MacroTargets targets;
        const char* refusal;  // null: accepted
    } table[] = {
        {"nothing set", MacroTargets{}, nullptr},
        {"grams only", targetsOf(grams(120), grams(250), grams(60), grams(30), grams(20)), nullptr},
        {"three percentages making 100", targetsOf(percent(30), percent(50), percent(20)), nullptr},
        {"tenths that make 100", targetsOf(percent(33.3), percent(33.3), percent(33.4)), nullptr},
        {"two percentages under 100 beside grams", targetsOf(percent(30), percent(40), grams(70)),
         nullptr},
        {"a saturated-fat limit as a share", targetsOf({}, {}, {}, {}, percent(10)), nullptr},
        {"three percentages short of 100", targetsOf(percent(30), percent(50), percent(10)),
         "Protein, carbohydrate and fat add up to 90.0% of the food budget; as percentages they "
         "must add up to 100%."},
        {"a tenth short", targetsOf(percent(33.3), percent(33.3), percent(33.3)),
         "Protein, carbohydrate and fat add up to 99.9% of the food budget; as percentages they "
         "must add up to 100%."},
        {"two percentages over 100", targetsOf(percent(60), percent(50), grams(10)),
         "Protein, carbohydrate and fat add up to 110.0% of the food budget, more than all of "
         "it."},
        {"negative grams", targetsOf(grams(-5), {}, {}),
         "Protein cannot be a negative number of grams."},
        {"negative fibre", targetsOf({}, {}, {}, grams(-0.1)),
         "Fiber cannot be a negative number of grams."},
        {"too many grams", targetsOf({}, grams(10000), {}), "Carbohydrate can be at most 9999 g."},
        {"fibre as a share", targetsOf({}, {}, {}, percent(5)),
         "Fiber is set in grams only: it is not counted in the food budget's calories."},
        {"a share above all", targetsOf({}, {}, {}, {}, percent(101)),
         "Saturated fat must be a percentage from 0 to 100."},
        {"a negative share", targetsOf({}, {}, percent(-1)),
         "Fat must be a percentage from 0 to 100."},
    };
    for (const auto& c : table) {
        const std::optional<std::string> problem = targetsProblem(c.targets);
        if (c.refusal == nullptr) {
            EXPECT_EQ(problem, std::nullopt) << c.what;
        } else {
            EXPECT_EQ(problem, std::string(c.refusal)) << c.what;
        }
    }
}

// A 2,000-calorie day: 30 % protein is 600 cal, 150 g; 50 % carbohydrate 250 g; 20 % fat 400
// cal, 44.4 g; 10 % saturated fat 200 cal, 22.2 g; fibre 30 g.
TEST(TargetProgress, PercentagesOfTheBudgetBecomeGrams) {
    const MacroTargets targets =
        targetsOf(percent(30), percent(50), percent(20), grams(30), percent(10));
    const TargetProgress p = targetProgress(targets, 2000, dayTotals(240, 25, 140, 47, 15));
    ASSERT_TRUE(p.anySet);

    const TargetLine& protein = p.of(TargetNutrient::Protein);
    EXPECT_DOUBLE_EQ(*protein.grams, 150.0);
    EXPECT_DOUBLE_EQ(*protein.percent, 30.0);
    EXPECT_DOUBLE_EQ(protein.eaten, 140.0);
    EXPECT_DOUBLE_EQ(*protein.eatenPercent, 28.0);  // 560 of 2000 cal
    EXPECT_DOUBLE_EQ(*protein.left, 10.0);
    EXPECT_TRUE(protein.within);  // 10 g off, within a tenth of 150

    const TargetLine& carbohydrate = p.of(TargetNutrient::Carbohydrate);
    EXPECT_DOUBLE_EQ(*carbohydrate.grams, 250.0);
    EXPECT_DOUBLE_EQ(*carbohydrate.eatenPercent, 48.0);
    EXPECT_TRUE(carbohydrate.within);

    const TargetLine& fat = p.of(TargetNutrient::Fat);
    EXPECT_NEAR(*fat.grams, 44.444444, 1e-6);
    EXPECT_NEAR(*fat.left, -2.555556, 1e-6);  // over, by less than a tenth
    EXPECT_NEAR(*fat.eatenPercent, 21.15, 1e-9);
    EXPECT_TRUE(fat.within);

    const TargetLine& fiber = p.of(TargetNutrient::Fiber);
    EXPECT_DOUBLE_EQ(*fiber.grams, 30.0);
    EXPECT_EQ(fiber.percent, std::nullopt);
    EXPECT_EQ(fiber.eatenPercent, std::nullopt);
    EXPECT_DOUBLE_EQ(*fiber.left, 5.0);
    EXPECT_FALSE(fiber.within);  // fibre is met from its grams up

    const TargetLine& saturated = p.of(TargetNutrient::SaturatedFat);
    EXPECT_NEAR(*saturated.grams, 22.222222, 1e-6);
    EXPECT_DOUBLE_EQ(*saturated.eatenPercent, 6.75);
    EXPECT_TRUE(saturated.within);

    EXPECT_FALSE(p.dayWithin);
    EXPECT_TRUE(targetProgress(targets, 2000, dayTotals(240, 31, 140, 47, 15)).dayWithin);
}

TEST(TargetProgress, WhereEachTargetStopsBeingMet) {
    const struct {
        const char* what;
        TargetNutrient nutrient;
        MacroTarget target;
        float eaten;
        bool within;
    } table[] = {
        {"protein a tenth under", TargetNutrient::Protein, grams(100), 90.0f, true},
        {"protein more than a tenth under", TargetNutrient::Protein, grams(100), 89.5f, false},
        {"protein a tenth over", TargetNutrient::Protein, grams(100), 110.0f, true},
        {"protein more than a tenth over", TargetNutrient::Protein, grams(100), 110.5f, false},
        {"carbohydrate on target", TargetNutrient::Carbohydrate, grams(200), 200.0f, true},
        {"fat far over", TargetNutrient::Fat, grams(50), 80.0f, false},
        {"fibre just met", TargetNutrient::Fiber, grams(30), 30.0f, true},
        {"fibre far over", TargetNutrient::Fiber, grams(30), 90.0f, true},
        {"fibre short", TargetNutrient::Fiber, grams(30), 29.5f, false},
        {"saturated fat at the limit", TargetNutrient::SaturatedFat, grams(20), 20.0f, true},
        {"saturated fat none", TargetNutrient::SaturatedFat, grams(20), 0.0f, true},
        {"saturated fat over", TargetNutrient::SaturatedFat, grams(20), 20.5f, false},
        {"nothing asked, nothing eaten", TargetNutrient::Protein, grams(0), 0.0f, true},
    };
    for (const auto& c : table) {
        MacroTargets t;
        t.of(c.nutrient) = c.target;
        Nutrients totals{};
        totals[static_cast<std::size_t>(targetNutrientIndex(c.nutrient))] = c.eaten;
        const TargetProgress p = targetProgress(t, 2000, totals);
        EXPECT_EQ(p.of(c.nutrient).within, c.within) << c.what;
        EXPECT_EQ(p.dayWithin, c.within) << c.what;
    }
}

TEST(TargetProgress, ADayWithoutABudgetHasNoShares) {
    const MacroTargets targets = targetsOf(percent(30), percent(50), percent(20), {}, grams(20));
    for (const std::optional<int32_t> budget :
         {std::optional<int32_t>(), std::optional<int32_t>(0), std::optional<int32_t>(-50)}) {
        const TargetProgress p = targetProgress(targets, budget, dayTotals(240, 25, 140, 47, 15));
        const TargetLine& protein = p.of(TargetNutrient::Protein);
        EXPECT_EQ(protein.grams, std::nullopt);
        EXPECT_EQ(protein.percent, std::nullopt);
        EXPECT_EQ(protein.eatenPercent, std::nullopt);
        EXPECT_EQ(protein.left, std::nullopt);
        EXPECT_FALSE(protein.within);
        // A target in grams is still measured.
        const TargetLine& saturated = p.of(TargetNutrient::SaturatedFat);
        EXPECT_DOUBLE_EQ(*saturated.left, 5.0);
        EXPECT_EQ(saturated.percent, std::nullopt);
        EXPECT_TRUE(saturated.within);
        EXPECT_FALSE(p.dayWithin);
    }
}

TEST(TargetProgress, GramsAreAlsoSharesOfTheBudget) {
    const TargetProgress p =
        targetProgress(targetsOf(grams(120), {}, grams(60)), 1800, dayTotals(0, 0, 0, 0, 0));
    EXPECT_NEAR(*p.of(TargetNutrient::Protein).percent, 26.666667, 1e-6);  // 480 of 1800 cal
    EXPECT_DOUBLE_EQ(*p.of(TargetNutrient::Fat).percent, 30.0);            // 540 of 1800 cal
    EXPECT_FALSE(p.of(TargetNutrient::Carbohydrate).target.has_value());
    EXPECT_FALSE(p.dayWithin);  // nothing eaten
    EXPECT_FALSE(targetProgress(MacroTargets{}, 1800, dayTotals(0, 0, 0, 0, 0)).dayWithin);
}

// A logged day's budget counts its exercise afresh (1750 = 2400 BMR - 1000 goal + 350), and its
// totals are those of its foods, whatever the day last stored.
TEST(TargetProgress, ALoggedDayIsMeasuredFromItsFoodsAndBudget) {
    const CalendarDate today = CalendarDate::fromDmy(25, 9, 2002);
    UserProfile profile{today};
    profile.setHeight(70.0f);
    (void)profile.setAge(30);
    profile.setStartWeight(200.0f);
    profile.setGoalWeight(190.0f);
    profile.setGoalDate(steppedDate(today, 35));
    DayRecord day{today};
    day.rawFields().weight = 198.0f;
    day.rawFields().level = 2;
    day.rawFields().bmr = 2400;
    ExerciseEntry run;
    run.calories = 350;
    ASSERT_NE(day.appendExercise(run), kNoPosition);
    FoodItem fish;
    fish.setReference({1, ServingUnit::Item, 0});
    fish.setServing({2, ServingUnit::Item, 0});
    fish.setNutrient(kProtein, 43.75f);
    day.rawFields().groups[2].push_back(fish);

    const TargetProgress p =
        dayTargetProgress(targetsOf(percent(20), {}, {}), day, profile);  // 350 cal, 87.5 g
    EXPECT_DOUBLE_EQ(*p.of(TargetNutrient::Protein).grams, 87.5);
    EXPECT_DOUBLE_EQ(p.of(TargetNutrient::Protein).eaten, 87.5);  // two servings
    EXPECT_TRUE(p.dayWithin);
    EXPECT_EQ(day.exerciseCalories, 0u);
    EXPECT_FLOAT_EQ(day.totals()[kProtein], 0.0f);
}

TEST(TargetProgress, LinesAsAScreenShowsThem) {
    const MacroTargets targets =
        targetsOf(percent(30), percent(50), percent(20), grams(30), percent(10));
    const TargetProgress p = targetProgress(targets, 2000, dayTotals(240, 25, 140, 47, 15));
    EXPECT_EQ(targetLineText(p.of(TargetNutrient::Protein)),
              "Protein: 140.0 g of 150.0 g, 10.0 g left");
    EXPECT_EQ(targetLineText(p.of(TargetNutrient::Fat)), "Fat: 47.0 g of 44.4 g, 2.6 g over");
    EXPECT_EQ(targetLineText(p.of(TargetNutrient::SaturatedFat)),
              "Saturated fat: 15.0 g of at most 22.2 g, 7.2 g left");
    EXPECT_EQ(targetLineText(targetProgress(targets, std::nullopt, dayTotals(240, 25, 140, 47, 15))
                                 .of(TargetNutrient::Protein)),
              "Protein: 140.0 g; 30.0% of the food budget, which this day does not have");
    EXPECT_EQ(targetLineText(targetProgress(MacroTargets{}, 2000, dayTotals(0, 0, 0, 0, 0))
                                 .of(TargetNutrient::Protein)),
              "");
}

}  // namespace
}  // namespace nutrovex
