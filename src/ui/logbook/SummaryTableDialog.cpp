#include "ui/logbook/SummaryTableDialog.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <numeric>

#include "logbook/SummaryTable.h"
#include "ui/TextConvert.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

// The dot beside the date of a day within the targets, for a row of this height.
int markSize(int rowHeight) {
    return std::max(4, rowHeight / 3);
}

}  // namespace

SummaryTableGrid::SummaryTableGrid(SummaryTableForm form, QWidget* parent)
    : MWGridWidget(parent), m_form(std::move(form)) {
    setAccessibleName(QStringLiteral("Summary Table"));
    grid().setColumnCount(kSummaryColumnCount);
    grid().setFixedRows(1);
    grid().setScrolling(Orientation::Vertical, true);
    sizeColumns();
    reload();
}

void SummaryTableGrid::sizeColumns() {
    const QFontMetrics m(font());
    grid().setColumnWidthLimits(10, 1000);
    grid().setDefaultRowHeight(m.height() + 6);
    grid().setRowHeightLimits(4, 500);
    // Each column as wide as its widest possible text.
    const std::array<const char*, kSummaryColumnCount> widest{
        "00/00", "99999", "9999.9 g", "9999.9 g", "9999.9 g", "9999.9 g", "9999.9 g", "99999"};
    for (std::size_t c = 0; c < widest.size(); ++c) {
        m_naturalWidths[c] = m.horizontalAdvance(QString::fromLatin1(widest[c])) + 8;
    }
    if (m_view.marksTargets) {
        m_naturalWidths[0] += 2 * (markSize(m.height()) + 4);  // the dot clear of the centred date
    }
    // The columns share the width in proportion to their widest texts.
    const int natural = std::accumulate(m_naturalWidths.begin(), m_naturalWidths.end(), 0);
    const int room = std::max(viewport()->width(), kSummaryColumnCount * 10);
    int used = 0;
    for (int c = 0; c < kSummaryColumnCount; ++c) {
        const int width = c + 1 == kSummaryColumnCount
                              ? room - used
                              : m_naturalWidths[static_cast<std::size_t>(c)] * room / natural;
        grid().setColumnWidth(c, width);
        used += width;
    }
    for (int r = 0; r < grid().rowCount(); ++r) {
        grid().setRowHeight(r, m.height() + 6);
    }
}

void SummaryTableGrid::reload() {
    const bool marked = m_view.marksTargets;
    m_view = m_form.view();
    const SummaryTableView& v = m_view;
    if (v.marksTargets != marked) {
        sizeColumns();
    }
    const int days = v.days;
    grid().setRowCount(days + 1);
    m_currentDayRow = v.currentRow < 0 ? -1 : v.currentRow + 1;
    if (m_currentDayRow > 0) {
        grid().selectCell(m_currentDayRow, 0);
        grid().resetAnchor();
    } else if (days > 0 && grid().current().row < 1) {
        grid().selectCell(1, 0);
        grid().resetAnchor();
    }
    refresh();
    grid().ensureCurrentVisible();
    refresh();
}

QString SummaryTableGrid::cellText(int row, int column) const {
    return toQString(m_form.cell(row - 1, column));
}

int SummaryTableGrid::cellAlignment(int row, int column) const {
    if (row == 0 || column == 0) {
        return Qt::AlignCenter;
    }
    return Qt::AlignRight | Qt::AlignVCenter;
}

QColor SummaryTableGrid::cellBackground(int row, int column) const {
    if (row == m_currentDayRow) {
        return highlightColour();
    }
    return MWGridWidget::cellBackground(row, column);
}

QColor SummaryTableGrid::cellTextColour(int row, int column) const {
    if (row == m_currentDayRow) {
        return highlightTextColour();
    }
    return MWGridWidget::cellTextColour(row, column);
}

void SummaryTableGrid::resizeEvent(QResizeEvent* event) {
    MWGridWidget::resizeEvent(event);
    sizeColumns();
    refresh();
}

bool SummaryTableGrid::markedWithinTargets(int row) const {
    return m_view.marksTargets && row >= 1 && m_form.withinTargets(row - 1);
}

void SummaryTableGrid::drawCell(QPainter& p, int row, int column, const QRect& rect) {
    const QString text = cellText(row, column);
    if (text.isEmpty()) {
        return;
    }
    const QRect inner = rect.adjusted(3, 1, -3, -1);
    if (column == 0 && markedWithinTargets(row)) {
        // The dot sits left of the centred date, in the text's colour.
        const int d = markSize(inner.height());
        p.save();
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.setBrush(cellTextColour(row, column));
        p.drawEllipse(QRect(inner.left(), inner.top() + (inner.height() - d) / 2, d, d));
        p.restore();
    }
    if (m_laidOut.size() > 4096) {
        m_laidOut.clear();
    }
    auto it = m_laidOut.find(text);
    if (it == m_laidOut.end()) {
        QStaticText laid(text);
        laid.setTextFormat(Qt::PlainText);
        laid.prepare(QTransform(), p.font());
        it = m_laidOut.insert(text, laid);
    }
    const QSizeF size = it->size();
    if (size.width() > inner.width()) {
        MWGridWidget::drawCell(p, row, column, rect);  // too narrow: elided as usual
        return;
    }
    const int alignment = cellAlignment(row, column);
    const qreal x = (alignment & Qt::AlignRight) != 0 ? inner.right() + 1 - size.width()
                    : (alignment & Qt::AlignHCenter) != 0
                        ? inner.left() + (inner.width() - size.width()) / 2
                        : inner.left();
    const qreal y = inner.top() + (inner.height() - size.height()) / 2;
    p.setPen(cellTextColour(row, column));
    p.drawStaticText(QPointF(x, y), *it);
}

// A scroll bar that comes or goes resizes the viewport alone; the grid must cover it all.
bool SummaryTableGrid::viewportEvent(QEvent* event) {
    const bool handled = MWGridWidget::viewportEvent(event);
    if (event->type() == QEvent::Resize) {
        sizeColumns();
        refresh();
    }
    return handled;
}

void SummaryTableGrid::changeEvent(QEvent* event) {
    MWGridWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_laidOut.clear();
        sizeColumns();
        refresh();
    }
}

SummaryTableDialog::SummaryTableDialog(SummaryTableForm form, SessionNotifier& notifier,
                                       QWidget* parent)
    : LogbookScreen(notifier, parent, QStringLiteral("Summary Table")),
      m_grid(new SummaryTableGrid(std::move(form), this)),
      m_legend(new QLabel(this)) {
    addOptionsMenu();
    body()->addWidget(m_grid, 1);
    m_legend->setWordWrap(true);
    m_legend->setAccessibleName(QStringLiteral("Targets legend"));
    body()->addWidget(m_legend);
    showLegend();
    connect(&notifier, &SessionNotifier::dataChanged, m_grid, &SummaryTableGrid::reload);
    connect(&notifier, &SessionNotifier::dayCreated, m_grid, &SummaryTableGrid::reload);
    connect(&notifier, &SessionNotifier::userChanged, m_grid, &SummaryTableGrid::reload);
    // After the grid has read the form again.
    connect(&notifier, &SessionNotifier::dataChanged, this, &SummaryTableDialog::showLegend);
    connect(&notifier, &SessionNotifier::userChanged, this, &SummaryTableDialog::showLegend);
    m_grid->setFocus();
}

void SummaryTableDialog::showLegend() {
    const SummaryTableView& v = m_grid->view();
    m_legend->setText(toQString(v.targetsLegend));
    m_legend->setVisible(v.marksTargets);
}

}  // namespace nutrovex
