#include <gtest/gtest.h>

#include "core/DayRecord.h"
#include "foods/MealsForm.h"

namespace nutrovex {
namespace {

FoodItem food(uint16_t group, float calories, float carbohydrate, float fiber,
              float amount = 1.0f) {
    FoodItem f;
    f.name = "Food";
    f.group = group;
    f.setReference({1.0f, ServingUnit::Item, 0});
    f.setServing({amount, ServingUnit::Item, 0});
    f.setNutrient(kCalories, calories);
    f.setNutrient(kCarbohydrate, carbohydrate);
    f.setNutrient(kFiber, fiber);
    f.setNutrient(kProtein, 2.25f);
    f.setNutrient(kFat, 1.04f);
    f.setNutrient(kSaturatedFat, 0.5f);
    return f;
}

TEST(MealsForm, FormatsCaloriesWholeAndGramsWithOneDecimal) {
    const struct {
        int nutrient;
        float value;
        const char* text;
    } cases[] = {
        {kCalories, 0.0f, "0"},       {kCalories, 149.5f, "150"},
        {kCalories, 9999.0f, "9999"}, {kCarbohydrate, 0.0f, "0.0g"},
        {kFat, 12.25f, "12.2g"},      {kSaturatedFat, 1000.0f, "1000.0g"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(mealsValueText(c.nutrient, c.value), c.text) << c.value;
    }
}

TEST(MealsForm, ADayWithoutRecordShowsZeroEverywhere) {
    bool fats = false;
    const MealsForm form(nullptr, fats);
    const MealsColumn cell = form.groupCell(3);
    EXPECT_EQ(cell.labels, (std::array<std::string, 3>{"Cal", "Carb", "Prot"}));
    EXPECT_EQ(cell.values, (std::array<std::string, 3>{"0", "0.0g", "0.0g"}));
    const auto summary = form.summary();
    EXPECT_EQ(summary[1].labels, (std::array<std::string, 3>{"Fib", "Fat", "SFat"}));
    EXPECT_EQ(summary[1].values, (std::array<std::string, 3>{"0.0g", "0.0g", "0.0g"}));
}

TEST(MealsForm, GroupCellsToggleBetweenTheTwoTriplesAndTheSummaryKeepsAllSix) {
    DayRecord day(CalendarDate::fromDmy(1, 3, 2026));
    // Ten foods of 1500 calories: the group shows its clamped 9999.
    for (int i = 0; i < 10; ++i) {
        day.group(2).push_back(food(2, 1500.0f, 10.0f, 1.0f));
        day.allFoods().push_back(day.group(2).back());
    }
    day.group(4).push_back(food(4, 52.0f, 13.8f, 2.4f, 2.0f));  // two servings
    day.group(4).push_back(food(4, 300.0f, 1.0f, 1.0f, 0.0f));  // a zero serving adds nothing
    bool fats = false;
    MealsForm form(&day, fats);

    EXPECT_EQ(form.groupCell(2).values, (std::array<std::string, 3>{"9999", "100.0g", "22.5g"}));
    EXPECT_EQ(form.groupCell(4).values, (std::array<std::string, 3>{"104", "27.6g", "4.5g"}));
    EXPECT_EQ(form.groupCell(0).values, (std::array<std::string, 3>{"0", "0.0g", "0.0g"}));
    EXPECT_EQ(form.summary()[0].values, (std::array<std::string, 3>{"10103", "127.6g", "27.0g"}));

    form.toggleNutrients();
    EXPECT_TRUE(fats);  // the caller's flag holds the choice for the rest of the run
    EXPECT_EQ(form.groupCell(4).labels, (std::array<std::string, 3>{"Fib", "Fat", "SFat"}));
    EXPECT_EQ(form.groupCell(4).values, (std::array<std::string, 3>{"4.8g", "2.1g", "1.0g"}));
    EXPECT_EQ(form.summary()[0].labels, (std::array<std::string, 3>{"Cal", "Carb", "Prot"}));
    form.toggleNutrients();
    EXPECT_EQ(form.groupCell(4).labels[0], "Cal");
}

}  // namespace
}  // namespace nutrovex
