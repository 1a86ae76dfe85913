#include "ui/controls/MonthGrid.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "ui/TextConvert.h"
#include "ui/controls/AccessibleText.h"

namespace nutrovex {

namespace {

constexpr int kTitle = MonthCalendar::kTitleRow;
constexpr int kInitials = MonthCalendar::kInitialsRow;

}  // namespace

MonthGrid::MonthGrid(const Clock& clock, QWidget* parent)
    : MWGridWidget(parent), m_calendar(clock) {
    setFrameStyle(QFrame::WinPanel | QFrame::Raised);
    setViewportMargins(3, 3, 3, 3);
    MWGrid& g = grid();
    g.setRowCount(MonthCalendar::kRows);
    g.setColumnCount(MonthCalendar::kColumns);
    layoutCells();
    selectShownDay();
    connect(this, &MWGridWidget::keyHandled, this, [this](int, int) { reached(false); });
}

QSize MonthGrid::cellSizeHint() const {
    const QFontMetrics fm(font());
    return {std::max(fm.horizontalAdvance(QStringLiteral("00")) + 18, 32), fm.height() + 10};
}

QSize MonthGrid::sizeHint() const {
    const QSize cell = cellSizeHint();
    const int frame = 2 * (frameWidth() + 3);
    return {cell.width() * MonthCalendar::kColumns + frame,
            cell.height() * MonthCalendar::kRows + frame};
}

QSize MonthGrid::minimumSizeHint() const {
    return sizeHint();
}

void MonthGrid::resizeEvent(QResizeEvent* event) {
    MWGridWidget::resizeEvent(event);
    layoutCells();
}

// Seven equal columns and eight equal rows fill the client; the last ones take the remainder.
void MonthGrid::layoutCells() {
    MWGrid& g = grid();
    const int w = std::max(viewport()->width(), MonthCalendar::kColumns * 10);
    const int h = std::max(viewport()->height(), MonthCalendar::kRows * 4);
    g.setColumnWidth(0, w / MonthCalendar::kColumns);
    g.shareWidth(w - g.columnWidth(0));
    const int rowHeight = h / MonthCalendar::kRows;
    for (int r = 0; r < MonthCalendar::kRows; ++r) {
        g.setRowHeight(r, r == MonthCalendar::kRows - 1 ? h - rowHeight * r : rowHeight);
    }
    refresh();
}

void MonthGrid::setDate(int year, int month, int day) {
    m_calendar.setDate(year, month, day);
    selectShownDay();
}

void MonthGrid::setCanGoBack(bool on) {
    m_calendar.setCanGoBack(on);
    viewport()->update();
}

void MonthGrid::setCanGoForward(bool on) {
    m_calendar.setCanGoForward(on);
    viewport()->update();
}

void MonthGrid::selectShownDay() {
    // The month's title is painted: a reader hears it as the grid's name.
    setAccessibleName(controlName(toQString(m_calendar.title()), QStringLiteral("Calendar")));
    const GridCell cell = m_calendar.selectedCell();
    grid().selectCell(cell.row, cell.column);
    grid().resetAnchor();
    viewport()->update();
    announceChanges(true);
}

void MonthGrid::showPreviousMonth() {
    if (!m_calendar.canGoBack()) {
        return;
    }
    m_calendar.previousMonth();
    selectShownDay();
    Q_EMIT previousMonthShown();
}

void MonthGrid::showNextMonth() {
    if (!m_calendar.canGoForward()) {
        return;
    }
    m_calendar.nextMonth();
    selectShownDay();
    Q_EMIT nextMonthShown();
}

void MonthGrid::moved(int year, int month, int day) {
    if (m_calendar.year() != year || m_calendar.month() != month) {
        const bool back = std::pair(m_calendar.year(), m_calendar.month()) < std::pair(year, month);
        selectShownDay();
        Q_EMIT(back ? previousMonthShown() : nextMonthShown());
    } else {
        selectShownDay();
    }
    if (m_calendar.day() != day || m_calendar.month() != month || m_calendar.year() != year) {
        Q_EMIT daySelected(m_calendar.year(), m_calendar.month(), m_calendar.day());
    }
}

// The arrows walk the days across the month's edges, Page Up and Page Down step a month, Home
// and End go to the month's first and last day. Enter and Escape are the dialog's.
void MonthGrid::keyPressEvent(QKeyEvent* event) {
    const int year = m_calendar.year();
    const int month = m_calendar.month();
    const int day = m_calendar.day();
    bool handled = true;
    switch (event->key()) {
        case Qt::Key_Left:
            (void)m_calendar.moveDays(-1);
            break;
        case Qt::Key_Right:
            (void)m_calendar.moveDays(1);
            break;
        case Qt::Key_Up:
            (void)m_calendar.moveDays(-MonthCalendar::kColumns);
            break;
        case Qt::Key_Down:
            (void)m_calendar.moveDays(MonthCalendar::kColumns);
            break;
        case Qt::Key_PageUp:
            if (m_calendar.canGoBack()) {
                m_calendar.previousMonth();
            }
            break;
        case Qt::Key_PageDown:
            if (m_calendar.canGoForward()) {
                m_calendar.nextMonth();
            }
            break;
        case Qt::Key_Home:
            (void)m_calendar.selectDay(1);
            break;
        case Qt::Key_End:
            (void)m_calendar.selectDay(m_calendar.daysInShownMonth());
            break;
        default:
            handled = false;
            break;
    }
    if (!handled) {
        MWGridWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    moved(year, month, day);
}

// A tap, drag or key that reached a day cell selects that day and tells the owner.
void MonthGrid::reached(bool tapped) {
    grid().resetAnchor();
    const GridCell cur = grid().current();
    const int day = m_calendar.dayInCell(cur.row, cur.column);
    if (day != 0 && (tapped || day != m_calendar.day()) && m_calendar.selectDay(day)) {
        Q_EMIT daySelected(m_calendar.year(), m_calendar.month(), m_calendar.day());
    }
    viewport()->update();
}

void MonthGrid::mousePressEvent(QMouseEvent* event) {
    const QPoint pos = event->position().toPoint();
    const GridCell cell = grid().cellAt(pos.x(), pos.y());
    if (event->button() == Qt::LeftButton && cell.row == kTitle) {
        setFocus(Qt::MouseFocusReason);
        switch (MonthCalendar::titleAction(cell.column)) {
            case MonthCalendar::TitleAction::Previous:
                showPreviousMonth();
                break;
            case MonthCalendar::TitleAction::Next:
                showNextMonth();
                break;
            case MonthCalendar::TitleAction::None:
                break;
        }
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && refuseCell(cell.row, cell.column)) {
        setFocus(Qt::MouseFocusReason);  // an empty cell or an initial: nothing is selected
        event->accept();
        return;
    }
    MWGridWidget::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) {
        reached(true);
    }
}

void MonthGrid::mouseMoveEvent(QMouseEvent* event) {
    const GridCell before = grid().current();
    MWGridWidget::mouseMoveEvent(event);
    if (grid().current() != before) {
        reached(false);
    }
}

int MonthGrid::firstDataRow() const {
    return MonthCalendar::kFirstWeekRow;
}

QString MonthGrid::accessibleText(int row, int column) const {
    const int day = m_calendar.dayInCell(row + MonthCalendar::kFirstWeekRow, column);
    return day == 0 ? QString() : toQString(m_calendar.dayName(day));
}

QString MonthGrid::accessibleColumnHeader(int column) const {
    return column >= 0 && column < MonthCalendar::kColumns
               ? QString::fromLatin1(kWeekdayNames[column])
               : QString();
}

bool MonthGrid::accessibleCellSelected(int row, int column) const {
    return m_calendar.selectedCell() == GridCell{row + MonthCalendar::kFirstWeekRow, column};
}

// A day is picked by moving to it, never by selecting rows.
bool MonthGrid::selectAccessibleRows(int, int) {
    return false;
}

bool MonthGrid::refuseCell(int row, int column) const {
    return m_calendar.dayInCell(row, column) == 0;
}

QString MonthGrid::cellText(int row, int column) const {
    if (row == kInitials) {
        return QLatin1String(MonthCalendar::kInitials[column]);
    }
    const int day = m_calendar.dayInCell(row, column);
    return day == 0 ? QString() : QString::number(day);
}

int MonthGrid::cellAlignment(int, int) const {
    return Qt::AlignCenter;
}

QColor MonthGrid::cellBackground(int row, int column) const {
    if (row == kTitle || row == kInitials) {
        return buttonFaceColour();
    }
    const GridCell selected = m_calendar.selectedCell();
    return row == selected.row && column == selected.column ? highlightColour() : windowColour();
}

QColor MonthGrid::cellTextColour(int row, int column) const {
    const GridCell selected = m_calendar.selectedCell();
    return row == selected.row && column == selected.column ? highlightTextColour()
                                                            : windowTextColour();
}

QColor MonthGrid::todayColour() const {
    return {200, 30, 30};
}

// Lines only between the days; the title and initials rows are one band.
void MonthGrid::drawGridLines(QPainter& p) {
    p.setPen(gridLineColour().lighter(130));
    forEachVisibleCell(p, [&](int row, int, const QRect& rect) {
        if (row >= MonthCalendar::kFirstWeekRow) {
            p.drawLine(rect.bottomLeft(), rect.bottomRight());
        }
    });
    const QRect initials = cellRect(kInitials, 0);
    p.setPen(palette().color(QPalette::Dark));
    p.drawLine(0, initials.bottom(), grid().clientWidth(), initials.bottom());
}

void MonthGrid::drawHeaders(QPainter&) {}

void MonthGrid::drawCell(QPainter& p, int row, int column, const QRect& rect) {
    if (row == kTitle) {
        return;  // drawn across the whole row in drawDecorations
    }
    QFont f = font();
    f.setBold(row == kInitials);
    p.setFont(f);
    MWGridWidget::drawCell(p, row, column, rect);
    p.setFont(font());
}

void MonthGrid::drawSelection(QPainter&) {}

void MonthGrid::drawCurrentCell(QPainter& p) {
    if (!grid().focused()) {
        return;
    }
    const GridCell selected = m_calendar.selectedCell();
    QPen pen(highlightTextColour());
    pen.setStyle(Qt::DotLine);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRect(cellRect(selected.row, selected.column).adjusted(2, 2, -3, -3));
}

// The title across its row with the two month steps, and a ring around today.
void MonthGrid::drawDecorations(QPainter& p) {
    const QRect first = cellRect(kTitle, 0);
    const QRect last = cellRect(kTitle, MonthCalendar::kColumns - 1);
    const QRect title = first.united(last);
    QFont bold = font();
    bold.setBold(true);
    p.setFont(bold);
    p.setPen(windowTextColour());
    p.drawText(title, Qt::AlignCenter, toQString(m_calendar.title()));
    p.setFont(font());

    const auto arrow = [&](const QRect& cell, bool left, bool enabled) {
        const int s = std::max(4, std::min(cell.width(), cell.height()) / 4);
        const QPoint c = cell.center();
        QPainterPath path;
        if (left) {
            path.moveTo(c.x() - s / 2, c.y());
            path.lineTo(c.x() + s / 2, c.y() - s);
            path.lineTo(c.x() + s / 2, c.y() + s);
        } else {
            path.moveTo(c.x() + s / 2, c.y());
            path.lineTo(c.x() - s / 2, c.y() - s);
            path.lineTo(c.x() - s / 2, c.y() + s);
        }
        path.closeSubpath();
        p.setRenderHint(QPainter::Antialiasing, true);
        p.fillPath(path, enabled ? windowTextColour()
                                 : palette().color(QPalette::Disabled, QPalette::WindowText));
        p.setRenderHint(QPainter::Antialiasing, false);
    };
    arrow(first, true, m_calendar.canGoBack());
    arrow(last, false, m_calendar.canGoForward());

    if (const auto today = m_calendar.todayCell()) {
        const QRect cell = cellRect(today->row, today->column).adjusted(2, 2, -3, -3);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setPen(QPen(todayColour(), 2));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(cell, 4, 4);
        p.setRenderHint(QPainter::Antialiasing, false);
    }
}

}  // namespace nutrovex
