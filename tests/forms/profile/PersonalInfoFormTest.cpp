#include <gtest/gtest.h>

#include "calc/Bmr.h"
#include "core/UserProfile.h"
#include "forms/logbook/WeighInForm.h"
#include "forms/profile/PersonalInfoForm.h"
#include "logbook/LogbookFixture.h"

namespace nutrovex {
namespace {

using Field = PersonalInfoForm::Field;

const CalendarDate kToday = CalendarDate::fromDmy(25, 9, 2002);

TEST(PersonalInfoForm, FeetAndInchesSwitchToCentimetresKeepingTheHeight) {
    UserProfile profile(kToday);
    PersonalInfoForm form(profile);
    (void)form.edit(Field::FirstHeight, "5");
    const Outcome stored = form.edit(Field::SecondHeight, "11");
    EXPECT_TRUE(stored.notices.userData);
    EXPECT_TRUE(stored.notices.dataChanged);
    EXPECT_EQ(stored.save, SavePoint::UserData);
    EXPECT_FALSE(stored.message);
    EXPECT_EQ(profile.height(), 71.0f);

    PersonalInfoView shown = form.view();
    EXPECT_EQ(shown.firstHeightChoices.size(), 10u);
    EXPECT_EQ(shown.firstHeightChoices.back(), "9");
    EXPECT_EQ(shown.firstHeight, 5);
    EXPECT_EQ(shown.secondHeight, 11);
    EXPECT_EQ(shown.firstHeightUnit, "ft");
    EXPECT_EQ(shown.secondHeightUnit, "in");
    EXPECT_TRUE(shown.secondHeightShown);

    // The switch arrives with the feet and inches still selected: they are read first.
    (void)form.edit(Field::Units, "kg-cm");
    EXPECT_TRUE(profile.metric());
    EXPECT_EQ(profile.height(), 71.0f);
    shown = form.view();
    EXPECT_EQ(shown.firstHeightChoices.size(), 303u);
    EXPECT_EQ(shown.firstHeightChoices.back(), "302");
    EXPECT_EQ(shown.firstHeight, 180);  // 180.34 cm
    EXPECT_FALSE(shown.secondHeightShown);
    EXPECT_EQ(shown.firstHeightUnit, "cm");
    EXPECT_EQ(shown.secondHeightUnit, "");

    // Centimetres are stored in inches at single precision.
    (void)form.edit(Field::FirstHeight, "165");
    EXPECT_EQ(profile.height(), 165.0f * 0.39370078f);
    EXPECT_EQ(form.view().firstHeight, 165);
}

TEST(PersonalInfoForm, AZeroHeightIsNotEnteredAndSelectsNothing) {
    for (const int units : {0, 1}) {
        UserProfile profile(kToday);
        profile.setHeight(70.0f);
        (void)profile.setUnits(static_cast<unsigned>(units));
        PersonalInfoForm form(profile);
        (void)form.edit(Field::FirstHeight, "0");
        (void)form.edit(Field::SecondHeight, "0");
        EXPECT_LT(profile.height(), 0.0f) << units;
        EXPECT_EQ(form.view().firstHeight, -1) << units;
        EXPECT_EQ(form.view().secondHeight, -1) << units;
    }
}

TEST(PersonalInfoForm, AgeOutsideTheRangeIsRefusedAndZeroMeansNotEntered) {
    struct Case {
        const char* typed;
        bool refused;
        int16_t stored;  // starting from 30
    };
    const Case cases[] = {
        {"150", true, 30}, {"-1", true, 30}, {"101", true, 30}, {"99999999999", true, 30},
        {"0", false, -1},  {"", false, -1},  {"45", false, 45}, {"1", false, 1},
    };
    for (const Case& c : cases) {
        UserProfile profile(kToday);
        profile.setAge(30);
        PersonalInfoForm form(profile);
        EXPECT_EQ(form.edit(Field::Age, c.typed).message.has_value(), c.refused) << c.typed;
        // The other fields are stored even while the refused age stays typed.
        const Outcome outcome = form.edit(Field::Gender, "Female");
        EXPECT_EQ(outcome.message.has_value(), c.refused) << c.typed;
        if (c.refused) {
            EXPECT_EQ(*outcome.message, PersonalInfoForm::ageRefusal());
            EXPECT_EQ(outcome.message->text,
                      "The age entered is not valid, please enter a value between 1 and 100.");
            EXPECT_EQ(outcome.message->caption, "Age");
        }
        EXPECT_EQ(profile.age(), c.stored) << c.typed;
        EXPECT_EQ(profile.gender(), 1) << c.typed;
        EXPECT_EQ(form.view().age, c.stored < 0 ? "" : std::to_string(c.stored)) << c.typed;
    }
}

TEST(PersonalInfoForm, TheDefaultUsersNameShowsEmpty) {
    UserProfile profile(kToday);
    ASSERT_TRUE(profile.setDisplayName("Zerbu"));
    PersonalInfoForm form(profile);
    EXPECT_EQ(form.view().name, "");
    (void)form.edit(Field::Name, "Ann Lee");
    EXPECT_EQ(profile.displayName(), "Ann Lee");
    EXPECT_EQ(form.view().name, "Ann Lee");
    // "zerbu" is somebody else's name.
    (void)form.edit(Field::Name, "zerbu");
    EXPECT_EQ(form.view().name, "zerbu");
}

TEST(PersonalInfoForm, SavingWhatIsShownChangesNothing) {
    UserProfile profile(kToday);
    ASSERT_TRUE(profile.setDisplayName("Ann"));
    profile.setHeight(64.0f);
    profile.setAge(41);
    PersonalInfoForm form(profile);
    const Outcome outcome = form.edit(Field::Age, "41");
    EXPECT_FALSE(outcome.notices.any());
    EXPECT_EQ(outcome.save, SavePoint::Nothing);
    EXPECT_FALSE(outcome.message);
}

TEST(PersonalInfoForm, ResetClearsThePersonalFieldsAndAnnouncesIt) {
    UserProfile profile(kToday);
    ASSERT_TRUE(profile.setDisplayName("Ann"));
    profile.setHeight(64.0f);
    profile.setAge(41);
    ASSERT_TRUE(profile.setGender(1));
    profile.setStartWeight(150.0f);
    PersonalInfoForm form(profile);
    const auto asked = PersonalInfoForm::confirmation(PersonalInfoForm::Command::Reset);
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->kind, MessageKind::Question);
    EXPECT_EQ(asked->caption, "Personal Information");
    const Notices n = form.command(PersonalInfoForm::Command::Reset).notices;
    EXPECT_TRUE(n.personalInfoReset);
    EXPECT_TRUE(n.userData);
    const PersonalInfoView v = form.view();
    EXPECT_EQ(v.name, "");
    EXPECT_EQ(v.firstHeight, -1);
    EXPECT_EQ(v.age, "");
    EXPECT_EQ(v.gender, 0);
    EXPECT_EQ(profile.startWeight(), 150.0f);  // the goals are not personal information
}

class PersonalInfoDays : public LogbookFixture {};

TEST_F(PersonalInfoDays, TheCurrentDaysBmrFollowsHeightAgeAndGender) {
    store.profile.setHeight(70.0f);
    (void)store.profile.setAge(30);
    cursor.setCurrentDate(dmy(20, 11, 2002));
    WeighInForm weighIn(cursor);
    (void)weighIn.edit(WeighInForm::Field::Weight, "180");
    cursor.setCurrentDate(dmy(21, 11, 2002));
    (void)weighIn.edit(WeighInForm::Field::Weight, "180");
    const int before = cursor.currentRecord()->bmr();
    ASSERT_GT(before, 0);

    PersonalInfoForm form(store.profile, &cursor);
    const auto bmrNow = [&] {
        const DayRecord& day = *cursor.currentRecord();
        return static_cast<int>(computeBmr(store.profile, day.level(), day.weight()).bmr);
    };
    const struct {
        Field field;
        const char* value;
    } edits[] = {{Field::Age, "60"}, {Field::Gender, "Female"}, {Field::FirstHeight, "6"}};
    int last = before;
    for (const auto& e : edits) {
        (void)form.edit(e.field, e.value);
        const int bmr = cursor.currentRecord()->bmr();
        EXPECT_NE(bmr, last) << e.value;
        EXPECT_EQ(bmr, bmrNow()) << e.value;
        last = bmr;
    }
    // The day before keeps the BMR it was logged with.
    EXPECT_EQ(store.dayAt(0).bmr(), before);
}

TEST(WholeNumberFromText, ReadsTheLeadingNumber) {
    EXPECT_EQ(wholeNumberFromText(""), 0);
    EXPECT_EQ(wholeNumberFromText("42"), 42);
    EXPECT_EQ(wholeNumberFromText("-7"), -7);
    EXPECT_EQ(wholeNumberFromText("12ab"), 12);
    EXPECT_EQ(wholeNumberFromText("x12"), 0);
    EXPECT_EQ(wholeNumberFromText("99999999999999999999"), 1'000'000'000);
}

}  // namespace
}  // namespace nutrovex
