#include <gtest/gtest.h>

#include <string>

#include "calc/Bmr.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "core/MacroTargets.h"
#include "core/UserProfile.h"
#include "forms/foods/MealsForm.h"
#include "forms/logbook/DayGlance.h"
#include "forms/logbook/FoodBudgetForms.h"
#include "forms/logbook/LogbookForm.h"
#include "forms/logbook/SummaryTableForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

FoodItem food(const char* name, float perServing, ServingUnit unit, float amount, uint16_t meal,
              float protein = 0.0f) {
    FoodItem f;
    f.name = name;
    f.setReference({1.0f, unit, 0});
    f.setServing({amount, unit, 0});
    f.setNutrient(kCalories, perServing);
    f.setNutrient(kProtein, protein);
    f.meal = meal;
    return f;
}

// Today, 21 November 2002: a person losing 10 lbs in 35 days (1000 cal a day) with a BMR of 2400
// entered by hand, so the budget is 2400 + exercise - 1000.
class DayGlanceTest : public LogbookFixture {
protected:
    DayGlanceTest() {
        UserProfile& p = store.profile;
        (void)p.setHeight(70.0f);
        (void)p.setAge(30);
        (void)p.setStartWeight(200.0f);
        (void)p.setStartDate(dmy(21, 11, 2002));
        (void)p.setGoalWeight(190.0f);
        (void)p.setGoalDate(dmy(26, 12, 2002));
    }

    DayRecord& weighedDay(int d, int m, int y) {
        DayRecord& day = addDay(d, m, y);
        day.rawFields().weight = 198.0f;
        day.rawFields().level = kLevelManual;
        day.rawFields().bmr = 2400;
        return day;
    }

    DayGlance glance() { return LogbookForm(cursor, &targets).view().glance; }

    MacroTargets targets;
};

TEST_F(DayGlanceTest, FoodsByMealExercisesAndWhatIsLeft) {
    DayRecord& day = weighedDay(21, 11, 2002);
    day.group(5).push_back(food("Oatmeal", 150.0f, ServingUnit::Cup, 1.5f, 0));  // 225 cal
    day.group(2).push_back(food("Egg", 78.0f, ServingUnit::Item, 2.0f, 1));      // 156 cal
    day.group(1).push_back(food("Milk", 100.0f, ServingUnit::Cup, 0.25f, 0));    // 25 cal
    day.group(0).push_back(food("Cookie", 49.6f, ServingUnit::Item, 1.0f, 3));   // 49.6 cal
    ExerciseEntry run;
    run.name = "Running";
    run.minutes = 30;
    run.calories = 350;
    ASSERT_NE(day.appendExercise(run), kNoPosition);

    const DayGlance g = glance();
    ASSERT_EQ(g.groups.size(), 4u);  // breakfast, lunch, snack (no dinner), exercise
    EXPECT_EQ(g.groups[0].heading, "Breakfast");
    EXPECT_EQ(g.groups[0].total, "250 cal");
    // In the day's group order: Milk (group 1) before Oatmeal (group 5).
    EXPECT_EQ(g.groups[0].lines, (std::vector<GlanceLine>{{"Milk", "0.25 cup", "25 cal"},
                                                          {"Oatmeal", "1.5 cup", "225 cal"}}));
    EXPECT_EQ(g.groups[1].heading, "Lunch");
    EXPECT_EQ(g.groups[1].lines, (std::vector<GlanceLine>{{"Egg", "2 item", "156 cal"}}));
    EXPECT_EQ(g.groups[2].heading, "Snack");
    EXPECT_EQ(g.groups[2].total, "50 cal");
    EXPECT_EQ(g.groups[3].heading, "Exercise");
    EXPECT_EQ(g.groups[3].total, "350 cal");
    EXPECT_EQ(g.groups[3].lines, (std::vector<GlanceLine>{{"Running", "30 min", "350 cal"}}));
    EXPECT_TRUE(g.emptyText.empty());

    // Eaten 25 + 225 + 156 + 49.6 = 455.6, shown as 456; budget 2400 + 350 - 1000 = 1750.
    EXPECT_EQ(g.leftLabel, "Left today:");
    EXPECT_EQ(g.leftValue, "1294 cal");
    EXPECT_EQ(g.leftExplanation,
              "Food budget 1750 cal (BMR 2400 + exercise 350 - goal 1000) less 456 cal eaten.");
    EXPECT_TRUE(g.bmrNote.empty());
    EXPECT_TRUE(g.targetLines.empty());  // no targets set: nothing shown
}

TEST_F(DayGlanceTest, AnotherDayOverItsBudget) {
    DayRecord& day = weighedDay(20, 11, 2002);
    day.group(7).push_back(food("Pizza", 300.0f, ServingUnit::Item, 5.0f, 2));  // 1500 cal
    cursor.setCurrentDate(dmy(20, 11, 2002));
    day.rawFields().bmr = 1200;  // budget 1200 - 1000 = 200
    const DayGlance g = glance();
    EXPECT_EQ(g.leftLabel, "Over:");
    EXPECT_EQ(g.leftValue, "1300 cal");
}

TEST_F(DayGlanceTest, ADayWithoutAFigureSaysWhy) {
    struct Case {
        const char* what;
        bool record;
        float weight;
        uint16_t level;
        int age;
        const char* bmrNote;
        const char* budget;
    };
    const Case cases[] = {
        {"no record", false, 0, 0, 30, "BMR is 0: no weigh-in on this day.",
         "No food budget: weigh in on this day to get its BMR."},
        {"no weigh-in", true, -1.0f, kLevelSitting, 30, "BMR is 0: no weigh-in on this day.",
         "No food budget: weigh in on this day to get its BMR."},
        {"no age", true, 198.0f, kLevelSitting, -1, "BMR is 0: your age and height are missing.",
         "No food budget: enter your age and height in Personal Info."},
        {"BMR 0 by hand", true, 198.0f, kLevelManual, 30, "BMR is 0: it was entered by hand.", ""},
    };
    for (const Case& c : cases) {
        cursor.deleteAllDays(true);
        (void)store.profile.setAge(c.age);
        if (c.record) {
            DayRecord& day = addDay(21, 11, 2002);
            day.rawFields().weight = c.weight;
            day.rawFields().level = c.level;
            day.rawFields().bmr = 0;
        }
        cursor.setCurrentDate(dmy(21, 11, 2002));
        const DayGlance g = glance();
        EXPECT_EQ(g.bmrNote, c.bmrNote) << c.what;
        if (*c.budget != '\0') {
            EXPECT_EQ(g.leftValue, "---") << c.what;
            EXPECT_EQ(g.leftExplanation, c.budget) << c.what;
        } else {
            // A BMR of 0 typed by hand still gives a budget: 0 - 1000 is over by 1000.
            EXPECT_EQ(g.leftLabel, "Over today:") << c.what;
            EXPECT_EQ(g.leftValue, "1000 cal") << c.what;
        }
        EXPECT_EQ(g.emptyText, "Nothing logged on this day.") << c.what;
    }
}

TEST_F(DayGlanceTest, AGainGoalHasNoBudgetAndSaysSo) {
    weighedDay(21, 11, 2002);
    (void)store.profile.setGoalWeight(210.0f);
    const DayGlance g = glance();
    EXPECT_EQ(g.leftValue, "---");
    EXPECT_EQ(g.leftExplanation, "No food budget: set a weight goal to lose or keep weight.");
}

TEST_F(DayGlanceTest, EatenAgainstTargetsWithWhatIsLeft) {
    DayRecord& day = weighedDay(21, 11, 2002);
    day.group(2).push_back(food("Fish", 200.0f, ServingUnit::Item, 2.0f, 2, 21.5f));  // 43 g
    targets.of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Percent, 20.0};
    targets.of(TargetNutrient::Fiber) = MacroTarget{MacroTarget::Kind::Grams, 30.0};
    // Budget 1400: 20 % of it is 280 cal, 70 g of protein.
    const DayGlance g = glance();
    EXPECT_EQ(g.targetLines, (std::vector<std::string>{"Protein: 43.0 g of 70.0 g, 27.0 g left",
                                                       "Fiber: 0.0 g of 30.0 g, 30.0 g left"}));
}

// The meals screen's summary, the food budget page and the summary table show the same day against
// the same targets, and nothing of them while none is set.
TEST_F(DayGlanceTest, TheOtherScreensShowTheTargetsOnlyWhenSet) {
    DayRecord& met = weighedDay(20, 11, 2002);
    met.group(2).push_back(food("Fish", 200.0f, ServingUnit::Item, 3.0f, 2, 23.0f));  // 69 g
    DayRecord& shortOfIt = weighedDay(21, 11, 2002);
    shortOfIt.group(2).push_back(food("Fish", 200.0f, ServingUnit::Item, 2.0f, 2, 21.5f));  // 43 g
    FoodCatalogue catalogue;
    FoodRunState state;
    MealsForm meals(catalogue, cursor, state, &targets);
    FoodBudgetForm budget(cursor, &targets);
    SummaryTableForm table(cursor, &targets);

    EXPECT_TRUE(meals.view().targetLines.empty());
    EXPECT_EQ(budget.view().back().heading, "Measured");  // no "Targets" section
    EXPECT_FALSE(table.view().marksTargets);
    EXPECT_FALSE(table.withinTargets(0));

    // 20 % of a 1400 cal budget: 70 g of protein, met within 10 % (63 to 77 g).
    targets.of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Percent, 20.0};
    const std::string line = "Protein: 43.0 g of 70.0 g, 27.0 g left";
    EXPECT_EQ(meals.view().targetLines, std::vector<std::string>{line});
    const std::vector<BudgetSection> page = budget.view();
    EXPECT_EQ(page.back().heading, "Targets");
    EXPECT_EQ(page.back().rows, (std::vector<BudgetRow>{{"", line}}));
    const SummaryTableView v = table.view();
    EXPECT_TRUE(v.marksTargets);
    EXPECT_FALSE(v.targetsLegend.empty());
    EXPECT_TRUE(table.withinTargets(0));   // 69 g on the 20th
    EXPECT_FALSE(table.withinTargets(1));  // 43 g today
    EXPECT_FALSE(table.withinTargets(2));  // no such row
}

TEST_F(DayGlanceTest, ALongMealIsCountedNotListed) {
    DayRecord& day = weighedDay(21, 11, 2002);
    for (int i = 0; i < 40; ++i) {
        day.group(0).push_back(food("Nut", 10.0f, ServingUnit::Item, 1.0f, 3));
    }
    const DayGlance g = glance();
    ASSERT_EQ(g.groups.size(), 1u);
    EXPECT_EQ(g.groups[0].lines.size(), kGlanceLinesPerGroup);
    EXPECT_EQ(g.groups[0].more, "and 28 more");
    EXPECT_EQ(g.groups[0].total, "400 cal");  // every food counts in the total
}

TEST(DayGlanceAmounts, TrailingZerosGo) {
    const struct {
        float amount;
        const char* text;
    } rows[] = {{1.5f, "1.5"},   {2.0f, "2"},      {0.25f, "0.25"}, {0.0f, "0"},
                {100.0f, "100"}, {0.333f, "0.33"}, {-0.001f, "0"},  {12.004f, "12"}};
    for (const auto& r : rows) {
        EXPECT_EQ(shortAmount(r.amount), r.text) << r.amount;
    }
}

}  // namespace
}  // namespace nutrovex
