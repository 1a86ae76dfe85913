#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QToolButton>

#include "ui/controls/CalendarPickerDialog.h"
#include "ui/logbook/ActivityDialog.h"
#include "ui/logbook/DayRangeDialog.h"
#include "ui/logbook/JournalDialog.h"
#include "ui/logbook/LogbookData.h"
#include "ui/logbook/LogbookDialog.h"
#include "ui/logbook/WeighInDialog.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using Figure = LogbookDialog::Figure;

// The logbook shown over a session, and the screens it opens on top of it.
class LogbookDialogTest : public test::LogbookScreens {
protected:
    LogbookDialog& open(LogbookOpeners openers) {
        dialog = std::make_unique<LogbookDialog>(LogbookForm(session.days()), notifier, nullptr,
                                                 std::move(openers));
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
        return *dialog;
    }
    LogbookDialog& open() { return open(screens()); }

    // The screen of that type open over the logbook (closed ones are deleted later).
    template <typename Screen>
    Screen* child(QWidget* over = nullptr) const {
        for (Screen* s : (over != nullptr ? over : dialog.get())->findChildren<Screen*>()) {
            if (s->isVisible()) {
                return s;
            }
        }
        ADD_FAILURE() << "not open: " << Screen::staticMetaObject.className();
        return nullptr;
    }

    void pickInCalendar(CalendarPickerDialog* picker, int d, int m, int y) {
        ASSERT_NE(picker, nullptr);
        picker->setDate(y, m - 1, d);
        QTest::mouseClick(picker->okButton(), Qt::LeftButton);
    }

    [[nodiscard]] std::vector<std::string> figures() const {
        std::vector<std::string> texts;
        for (Figure f :
             {Figure::Weight, Figure::Meals, Figure::Bmr, Figure::Exercise, Figure::Total}) {
            texts.push_back(dialog->figureText(f).toStdString());
        }
        return texts;
    }

    // When the user's file was last written; none while it was never written.
    fs::file_time_type written() {
        return fs::exists(userFile()) ? fs::last_write_time(userFile()) : fs::file_time_type{};
    }

    std::unique_ptr<LogbookDialog> dialog;
};

TEST_F(LogbookDialogTest, WeighingInShowsWeightBmrAndTotalAndSavesOnClosing) {
    addDay(21, 11, 2002, -1.0f, 1500.0f);
    ASSERT_TRUE(session.saveUserData());
    open();
    EXPECT_EQ(figures(), (std::vector<std::string>{"---  lbs", "1500", "0", "0", "1500"}));

    // A screen closed without a change writes nothing.
    const fs::file_time_type before = written();
    QTest::mouseClick(dialog->figureButton(Figure::Weight), Qt::LeftButton);
    QTest::mouseClick(child<WeighInDialog>()->okButton(), Qt::LeftButton);
    EXPECT_EQ(written(), before);

    QTest::mouseClick(dialog->figureButton(Figure::Weight), Qt::LeftButton);
    WeighInDialog* weighIn = child<WeighInDialog>();
    ASSERT_NE(weighIn, nullptr);
    QTest::keyClicks(weighIn->weightEdit(), QStringLiteral("1543"));
    EXPECT_EQ(weighIn->weightEdit()->text(), QStringLiteral("154"));  // three digits at most
    // The logbook follows while the person types.
    EXPECT_EQ(dialog->figureText(Figure::Weight), QStringLiteral("154  lbs"));
    EXPECT_EQ(written(), before);

    QTest::mouseClick(weighIn->okButton(), Qt::LeftButton);
    // 154 lb is 70 kg: (66 + 13.7 × 70 + 5 × 178 - 6.8 × 30) × 1.2 = 2053.
    EXPECT_EQ(figures(), (std::vector<std::string>{"154  lbs", "1500", "- 2053", "0", "- 553"}));
    EXPECT_FALSE(session.userDataModified());
    EXPECT_NE(written(), before);
}

// The day at a glance follows a weigh-in made on the screen it opens: first it says why there is
// no BMR and no budget, then what is left of the budget.
TEST_F(LogbookDialogTest, TheDayAtAGlanceFollowsTheWeighIn) {
    setLosingGoal();
    addDay(21, 11, 2002, -1.0f, 1500.0f, 200);
    open();
    QString glance = dialog->glanceText();
    EXPECT_TRUE(glance.contains(QStringLiteral("Dal  "))) << glance.toStdString();
    EXPECT_TRUE(glance.contains(QStringLiteral("  1500 cal")));
    EXPECT_TRUE(glance.contains(QStringLiteral("Exercise 200 cal")));
    EXPECT_TRUE(glance.contains(QStringLiteral("BMR is 0: no weigh-in on this day.")));
    EXPECT_TRUE(glance.contains(QStringLiteral("Left today: ---")));

    QTest::mouseClick(dialog->figureButton(Figure::Weight), Qt::LeftButton);
    WeighInDialog* weighIn = child<WeighInDialog>();
    ASSERT_NE(weighIn, nullptr);
    QTest::keyClicks(weighIn->weightEdit(), QStringLiteral("154"));
    QTest::mouseClick(weighIn->okButton(), Qt::LeftButton);
    // Budget 2053 + 200 - 1000 = 1253; 1500 eaten.
    glance = dialog->glanceText();
    EXPECT_TRUE(glance.contains(QStringLiteral("Over today: 247 cal"))) << glance.toStdString();
    EXPECT_FALSE(glance.contains(QStringLiteral("BMR is 0")));
}

TEST_F(LogbookDialogTest, TheKeysWalkTheDaysAndTheDateLinePicksOne) {
    addDay(18, 11, 2002, 180.0f);
    addDay(19, 11, 2002, 181.0f);
    open();
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: -- of 2"));
    dialog->command(QStringLiteral("First"))->trigger();
    QTest::mouseClick(dialog->nextButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: 2 of 2"));
    EXPECT_EQ(dialog->figureText(Figure::Weight), QStringLiteral("181  lbs"));
    QTest::keyClick(dialog.get(), Qt::Key_PageDown);
    QTest::keyClick(dialog.get(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(dialog->dateText(), QStringLiteral("Thursday November 21, 2002"));
    QTest::keyClick(dialog.get(), Qt::Key_PageUp);
    QTest::keyClick(dialog.get(), Qt::Key_Left, Qt::AltModifier);
    QTest::mouseClick(dialog->previousButton(), Qt::LeftButton);
    EXPECT_EQ(dialog->dateText(), QStringLiteral("Monday November 18, 2002"));
    QTest::keyClick(dialog.get(), Qt::Key_Home);
    EXPECT_EQ(dialog->dateText(), QStringLiteral("Thursday November 21, 2002"));

    QTest::keyClick(dialog.get(), Qt::Key_G, Qt::ControlModifier);
    CalendarPickerDialog* picker = child<CalendarPickerDialog>();
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->windowTitle(), QStringLiteral("Start Date"));
    pickInCalendar(picker, 19, 11, 2002);
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: 2 of 2"));
    EXPECT_EQ(session.store().days().size(), 2u);  // walking never created a day
}

TEST_F(LogbookDialogTest, AMenuEntrysPromptShowsInTheStatusLine) {
    open();
    QStatusBar* status = dialog->findChild<QStatusBar*>();
    ASSERT_NE(status, nullptr);
    const struct {
        const char* entry;
        const char* prompt;
    } entries[] = {{"Previous", "Previous Record"},
                   {"Current Day", "Deletes the current day"},
                   {"Range of Days...", "Deletes a range of days"},
                   {"Weigh In", "Weigh In"}};
    for (const auto& e : entries) {
        QAction* action = dialog->command(QString::fromLatin1(e.entry));
        ASSERT_NE(action, nullptr) << e.entry;
        // As hovering it in its menu does.
        (void)action->showStatusText(dialog->menuBar());
        EXPECT_EQ(status->currentMessage(), QString::fromLatin1(e.prompt)) << e.entry;
    }
}

TEST_F(LogbookDialogTest, WaterTypedForADateWithoutARecordIsStoredInANewDay) {
    open();
    dialog->waterBox()->setFocus();
    dialog->waterBox()->selectAll();
    QTest::keyClicks(dialog->waterBox(), QStringLiteral("6"));
    ASSERT_NE(session.days().currentRecord(), nullptr);
    EXPECT_EQ(session.days().currentRecord()->water(), 6);
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: 1 of 1"));
    // Another day shows its own count.
    QTest::keyClick(dialog.get(), Qt::Key_PageUp);
    EXPECT_EQ(dialog->waterBox()->value(), 0);
}

TEST_F(LogbookDialogTest, DeletingARangeOverGapsKeepsTheOthersAndTheDate) {
    for (int d : {1, 3, 5, 9}) {
        addDay(d, 11, 2002, 180.0f);
    }
    open();
    dialog->command(QStringLiteral("Range of Days..."))->trigger();
    DayRangeDialog* range = child<DayRangeDialog>();
    ASSERT_NE(range, nullptr);
    EXPECT_EQ(range->startText(), QStringLiteral("Thursday November 21, 2002"));
    QTest::mouseClick(range->setStartButton(), Qt::LeftButton);
    pickInCalendar(child<CalendarPickerDialog>(range), 2, 11, 2002);
    QTest::mouseClick(range->setEndButton(), Qt::LeftButton);
    pickInCalendar(child<CalendarPickerDialog>(range), 6, 11, 2002);
    EXPECT_EQ(range->endText(), QStringLiteral("Wednesday November 6, 2002"));
    QTest::keyClick(range, Qt::Key_Return);

    ASSERT_EQ(session.store().days().size(), 2u);
    EXPECT_EQ(session.store().dayAt(0).date().day, 1);
    EXPECT_EQ(session.store().dayAt(1).date().day, 9);
    EXPECT_EQ(dialog->dateText(), QStringLiteral("Thursday November 21, 2002"));
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: -- of 2"));
}

TEST_F(LogbookDialogTest, DeletingTheCurrentDayAndAllDaysAskFirst) {
    addDay(20, 11, 2002, 180.0f);
    addDay(21, 11, 2002, 181.0f);
    open();
    const auto reply = [this](QMessageBox::StandardButton button) {
        auto* box = child<QMessageBox>();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
        QApplication::processEvents();  // the box deletes itself
    };

    dialog->command(QStringLiteral("Current Day"))->trigger();
    EXPECT_EQ(child<QMessageBox>()->text(),
              QStringLiteral("Are you sure you want to delete current day?"));
    reply(QMessageBox::No);
    EXPECT_EQ(session.store().days().size(), 2u);
    dialog->command(QStringLiteral("Current Day"))->trigger();
    reply(QMessageBox::Yes);
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: -- of 1"));

    dialog->command(QStringLiteral("All Days"))->trigger();
    EXPECT_EQ(child<QMessageBox>()->windowTitle(), QStringLiteral("All Days"));
    reply(QMessageBox::Yes);
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: -- of 0"));
    EXPECT_EQ(session.store().profile.age(), 30);  // the profile is kept
}

TEST_F(LogbookDialogTest, ManualBmrIsTypedOnTheBmrScreen) {
    addDay(21, 11, 2002, 180.0f);
    open();
    QTest::mouseClick(dialog->figureButton(Figure::Bmr), Qt::LeftButton);
    ActivityDialog* activity = child<ActivityDialog>();
    ASSERT_NE(activity, nullptr);
    EXPECT_TRUE(activity->levelButton(2)->isChecked());
    EXPECT_FALSE(activity->bmrEdit()->isEnabled());
    // On the round mark of the level.
    QTest::mouseClick(activity->levelButton(5), Qt::LeftButton, {},
                      QPoint(8, activity->levelButton(5)->height() / 2));
    EXPECT_TRUE(activity->levelButton(5)->isChecked());
    EXPECT_FALSE(activity->levelButton(2)->isChecked());
    ASSERT_TRUE(activity->bmrEdit()->isEnabled());
    activity->bmrEdit()->selectAll();
    QTest::keyClicks(activity->bmrEdit(), QStringLiteral("1850"));
    EXPECT_EQ(dialog->figureText(Figure::Bmr), QStringLiteral("- 1850"));
    QTest::mouseClick(activity->okButton(), Qt::LeftButton);
    EXPECT_FALSE(session.userDataModified());  // saved when it closed
}

TEST_F(LogbookDialogTest, ScreensOfOtherAreasRunAndMissingOnesAreDisabled) {
    int meals = 0;
    LogbookOpeners openers = screens();
    openers.meals = [&](QWidget* parent) {
        ++meals;
        EXPECT_EQ(parent, dialog.get());
        // The meals screen logs a food into the current day (once).
        if (session.days().currentRecord() == nullptr) {
            addDay(21, 11, 2002, -1.0f, 640.0f);
        }
    };
    open(std::move(openers));
    QTest::mouseClick(dialog->figureButton(Figure::Meals), Qt::LeftButton);
    EXPECT_EQ(meals, 1);
    EXPECT_EQ(dialog->figureText(Figure::Meals), QStringLiteral("640"));

    // Tapping the figure itself does what its button does.
    for (QPushButton* b : dialog->findChildren<QPushButton*>()) {
        if (b->accessibleName() == QStringLiteral("Meals: 640 cal")) {
            QTest::mouseClick(b, Qt::LeftButton);
        }
    }
    EXPECT_EQ(meals, 2);

    EXPECT_FALSE(dialog->figureButton(Figure::Exercise)->isEnabled());
    EXPECT_FALSE(dialog->command(QStringLiteral("Exercise"))->isEnabled());
    EXPECT_FALSE(dialog->command(QStringLiteral("Historic Weight Chart"))->isEnabled());
    EXPECT_FALSE(dialog->command(QStringLiteral("Food Catalogue"))->isEnabled());
    EXPECT_TRUE(dialog->command(QStringLiteral("Meals"))->isEnabled());
}

TEST_F(LogbookDialogTest, TheStripOfScreensOpensTheJournalAndStaysOnTheLogbook) {
    addDay(21, 11, 2002, 180.0f).setNote("Ran");
    open();
    QTabBar* tabs = dialog->tabs();
    EXPECT_FALSE(tabs->isTabEnabled(1));  // no meals screen on this logbook
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(2).center());
    auto* journal = child<JournalDialog>();
    ASSERT_NE(journal, nullptr);
    EXPECT_EQ(journal->editor()->toPlainText(), QStringLiteral("Ran"));
    EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST_F(LogbookDialogTest, GoalLineAndRedrawOnAnotherScreensChange) {
    setLosingGoal();
    open();
    EXPECT_EQ(dialog->goalText(), QStringLiteral("Goal: -1000 cal"));
    // Another screen types a weight for today: the logbook redraws.
    (void)notifier.apply(WeighInForm(session.days()).edit(WeighInForm::Field::Weight, "200"));
    EXPECT_EQ(dialog->figureText(Figure::Weight), QStringLiteral("200  lbs"));
    EXPECT_EQ(dialog->recordText(), QStringLiteral("Record: 1 of 1"));
}

}  // namespace
}  // namespace nutrovex
