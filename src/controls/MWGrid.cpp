#include "controls/MWGrid.h"

#include <algorithm>
#include <limits>

namespace nutrovex {

namespace {

constexpr int32_t kLineStep = 16;

int32_t saturate(int64_t v) {
    return static_cast<int32_t>(std::clamp<int64_t>(v, std::numeric_limits<int32_t>::min(),
                                                    std::numeric_limits<int32_t>::max()));
}

}  // namespace

void MWGrid::setRowCount(int32_t count) {
    m_rowHeights.resize(static_cast<std::size_t>(std::max(count, 0)), m_defaultRowHeight);
    m_offsetsDirty = true;
}

void MWGrid::setColumnCount(int32_t count) {
    m_columnWidths.resize(static_cast<std::size_t>(std::max(count, 0)), m_defaultColumnWidth);
    m_offsetsDirty = true;
}

int32_t MWGrid::clampHeight(int32_t h) const {
    return std::clamp(h, m_minRowHeight, std::max(m_minRowHeight, m_maxRowHeight));
}

int32_t MWGrid::clampWidth(int32_t w) const {
    return std::clamp(w, m_minColumnWidth, std::max(m_minColumnWidth, m_maxColumnWidth));
}

int32_t MWGrid::rowHeight(int32_t row) const {
    return row >= 0 && row < rowCount() ? m_rowHeights[static_cast<std::size_t>(row)] : 0;
}

int32_t MWGrid::columnWidth(int32_t column) const {
    return column >= 0 && column < columnCount() ? m_columnWidths[static_cast<std::size_t>(column)]
                                                 : 0;
}

void MWGrid::setRowHeight(int32_t row, int32_t height) {
    if (row >= 0 && row < rowCount()) {
        m_rowHeights[static_cast<std::size_t>(row)] = clampHeight(height);
        m_offsetsDirty = true;
    }
}

void MWGrid::setColumnWidth(int32_t column, int32_t width) {
    if (column >= 0 && column < columnCount()) {
        m_columnWidths[static_cast<std::size_t>(column)] = clampWidth(width);
        m_offsetsDirty = true;
    }
}

// Sizes never go below zero, so the prefix sums stay ordered and can be searched.
void MWGrid::setRowHeightLimits(int32_t minimum, int32_t maximum) {
    m_minRowHeight = std::max(minimum, 0);
    m_maxRowHeight = std::max(maximum, m_minRowHeight);
}

void MWGrid::setColumnWidthLimits(int32_t minimum, int32_t maximum) {
    m_minColumnWidth = std::max(minimum, 0);
    m_maxColumnWidth = std::max(maximum, m_minColumnWidth);
}

void MWGrid::rebuildOffsets() const {
    if (!m_offsetsDirty) {
        return;
    }
    auto build = [](const std::vector<int32_t>& sizes, std::vector<int64_t>& offsets) {
        offsets.resize(sizes.size() + 1);
        offsets[0] = 0;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            offsets[i + 1] = offsets[i] + sizes[i];
        }
    };
    build(m_rowHeights, m_rowOffsets);
    build(m_columnWidths, m_columnOffsets);
    m_offsetsDirty = false;
}

int64_t MWGrid::totalHeight(int32_t first, int32_t last) const {
    rebuildOffsets();
    first = std::max(first, 0);
    last = std::min(last, lastRow());
    return last < first ? 0
                        : m_rowOffsets[static_cast<std::size_t>(last) + 1] -
                              m_rowOffsets[static_cast<std::size_t>(first)];
}

int64_t MWGrid::totalWidth(int32_t first, int32_t last) const {
    rebuildOffsets();
    first = std::max(first, 0);
    last = std::min(last, lastColumn());
    return last < first ? 0
                        : m_columnOffsets[static_cast<std::size_t>(last) + 1] -
                              m_columnOffsets[static_cast<std::size_t>(first)];
}

void MWGrid::shareWidth(int32_t total) {
    const int32_t n = columnCount() - 1;
    if (n < 1) {
        return;
    }
    const int32_t each = total / n;
    for (int32_t c = 1; c < n; ++c) {
        setColumnWidth(c, each);
    }
    setColumnWidth(n, total - (n - 1) * each);
}

void MWGrid::setClientSize(int32_t width, int32_t height) {
    m_clientWidth = std::max(width, 0);
    m_clientHeight = std::max(height, 0);
    setScrollPosition(Orientation::Vertical, m_verticalPosition);
    setScrollPosition(Orientation::Horizontal, m_horizontalPosition);
}

int32_t MWGrid::rowTop(int32_t row) const {
    rebuildOffsets();
    const auto i = static_cast<std::size_t>(std::clamp(row, 0, rowCount()));
    const int64_t shift = row >= m_fixedRows ? m_verticalPosition : 0;
    return saturate(m_topMargin + m_rowOffsets[i] - shift);
}

int32_t MWGrid::columnLeft(int32_t column) const {
    rebuildOffsets();
    const auto i = static_cast<std::size_t>(std::clamp(column, 0, columnCount()));
    const int64_t shift = column >= m_fixedColumns ? m_horizontalPosition : 0;
    return saturate(m_leftMargin + m_columnOffsets[i] - shift);
}

GridRect MWGrid::cellRect(int32_t row, int32_t column) const {
    const int32_t left = columnLeft(column);
    const int32_t top = rowTop(row);
    return {left, top, left + columnWidth(column), top + rowHeight(row)};
}

int32_t MWGrid::firstAbove(const std::vector<int64_t>& offsets, int32_t from, int32_t to,
                           int64_t base, int32_t value) {
    if (from >= to) {
        return to;
    }
    // The first index whose edge base + offsets[i] lies below value (value < edge).
    const auto begin = offsets.begin() + from;
    const auto end = offsets.begin() + to;
    return from + static_cast<int32_t>(std::upper_bound(begin, end, value - base) - begin);
}

// The first row i (from 1) whose top lies below y gives row i - 1. Fixed rows do not scroll, so
// their tops and those of the scrolling rows are two ordered runs, searched one after the other.
int32_t MWGrid::rowFromY(int32_t y) const {
    rebuildOffsets();
    const int32_t count = rowCount();
    const int32_t fixedEnd = std::min(m_fixedRows, count);
    int32_t i = firstAbove(m_rowOffsets, 1, fixedEnd, m_topMargin, y);
    if (i < fixedEnd) {
        return i - 1;
    }
    i = firstAbove(m_rowOffsets, std::max(1, fixedEnd), count,
                   static_cast<int64_t>(m_topMargin) - m_verticalPosition, y);
    return i < count ? i - 1 : lastRow();
}

int32_t MWGrid::columnFromX(int32_t x) const {
    rebuildOffsets();
    const int32_t count = columnCount();
    const int32_t fixedEnd = std::min(m_fixedColumns, count);
    int32_t i = firstAbove(m_columnOffsets, 1, fixedEnd, m_leftMargin, x);
    if (i < fixedEnd) {
        return i - 1;
    }
    i = firstAbove(m_columnOffsets, std::max(1, fixedEnd), count,
                   static_cast<int64_t>(m_leftMargin) - m_horizontalPosition, x);
    return i < count ? i - 1 : lastColumn();
}

GridRange MWGrid::visibleCells() const {
    return {cellAt(0, 0), cellAt(m_clientWidth - 1, m_clientHeight - 1)};
}

namespace {

// Scrolling items overlapping [areaStart, areaEnd) of the client, as a half-open index range.
std::pair<int32_t, int32_t> visibleRun(const std::vector<int64_t>& offsets, int32_t fixed,
                                       int32_t count, int64_t origin, int64_t areaStart,
                                       int64_t areaEnd) {
    fixed = std::min(fixed, count);
    if (areaEnd <= areaStart || fixed >= count) {
        return {fixed, fixed};
    }
    // Item i spans origin + offsets[i] .. origin + offsets[i + 1].
    const auto ends = offsets.begin() + fixed + 1;
    const auto stop = offsets.begin() + count + 1;
    const int32_t first =
        fixed + static_cast<int32_t>(std::upper_bound(ends, stop, areaStart - origin) - ends);
    const auto starts = offsets.begin() + first;
    const int32_t last =
        first + static_cast<int32_t>(
                    std::lower_bound(starts, offsets.begin() + count, areaEnd - origin) - starts);
    return {first, std::max(first, last)};
}

}  // namespace

std::pair<int32_t, int32_t> MWGrid::visibleScrollingRows() const {
    rebuildOffsets();
    const int64_t fixedBottom = m_topMargin + totalHeight(0, m_fixedRows - 1);
    return visibleRun(m_rowOffsets, m_fixedRows, rowCount(),
                      static_cast<int64_t>(m_topMargin) - m_verticalPosition, fixedBottom,
                      m_clientHeight);
}

std::pair<int32_t, int32_t> MWGrid::visibleScrollingColumns() const {
    rebuildOffsets();
    const int64_t fixedRight = m_leftMargin + totalWidth(0, m_fixedColumns - 1);
    return visibleRun(m_columnOffsets, m_fixedColumns, columnCount(),
                      static_cast<int64_t>(m_leftMargin) - m_horizontalPosition, fixedRight,
                      m_clientWidth);
}

bool MWGrid::isValidCell(int32_t row, int32_t column) const {
    return row >= m_fixedRows && row <= lastRow() && column >= m_fixedColumns &&
           column <= lastColumn();
}

bool MWGrid::refuseCell(int32_t, int32_t) const {
    return false;
}

bool MWGrid::selectCell(int32_t row, int32_t column) {
    if (refuseCell(row, column)) {
        return false;
    }
    m_current = {row, column};
    return true;
}

bool MWGrid::setSelection(GridCell anchor, GridCell current) {
    if (!isValidCell(anchor.row, anchor.column) || !isValidCell(current.row, current.column)) {
        return false;
    }
    m_anchor = anchor;
    m_current = current;
    return true;
}

GridRange MWGrid::selectionRange() const {
    if (m_selectAll) {
        return {{m_fixedRows, m_fixedColumns}, {lastRow(), lastColumn()}};
    }
    return {{std::min(m_anchor.row, m_current.row), std::min(m_anchor.column, m_current.column)},
            {std::max(m_anchor.row, m_current.row), std::max(m_anchor.column, m_current.column)}};
}

bool MWGrid::hasSelection() const {
    return m_focused && m_tracking && (m_selectAll || m_anchor != m_current);
}

GridCell MWGrid::dataCellAt(int32_t x, int32_t y) const {
    GridCell cell = cellAt(x, y);
    if (cell.row < m_fixedRows && rowCount() > m_fixedRows) {
        cell.row = m_fixedRows;
    }
    if (cell.column < m_fixedColumns && columnCount() > m_fixedColumns) {
        cell.column = m_fixedColumns;
    }
    return cell;
}

void MWGrid::stylusDown(int32_t x, int32_t y, bool shift) {
    const GridCell cell = dataCellAt(x, y);
    selectCell(cell.row, cell.column);
    if (!shift) {
        resetAnchor();
    }
}

bool MWGrid::stylusMove(int32_t x, int32_t y, bool held) {
    if (!m_tracking || !held) {
        return false;
    }
    const GridCell before = m_current;
    const int32_t vBefore = m_verticalPosition;
    const int32_t hBefore = m_horizontalPosition;
    const GridCell cell = dataCellAt(x, y);
    selectCell(cell.row, cell.column);
    ensureCurrentVisible();
    return m_current != before || m_verticalPosition != vBefore || m_horizontalPosition != hBefore;
}

void MWGrid::move(int32_t row, int32_t column, bool shift) {
    if (selectCell(row, column) && !shift) {
        resetAnchor();
    }
}

void MWGrid::keyDown(GridKey key, bool ctrl, bool shift) {
    const GridCell cur = m_current;
    const GridRange visible = visibleCells();
    const int32_t page = visible.last.row - visible.first.row;
    switch (key) {
        case GridKey::PageUp:
            if (!ctrl && cur.row > m_fixedRows) {
                move(std::max(cur.row - page, m_fixedRows), cur.column, shift);
            }
            break;
        case GridKey::PageDown:
            if (!ctrl && cur.row < lastRow()) {
                move(std::min(cur.row + page, lastRow()), cur.column, shift);
            }
            break;
        case GridKey::End:
            move(ctrl ? lastRow() : cur.row, lastColumn(), shift);
            break;
        case GridKey::Home:
            move(ctrl ? m_fixedRows : cur.row, m_fixedColumns, shift);
            break;
        case GridKey::Left:
            if (ctrl) {
                move(cur.row, m_fixedColumns, shift);
            } else if (cur.column > m_fixedColumns) {
                move(cur.row, cur.column - 1, shift);
            }
            break;
        case GridKey::Up:
            if (ctrl) {
                move(m_fixedRows, cur.column, shift);
            } else if (cur.row > m_fixedRows) {
                move(cur.row - 1, cur.column, shift);
            }
            break;
        case GridKey::Right:
            if (ctrl) {
                move(cur.row, lastColumn(), shift);
            } else if (cur.column < lastColumn()) {
                move(cur.row, cur.column + 1, shift);
            }
            break;
        case GridKey::Down:
            if (ctrl) {
                move(lastRow(), cur.column, shift);
            } else if (cur.row < lastRow()) {
                move(cur.row + 1, cur.column, shift);
            }
            break;
        case GridKey::Other:
            break;
    }
    ensureCurrentVisible();
}

void MWGrid::setScrolling(Orientation o, bool on) {
    if (o == Orientation::Vertical) {
        m_verticalScrolling = on;
    } else {
        m_horizontalScrolling = on;
    }
    if (!on) {
        setScrollPosition(o, 0);
    }
}

bool MWGrid::scrolling(Orientation o) const {
    return o == Orientation::Vertical ? m_verticalScrolling : m_horizontalScrolling;
}

int32_t MWGrid::scrollPosition(Orientation o) const {
    return o == Orientation::Vertical ? m_verticalPosition : m_horizontalPosition;
}

int32_t MWGrid::scrollLimit(Orientation o) const {
    const int64_t content = o == Orientation::Vertical
                                ? m_topMargin + totalHeight(0, lastRow()) - m_clientHeight
                                : m_leftMargin + totalWidth(0, lastColumn()) - m_clientWidth;
    return saturate(std::max<int64_t>(content, 0));
}

bool MWGrid::setScrollPosition(Orientation o, int32_t position) {
    int32_t& pos = o == Orientation::Vertical ? m_verticalPosition : m_horizontalPosition;
    const int32_t clamped = std::clamp(position, 0, scrollLimit(o));
    const bool changed = clamped != pos;
    pos = clamped;
    return changed;
}

int32_t MWGrid::scrollTarget(Orientation o, ScrollRequest request, int32_t thumb) const {
    const int64_t pos = scrollPosition(o);
    // The vertical page is the client's width less the first row's height: a deliberate quirk
    // kept from the original control (on a portrait screen it pages by less than a screenful).
    const int64_t firstRow = o == Orientation::Vertical ? rowHeight(0) : 0;
    switch (request) {
        case ScrollRequest::LineBack:
            return saturate(pos - kLineStep);
        case ScrollRequest::LineForward:
            return saturate(pos + kLineStep);
        case ScrollRequest::PageBack:
            return saturate(pos - m_clientWidth - firstRow);
        case ScrollRequest::PageForward:
            return saturate(pos + m_clientWidth - firstRow);
        case ScrollRequest::Thumb:
            return thumb;
        case ScrollRequest::Start:
            return 0;
        case ScrollRequest::End:
            return scrollLimit(o);
    }
    return saturate(pos);
}

bool MWGrid::scroll(Orientation o, ScrollRequest request, int32_t thumb) {
    if (!scrolling(o)) {
        return false;
    }
    const int32_t target = scrollTarget(o, request, thumb);
    return target != scrollPosition(o) && setScrollPosition(o, target);
}

void MWGrid::ensureCurrentVisible() {
    if (!isValidCell(m_current.row, m_current.column)) {
        return;
    }
    const GridRect cell = currentCellRect();
    const auto areaLeft = saturate(totalWidth(0, m_fixedColumns - 1));
    const auto areaTop = saturate(totalHeight(0, m_fixedRows - 1));
    int32_t dx = 0;
    if (cell.left < areaLeft) {
        dx = cell.left - areaLeft;
    } else if (cell.right > m_clientWidth) {
        dx = cell.right - m_clientWidth;
    }
    int32_t dy = 0;
    if (cell.top < areaTop) {
        dy = cell.top - areaTop;
    } else if (cell.bottom > m_clientHeight) {
        dy = cell.bottom - m_clientHeight;
    }
    if (dx != 0 && m_horizontalScrolling) {
        setScrollPosition(Orientation::Horizontal, m_horizontalPosition + dx);
    }
    if (dy != 0 && m_verticalScrolling) {
        setScrollPosition(Orientation::Vertical, m_verticalPosition + dy);
    }
}

}  // namespace nutrovex
