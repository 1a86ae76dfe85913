#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "core/UserProfile.h"
#include "storage/UserStorage.h"
#include "ui/ScreenFixture.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

class ProfileDialogsTest : public ::testing::Test, public test::ScreenFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(started());
        ASSERT_TRUE(session().initialLoad());
    }

    UserProfile& profile() { return session().store().profile; }

    // The profile as the user's file holds it now.
    UserProfile savedProfile() {
        UserStore saved(clock());
        saved.dataFilePath = session().store().dataFilePath;
        EXPECT_TRUE(loadUser(saved));
        return saved.profile;
    }

    // Chooses an entry of a combo box with the keyboard, as a person does.
    static void choose(QComboBox* combo, int index) {
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
    }
};

TEST_F(ProfileDialogsTest, FeetAndInchesShowAsCentimetresAfterSwitchingUnits) {
    PersonalInfoDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(dialog.nameEdit()->text(), QString());  // "Zerbu" shows empty
    EXPECT_EQ(dialog.firstHeightCombo()->currentIndex(), -1);

    // Typing a number picks it; from 5 ft the inches step from 0 with the arrow keys.
    dialog.firstHeightCombo()->setFocus();
    QTest::keyClick(dialog.firstHeightCombo(), Qt::Key_5);
    EXPECT_EQ(profile().height(), 60.0f);
    EXPECT_EQ(dialog.secondHeightCombo()->currentText(), QStringLiteral("0"));
    choose(dialog.secondHeightCombo(), 11);
    EXPECT_EQ(profile().height(), 71.0f);
    EXPECT_EQ(savedProfile().height(), 71.0f);  // saved at once

    choose(dialog.unitsCombo(), 1);
    EXPECT_TRUE(profile().metric());
    EXPECT_EQ(dialog.firstHeightCombo()->count(), 303);
    EXPECT_EQ(dialog.firstHeightCombo()->currentText(), QStringLiteral("180"));
    EXPECT_EQ(dialog.firstHeightUnit()->text(), QStringLiteral("cm"));
    EXPECT_TRUE(dialog.secondHeightCombo()->isHidden());
    EXPECT_EQ(savedProfile().units(), 1);

    // Back again through whole centimetres: 180 cm is 70.87 in, shown truncated.
    choose(dialog.unitsCombo(), 0);
    EXPECT_EQ(dialog.firstHeightCombo()->currentText(), QStringLiteral("5"));
    EXPECT_EQ(dialog.secondHeightCombo()->currentText(), QStringLiteral("10"));
    EXPECT_FALSE(dialog.secondHeightCombo()->isHidden());
}

TEST_F(ProfileDialogsTest, AnAgeOf150ShowsTheMessageAndKeepsTheStoredAge) {
    profile().setAge(30);
    PersonalInfoDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_EQ(dialog.ageEdit()->text(), QStringLiteral("30"));

    dialog.ageEdit()->setFocus();
    dialog.ageEdit()->selectAll();
    QTest::keyClicks(dialog.ageEdit(), QStringLiteral("15"));
    EXPECT_EQ(profile().age(), 15);

    SeenMessage seen;
    answerMessage(QMessageBox::Ok, &seen);
    QTest::keyClick(dialog.ageEdit(), Qt::Key_0);
    EXPECT_EQ(seen.text, QStringLiteral("The age entered is not valid, please enter a value "
                                        "between 1 and 100."));
    EXPECT_EQ(seen.caption, QStringLiteral("Age"));
    EXPECT_EQ(seen.icon, QMessageBox::Warning);
    EXPECT_EQ(profile().age(), 15);
    EXPECT_EQ(savedProfile().age(), 15);
    // The typed text stays, selected, for the person to correct.
    EXPECT_EQ(dialog.ageEdit()->text(), QStringLiteral("150"));
    EXPECT_EQ(dialog.ageEdit()->selectedText(), QStringLiteral("150"));
    EXPECT_EQ(dialog.focusWidget(), dialog.ageEdit());

    QTest::keyClick(dialog.ageEdit(), Qt::Key_0);  // replaces the selection: 0 is accepted
    EXPECT_EQ(profile().age(), -1);
}

TEST_F(ProfileDialogsTest, ResetAsksAndClearsThePersonalInformation) {
    ASSERT_TRUE(profile().setDisplayName("Ann"));
    profile().setAge(41);
    PersonalInfoDialog dialog(notifier(), nullptr);
    dialog.show();
    int resets = 0;
    QObject::connect(&notifier(), &SessionNotifier::personalInfoReset, [&resets] { ++resets; });

    SeenMessage seen;
    answerMessage(QMessageBox::No, &seen);
    dialog.findChild<QMenuBar*>()->actions().at(0)->menu()->actions().at(0)->trigger();
    EXPECT_EQ(seen.caption, QStringLiteral("Personal Information"));
    EXPECT_EQ(dialog.nameEdit()->text(), QStringLiteral("Ann"));

    answerMessage(QMessageBox::Yes);
    dialog.findChild<QMenuBar*>()->actions().at(0)->menu()->actions().at(0)->trigger();
    EXPECT_EQ(dialog.nameEdit()->text(), QString());
    EXPECT_EQ(dialog.ageEdit()->text(), QString());
    EXPECT_EQ(savedProfile().age(), -1);
    EXPECT_EQ(resets, 1);
}

TEST_F(ProfileDialogsTest, GoalWeightsAreTypedWithoutBeingRewrittenAndSaved) {
    (void)profile().setUnits(1);
    GoalsDialog dialog(notifier(), nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    EXPECT_FALSE(dialog.weightChartAction()->isEnabled());  // no chart to open here

    dialog.startEdit()->setFocus();
    QTest::keyClicks(dialog.startEdit(), QStringLiteral("100"));
    EXPECT_EQ(dialog.startEdit()->text(), QStringLiteral("100"));
    EXPECT_EQ(profile().startWeight(), 221.0f);
    dialog.goalEdit()->setFocus();
    QTest::keyClicks(dialog.goalEdit(), QStringLiteral("1200"));
    EXPECT_EQ(profile().goalWeight(), 999.0f);
    EXPECT_EQ(savedProfile().goalWeight(), 999.0f);
    // Leaving the field shows the stored weight in kilograms.
    dialog.startEdit()->setFocus();
    (void)notifier().apply({.dataChanged = true});
    EXPECT_EQ(dialog.goalEdit()->text(), QStringLiteral("452"));
}

TEST_F(ProfileDialogsTest, ATargetDateBeforeTheStartStoresTheDayAfterTheStart) {
    GoalsDialog dialog(notifier(), nullptr);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_EQ(dialog.startDate()->text(), QStringLiteral("Wednesday September 25, 2002"));

    QString caption;
    whenModal<CalendarPickerDialog>([&caption](CalendarPickerDialog* picker) {
        caption = picker->windowTitle();
        picker->setDate(2002, 8, 1);  // September 1
        picker->okButton()->click();
    });
    dialog.setTargetButton()->click();
    EXPECT_EQ(caption, QStringLiteral("Target Date"));
    EXPECT_EQ(dialog.targetDate()->text(), QStringLiteral("Thursday September 26, 2002"));
    EXPECT_TRUE(datesEqual(savedProfile().goalDate(), CalendarDate::fromDmy(26, 9, 2002)));

    whenModal<CalendarPickerDialog>([&caption](CalendarPickerDialog* picker) {
        caption = picker->windowTitle();
        picker->setDate(2002, 9, 10);  // October 10
        picker->okButton()->click();
    });
    dialog.setStartButton()->click();
    EXPECT_EQ(caption, QStringLiteral("Start Date"));
    EXPECT_EQ(dialog.startDate()->text(), QStringLiteral("Thursday October 10, 2002"));
    EXPECT_EQ(dialog.targetDate()->text(), QStringLiteral("Friday October 11, 2002"));

    whenModal<CalendarPickerDialog>(
        [](CalendarPickerDialog* picker) { picker->cancelButton()->click(); });
    dialog.setTargetButton()->click();
    EXPECT_EQ(dialog.targetDate()->text(), QStringLiteral("Friday October 11, 2002"));
}

}  // namespace
}  // namespace nutrovex
