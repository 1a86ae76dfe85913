#include <gtest/gtest.h>

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "ui/Screenshot.h"
#include "ui/controls/MWGridWidget.h"

namespace nutrovex {
namespace {

// A table of days: a header row and a date column, like the summary table.
class DayTable : public MWGridWidget {
public:
    explicit DayTable(int rows) {
        MWGrid& g = grid();
        g.setDefaultRowHeight(fontMetrics().height() + 6);
        g.setRowCount(rows + 1);
        g.setColumnCount(4);
        g.setFixedRows(1);
        g.setFixedColumns(1);
        g.setColumnWidth(0, 70);
        g.setScrolling(Orientation::Vertical, true);
        resize(300, 240);
    }
    using MWGridWidget::cellRect;

protected:
    void resizeEvent(QResizeEvent* event) override {
        MWGridWidget::resizeEvent(event);
        grid().shareWidth(viewport()->width() - grid().columnWidth(0));
        refresh();
    }

    QString cellText(int row, int column) const override {
        static const QString headers[] = {QStringLiteral("Day"), QStringLiteral("Weight"),
                                          QStringLiteral("Calories"), QStringLiteral("BMR")};
        if (row == 0) {
            return headers[column];
        }
        if (column == 0) {
            return QString::number(row);
        }
        return QString::number(row * 10 + column);
    }
};

void showFocused(QWidget& w) {
    w.show();
    w.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w));
    w.setFocus();
    ASSERT_TRUE(w.hasFocus());
}

QColor pixelIn(QWidget& viewport, const QRect& cell) {
    // Top right corner, clear of the left-aligned text and the grid lines.
    return viewport.grab().toImage().pixelColor(cell.right() - 4, cell.top() + 3);
}

TEST(MWGridWidget, KeysMoveTheCurrentCellAndReportIt) {
    DayTable table(30);
    showFocused(table);
    QTest::keyClick(&table, Qt::Key_Home, Qt::ControlModifier);
    QSignalSpy spy(&table, &MWGridWidget::keyHandled);
    QTest::keyClick(&table, Qt::Key_Down);
    QTest::keyClick(&table, Qt::Key_End);
    EXPECT_EQ(table.currentRow(), 2);
    EXPECT_EQ(table.currentColumn(), 3);
    QTest::keyClick(&table, Qt::Key_Right);  // already on the last column: reported anyway
    ASSERT_EQ(spy.count(), 3);
    EXPECT_EQ(spy.last().at(0).toInt(), 2);
    EXPECT_EQ(spy.last().at(1).toInt(), 3);

    // Keys that scroll the current cell into view move the scroll bar with it.
    QTest::keyClick(&table, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(table.currentRow(), 30);
    EXPECT_GT(table.verticalScrollBar()->value(), 0);
    EXPECT_EQ(table.verticalScrollBar()->value(),
              table.grid().scrollPosition(Orientation::Vertical));
    EXPECT_LE(table.cellRect(30, 3).bottom(), table.viewport()->height());
}

TEST(MWGridWidget, TapsSelectAndShiftTapsExtend) {
    DayTable table(30);
    showFocused(table);
    QSignalSpy spy(&table, &MWGridWidget::cellTapped);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.cellRect(3, 2).center());
    EXPECT_EQ(table.currentRow(), 3);
    EXPECT_EQ(table.currentColumn(), 2);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      table.cellRect(5, 3).center());
    EXPECT_TRUE(table.grid().hasSelection());
    EXPECT_EQ(table.grid().selectionRange(), (GridRange{{3, 2}, {5, 3}}));
    // A tap on the header row lands on the first data row.
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.cellRect(0, 1).center());
    EXPECT_EQ(table.currentRow(), 1);
    EXPECT_FALSE(table.grid().hasSelection());
    EXPECT_EQ(spy.count(), 3);
}

TEST(MWGridWidget, PaintsTheSelectionInTheHighlightColour) {
    DayTable table(30);
    showFocused(table);
    QTest::keyClick(&table, Qt::Key_Down);
    QTest::keyClick(&table, Qt::Key_Right);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_Right, Qt::ShiftModifier);
    ASSERT_EQ(table.grid().selectionRange(), (GridRange{{1, 1}, {3, 2}}));

    const QColor highlight = table.palette().color(QPalette::Highlight);
    const QColor base = table.palette().color(QPalette::Base);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(1, 1)), highlight);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(2, 2)), highlight);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(4, 1)), base);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(1, 3)), base);
    test::saveScreenshot(table, QStringLiteral("grid-selection"));

    // Without the focus the selection is not shown.
    table.clearFocus();
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(1, 1)), base);
}

// Twenty years of days: only the rows on screen are drawn, wherever the table is scrolled.
TEST(MWGridWidget, ALongTablePaintsItsLastScreenful) {
    DayTable table(7300);
    showFocused(table);
    QTest::keyClick(&table, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&table, Qt::Key_Up, Qt::ShiftModifier);
    ASSERT_EQ(table.currentRow(), 7299);
    const QColor highlight = table.palette().color(QPalette::Highlight);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(7300, 3)), highlight);
    EXPECT_EQ(pixelIn(*table.viewport(), table.cellRect(7298, 3)),
              table.palette().color(QPalette::Base));
}

}  // namespace
}  // namespace nutrovex
