#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <vector>

#include "forms/exercise/ExerciseLogForm.h"
#include "forms/foods/FoodGridForm.h"
#include "forms/logbook/SummaryTableForm.h"
#include "ui/DemoSession.h"
#include "ui/TextConvert.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/logbook/SummaryTableDialog.h"

namespace nutrovex {
namespace {

QAccessibleTableInterface* tableOf(QWidget* widget) {
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(widget);
    if (iface == nullptr || iface->role() != QAccessible::Table) {
        return nullptr;
    }
    return iface->tableInterface();
}

QString cellName(QAccessibleTableInterface* table, int row, int column) {
    QAccessibleInterface* cell = table->cellAt(row, column);
    return cell != nullptr ? cell->text(QAccessible::Name) : QStringLiteral("<no cell>");
}

void showActive(QWidget& w) {
    w.show();
    QApplication::setActiveWindow(&w);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
}

using GridAccessible = test::DemoSession;

TEST_F(GridAccessible, TheFoodLogReadsAsATableWhoseSelectionTheCommandsActOn) {
    FoodGridDialog screen(FoodGridForm(session->catalogue(), session->days(),
                                       session->foodRunState(), kAllFoodsGroup),
                          *notifier, nullptr);
    showActive(screen);
    QAccessibleTableInterface* table = tableOf(screen.grid());
    ASSERT_NE(table, nullptr);
    const FoodLogRows shown = screen.form().view().rows;
    ASSERT_GE(shown.foodCount, 3);
    EXPECT_EQ(table->rowCount(), static_cast<int>(shown.rows.size()));
    EXPECT_EQ(table->columnCount(), 9);
    EXPECT_EQ(table->columnDescription(0), QStringLiteral("Name"));
    EXPECT_EQ(table->columnDescription(3), QStringLiteral("Calories"));

    // Every food row reads its name, meal, serving and nutrients, whichever pair is painted.
    const DayRecord& day = *session->days().currentRecord();
    for (int r = shown.firstFoodRow; r < shown.firstFoodRow + shown.foodCount; ++r) {
        const LogRow& row = shown.rows[static_cast<std::size_t>(r)];
        EXPECT_EQ(cellName(table, r, 0), toQString(row.text));
        EXPECT_EQ(cellName(table, r, 1), toQString(row.meal));
        EXPECT_EQ(cellName(table, r, 2), toQString(row.serving));
        EXPECT_EQ(cellName(table, r, 3), toQString(row.nutrients[kCalories]));
        EXPECT_EQ(cellName(table, r, 8), toQString(row.nutrients[kSaturatedFat]));
    }
    EXPECT_EQ(cellName(table, 0, 0), QStringLiteral("Food Log"));
    EXPECT_EQ(table->cellAt(0, 9), nullptr);
    EXPECT_EQ(table->cellAt(table->rowCount(), 0), nullptr);
    QAccessibleInterface* header =
        table->cellAt(1, 3)->tableCellInterface()->columnHeaderCells().value(0);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->text(QAccessible::Name), QStringLiteral("Calories"));

    // The current row is the selection the commands act on; a row away from it replaces it, the
    // row next to it extends it, as Shift with the arrows does.
    const int first = shown.firstFoodRow;
    EXPECT_EQ(table->selectedRows(), QList<int>{first});
    const int last = first + shown.foodCount - 1;
    ASSERT_TRUE(table->selectRow(last));
    ASSERT_TRUE(table->selectRow(last - 1));
    EXPECT_EQ(screen.grid()->selectedRows(), (RowRange{last - 1, last}));
    EXPECT_EQ(screen.form().view().selection, (RowRange{last - 1, last}));
    EXPECT_EQ(table->selectedRows(), (QList<int>{last - 1, last}));
    EXPECT_TRUE(table->cellAt(last, 4)->tableCellInterface()->isSelected());
    EXPECT_FALSE(table->isRowSelected(first));
    // An end leaves the run; the one row left cannot, the grid always has a current row.
    ASSERT_TRUE(table->unselectRow(last));
    EXPECT_EQ(screen.grid()->selectedRows(), (RowRange{last - 1, last - 1}));
    EXPECT_FALSE(table->unselectRow(last - 1));
    ASSERT_TRUE(table->selectRow(last));

    // Cut takes exactly those two foods out of the day.
    const std::string kept = shown.rows[static_cast<std::size_t>(first)].text;
    const std::size_t before = day.group(kAllFoodsGroup).size();
    screen.cut();
    EXPECT_EQ(day.group(kAllFoodsGroup).size(), before - 2);
    EXPECT_EQ(screen.form().view().rows.rows[static_cast<std::size_t>(first)].text, kept);
    // The table follows the day.
    EXPECT_EQ(table->rowCount(), static_cast<int>(shown.rows.size()) - 2);
}

TEST_F(GridAccessible, TheFocusedCellFollowsTheKeys) {
    FoodGridDialog screen(FoodGridForm(session->catalogue(), session->days(),
                                       session->foodRunState(), kAllFoodsGroup),
                          *notifier, nullptr);
    showActive(screen);
    CFoodGridCtrl* grid = screen.grid();
    grid->setFocus();
    ASSERT_TRUE(grid->hasFocus());
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(grid);
    QAccessibleTableInterface* table = iface->tableInterface();
    const FoodLogRows shown = screen.form().view().rows;

    QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(grid, Qt::Key_Down);
    const QString name = toQString(shown.rows[1].text);
    QAccessibleInterface* focus = iface->focusChild();
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->text(QAccessible::Name), name);
    EXPECT_TRUE(focus->state().focused);
    EXPECT_EQ(iface->indexOfChild(focus), table->columnCount() + 1 * table->columnCount());
    EXPECT_EQ(iface->child(iface->indexOfChild(focus)), focus);
    // Only the current cell says it has the focus.
    EXPECT_FALSE(table->cellAt(2, 0)->state().focused);
}

TEST_F(GridAccessible, TheExerciseLogReadsItsExercisesAndDeletesTheRowChosenThroughTheTable) {
    ASSERT_TRUE(goToADayWithAnExercise());
    ExerciseLogDialog screen(ExerciseLogForm(session->days(), session->exerciseClipboard()),
                             *notifier, nullptr);
    screen.setMessagePresenter([](const ScreenMessage&) { return true; });
    showActive(screen);
    // A second exercise: the first one copied and pasted.
    screen.grid()->selectRow(0);
    screen.copy();
    screen.paste();
    const ExerciseList& exercises = session->days().currentRecord()->exercises();
    ASSERT_EQ(exercises.size(), 2u);

    QAccessibleTableInterface* table = tableOf(screen.grid());
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 2);
    EXPECT_EQ(table->columnCount(), 3);
    EXPECT_EQ(table->columnDescription(0), QStringLiteral("Exercise"));
    EXPECT_EQ(table->columnDescription(2), QStringLiteral("Calories"));
    const std::vector<ExerciseRow> rows =
        ExerciseLogForm(session->days(), session->exerciseClipboard()).view().rows;
    for (int r = 0; r < 2; ++r) {
        EXPECT_EQ(cellName(table, r, 0), toQString(rows[static_cast<std::size_t>(r)].name));
        EXPECT_EQ(cellName(table, r, 1), toQString(rows[static_cast<std::size_t>(r)].minutes));
        EXPECT_EQ(cellName(table, r, 2), toQString(rows[static_cast<std::size_t>(r)].calories));
    }

    // From the first exercise, the second added and the first left: the second alone.
    screen.grid()->selectRow(0);
    ASSERT_TRUE(table->selectRow(1));
    EXPECT_EQ(table->selectedRows(), (QList<int>{0, 1}));
    ASSERT_TRUE(table->unselectRow(0));
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    EXPECT_EQ(screen.grid()->currentRow(), 2);  // below the header row
    screen.deleteSelected();
    EXPECT_EQ(exercises.size(), 1u);
    EXPECT_EQ(table->rowCount(), 1);
}

TEST_F(GridAccessible, TheSummaryTableReadsEveryDayUnderItsHeaders) {
    SummaryTableDialog screen(SummaryTableForm(session->days()), *notifier, nullptr);
    showActive(screen);
    SummaryTableGrid* grid = screen.table();
    QAccessibleTableInterface* table = tableOf(grid);
    ASSERT_NE(table, nullptr);
    const int days = static_cast<int>(session->store().days().size());
    EXPECT_EQ(table->rowCount(), days);
    EXPECT_EQ(table->columnCount(), grid->grid().columnCount());
    for (int c = 0; c < table->columnCount(); ++c) {
        EXPECT_EQ(table->columnDescription(c), grid->text(0, c));
    }
    // The first and the last day, and the current one as the selected row.
    for (const int r : {0, days - 1}) {
        for (int c = 0; c < table->columnCount(); ++c) {
            EXPECT_EQ(cellName(table, r, c), grid->text(r + 1, c)) << r << ',' << c;
        }
    }
    EXPECT_EQ(cellName(table, days - 1, 0), QStringLiteral("11/21"));
    EXPECT_EQ(table->selectedRows(), QList<int>{grid->currentDayRow() - 1});
    // A row far down the table is scrolled off the screen, and says so.
    EXPECT_TRUE(table->cellAt(0, 0)->state().offscreen);
    EXPECT_FALSE(table->cellAt(days - 1, 0)->state().offscreen);
}

}  // namespace
}  // namespace nutrovex
