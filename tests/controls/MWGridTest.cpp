#include <gtest/gtest.h>

#include "controls/MWGrid.h"

namespace nutrovex {
namespace {

// 10 rows x 5 columns, one header row and one header column, 20-pixel rows and 40-pixel
// columns in a 200 x 100 client: rows 0..4 are visible, so a page is 4 rows.
MWGrid makeGrid() {
    MWGrid g;
    g.setDefaultRowHeight(20);
    g.setDefaultColumnWidth(40);
    g.setRowCount(10);
    g.setColumnCount(5);
    g.setFixedRows(1);
    g.setFixedColumns(1);
    g.setClientSize(200, 100);
    g.setFocused(true);
    return g;
}

struct KeyCase {
    const char* name;
    GridCell start;
    GridCell startAnchor;
    GridKey key;
    bool ctrl;
    bool shift;
    GridCell current;
    GridCell anchor;
};

TEST(MWGrid, EveryKeyMovesAsTheKeyTableSays) {
    const KeyCase cases[] = {
        {"Right", {3, 2}, {3, 2}, GridKey::Right, false, false, {3, 3}, {3, 3}},
        {"Right on last column", {3, 4}, {5, 1}, GridKey::Right, false, false, {3, 4}, {5, 1}},
        {"Ctrl+Right", {3, 1}, {5, 1}, GridKey::Right, true, false, {3, 4}, {3, 4}},
        {"Left", {3, 3}, {3, 3}, GridKey::Left, false, false, {3, 2}, {3, 2}},
        {"Left on first data column", {3, 1}, {5, 2}, GridKey::Left, false, false, {3, 1}, {5, 2}},
        {"Ctrl+Left", {3, 3}, {6, 4}, GridKey::Left, true, false, {3, 1}, {3, 1}},
        {"Ctrl+Shift+Left", {3, 3}, {6, 4}, GridKey::Left, true, true, {3, 1}, {6, 4}},
        {"Up", {3, 2}, {3, 2}, GridKey::Up, false, false, {2, 2}, {2, 2}},
        {"Up on first data row", {1, 2}, {4, 4}, GridKey::Up, false, false, {1, 2}, {4, 4}},
        {"Ctrl+Up", {6, 2}, {6, 2}, GridKey::Up, true, false, {1, 2}, {1, 2}},
        {"Down", {3, 2}, {3, 2}, GridKey::Down, false, false, {4, 2}, {4, 2}},
        {"Shift+Down", {3, 2}, {3, 2}, GridKey::Down, false, true, {4, 2}, {3, 2}},
        {"Down on last row", {9, 2}, {5, 1}, GridKey::Down, false, false, {9, 2}, {5, 1}},
        {"Ctrl+Down", {3, 2}, {3, 2}, GridKey::Down, true, false, {9, 2}, {9, 2}},
        {"Home", {3, 3}, {3, 3}, GridKey::Home, false, false, {3, 1}, {3, 1}},
        {"Ctrl+Home", {7, 3}, {7, 3}, GridKey::Home, true, false, {1, 1}, {1, 1}},
        {"Ctrl+Shift+Home", {7, 3}, {7, 3}, GridKey::Home, true, true, {1, 1}, {7, 3}},
        {"End", {3, 1}, {3, 1}, GridKey::End, false, false, {3, 4}, {3, 4}},
        {"Ctrl+End", {3, 1}, {3, 1}, GridKey::End, true, false, {9, 4}, {9, 4}},
        {"Ctrl+Shift+End", {3, 1}, {3, 1}, GridKey::End, true, true, {9, 4}, {3, 1}},
        {"Page Down", {2, 2}, {2, 2}, GridKey::PageDown, false, false, {6, 2}, {6, 2}},
        {"Page Down stops at last row",
         {8, 2},
         {8, 2},
         GridKey::PageDown,
         false,
         false,
         {9, 2},
         {9, 2}},
        {"Page Down on last row", {9, 2}, {3, 3}, GridKey::PageDown, false, false, {9, 2}, {3, 3}},
        {"Shift+Page Down", {2, 2}, {2, 2}, GridKey::PageDown, false, true, {6, 2}, {2, 2}},
        {"Ctrl+Page Down does nothing",
         {2, 2},
         {2, 2},
         GridKey::PageDown,
         true,
         false,
         {2, 2},
         {2, 2}},
        {"Page Up", {7, 2}, {7, 2}, GridKey::PageUp, false, false, {3, 2}, {3, 2}},
        {"Page Up stops at first data row",
         {3, 2},
         {3, 2},
         GridKey::PageUp,
         false,
         false,
         {1, 2},
         {1, 2}},
        {"Page Up on first data row",
         {1, 2},
         {4, 4},
         GridKey::PageUp,
         false,
         false,
         {1, 2},
         {4, 4}},
        {"Ctrl+Shift+Page Up does nothing",
         {7, 2},
         {7, 2},
         GridKey::PageUp,
         true,
         true,
         {7, 2},
         {7, 2}},
        {"Other key", {3, 2}, {4, 4}, GridKey::Other, true, true, {3, 2}, {4, 4}},
    };
    for (const auto& c : cases) {
        MWGrid g = makeGrid();
        ASSERT_TRUE(g.setSelection(c.startAnchor, c.start)) << c.name;
        g.keyDown(c.key, c.ctrl, c.shift);
        EXPECT_EQ(g.current(), c.current) << c.name;
        EXPECT_EQ(g.anchor(), c.anchor) << c.name;
    }
}

TEST(MWGrid, CtrlHomeThenShiftDownSelectsTwoCellsAndATapCollapsesThem) {
    MWGrid g = makeGrid();
    g.keyDown(GridKey::Home, true, false);
    g.keyDown(GridKey::Down, false, true);
    EXPECT_TRUE(g.hasSelection());
    EXPECT_EQ(g.selectionRange(), (GridRange{{1, 1}, {2, 1}}));

    const GridRect cell = g.cellRect(3, 2);
    g.stylusDown(cell.left + 1, cell.top + 1, false);
    EXPECT_EQ(g.current(), (GridCell{3, 2}));
    EXPECT_FALSE(g.hasSelection());

    // A tap with Shift extends from the old anchor instead.
    g.stylusDown(g.cellRect(5, 4).left + 1, g.cellRect(5, 4).top + 1, true);
    EXPECT_EQ(g.selectionRange(), (GridRange{{3, 2}, {5, 4}}));
}

TEST(MWGrid, ASelectionCountsOnlyWithFocusAndTracking) {
    MWGrid g = makeGrid();
    ASSERT_TRUE(g.setSelection({1, 1}, {2, 2}));
    EXPECT_TRUE(g.hasSelection());
    g.setFocused(false);
    EXPECT_FALSE(g.hasSelection());
    g.setFocused(true);
    g.setTracking(false);
    EXPECT_FALSE(g.hasSelection());
    g.setTracking(true);
    g.resetAnchor();
    EXPECT_FALSE(g.hasSelection());
    g.setSelectAll(true);
    EXPECT_TRUE(g.hasSelection());
    EXPECT_EQ(g.selectionRange(), (GridRange{{1, 1}, {9, 4}}));
}

TEST(MWGrid, SetSelectionRefusesCornersOutsideTheDataArea) {
    MWGrid g = makeGrid();
    EXPECT_FALSE(g.setSelection({0, 1}, {2, 2}));
    EXPECT_FALSE(g.setSelection({1, 1}, {10, 2}));
    EXPECT_FALSE(g.setSelection({1, 0}, {2, 2}));
    EXPECT_EQ(g.current(), (GridCell{0, 0}));
}

TEST(MWGrid, ATapOnAHeaderCellSelectsTheFirstDataRowOrColumn) {
    MWGrid g = makeGrid();
    g.stylusDown(g.columnLeft(3) + 5, 5, false);  // column header of column 3
    EXPECT_EQ(g.current(), (GridCell{1, 3}));
    g.stylusDown(5, g.rowTop(6) + 5, false);  // row header of row 6
    EXPECT_EQ(g.current(), (GridCell{6, 1}));

    // With no data rows at all the header row itself is taken.
    MWGrid headersOnly = makeGrid();
    headersOnly.setRowCount(1);
    headersOnly.stylusDown(100, 5, false);
    EXPECT_EQ(headersOnly.current().row, 0);
}

TEST(MWGrid, CellUnderAPointFollowsScrollingButNotTheFixedRows) {
    MWGrid g = makeGrid();
    g.setClientSize(120, 100);
    g.setScrolling(Orientation::Vertical, true);
    g.setScrolling(Orientation::Horizontal, true);
    EXPECT_EQ(g.cellAt(0, 0), (GridCell{0, 0}));
    EXPECT_EQ(g.cellAt(79, 39), (GridCell{1, 1}));
    EXPECT_EQ(g.cellAt(80, 40), (GridCell{2, 2}));
    EXPECT_EQ(g.cellAt(5000, 5000), (GridCell{9, 4}));  // past the end: the last cell

    ASSERT_TRUE(g.setScrollPosition(Orientation::Vertical, 30));
    ASSERT_TRUE(g.setScrollPosition(Orientation::Horizontal, 50));
    EXPECT_EQ(g.rowTop(0), 0);
    EXPECT_EQ(g.rowTop(1), -10);
    EXPECT_EQ(g.columnLeft(0), 0);
    EXPECT_EQ(g.columnLeft(1), -10);
    EXPECT_EQ(g.cellAt(45, 25), (GridCell{2, 2}));
    EXPECT_EQ(g.cellAt(75, 75), (GridCell{5, 3}));

    // Margins push everything right and down.
    MWGrid m = makeGrid();
    m.setTopMargin(7);
    m.setLeftMargin(3);
    EXPECT_EQ(m.cellRect(1, 1), (GridRect{43, 27, 83, 47}));
    EXPECT_EQ(m.cellAt(42, 26), (GridCell{0, 0}));
}

TEST(MWGrid, SizesAreClampedIntoTheirLimits) {
    MWGrid g = makeGrid();
    g.setRowHeight(2, 2);
    EXPECT_EQ(g.rowHeight(2), 4);
    g.setRowHeight(2, 600);
    EXPECT_EQ(g.rowHeight(2), 500);
    g.setRowHeight(2, 2);
    g.setColumnWidth(1, 2000);
    EXPECT_EQ(g.columnWidth(1), 1000);
    g.setColumnWidth(1, 2);
    EXPECT_EQ(g.columnWidth(1), 10);
    g.setRowHeightLimits(10, 30);
    g.setRowHeight(3, 5);
    EXPECT_EQ(g.rowHeight(3), 10);
    EXPECT_EQ(g.totalHeight(0, 9), 20 * 8 + 4 + 10);
    EXPECT_EQ(g.rowTop(4), 20 * 2 + 4 + 10);
}

TEST(MWGrid, ShareWidthGivesTheLastColumnTheRest) {
    MWGrid g = makeGrid();  // five columns: columns 1..4 share
    g.setColumnWidth(0, 33);
    g.shareWidth(103);
    EXPECT_EQ(g.columnWidth(0), 33);
    EXPECT_EQ(g.columnWidth(1), 25);
    EXPECT_EQ(g.columnWidth(3), 25);
    EXPECT_EQ(g.columnWidth(4), 28);
    g.shareWidth(20);  // 5 each, clamped up to the 10-pixel minimum
    EXPECT_EQ(g.columnWidth(2), 10);
    EXPECT_EQ(g.columnWidth(4), 10);
}

TEST(MWGrid, ScrollRequestsStepByTheirAmountsAndClamp) {
    // A portrait client 240 pixels wide, a 20-pixel first row, 1,000 rows.
    MWGrid g;
    g.setDefaultRowHeight(20);
    g.setRowCount(1000);
    g.setColumnCount(3);
    g.setFixedRows(1);
    g.setClientSize(240, 300);
    EXPECT_FALSE(g.scroll(Orientation::Vertical, ScrollRequest::PageForward));  // scrolling off
    g.setScrolling(Orientation::Vertical, true);
    const auto V = Orientation::Vertical;

    EXPECT_TRUE(g.scroll(V, ScrollRequest::PageForward));
    EXPECT_EQ(g.scrollPosition(V), 220);  // the client's width less the first row
    EXPECT_TRUE(g.scroll(V, ScrollRequest::LineForward));
    EXPECT_EQ(g.scrollPosition(V), 236);
    EXPECT_TRUE(g.scroll(V, ScrollRequest::LineBack));
    EXPECT_EQ(g.scrollPosition(V), 220);
    EXPECT_TRUE(g.scroll(V, ScrollRequest::Thumb, 5000));
    EXPECT_EQ(g.scrollPosition(V), 5000);
    EXPECT_TRUE(g.scroll(V, ScrollRequest::PageBack));
    EXPECT_EQ(g.scrollPosition(V), 5000 - 240 - 20);
    EXPECT_TRUE(g.scroll(V, ScrollRequest::End));
    EXPECT_EQ(g.scrollPosition(V), 20 * 1000 - 300);
    EXPECT_EQ(g.scrollPosition(V), g.scrollLimit(V));
    EXPECT_FALSE(g.scroll(V, ScrollRequest::LineForward));  // already at the limit
    EXPECT_TRUE(g.scroll(V, ScrollRequest::Start));
    EXPECT_EQ(g.scrollPosition(V), 0);
    EXPECT_FALSE(g.scroll(V, ScrollRequest::LineBack));

    // Horizontally a page is the client's width.
    g.setColumnCount(10);
    g.setScrolling(Orientation::Horizontal, true);
    EXPECT_TRUE(g.scroll(Orientation::Horizontal, ScrollRequest::PageForward));
    EXPECT_EQ(g.scrollPosition(Orientation::Horizontal), 240);
    EXPECT_TRUE(g.scroll(Orientation::Horizontal, ScrollRequest::PageForward));
    EXPECT_EQ(g.scrollPosition(Orientation::Horizontal), 600 - 240);
}

TEST(MWGrid, KeysScrollTheCurrentCellIntoViewOnlyWhereScrollingIsOn) {
    MWGrid g = makeGrid();
    g.keyDown(GridKey::Home, true, false);
    g.keyDown(GridKey::Down, true, false);  // row 9: bottom 200, client bottom 100
    EXPECT_EQ(g.scrollPosition(Orientation::Vertical), 0);

    g.setScrolling(Orientation::Vertical, true);
    g.setScrolling(Orientation::Horizontal, true);
    g.keyDown(GridKey::Down, true, false);
    EXPECT_EQ(g.scrollPosition(Orientation::Vertical), 100);
    EXPECT_EQ(g.currentCellRect().bottom, 100);
    g.keyDown(GridKey::End, false, false);  // column 4: right 200, client 200: visible
    EXPECT_EQ(g.scrollPosition(Orientation::Horizontal), 0);

    // Back up: the cell goes just below the fixed header row.
    g.keyDown(GridKey::Up, true, false);
    EXPECT_EQ(g.scrollPosition(Orientation::Vertical), 0);
    g.setScrollPosition(Orientation::Vertical, 100);
    g.keyDown(GridKey::Down, false, false);  // row 2, hidden above the scrolled area
    EXPECT_EQ(g.currentCellRect().top, 20);
    EXPECT_EQ(g.scrollPosition(Orientation::Vertical), 20);
}

TEST(MWGrid, StylusDragExtendsTheSelectionWhileHeldAndTracking) {
    MWGrid g = makeGrid();
    g.stylusDown(g.columnLeft(1) + 1, g.rowTop(1) + 1, false);
    EXPECT_FALSE(g.stylusMove(g.columnLeft(3) + 1, g.rowTop(3) + 1, false));
    EXPECT_EQ(g.current(), (GridCell{1, 1}));
    EXPECT_TRUE(g.stylusMove(g.columnLeft(3) + 1, g.rowTop(3) + 1, true));
    EXPECT_FALSE(g.stylusMove(g.columnLeft(3) + 2, g.rowTop(3) + 2, true));  // same cell
    EXPECT_EQ(g.selectionRange(), (GridRange{{1, 1}, {3, 3}}));
    g.setTracking(false);
    EXPECT_FALSE(g.stylusMove(g.columnLeft(4) + 1, g.rowTop(4) + 1, true));
    EXPECT_EQ(g.current(), (GridCell{3, 3}));
}

class NoColumnThree : public MWGrid {
public:
    bool refuseCell(int32_t, int32_t column) const override { return column == 3; }
};

TEST(MWGrid, RefusedCellsNeverBecomeCurrent) {
    NoColumnThree g;
    g.setRowCount(5);
    g.setColumnCount(5);
    g.setFixedRows(1);
    g.setFixedColumns(1);
    g.setClientSize(300, 100);
    ASSERT_TRUE(g.setSelection({2, 2}, {2, 2}));
    g.keyDown(GridKey::Right, false, false);
    EXPECT_EQ(g.current(), (GridCell{2, 2}));
    EXPECT_FALSE(g.selectCell(1, 3));
    EXPECT_TRUE(g.selectCell(1, 4));
    g.stylusDown(g.columnLeft(3) + 1, g.rowTop(3) + 1, false);
    EXPECT_EQ(g.current(), (GridCell{1, 4}));
}

TEST(MWGrid, OnlyTheRowsOnScreenAreVisited) {
    MWGrid g;
    g.setDefaultRowHeight(20);
    g.setRowCount(7300);
    g.setColumnCount(4);
    g.setFixedRows(1);
    g.setScrolling(Orientation::Vertical, true);
    g.setClientSize(240, 300);
    EXPECT_EQ(g.visibleScrollingRows(), (std::pair<int32_t, int32_t>{1, 15}));
    g.setScrollPosition(Orientation::Vertical, 100 * 20 + 5);
    // Row 101 is half hidden under the header; row 115 shows its top 5 pixels.
    EXPECT_EQ(g.visibleScrollingRows(), (std::pair<int32_t, int32_t>{101, 116}));
    g.scroll(Orientation::Vertical, ScrollRequest::End);
    EXPECT_EQ(g.visibleScrollingRows(), (std::pair<int32_t, int32_t>{7286, 7300}));
    EXPECT_EQ(g.visibleScrollingColumns(), (std::pair<int32_t, int32_t>{0, 4}));
    // The top-left corner lies over the header, but the scrolled row beneath it is what counts.
    EXPECT_EQ(g.visibleCells(), (GridRange{{7285, 0}, {7299, 3}}));
}

}  // namespace
}  // namespace nutrovex
