#include <gtest/gtest.h>

#include "calc/Goals.h"
#include "calc/GoalsForm.h"
#include "core/UserProfile.h"

namespace nutrovex {
namespace {

const CalendarDate kToday = CalendarDate::fromDmy(1, 3, 2002);

TEST(GoalsForm, WeightsAreStoredByTheEntryRuleAndShownWhole) {
    struct Case {
        bool metric;
        const char* start;
        const char* goal;
        float storedStart;
        float storedGoal;
        const char* shownStart;
        const char* shownGoal;
    };
    const Case cases[] = {
        {false, "200", "190", 200.0f, 190.0f, "200", "190"},
        {false, "1200", "0", 999.0f, kNotEntered, "999", ""},
        {false, "", "-5", kNotEntered, kNotEntered, "", ""},
        {true, "100", "90", 221.0f, 90.0f * 2.21f, "100", "90"},
    };
    for (const Case& c : cases) {
        UserProfile profile(kToday);
        (void)profile.setUnits(c.metric ? 1 : 0);
        GoalsForm form(profile);
        (void)form.enterWeights(c.start, c.goal);
        EXPECT_EQ(profile.startWeight(), c.storedStart) << c.start;
        EXPECT_EQ(profile.goalWeight(), c.storedGoal) << c.goal;
        const GoalsView v = form.view();
        EXPECT_EQ(v.startWeight, c.shownStart);
        EXPECT_EQ(v.goalWeight, c.shownGoal);
        EXPECT_EQ(v.unit, c.metric ? "kg" : "lbs");
    }
}

TEST(GoalsForm, EnteringWeightsRecomputesThePlanAndTheSentence) {
    UserProfile profile(kToday);
    GoalsForm form(profile);
    EXPECT_EQ(form.view().sentence, kNoGoalSentence);
    const Notices none = form.enterWeights("", "");
    EXPECT_FALSE(none.any());  // nothing changed, nothing to save

    const Notices first = form.enterWeights("200", "");
    EXPECT_TRUE(first.userData);
    EXPECT_TRUE(first.dataChanged);
    EXPECT_EQ(form.view().sentence, kNoGoalSentence);

    ASSERT_FALSE(form.setTargetDate(steppedDate(kToday, 35)).dayCreated);
    (void)form.enterWeights("200", "190");
    EXPECT_EQ(profile.plan().valid, 1);
    EXPECT_EQ(form.view().sentence,
              "To lose 10 lbs in 35 days, you will need to eat 1000 fewer calories per day than "
              "your body burns.");
}

TEST(GoalsForm, TheTargetDateStaysAfterTheStartDate) {
    UserProfile profile(kToday);
    GoalsForm form(profile);
    const CalendarDate start = CalendarDate::fromDmy(10, 3, 2002);

    (void)form.setStartDate(start);
    EXPECT_TRUE(datesEqual(profile.startDate(), start));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(11, 3, 2002)));

    // A target before, or on, the start date stores the day after the start.
    for (const CalendarDate& chosen : {CalendarDate::fromDmy(1, 2, 2002), start}) {
        (void)form.setTargetDate(chosen);
        EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(11, 3, 2002)));
    }
    const CalendarDate later = CalendarDate::fromDmy(1, 6, 2002);
    (void)form.setTargetDate(later);
    EXPECT_TRUE(datesEqual(profile.goalDate(), later));
    EXPECT_EQ(form.view().targetDate, "Saturday June 1, 2002");

    // A start moved past the target pushes the target along; one before it leaves it alone.
    (void)form.setStartDate(CalendarDate::fromDmy(1, 7, 2002));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(2, 7, 2002)));
    (void)form.setStartDate(CalendarDate::fromDmy(1, 1, 2002));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(2, 7, 2002)));
    EXPECT_EQ(form.view().startDate, "Tuesday January 1, 2002");
}

TEST(GoalsForm, ResetClearsTheGoalsFromToday) {
    UserProfile profile(kToday);
    GoalsForm form(profile);
    (void)form.setTargetDate(CalendarDate::fromDmy(1, 6, 2002));
    (void)form.enterWeights("200", "180");
    ASSERT_EQ(profile.plan().valid, 1);
    EXPECT_EQ(GoalsForm::confirmReset().caption, "Reset Goals");
    EXPECT_EQ(GoalsForm::confirmReset().kind, MessageKind::Question);

    const CalendarDate today = CalendarDate::fromDmy(5, 4, 2002);
    EXPECT_TRUE(form.reset(today).userData);
    const GoalsView v = form.view();
    EXPECT_EQ(v.startWeight, "");
    EXPECT_EQ(v.goalWeight, "");
    EXPECT_EQ(v.sentence, kNoGoalSentence);
    EXPECT_TRUE(datesEqual(profile.startDate(), today));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(6, 4, 2002)));
}

}  // namespace
}  // namespace nutrovex
