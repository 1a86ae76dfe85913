#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace nutrovex {

struct GridCell {
    int32_t row = 0;
    int32_t column = 0;
    friend bool operator==(const GridCell&, const GridCell&) = default;
};

// Pixels; right and bottom are one past the last pixel.
struct GridRect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
    [[nodiscard]] int32_t width() const { return right - left; }
    [[nodiscard]] int32_t height() const { return bottom - top; }
    friend bool operator==(const GridRect&, const GridRect&) = default;
};

// An inclusive range of cells, normalised so that first <= last.
struct GridRange {
    GridCell first;
    GridCell last;
    [[nodiscard]] bool contains(int32_t row, int32_t column) const {
        return row >= first.row && row <= last.row && column >= first.column &&
               column <= last.column;
    }
    friend bool operator==(const GridRange&, const GridRange&) = default;
};

enum class GridKey { PageUp, PageDown, End, Home, Left, Up, Right, Down, Other };
enum class ScrollRequest { LineBack, LineForward, PageBack, PageForward, Thumb, Start, End };
enum class Orientation { Vertical, Horizontal };

// The table control's state and rules, free of any window system: rows and columns with fixed
// headers, a current cell and an anchor, stylus and keyboard navigation, scroll positions in
// pixels. A widget owns one, feeds it the person's input and paints what it says. Derived grids
// refuse cells by overriding refuseCell.
class MWGrid {
public:
    MWGrid() = default;
    MWGrid(const MWGrid&) = default;
    MWGrid& operator=(const MWGrid&) = default;
    virtual ~MWGrid() = default;

    // --- Rows and columns -------------------------------------------------------------------
    [[nodiscard]] int32_t rowCount() const { return static_cast<int32_t>(m_rowHeights.size()); }
    [[nodiscard]] int32_t columnCount() const {
        return static_cast<int32_t>(m_columnWidths.size());
    }
    // New rows and columns take the default size.
    void setRowCount(int32_t count);
    void setColumnCount(int32_t count);
    [[nodiscard]] int32_t lastRow() const { return rowCount() - 1; }
    [[nodiscard]] int32_t lastColumn() const { return columnCount() - 1; }
    [[nodiscard]] int32_t fixedRows() const { return m_fixedRows; }
    [[nodiscard]] int32_t fixedColumns() const { return m_fixedColumns; }
    void setFixedRows(int32_t count) { m_fixedRows = count < 0 ? 0 : count; }
    void setFixedColumns(int32_t count) { m_fixedColumns = count < 0 ? 0 : count; }

    void setDefaultRowHeight(int32_t height) { m_defaultRowHeight = clampHeight(height); }
    void setDefaultColumnWidth(int32_t width) { m_defaultColumnWidth = clampWidth(width); }

    [[nodiscard]] int32_t rowHeight(int32_t row) const;
    [[nodiscard]] int32_t columnWidth(int32_t column) const;
    // Clamped into the limits; out-of-range rows and columns are ignored.
    void setRowHeight(int32_t row, int32_t height);
    void setColumnWidth(int32_t column, int32_t width);
    void setRowHeightLimits(int32_t minimum, int32_t maximum);
    void setColumnWidthLimits(int32_t minimum, int32_t maximum);

    // Sum of the heights of rows first..last (inclusive); widths likewise.
    [[nodiscard]] int64_t totalHeight(int32_t first, int32_t last) const;
    [[nodiscard]] int64_t totalWidth(int32_t first, int32_t last) const;

    // Gives columns 1..n the total width: n = column count - 1, the last column takes the rest.
    void shareWidth(int32_t total);

    void setTopMargin(int32_t pixels) { m_topMargin = pixels; }
    void setLeftMargin(int32_t pixels) { m_leftMargin = pixels; }
    [[nodiscard]] int32_t topMargin() const { return m_topMargin; }
    [[nodiscard]] int32_t leftMargin() const { return m_leftMargin; }

    // --- Geometry (client coordinates, scroll positions applied to non-fixed cells) ----------
    void setClientSize(int32_t width, int32_t height);
    [[nodiscard]] int32_t clientWidth() const { return m_clientWidth; }
    [[nodiscard]] int32_t clientHeight() const { return m_clientHeight; }
    [[nodiscard]] int32_t rowTop(int32_t row) const;
    [[nodiscard]] int32_t columnLeft(int32_t column) const;
    [[nodiscard]] GridRect cellRect(int32_t row, int32_t column) const;
    [[nodiscard]] GridRect currentCellRect() const {
        return cellRect(m_current.row, m_current.column);
    }
    [[nodiscard]] int32_t rowFromY(int32_t y) const;
    [[nodiscard]] int32_t columnFromX(int32_t x) const;
    [[nodiscard]] GridCell cellAt(int32_t x, int32_t y) const {
        return {rowFromY(y), columnFromX(x)};
    }
    // The cells under the client area's top-left and bottom-right corners.
    [[nodiscard]] GridRange visibleCells() const;
    // Non-fixed rows (columns) that overlap the scrolling part of the client area, as a half-open
    // range; empty when none do. Painting walks only these.
    [[nodiscard]] std::pair<int32_t, int32_t> visibleScrollingRows() const;
    [[nodiscard]] std::pair<int32_t, int32_t> visibleScrollingColumns() const;

    // --- Current cell, anchor, selection -------------------------------------------------------
    [[nodiscard]] GridCell current() const { return m_current; }
    [[nodiscard]] GridCell anchor() const { return m_anchor; }
    [[nodiscard]] bool isValidCell(int32_t row, int32_t column) const;
    [[nodiscard]] virtual bool refuseCell(int32_t row, int32_t column) const;
    // Makes the cell current unless refused; true when accepted.
    bool selectCell(int32_t row, int32_t column);
    void resetAnchor() { m_anchor = m_current; }
    // Both corners must be valid cells; false (and nothing changes) otherwise.
    bool setSelection(GridCell anchor, GridCell current);
    [[nodiscard]] GridRange selectionRange() const;
    [[nodiscard]] bool hasSelection() const;
    void setSelectAll(bool on) { m_selectAll = on; }
    [[nodiscard]] bool selectAll() const { return m_selectAll; }
    void setFocused(bool focused) { m_focused = focused; }
    [[nodiscard]] bool focused() const { return m_focused; }
    void setTracking(bool on) { m_tracking = on; }

    // --- Input -------------------------------------------------------------------------------
    // A tap: moves to the cell under the point (a header cell maps to the first data row or
    // column); without Shift the anchor follows.
    void stylusDown(int32_t x, int32_t y, bool shift);
    // A drag with the stylus held: the current cell follows, the anchor stays. True when the
    // current cell changed (the control redraws only then).
    bool stylusMove(int32_t x, int32_t y, bool held);
    // One key press, then the current cell is made visible.
    void keyDown(GridKey key, bool ctrl, bool shift);

    // --- Scrolling ---------------------------------------------------------------------------
    void setScrolling(Orientation o, bool on);
    [[nodiscard]] bool scrolling(Orientation o) const;
    [[nodiscard]] int32_t scrollPosition(Orientation o) const;
    // The largest position: content size less the client size, never below 0.
    [[nodiscard]] int32_t scrollLimit(Orientation o) const;
    // Clamped into 0..limit; true when the position changed.
    bool setScrollPosition(Orientation o, int32_t position);
    // The new position a request asks for, before clamping. thumb is the scroll bar's position.
    [[nodiscard]] int32_t scrollTarget(Orientation o, ScrollRequest request, int32_t thumb) const;
    // Applies a request; true when the position changed (the control then redraws).
    bool scroll(Orientation o, ScrollRequest request, int32_t thumb = 0);
    void ensureCurrentVisible();

protected:
    [[nodiscard]] int32_t clampHeight(int32_t h) const;
    [[nodiscard]] int32_t clampWidth(int32_t w) const;

private:
    void move(int32_t row, int32_t column, bool shift);
    GridCell dataCellAt(int32_t x, int32_t y) const;
    void rebuildOffsets() const;
    static int32_t firstAbove(const std::vector<int64_t>& offsets, int32_t from, int32_t to,
                              int64_t base, int32_t value);

    std::vector<int32_t> m_rowHeights;
    std::vector<int32_t> m_columnWidths;
    // Prefix sums of the sizes, rebuilt lazily after a change: offsets[i] = sum of sizes 0..i-1.
    mutable std::vector<int64_t> m_rowOffsets;
    mutable std::vector<int64_t> m_columnOffsets;
    mutable bool m_offsetsDirty = true;

    int32_t m_fixedRows = 0;
    int32_t m_fixedColumns = 0;
    int32_t m_topMargin = 0;
    int32_t m_leftMargin = 0;
    GridCell m_current;
    GridCell m_anchor;
    bool m_selectAll = false;
    bool m_focused = false;
    bool m_tracking = true;
    int32_t m_minRowHeight = 4;
    int32_t m_maxRowHeight = 500;
    int32_t m_minColumnWidth = 10;
    int32_t m_maxColumnWidth = 1000;
    int32_t m_defaultRowHeight = 20;
    int32_t m_defaultColumnWidth = 60;
    bool m_verticalScrolling = false;
    bool m_horizontalScrolling = false;
    int32_t m_verticalPosition = 0;
    int32_t m_horizontalPosition = 0;
    int32_t m_clientWidth = 0;
    int32_t m_clientHeight = 0;
};

}  // namespace nutrovex
