#include "ui/controls/MWGridWidget.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/controls/GridAccessible.h"

namespace nutrovex {

namespace {

GridKey gridKey(int key) {
    switch (key) {
        case Qt::Key_PageUp:
            return GridKey::PageUp;
        case Qt::Key_PageDown:
            return GridKey::PageDown;
        case Qt::Key_End:
            return GridKey::End;
        case Qt::Key_Home:
            return GridKey::Home;
        case Qt::Key_Left:
            return GridKey::Left;
        case Qt::Key_Up:
            return GridKey::Up;
        case Qt::Key_Right:
            return GridKey::Right;
        case Qt::Key_Down:
            return GridKey::Down;
        default:
            return GridKey::Other;
    }
}

QRect toQRect(const GridRect& r) {
    return {r.left, r.top, r.width(), r.height()};
}

}  // namespace

MWGridWidget::MWGridWidget(QWidget* parent) : QAbstractScrollArea(parent), m_grid(*this) {
    static const bool accessible = [] {
        installAccessibility();
        return true;
    }();
    (void)accessible;
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_NoSystemBackground);
    connect(verticalScrollBar(), &QAbstractSlider::actionTriggered, this,
            [this](int action) { scrollAction(Orientation::Vertical, action); });
    connect(horizontalScrollBar(), &QAbstractSlider::actionTriggered, this,
            [this](int action) { scrollAction(Orientation::Horizontal, action); });
    syncScrollBars();
}

MWGridWidget::~MWGridWidget() = default;

void MWGridWidget::refresh() {
    m_grid.setClientSize(viewport()->width(), viewport()->height());
    syncScrollBars();
    viewport()->update();
    announceChanges();
}

void MWGridWidget::selectCell(int row, int column) {
    if (m_grid.selectCell(row, column)) {
        viewport()->update();
        announceChanges();
    }
}

void MWGridWidget::setSpecialCursor(int which, const QCursor& cursor) {
    if (which >= 0 && which < 2) {
        m_cursors[static_cast<std::size_t>(which)] = cursor;
        updateCursor();
    }
}

void MWGridWidget::setSpecialCursorOn(int which, bool on) {
    if (which >= 0 && which < 2) {
        m_cursorOn[static_cast<std::size_t>(which)] = on;
        updateCursor();
    }
}

void MWGridWidget::updateCursor() {
    for (std::size_t i = 0; i < m_cursors.size(); ++i) {
        if (m_cursorOn[i]) {
            viewport()->setCursor(m_cursors[i]);
            return;
        }
    }
    viewport()->unsetCursor();
}

// --- Scrolling ----------------------------------------------------------------------------------

void MWGridWidget::syncScrollBars() {
    m_syncing = true;
    const auto sync = [this](QScrollBar* bar, Orientation o, int page) {
        if (!m_grid.scrolling(o)) {
            bar->setRange(0, 0);
            return;
        }
        bar->setRange(0, m_grid.scrollLimit(o));
        bar->setPageStep(std::max(page, 1));
        bar->setSingleStep(16);
        bar->setValue(m_grid.scrollPosition(o));
    };
    const auto policy = [this](Orientation o) {
        return m_grid.scrolling(o) ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
    };
    if (verticalScrollBarPolicy() != policy(Orientation::Vertical)) {
        setVerticalScrollBarPolicy(policy(Orientation::Vertical));
    }
    if (horizontalScrollBarPolicy() != policy(Orientation::Horizontal)) {
        setHorizontalScrollBarPolicy(policy(Orientation::Horizontal));
    }
    sync(verticalScrollBar(), Orientation::Vertical, m_grid.clientHeight());
    sync(horizontalScrollBar(), Orientation::Horizontal, m_grid.clientWidth());
    m_syncing = false;
}

// The scroll bar proposes a position for each request; the grid's own steps replace it.
void MWGridWidget::scrollAction(Orientation o, int action) {
    QScrollBar* bar = o == Orientation::Vertical ? verticalScrollBar() : horizontalScrollBar();
    ScrollRequest request = ScrollRequest::Thumb;
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            request = ScrollRequest::LineForward;
            break;
        case QAbstractSlider::SliderSingleStepSub:
            request = ScrollRequest::LineBack;
            break;
        case QAbstractSlider::SliderPageStepAdd:
            request = ScrollRequest::PageForward;
            break;
        case QAbstractSlider::SliderPageStepSub:
            request = ScrollRequest::PageBack;
            break;
        case QAbstractSlider::SliderToMinimum:
            request = ScrollRequest::Start;
            break;
        case QAbstractSlider::SliderToMaximum:
            request = ScrollRequest::End;
            break;
        default:
            break;
    }
    const int target = m_grid.scrollTarget(o, request, bar->sliderPosition());
    bar->setSliderPosition(std::clamp(target, 0, m_grid.scrollLimit(o)));
}

void MWGridWidget::scrollContentsBy(int, int) {
    if (m_syncing) {
        return;
    }
    const bool v = m_grid.setScrollPosition(Orientation::Vertical, verticalScrollBar()->value());
    const bool h =
        m_grid.setScrollPosition(Orientation::Horizontal, horizontalScrollBar()->value());
    if (v || h) {
        viewport()->update();
    }
}

// --- Input --------------------------------------------------------------------------------------

void MWGridWidget::keyPressEvent(QKeyEvent* event) {
    const GridKey key = gridKey(event->key());
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    m_grid.keyDown(key, ctrl, shift);
    syncScrollBars();
    viewport()->update();
    if (key == GridKey::Other) {
        // Enter, Escape and the rest still reach the dialog.
        event->ignore();
    } else {
        event->accept();
    }
    announceChanges();
    Q_EMIT keyHandled(m_grid.current().row, m_grid.current().column);
}

void MWGridWidget::keyReleaseEvent(QKeyEvent* event) {
    QAbstractScrollArea::keyReleaseEvent(event);
    viewport()->update();
}

void MWGridWidget::focusInEvent(QFocusEvent* event) {
    m_grid.setFocused(true);
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    // A reader moves on from the table to its current cell.
    m_announced.current.reset();
    announceChanges();
}

void MWGridWidget::focusOutEvent(QFocusEvent* event) {
    m_grid.setFocused(false);
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void MWGridWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QAbstractScrollArea::mousePressEvent(event);
        return;
    }
    const QPoint pos = event->position().toPoint();
    m_grid.stylusDown(pos.x(), pos.y(), event->modifiers().testFlag(Qt::ShiftModifier));
    setFocus(Qt::MouseFocusReason);
    m_grid.setFocused(hasFocus());
    viewport()->update();
    event->accept();
    announceChanges();
    Q_EMIT cellTapped(m_grid.current().row, m_grid.current().column);
}

void MWGridWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    if (m_grid.stylusMove(pos.x(), pos.y(), event->buttons().testFlag(Qt::LeftButton))) {
        syncScrollBars();
        viewport()->update();
        announceChanges();
    }
    event->accept();
}

void MWGridWidget::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    m_grid.setClientSize(viewport()->width(), viewport()->height());
    syncScrollBars();
}

// Qt releases the mouse grab by itself when the button comes up.
void MWGridWidget::mouseReleaseEvent(QMouseEvent* event) {
    QAbstractScrollArea::mouseReleaseEvent(event);
    event->accept();
}

// --- Assistive technology -----------------------------------------------------------------------

int MWGridWidget::firstDataRow() const {
    return m_grid.fixedRows();
}

int MWGridWidget::accessibleRowCount() const {
    return std::max(m_grid.rowCount() - firstDataRow(), 0);
}

int MWGridWidget::accessibleColumnCount() const {
    return m_grid.columnCount();
}

QString MWGridWidget::accessibleText(int row, int column) const {
    return cellText(row + firstDataRow(), column);
}

QString MWGridWidget::accessibleColumnHeader(int column) const {
    const int above = firstDataRow();
    return above > 0 ? cellText(above - 1, column) : QString();
}

QRect MWGridWidget::accessibleCellRect(int row, int column) const {
    return cellRect(row + firstDataRow(), std::min(column, m_grid.lastColumn()));
}

bool MWGridWidget::accessibleCellSelected(int row, int) const {
    const GridRange selection = m_grid.selectionRange();
    const int gridRow = row + firstDataRow();
    return gridRow >= selection.first.row && gridRow <= selection.last.row;
}

std::optional<std::pair<int, int>> MWGridWidget::accessibleCurrentCell() const {
    const GridCell current = m_grid.current();
    const int row = current.row - firstDataRow();
    const int columns = accessibleColumnCount();
    if (row < 0 || row >= accessibleRowCount() || columns == 0) {
        return std::nullopt;
    }
    return std::pair(row, std::clamp(current.column, 0, columns - 1));
}

bool MWGridWidget::selectAccessibleRows(int anchor, int current) {
    const int rows = accessibleRowCount();
    if (anchor < 0 || current < 0 || anchor >= rows || current >= rows) {
        return false;
    }
    const int top = firstDataRow();
    const int column = m_grid.current().column;
    const bool wasAll = m_grid.selectAll();
    m_grid.setSelectAll(false);
    if (!m_grid.setSelection({anchor + top, column}, {current + top, column})) {
        m_grid.setSelectAll(wasAll);
        return false;
    }
    m_grid.ensureCurrentVisible();
    syncScrollBars();
    viewport()->update();
    announceChanges();
    Q_EMIT selectionSet(m_grid.current().row, m_grid.current().column);
    return true;
}

void MWGridWidget::announceChanges(bool currentText) {
    if (!QAccessible::isActive()) {
        m_announced = {};  // told afresh once a reader comes
        return;
    }
    const int rows = accessibleRowCount();
    const int columns = accessibleColumnCount();
    if (rows != m_announced.rows || columns != m_announced.columns) {
        m_announced.rows = rows;
        m_announced.columns = columns;
        QAccessibleTableModelChangeEvent reset(this, QAccessibleTableModelChangeEvent::ModelReset);
        QAccessible::updateAccessibility(&reset);
    }
    const GridRange selection = m_grid.selectionRange();
    if (selection != m_announced.selection || m_grid.selectAll() != m_announced.all) {
        m_announced.selection = selection;
        m_announced.all = m_grid.selectAll();
        QAccessibleEvent changed(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&changed);
    }
    const auto current = accessibleCurrentCell();
    if (current == m_announced.current && !currentText) {
        return;
    }
    m_announced.current = current;
    if (!current || !hasFocus()) {
        return;
    }
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(this);
    QAccessibleTableInterface* cells = table != nullptr ? table->tableInterface() : nullptr;
    if (QAccessibleInterface* cell =
            cells != nullptr ? cells->cellAt(current->first, current->second) : nullptr) {
        QAccessibleEvent focus(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

// --- Colours ------------------------------------------------------------------------------------

bool MWGridWidget::refuseCell(int, int) const {
    return false;
}

QString MWGridWidget::cellText(int, int) const {
    return {};
}

int MWGridWidget::cellAlignment(int row, int column) const {
    return row < m_grid.fixedRows() || column < m_grid.fixedColumns()
               ? int(Qt::AlignCenter)
               : int(Qt::AlignLeft | Qt::AlignVCenter);
}

QColor MWGridWidget::windowTextColour() const {
    return palette().color(QPalette::WindowText);
}
QColor MWGridWidget::buttonFaceColour() const {
    return palette().color(QPalette::Button);
}
QColor MWGridWidget::highlightColour() const {
    return palette().color(QPalette::Highlight);
}
QColor MWGridWidget::highlightTextColour() const {
    return palette().color(QPalette::HighlightedText);
}
QColor MWGridWidget::windowColour() const {
    return palette().color(QPalette::Base);
}
QColor MWGridWidget::marginColour() const {
    return windowColour();
}
QColor MWGridWidget::gridLineColour() const {
    return palette().color(QPalette::Mid);
}

bool MWGridWidget::isHighlighted(int row, int column) const {
    return m_grid.hasSelection() && m_grid.selectionRange().contains(row, column);
}

QColor MWGridWidget::cellBackground(int row, int column) const {
    if (row < m_grid.fixedRows() || column < m_grid.fixedColumns()) {
        return buttonFaceColour();
    }
    return isHighlighted(row, column) ? highlightColour() : windowColour();
}

QColor MWGridWidget::cellTextColour(int row, int column) const {
    return isHighlighted(row, column) ? highlightTextColour() : windowTextColour();
}

// --- Painting -----------------------------------------------------------------------------------

QRect MWGridWidget::cellRect(int row, int column) const {
    return toQRect(m_grid.cellRect(row, column));
}

void MWGridWidget::forEachVisibleCell(
    QPainter& p, const std::function<void(int row, int column, const QRect&)>& visit) {
    const int w = m_grid.clientWidth();
    const int h = m_grid.clientHeight();
    const int fixedRows = std::min(m_grid.fixedRows(), m_grid.rowCount());
    const int fixedColumns = std::min(m_grid.fixedColumns(), m_grid.columnCount());
    const int fixedBottom =
        m_grid.topMargin() + static_cast<int>(m_grid.totalHeight(0, fixedRows - 1));
    const int fixedRight =
        m_grid.leftMargin() + static_cast<int>(m_grid.totalWidth(0, fixedColumns - 1));
    const auto rows = m_grid.visibleScrollingRows();
    const auto columns = m_grid.visibleScrollingColumns();
    const std::pair<int, int> headRows{0, fixedRows};
    const std::pair<int, int> headColumns{0, fixedColumns};

    const auto region = [&](std::pair<int, int> rr, std::pair<int, int> cc, const QRect& clip) {
        if (clip.isEmpty() || rr.first >= rr.second || cc.first >= cc.second) {
            return;
        }
        p.save();
        p.setClipRect(clip);
        for (int r = rr.first; r < rr.second; ++r) {
            for (int c = cc.first; c < cc.second; ++c) {
                visit(r, c, cellRect(r, c));
            }
        }
        p.restore();
    };
    region(rows, columns, QRect(QPoint(fixedRight, fixedBottom), QPoint(w - 1, h - 1)));
    region(headRows, columns, QRect(QPoint(fixedRight, 0), QPoint(w - 1, fixedBottom - 1)));
    region(rows, headColumns, QRect(QPoint(0, fixedBottom), QPoint(fixedRight - 1, h - 1)));
    region(headRows, headColumns, QRect(QPoint(0, 0), QPoint(fixedRight - 1, fixedBottom - 1)));
}

void MWGridWidget::paintEvent(QPaintEvent* event) {
    const QSize size = viewport()->size();
    const qreal ratio = devicePixelRatioF();
    if (m_buffer.size() != size * ratio) {
        m_buffer = QPixmap(size * ratio);
        m_buffer.setDevicePixelRatio(ratio);
    }
    {
        QPainter off(&m_buffer);
        draw(off);
    }
    QPainter on(viewport());
    on.drawPixmap(
        event->rect(), m_buffer,
        QRectF(QPointF(event->rect().topLeft()) * ratio, QSizeF(event->rect().size()) * ratio));
}

void MWGridWidget::draw(QPainter& p) {
    prepareDraw(p);
    drawBackground(p);
    drawGridLines(p);
    drawHeaders(p);
    drawCells(p);
    drawSelection(p);
    drawCurrentCell(p);
    drawDecorations(p);
    // The one fixed step: nothing drawn may spill past the client area's edge.
    p.setClipping(false);
    finishDraw(p);
    closeDraw(p);
}

void MWGridWidget::prepareDraw(QPainter& p) {
    p.setFont(font());
}

void MWGridWidget::drawBackground(QPainter& p) {
    p.fillRect(QRect(0, 0, m_grid.clientWidth(), m_grid.clientHeight()), marginColour());
    forEachVisibleCell(p, [&](int row, int column, const QRect& rect) {
        p.fillRect(rect, cellBackground(row, column));
    });
}

void MWGridWidget::drawGridLines(QPainter& p) {
    p.setPen(gridLineColour());
    forEachVisibleCell(p, [&](int, int, const QRect& rect) {
        p.drawLine(rect.topRight(), rect.bottomRight());
        p.drawLine(rect.bottomLeft(), rect.bottomRight());
    });
}

// Header cells look raised: a light edge at the top left, a dark one at the bottom right.
void MWGridWidget::drawHeaders(QPainter& p) {
    const QColor light = palette().color(QPalette::Light);
    const QColor dark = palette().color(QPalette::Dark);
    forEachVisibleCell(p, [&](int row, int column, const QRect& rect) {
        if (row >= m_grid.fixedRows() && column >= m_grid.fixedColumns()) {
            return;
        }
        p.setPen(light);
        p.drawLine(rect.topLeft(), rect.topRight());
        p.drawLine(rect.topLeft(), rect.bottomLeft());
        p.setPen(dark);
        p.drawLine(rect.topRight(), rect.bottomRight());
        p.drawLine(rect.bottomLeft(), rect.bottomRight());
    });
}

void MWGridWidget::drawCells(QPainter& p) {
    forEachVisibleCell(
        p, [&](int row, int column, const QRect& rect) { drawCell(p, row, column, rect); });
}

void MWGridWidget::drawCell(QPainter& p, int row, int column, const QRect& rect) {
    const QString text = cellText(row, column);
    if (text.isEmpty()) {
        return;
    }
    p.setPen(cellTextColour(row, column));
    const QRect inner = rect.adjusted(3, 1, -3, -1);
    p.drawText(inner, cellAlignment(row, column),
               p.fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
}

// The selection's outline, so a selection stays visible where a derived grid colours its cells
// in its own way.
void MWGridWidget::drawSelection(QPainter& p) {
    if (!m_grid.hasSelection()) {
        return;
    }
    const GridRange range = m_grid.selectionRange();
    const QRect first = cellRect(range.first.row, range.first.column);
    const QRect last = cellRect(range.last.row, range.last.column);
    p.setPen(QPen(highlightColour().darker(130), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(first.united(last).adjusted(0, 0, -1, -1));
}

void MWGridWidget::drawCurrentCell(QPainter& p) {
    const GridCell cur = m_grid.current();
    if (!m_grid.focused() || !m_grid.isValidCell(cur.row, cur.column)) {
        return;
    }
    QPen pen(isHighlighted(cur.row, cur.column) ? highlightTextColour() : windowTextColour());
    pen.setStyle(Qt::DotLine);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRect(cellRect(cur.row, cur.column).adjusted(1, 1, -2, -2));
}

void MWGridWidget::drawDecorations(QPainter&) {}
void MWGridWidget::finishDraw(QPainter&) {}
void MWGridWidget::closeDraw(QPainter&) {}

}  // namespace nutrovex
