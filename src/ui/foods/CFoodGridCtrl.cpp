#include "ui/foods/CFoodGridCtrl.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "ui/TextConvert.h"

namespace nutrovex {

namespace {

// The row layout was drawn for a cell 240 pixels wide; wider cells spread it out.
constexpr double kDesignWidth = 240.0;
constexpr int kSecondColumn = 65;
constexpr int kThirdColumn = 130;

// The table a reader gets: the row's name, meal and serving, then the nutrients in their order.
// An exercise's minutes stand in the serving's column and its calories in the calories'.
constexpr int kNameColumn = 0;
constexpr int kMealColumn = 1;
constexpr int kServingColumn = 2;
constexpr int kFirstNutrientColumn = 3;
constexpr const char* kColumnHeaders[kFirstNutrientColumn + kNutrientCount] = {
    "Name",  "Meal",    "Serving", "Calories",     "Carbohydrate",
    "Fiber", "Protein", "Fat",     "Saturated Fat"};

}  // namespace

CFoodGridCtrl::CFoodGridCtrl(QWidget* parent) : MWGridWidget(parent) {
    grid().setColumnCount(1);
    grid().setColumnWidthLimits(1, 32767);
    grid().setScrolling(Orientation::Vertical, true);
    grid().setTracking(true);
    setAccessibleName(QStringLiteral("Food Log"));
    const auto report = [this] { Q_EMIT selected(selectedRows()); };
    connect(this, &MWGridWidget::keyHandled, this, report);
    connect(this, &MWGridWidget::cellTapped, this, report);
    connect(this, &MWGridWidget::selectionSet, this, report);
}

void CFoodGridCtrl::show(const FoodGridView& view) {
    m_rows = view.rows;
    m_nutrientView = view.log.nutrientView;
    const auto& rows = m_rows.rows;
    const int line = fontMetrics().height();
    grid().setRowCount(static_cast<int32_t>(rows.size()));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const bool twoLines =
            rows[r].kind == LogRowKind::Food || rows[r].kind == LogRowKind::FoodTotals;
        grid().setRowHeight(static_cast<int32_t>(r), twoLines ? 2 * line + 6 : line + 6);
    }
    const bool moved = view.selection != selectedRows();
    grid().setSelectAll(false);
    if (moved) {
        (void)grid().setSelection({view.selection.first, 0}, {view.selection.last, 0});
    }
    if (grid().current().row > grid().lastRow()) {
        (void)grid().selectCell(std::max(grid().lastRow(), 0), 0);
        grid().resetAnchor();
    }
    if (moved) {
        grid().ensureCurrentVisible();
    }
    refresh();
}

void CFoodGridCtrl::selectRow(int row) {
    grid().setSelectAll(false);
    selectCell(row, 0);
    grid().resetAnchor();
    refresh();
}

RowRange CFoodGridCtrl::selectedRows() const {
    if (grid().selectAll()) {
        return {0, grid().lastRow()};
    }
    const GridRange range = grid().selectionRange();
    return {range.first.row, range.last.row};
}

int CFoodGridCtrl::accessibleColumnCount() const {
    return kFirstNutrientColumn + kNutrientCount;
}

QString CFoodGridCtrl::accessibleColumnHeader(int column) const {
    return column >= 0 && column < accessibleColumnCount()
               ? QString::fromLatin1(kColumnHeaders[column])
               : QString();
}

QString CFoodGridCtrl::accessibleText(int row, int column) const {
    const auto& rows = m_rows.rows;
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return {};
    }
    const LogRow& r = rows[static_cast<std::size_t>(row)];
    const bool exercise = r.kind == LogRowKind::Exercise || r.kind == LogRowKind::ExerciseTotals;
    switch (column) {
        case kNameColumn:
            return toQString(r.text);
        case kMealColumn:
            return toQString(r.meal);
        case kServingColumn:
            return toQString(exercise ? r.minutes : r.serving);
        default:
            break;
    }
    const int nutrient = column - kFirstNutrientColumn;
    if (nutrient < 0 || nutrient >= kNutrientCount) {
        return {};
    }
    if (exercise) {
        return nutrient == kCalories ? toQString(r.calories) : QString();
    }
    return toQString(r.nutrients[static_cast<std::size_t>(nutrient)]);
}

// The texts share the row's one painted cell.
QRect CFoodGridCtrl::accessibleCellRect(int row, int) const {
    return cellRect(row, 0);
}

void CFoodGridCtrl::resizeEvent(QResizeEvent* event) {
    MWGridWidget::resizeEvent(event);
    grid().setColumnWidth(0, viewport()->width());  // the one column fills the width
    refresh();
}

void CFoodGridCtrl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2) {
        Q_EMIT editRequested(currentRow());
        event->accept();
        return;
    }
    if (grid().selectAll() && event->key() != Qt::Key_Control) {
        grid().setSelectAll(false);
    }
    MWGridWidget::keyPressEvent(event);
}

void CFoodGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    MWGridWidget::mousePressEvent(event);
    Q_EMIT editRequested(currentRow());
}

void CFoodGridCtrl::drawCell(QPainter& p, int row, int column, const QRect& rect) {
    const auto& rows = m_rows.rows;
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return;
    }
    const LogRow& r = rows[static_cast<std::size_t>(row)];
    p.setPen(cellTextColour(row, column));
    const QRect inner = rect.adjusted(3, 2, -3, -2);
    const double scale = inner.width() / kDesignWidth;
    const int line = p.fontMetrics().height();
    const int x2 = inner.left() + static_cast<int>(kSecondColumn * scale);
    const int x3 = inner.left() + static_cast<int>(kThirdColumn * scale);
    auto text = [&](int left, int right, int top, const std::string& s) {
        const QRect box(left, top, std::max(right - left - 4, 0), line);
        p.drawText(box, Qt::AlignLeft | Qt::AlignVCenter,
                   p.fontMetrics().elidedText(toQString(s), Qt::ElideRight, box.width()));
    };
    const int top = inner.top();
    const int right = inner.right() + 1;
    switch (r.kind) {
        case LogRowKind::FoodHeader:
        case LogRowKind::ExerciseHeader: {
            QFont bold = p.font();
            bold.setBold(true);
            p.save();
            p.setFont(bold);
            text(inner.left(), right, top, r.text);
            p.restore();
            break;
        }
        case LogRowKind::NoFoods:
            text(inner.left(), right, top, r.text);
            break;
        case LogRowKind::Food:
        case LogRowKind::FoodTotals: {
            const auto [a, b] = viewNutrients(m_nutrientView);
            text(inner.left(), x3, top, r.text);
            text(x3, right, top, r.meal);
            text(inner.left(), x2, top + line, r.serving);
            text(x2, x3, top + line, r.nutrients[static_cast<std::size_t>(a)]);
            text(x3, right, top + line, r.nutrients[static_cast<std::size_t>(b)]);
            break;
        }
        case LogRowKind::Exercise:
        case LogRowKind::ExerciseTotals:
            text(inner.left(), x2, top, r.text);
            text(x2, x3, top, r.minutes);
            text(x3, right, top, r.calories);
            break;
    }
}

// Below the last row, where no row stands, the hint on the nutrient toggle at the bottom right.
void CFoodGridCtrl::drawDecorations(QPainter& p) {
    MWGridWidget::drawDecorations(p);
    const int32_t last = grid().lastRow();
    const int below = last >= 0 ? grid().rowTop(last) + grid().rowHeight(last) : 0;
    const QRect empty =
        QRect(0, below, viewport()->width(), viewport()->height() - below).adjusted(2, 7, -2, -2);
    const QString hint = QString::fromLatin1(kToggleHintText);
    if (empty.height() < p.fontMetrics().height()) {
        return;
    }
    p.setPen(windowTextColour());
    p.drawText(empty, Qt::AlignRight | Qt::AlignBottom | Qt::TextWordWrap, hint);
}

}  // namespace nutrovex
