#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "forms/exercise/ExerciseLogForm.h"
#include "forms/logbook/WeighInForm.h"
#include "ui/ScreenSession.h"
#include "ui/exercise/EditExerciseDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/exercise/ExercisePicker.h"

namespace nutrovex {
namespace {

class ExerciseLogDialogTest : public test::ScreenSession {
protected:
    void weigh(const char* pounds) {
        WeighInForm weighIn(session.days());
        ASSERT_TRUE(notifier.apply(weighIn.edit(WeighInForm::Field::Weight, pounds)).ok());
    }

    std::unique_ptr<ExerciseLogDialog> open() {
        auto dialog = std::make_unique<ExerciseLogDialog>(
            ExerciseLogForm(session.days(), session.exerciseClipboard()), notifier, nullptr);
        dialog->setMessagePresenter(presenter());
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        QApplication::processEvents();
        return dialog;
    }

    static void choose(QComboBox* combo, const char* text) {
        const int at = combo->findText(QString::fromLatin1(text));
        ASSERT_GE(at, 0) << text;
        combo->setCurrentIndex(at);
    }

    static void type(QLineEdit* edit, const char* text) {
        edit->clear();
        QTest::keyClicks(edit, QString::fromLatin1(text));
    }

    // Logs a user-defined exercise through the screen.
    static void logOwn(ExerciseLogDialog& dialog, const char* name, const char* minutes,
                       const char* calories) {
        ExercisePicker& p = *dialog.picker();
        choose(p.typeCombo(), "User Defined Exercise");
        type(p.nameEdit(), name);
        type(p.minutesEdit(), minutes);
        type(p.caloriesEdit(), calories);
        QTest::mouseClick(dialog.logButton(), Qt::LeftButton);
    }

    [[nodiscard]] const ExerciseList& todays() {
        static const ExerciseList none;
        const DayRecord* day = session.days().currentRecord();
        return day ? day->exercises() : none;
    }
};

TEST_F(ExerciseLogDialogTest, HalfAnHourOfRunningAtSixMphAt150PoundsIs360Calories) {
    weigh("150");
    auto dialog = open();
    ExercisePicker& p = *dialog->picker();
    choose(p.typeCombo(), "Running");
    EXPECT_EQ(p.variantCombo()->currentText(), QStringLiteral("General"));
    EXPECT_TRUE(p.variantCombo()->isVisibleTo(dialog.get()));
    EXPECT_FALSE(p.nameEdit()->isVisibleTo(dialog.get()));
    choose(p.subVariantCombo(), "6.0 mph");
    EXPECT_FALSE(p.caloriesButton()->isEnabled());
    type(p.minutesEdit(), "30");
    EXPECT_TRUE(p.caloriesButton()->isEnabled());
    EXPECT_FALSE(dialog->logButton()->isEnabled());

    QTest::mouseClick(p.caloriesButton(), Qt::LeftButton);
    EXPECT_EQ(p.caloriesEdit()->text(), QStringLiteral("360"));
    ASSERT_TRUE(dialog->logButton()->isEnabled());
    QTest::mouseClick(dialog->logButton(), Qt::LeftButton);

    EXPECT_TRUE(messages.empty());
    ASSERT_EQ(todays().size(), 1u);
    EXPECT_EQ(todays()[0].name.view(), "Running");
    EXPECT_EQ(todays()[0].minutes, 30);
    EXPECT_EQ(todays()[0].calories, 360);
    EXPECT_EQ(todays()[0].third, 2);
    EXPECT_TRUE(p.minutesEdit()->text().isEmpty());
    EXPECT_TRUE(p.caloriesEdit()->text().isEmpty());
    EXPECT_FALSE(dialog->logButton()->isEnabled());
    EXPECT_TRUE(session.userDataModified());
    EXPECT_EQ(dialog->grid()->grid().rowCount(), 2);  // the header and the entry

    // A new type clears the edits and follows the show and enable rules.
    type(p.minutesEdit(), "10");
    choose(p.typeCombo(), "Gymnastics");
    EXPECT_TRUE(p.minutesEdit()->text().isEmpty());
    EXPECT_FALSE(p.variantCombo()->isEnabled());
}

TEST_F(ExerciseLogDialogTest, TheGridCopiesPastesDeletesAndEditsItsExercises) {
    weigh("150");
    auto dialog = open();
    logOwn(*dialog, "Rowing", "20", "150");
    logOwn(*dialog, "Yoga", "40", "120");
    ExerciseGrid& grid = *dialog->grid();
    ASSERT_EQ(todays().size(), 2u);

    // Copy the first row, paste it at the end.
    grid.setFocus();
    grid.selectRow(0);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(&grid, Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(todays().size(), 3u);
    EXPECT_EQ(todays()[2].name.view(), "Rowing");

    // Edit the pasted row through "Edit Exercise": 45 minutes, 200 calories.
    dialog->setEditRunner([&](EditExerciseForm form) {
        EditExerciseDialog edit(std::move(form), notifier, dialog.get());
        edit.show();
        EXPECT_EQ(edit.windowTitle(), QStringLiteral("Edit Exercise"));
        EXPECT_EQ(edit.picker()->nameEdit()->text(), QStringLiteral("Rowing"));
        EXPECT_TRUE(edit.logButton()->isDefault());
        type(edit.picker()->minutesEdit(), "45");
        type(edit.picker()->caloriesEdit(), "200");
        QTest::mouseClick(edit.logButton(), Qt::LeftButton);
        EXPECT_EQ(edit.result(), QDialog::Accepted);
    });
    grid.selectRow(2);
    QTest::keyClick(&grid, Qt::Key_F2);
    EXPECT_EQ(todays()[2].minutes, 45);
    EXPECT_EQ(todays()[2].calories, 200);
    EXPECT_EQ(todays()[0].minutes, 20);

    // Select all, then Delete: No keeps them, Yes removes them all.
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    answer = false;
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(messages.back().text, "Are you sure you want to delete the selected exercises?");
    EXPECT_EQ(todays().size(), 3u);
    answer = true;
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_TRUE(todays().empty());
    EXPECT_EQ(grid.grid().rowCount(), 1);
}

TEST_F(ExerciseLogDialogTest, TheScreenIsWorkedWithTheKeyboardAlone) {
    weigh("150");
    auto dialog = open();
    for (QWidget* w : dialog->findChildren<QWidget*>()) {
        if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(dialog.get())) {
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->metaObject()->className();
        }
    }
    QWidget* start = QApplication::focusWidget();
    ASSERT_NE(start, nullptr);
    EXPECT_EQ(start->accessibleName(), QStringLiteral("Exercise"));

    // The minutes by their label's mnemonic; Tab and Space reach and press the buttons (a
    // button's mnemonic presses it after a short animation).
    QTest::keyClick(dialog.get(), Qt::Key_M, Qt::AltModifier);
    EXPECT_EQ(QApplication::focusWidget(), dialog->picker()->minutesEdit());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("30"));
    const auto tabTo = [&](QWidget* target) {
        for (int i = 0; i < 12 && QApplication::focusWidget() != target; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return QApplication::focusWidget() == target;
    };
    ASSERT_TRUE(tabTo(dialog->picker()->caloriesButton()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(dialog->picker()->caloriesEdit()->text().isEmpty());
    ASSERT_TRUE(tabTo(dialog->logButton()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(todays().size(), 1u);
    EXPECT_TRUE(dialog->picker()->caloriesButton()->text().contains(QLatin1Char('&')));
    EXPECT_TRUE(dialog->logButton()->text().contains(QLatin1Char('&')));

    // Tab reaches the grid; Escape leaves the screen.
    EXPECT_TRUE(tabTo(dialog->grid()));
    QTest::keyClick(dialog->grid(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

}  // namespace
}  // namespace nutrovex
