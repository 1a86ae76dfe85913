#include <gtest/gtest.h>

#include "calc/Goals.h"
#include "core/UserProfile.h"
#include "forms/profile/GoalsForm.h"

namespace nutrovex {
namespace {

using Field = GoalsForm::Field;

const CalendarDate kToday = CalendarDate::fromDmy(1, 3, 2002);
const FixedClock kClock{kToday};

// Both weights as the person types them, one after the other.
Outcome enterWeights(GoalsForm& form, const char* start, const char* goal) {
    const Outcome first = form.edit(Field::StartWeight, start);
    Outcome second = form.edit(Field::GoalWeight, goal);
    second.notices |= first.notices;
    return second;
}

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
        GoalsForm form(profile, kClock);
        (void)enterWeights(form, c.start, c.goal);
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
    GoalsForm form(profile, kClock);
    EXPECT_EQ(form.view().sentence, kNoGoalSentence);
    const Outcome none = enterWeights(form, "", "");
    EXPECT_FALSE(none.notices.any());  // nothing changed, nothing to save
    EXPECT_EQ(none.save, SavePoint::Nothing);

    const Outcome first = form.edit(Field::StartWeight, "200");
    EXPECT_TRUE(first.notices.userData);
    EXPECT_TRUE(first.notices.dataChanged);
    EXPECT_EQ(first.save, SavePoint::UserData);
    EXPECT_EQ(form.view().sentence, kNoGoalSentence);

    ASSERT_FALSE(form.pickDate(Field::TargetDate, steppedDate(kToday, 35)).notices.dayCreated);
    (void)form.edit(Field::GoalWeight, "190");
    EXPECT_EQ(profile.plan().valid, 1);
    EXPECT_EQ(form.view().sentence,
              "To lose 10 lbs in 35 days, you will need to eat 1000 fewer calories per day than "
              "your body burns.");
}

TEST(GoalsForm, TheTargetDateStaysAfterTheStartDate) {
    UserProfile profile(kToday);
    GoalsForm form(profile, kClock);
    const CalendarDate start = CalendarDate::fromDmy(10, 3, 2002);

    (void)form.pickDate(Field::StartDate, start);
    EXPECT_TRUE(datesEqual(profile.startDate(), start));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(11, 3, 2002)));

    // A target before, or on, the start date stores the day after the start.
    for (const CalendarDate& chosen : {CalendarDate::fromDmy(1, 2, 2002), start}) {
        (void)form.pickDate(Field::TargetDate, chosen);
        EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(11, 3, 2002)));
    }
    const CalendarDate later = CalendarDate::fromDmy(1, 6, 2002);
    (void)form.pickDate(Field::TargetDate, later);
    EXPECT_TRUE(datesEqual(profile.goalDate(), later));
    EXPECT_EQ(form.view().targetDate, "Saturday June 1, 2002");

    // A start moved past the target pushes the target along; one before it leaves it alone.
    (void)form.pickDate(Field::StartDate, CalendarDate::fromDmy(1, 7, 2002));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(2, 7, 2002)));
    (void)form.pickDate(Field::StartDate, CalendarDate::fromDmy(1, 1, 2002));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(2, 7, 2002)));
    EXPECT_EQ(form.view().startDate, "Tuesday January 1, 2002");
}

TEST(GoalsForm, ResetClearsTheGoalsFromToday) {
    UserProfile profile(kToday);
    GoalsForm form(profile, kClock);
    (void)form.pickDate(Field::TargetDate, CalendarDate::fromDmy(1, 6, 2002));
    (void)enterWeights(form, "200", "180");
    ASSERT_EQ(profile.plan().valid, 1);
    const auto asked = GoalsForm::confirmation(GoalsForm::Command::Reset);
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->caption, "Reset Goals");
    EXPECT_EQ(asked->kind, MessageKind::Question);

    const CalendarDate today = CalendarDate::fromDmy(5, 4, 2002);
    const FixedClock later{today};
    GoalsForm again(profile, later);
    EXPECT_TRUE(again.command(GoalsForm::Command::Reset).notices.userData);
    const GoalsView v = again.view();
    EXPECT_EQ(v.startWeight, "");
    EXPECT_EQ(v.goalWeight, "");
    EXPECT_EQ(v.sentence, kNoGoalSentence);
    EXPECT_TRUE(datesEqual(profile.startDate(), today));
    EXPECT_TRUE(datesEqual(profile.goalDate(), CalendarDate::fromDmy(6, 4, 2002)));
}

}  // namespace
}  // namespace nutrovex
