#include <gtest/gtest.h>

#include "calc/FoodBudget.h"
#include "core/DayRecord.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

const CalendarDate kToday = CalendarDate::fromDmy(25, 9, 2002);

class FoodBudgetTest : public ::testing::Test {
protected:
    FoodBudgetTest() {
        profile.setHeight(70.0f);
        (void)profile.setAge(30);
        profile.setStartWeight(200.0f);
        profile.setGoalWeight(190.0f);
        profile.setGoalDate(steppedDate(kToday, 35));  // 1000 calories a day
        day.rawFields().weight = 198.0f;
        day.rawFields().level = 2;
        day.rawFields().bmr = 2400;
        day.exerciseCalories = 350;
    }
    UserProfile profile{kToday};
    DayRecord day{kToday};
};

TEST_F(FoodBudgetTest, BudgetIsBmrPlusExerciseMinusGoal) {
    EXPECT_EQ(foodBudgetText(&day, profile), "1750 cal");
    EXPECT_EQ(foodBudgetCalories(&day, profile), 1750);
    day.rawFields().bmr = 600;
    EXPECT_EQ(foodBudgetText(&day, profile), "-50 cal");
    EXPECT_EQ(foodBudgetCalories(&day, profile), -50);
    // Same start and goal weight: the budget is BMR plus exercise.
    profile.setGoalWeight(200.0f);
    EXPECT_EQ(foodBudgetText(&day, profile), "950 cal");
}

TEST_F(FoodBudgetTest, EveryMissingInputGivesTheWeightText) {
    const struct {
        const char* what;
        void (*spoil)(DayRecord&, UserProfile&);
    } table[] = {
        {"no level", [](DayRecord& d, UserProfile&) { d.rawFields().level = 0; }},
        {"no weight", [](DayRecord& d, UserProfile&) { d.rawFields().weight = -1.0f; }},
        {"no age", [](DayRecord&, UserProfile& p) { (void)p.setAge(-1); }},
        {"no height", [](DayRecord&, UserProfile& p) { p.setHeight(-1.0f); }},
        {"no goal weight", [](DayRecord&, UserProfile& p) { p.setGoalWeight(-1.0f); }},
        {"target on the start date", [](DayRecord&, UserProfile& p) { p.setGoalDate(kToday); }},
        // A weight-gain goal deliberately never shows a budget.
        {"gain", [](DayRecord&, UserProfile& p) { p.setGoalWeight(210.0f); }},
    };
    for (const auto& c : table) {
        DayRecord d = day;
        UserProfile p = profile;
        c.spoil(d, p);
        EXPECT_EQ(foodBudgetText(&d, p), "(Weight required for BMR).") << c.what;
        EXPECT_EQ(foodBudgetCalories(&d, p), std::nullopt) << c.what;
    }
    EXPECT_EQ(foodBudgetText(nullptr, profile), "(Weight required for BMR).");
}

TEST_F(FoodBudgetTest, PageShowsTheDayAndTheGoalInSections) {
    day.rawFields().totals[kCalories] = 1499.5f;
    const auto page = foodBudgetPage(&day, profile);
    ASSERT_EQ(page.size(), 5u);
    const char* headings[] = {"Weight", "Meals", "Activity Level", "Exercise", "Goals"};
    for (std::size_t i = 0; i < page.size(); ++i) {
        EXPECT_EQ(page[i].heading, headings[i]);
    }
    EXPECT_EQ(page[0].rows,
              (std::vector<BudgetRow>{{"Current Weight:", "198 lbs"},
                                      {"Target Weight:", "190 lbs"},
                                      {"Target Date:", "Wednesday October 30, 2002"}}));
    EXPECT_EQ(page[1].rows,
              (std::vector<BudgetRow>{{"Calories In:", "1500 cal"},  // rounded half up
                                      {"Food budget:", "1750 cal"},
                                      {"", kBudgetFormulaText}}));
    EXPECT_EQ(page[2].rows,
              (std::vector<BudgetRow>{
                  {"Calories Out:", "2400 cal"},
                  {"", "The calories you burned during the day through work and at rest."}}));
    EXPECT_EQ(page[3].rows, (std::vector<BudgetRow>{
                                {"Calories Out:", "350 cal"},
                                {"", "The calories you burn during the day through exercise."}}));
    EXPECT_EQ(page[4].rows,
              (std::vector<BudgetRow>{{"",
                                       "To lose 10 lbs in 35 days, you will need to eat 1000 "
                                       "fewer calories per day than your body burns."}}));
}

TEST_F(FoodBudgetTest, PageInKilogramsAndWithoutWeights) {
    (void)profile.setUnits(1);
    auto page = foodBudgetPage(&day, profile);
    EXPECT_EQ(page[0].rows[0], (BudgetRow{"Current Weight:", "90 kg"}));  // 89.59
    EXPECT_EQ(page[0].rows[1], (BudgetRow{"Target Weight:", "86 kg"}));   // 85.97
    EXPECT_EQ(page[4].rows[0].value.substr(0, 15), "To lose 5 kg in");

    profile.setGoalWeight(-1.0f);
    day.rawFields().weight = -1.0f;
    page = foodBudgetPage(&day, profile);
    EXPECT_EQ(page[0].rows[0], (BudgetRow{"Current Weight:", "Please input daily weight."}));
    EXPECT_EQ(page[0].rows[1], (BudgetRow{"Target Weight:", ""}));
    EXPECT_EQ(page[1].rows[1], (BudgetRow{"Food budget:", "(Weight required for BMR)."}));

    page = foodBudgetPage(nullptr, profile);
    EXPECT_EQ(page[0].rows[0], (BudgetRow{"Current Weight:", "Please input daily weight."}));
    EXPECT_EQ(page[1].rows[0], (BudgetRow{"Calories In:", "0 cal"}));
    EXPECT_EQ(page[2].rows[0], (BudgetRow{"Calories Out:", "0 cal"}));
}

TEST_F(FoodBudgetTest, CompactBox) {
    const FoodBudgetBox box = foodBudgetBox(&day, profile);
    EXPECT_EQ(box.heading, "Food Budget");
    EXPECT_EQ(box.budgetLine,
              "To achieve the goals you have set, your food budget is:  1750 calories.");
    day.rawFields().weight = -1.0f;  // no budget: the fixed text ends the sentence
    EXPECT_EQ(foodBudgetBox(&day, profile).budgetLine,
              "To achieve the goals you have set, your food budget is:  (Weight required for "
              "BMR).");
    EXPECT_EQ(box.caption, "Food = BMR + Exercise - Goal");
    EXPECT_EQ(box.goalHeading, "Daily Calorie Goal");
    EXPECT_EQ(box.goalSentence,
              "To lose 10 lbs in 35 days, you will need to eat 1000 fewer calories per day than "
              "your body burns.");
}

}  // namespace
}  // namespace nutrovex
