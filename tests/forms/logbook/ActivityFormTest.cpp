#include <gtest/gtest.h>

#include "calc/Bmr.h"
#include "forms/logbook/ActivityForm.h"
#include "forms/logbook/SummaryTableForm.h"
#include "logbook/LogbookFixture.h"
#include "logbook/SummaryTable.h"

namespace nutrovex {
namespace {

// A 30-year-old man of 70 in, and his day of 21 November at 180 lb.
class ActivityFormTest : public LogbookFixture {
protected:
    ActivityFormTest() {
        store.profile.setHeight(70.0f);
        store.profile.setAge(30);
        (void)store.profile.setDefaultLevel(2);
    }

    DayRecord& weighedToday() {
        DayRecord& day = addDay(21, 11, 2002);
        setDayWeight(day, 180.0f, store.profile);
        return day;
    }

    Notices level(int n) { return form.command(static_cast<ActivityForm::Command>(n)).notices; }
    Notices bmr(std::string_view text) { return form.edit(ActivityForm::Field::Bmr, text).notices; }

    ActivityForm form{cursor};
};

const std::string kToday = "Thursday November 21, 2002";

TEST_F(ActivityFormTest, TheLevelsAreOfferedOnlyWithADayWeightHeightAndAge) {
    // No day: the profile's default is shown, nothing can be chosen.
    EXPECT_EQ(form.view(), (ActivityView{2, false, false, "", kToday}));

    DayRecord& day = addDay(21, 11, 2002);
    // A day without a weigh-in has no level yet.
    EXPECT_EQ(form.view(), (ActivityView{0, false, false, "0", kToday}));

    setDayWeight(day, 180.0f, store.profile);
    EXPECT_EQ(form.view(), (ActivityView{2, true, false, "2234", kToday}));

    store.profile.setAge(-1);
    EXPECT_FALSE(form.view().levelsEnabled);
    store.profile.setAge(30);
    store.profile.setHeight(-1.0f);
    EXPECT_FALSE(form.view().levelsEnabled);
}

TEST_F(ActivityFormTest, ManualBmrIsTypedAndKeptWhenTheWeightChanges) {
    DayRecord& day = weighedToday();

    EXPECT_EQ(level(5), (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(form.view(), (ActivityView{5, true, true, "0", kToday}));

    EXPECT_TRUE(bmr("1850").userData);
    EXPECT_EQ(day.bmr(), 1850);
    // Only four digits are read.
    (void)bmr("12345");
    EXPECT_EQ(day.bmr(), 1234);
    (void)bmr("");
    EXPECT_EQ(day.bmr(), 0);
    (void)bmr("1850");

    setDayWeight(day, 150.0f, store.profile);
    EXPECT_EQ(day.bmr(), 1850);

    // Back to a computed level: the BMR follows the formula again.
    (void)level(1);
    EXPECT_EQ(form.view(), (ActivityView{1, true, false, "1683", kToday}));
    // The edit is not read away from level 5.
    EXPECT_EQ(bmr("999"), Notices{});
    EXPECT_EQ(day.bmr(), 1683);
}

TEST_F(ActivityFormTest, SetAsDailyDefaultReachesNewDaysNotDaysWithALevel) {
    DayRecord& yesterday = addDay(20, 11, 2002);
    setDayWeight(yesterday, 180.0f, store.profile);
    weighedToday();
    (void)level(4);  // the checked level
    EXPECT_EQ(form.command(ActivityForm::Command::SetAsDailyDefault).notices,
              (Notices{.userData = true, .dataChanged = true}));
    EXPECT_EQ(store.profile.defaultLevel(), 4);
    EXPECT_EQ(yesterday.level(), 2);

    DayRecord& tomorrow = addDay(22, 11, 2002);
    setDayWeight(tomorrow, 180.0f, store.profile);
    EXPECT_EQ(tomorrow.level(), 4);

    // With no level checked nothing is stored.
    DayRecord& unweighed = addDay(23, 11, 2002);
    cursor.setCurrentDate(unweighed.date());
    ASSERT_EQ(form.view().level, 0);
    EXPECT_EQ(form.command(ActivityForm::Command::SetAsDailyDefault), Outcome{});
    EXPECT_EQ(store.profile.defaultLevel(), 4);
}

TEST_F(ActivityFormTest, LevelsOnADateWithoutARecordDoNothing) {
    EXPECT_EQ(level(3), Notices{});
    EXPECT_EQ(bmr("1500"), Notices{});
    EXPECT_TRUE(store.days().empty());
}

class SummaryTableTest : public LogbookFixture {
protected:
    int currentRow() { return SummaryTableForm(cursor).view().currentRow; }
};

TEST_F(SummaryTableTest, CellsShowTheDateTotalsAndExercise) {
    DayRecord& day = addDay(3, 5, 2002);
    day.setTotals({1499.6f, 201.25f, 30.04f, 80.0f, 55.55f, 12.0f});
    ExerciseEntry run;
    run.calories = 300;
    run.minutes = 30;
    ASSERT_NE(day.appendExercise(run), kNoPosition);
    ExerciseEntry walk;
    walk.calories = 120;
    walk.minutes = 40;
    ASSERT_NE(day.appendExercise(walk), kNoPosition);

    std::vector<std::string> row;
    for (int c = 0; c < kSummaryColumnCount; ++c) {
        row.push_back(summaryCell(day, c));
    }
    // Date, Cal, Carb, Prot, Fib, Fat, SFat: protein before fiber, unlike the stored order. The
    // grams are printf's "%1.1f": an exact half (201.25) goes to the even digit.
    EXPECT_EQ(row, (std::vector<std::string>{"05/03", "1500", "201.2 g", "80.0 g", "30.0 g",
                                             "55.5 g", "12.0 g", "420"}));
}

TEST_F(SummaryTableTest, TheCurrentRowIsTheCurrentDatesRecord) {
    addDay(3, 5, 2002);
    addDay(5, 5, 2002);
    cursor.setCurrentDate(dmy(5, 5, 2002));
    EXPECT_EQ(currentRow(), 1);
    cursor.setCurrentDate(dmy(4, 5, 2002));
    EXPECT_EQ(currentRow(), -1);
    // A day inserted before the current one moves its row.
    cursor.setCurrentDate(dmy(5, 5, 2002));
    addDay(1, 5, 2002);
    EXPECT_EQ(currentRow(), 2);
}

}  // namespace
}  // namespace nutrovex
