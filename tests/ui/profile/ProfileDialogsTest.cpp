#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "core/UserProfile.h"
#include "storage/UserStorage.h"
#include "ui/ScreenSession.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {
namespace {

using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

class ProfileDialogsTest : public test::ScreenSession {
protected:
    ProfileDialogsTest() : ScreenSession(at(25, 9, 2002)) {}

    UserProfile& profile() { return session.store().profile; }

    // The profile as the user's file holds it now.
    UserProfile savedProfile() {
        UserStore saved(clock);
        saved.dataFilePath = userFile();
        EXPECT_TRUE(loadUser(saved));
        return saved.profile;
    }

    template <typename Dialog, typename Form>
    std::unique_ptr<Dialog> open(Form form) {
        auto dialog = std::make_unique<Dialog>(std::move(form), notifier, nullptr);
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        return dialog;
    }
    std::unique_ptr<PersonalInfoDialog> personalInfo() {
        return open<PersonalInfoDialog>(PersonalInfoForm(profile()));
    }
    std::unique_ptr<GoalsDialog> goals() { return open<GoalsDialog>(GoalsForm(profile(), clock)); }

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
    const auto dialog = personalInfo();
    EXPECT_EQ(dialog->nameEdit()->text(), QString());  // "Zerbu" shows empty
    EXPECT_EQ(dialog->firstHeightCombo()->currentIndex(), -1);

    // Typing a number picks it; from 5 ft the inches step from 0 with the arrow keys.
    dialog->firstHeightCombo()->setFocus();
    QTest::keyClick(dialog->firstHeightCombo(), Qt::Key_5);
    EXPECT_EQ(profile().height(), 60.0f);
    choose(dialog->secondHeightCombo(), 11);
    EXPECT_EQ(savedProfile().height(), 71.0f);  // a list choice is saved at once

    choose(dialog->unitsCombo(), 1);
    EXPECT_EQ(dialog->firstHeightCombo()->count(), 303);
    EXPECT_EQ(dialog->firstHeightCombo()->currentText(), QStringLiteral("180"));
    EXPECT_EQ(dialog->firstHeightUnit()->text(), QStringLiteral("cm"));
    EXPECT_TRUE(dialog->secondHeightCombo()->isHidden());
    EXPECT_EQ(savedProfile().units(), 1);
}

// From a blank height the arrow keys start at a typical adult's, in either unit.
TEST_F(ProfileDialogsTest, UpOrDownInABlankHeightStartsAtATypicalOne) {
    const auto dialog = personalInfo();
    QComboBox* height = dialog->firstHeightCombo();
    height->setFocus();
    QTest::keyClick(height, Qt::Key_Down);
    EXPECT_EQ(height->currentText(), QStringLiteral("5"));
    EXPECT_EQ(profile().height(), 60.0f);
    QTest::keyClick(height, Qt::Key_Down);  // then the list steps as usual
    EXPECT_EQ(profile().height(), 72.0f);

    (void)notifier.apply(PersonalInfoForm(profile()).command(PersonalInfoForm::Command::Reset));
    choose(dialog->unitsCombo(), 1);
    ASSERT_EQ(height->currentIndex(), -1);
    height->setFocus();
    QTest::keyClick(height, Qt::Key_Up);
    EXPECT_EQ(height->currentText(), QStringLiteral("170"));
}

// A field that saves at once saves its value when it is complete: typing 150 in Age never
// stores 15, and the refused 150 leaves the stored age as it was.
TEST_F(ProfileDialogsTest, AnAgeIsStoredWhenItIsCompleteAndA150IsRefused) {
    profile().setAge(30);
    ASSERT_TRUE(session.saveUserData());
    const auto dialog = personalInfo();
    EXPECT_EQ(dialog->ageEdit()->text(), QStringLiteral("30"));

    dialog->ageEdit()->setFocus();
    dialog->ageEdit()->selectAll();
    QTest::keyClicks(dialog->ageEdit(), QStringLiteral("15"));
    EXPECT_EQ(profile().age(), 30);  // half-typed: nothing is stored
    QTest::keyClick(dialog->ageEdit(), Qt::Key_0);
    EXPECT_EQ(profile().age(), 30);

    // Leaving the field completes the value: refused, the stored age kept, on disk too.
    SeenMessage seen;
    answerMessage(QMessageBox::Ok, &seen);
    dialog->genderCombo()->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(seen.text, QStringLiteral("The age entered is not valid, please enter a value "
                                        "between 1 and 100."));
    EXPECT_EQ(seen.caption, QStringLiteral("Age"));
    EXPECT_EQ(profile().age(), 30);
    EXPECT_EQ(savedProfile().age(), 30);
    // The typed text stays, selected, for the person to correct.
    EXPECT_EQ(dialog->ageEdit()->text(), QStringLiteral("150"));
    EXPECT_EQ(dialog->ageEdit()->selectedText(), QStringLiteral("150"));
    EXPECT_EQ(dialog->focusWidget(), dialog->ageEdit());

    QTest::keyClicks(dialog->ageEdit(), QStringLiteral("45"));
    QTest::keyClick(dialog->ageEdit(), Qt::Key_Return);
    EXPECT_EQ(profile().age(), 45);
    EXPECT_EQ(savedProfile().age(), 45);

    // Closing the screen completes a name still being typed.
    dialog->nameEdit()->setFocus();
    QTest::keyClicks(dialog->nameEdit(), QStringLiteral("Ann"));
    EXPECT_TRUE(profile().displayName().empty());  // not stored while typed
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(savedProfile().displayName(), "Ann");
}

TEST_F(ProfileDialogsTest, ResetAsksAndClearsThePersonalInformation) {
    ASSERT_TRUE(profile().setDisplayName("Ann"));
    profile().setAge(41);
    const auto dialog = personalInfo();
    int resets = 0;
    QObject::connect(&notifier, &SessionNotifier::personalInfoReset, [&resets] { ++resets; });
    QAction* reset = dialog->findChild<QMenuBar*>()->actions().at(0)->menu()->actions().at(0);

    SeenMessage seen;
    answerMessage(QMessageBox::No, &seen);
    reset->trigger();
    EXPECT_EQ(seen.caption, QStringLiteral("Personal Information"));
    EXPECT_EQ(dialog->nameEdit()->text(), QStringLiteral("Ann"));

    answerMessage(QMessageBox::Yes);
    reset->trigger();
    EXPECT_EQ(dialog->nameEdit()->text(), QString());
    EXPECT_EQ(dialog->ageEdit()->text(), QString());
    EXPECT_EQ(savedProfile().age(), -1);
    EXPECT_EQ(resets, 1);
}

TEST_F(ProfileDialogsTest, GoalWeightsAreStoredWhenCompleteAndShownInTheUnits) {
    (void)profile().setUnits(1);
    ASSERT_TRUE(session.saveUserData());
    const auto dialog = goals();
    EXPECT_FALSE(dialog->weightChartAction()->isEnabled());  // no chart to open here

    dialog->startEdit()->setFocus();
    QTest::keyClicks(dialog->startEdit(), QStringLiteral("100"));
    EXPECT_LT(profile().startWeight(), 0.0f);  // not yet complete
    dialog->goalEdit()->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(profile().startWeight(), 221.0f);
    QTest::keyClicks(dialog->goalEdit(), QStringLiteral("1200"));
    dialog->startEdit()->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(savedProfile().goalWeight(), 999.0f);
    // Left, the field shows the stored weight in kilograms.
    EXPECT_EQ(dialog->goalEdit()->text(), QStringLiteral("452"));
}

TEST_F(ProfileDialogsTest, ATargetDateBeforeTheStartStoresTheDayAfterTheStart) {
    const auto dialog = goals();
    EXPECT_EQ(dialog->startDate()->text(), QStringLiteral("Wednesday September 25, 2002"));

    QString caption;
    whenModal<CalendarPickerDialog>([&caption](CalendarPickerDialog* picker) {
        caption = picker->windowTitle();
        picker->setDate(2002, 8, 1);  // September 1
        picker->okButton()->click();
    });
    dialog->setTargetButton()->click();
    EXPECT_EQ(caption, QStringLiteral("Target Date"));
    EXPECT_EQ(dialog->targetDate()->text(), QStringLiteral("Thursday September 26, 2002"));
    EXPECT_TRUE(datesEqual(savedProfile().goalDate(), CalendarDate::fromDmy(26, 9, 2002)));

    whenModal<CalendarPickerDialog>(
        [](CalendarPickerDialog* picker) { picker->cancelButton()->click(); });
    dialog->setStartButton()->click();
    EXPECT_EQ(dialog->startDate()->text(), QStringLiteral("Wednesday September 25, 2002"));
}

}  // namespace
}  // namespace nutrovex
