#include "ui/controls/GridAccessible.h"

#include <QWidget>
#include <QWindow>
#include <algorithm>

#include "ui/controls/ListAccessible.h"
#include "ui/controls/MWGridWidget.h"
#include "ui/controls/PaintedText.h"
#include "ui/controls/TabBarAccessible.h"

namespace nutrovex {

namespace {

quint64 cellKey(int row, int column) {
    return (static_cast<quint64>(static_cast<quint32>(row)) << 32) | static_cast<quint32>(column);
}

// One cell of the table, or (row -1) one of its column headers. It holds no text of its own: every
// question is answered from the grid as it is now, and a cell the grid no longer has is invalid.
class GridCellAccessible final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    GridCellAccessible(MWGridWidget* grid, int row, int column)
        : m_grid(grid), m_row(row), m_column(column) {}

    [[nodiscard]] bool isValid() const override {
        return !m_grid.isNull() && m_row < m_grid->accessibleRowCount() &&
               m_column < m_grid->accessibleColumnCount();
    }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return m_grid ? m_grid->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QList<std::pair<QAccessibleInterface*, QAccessible::Relation>> relations(
        QAccessible::Relation) const override {
        return {};
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_grid.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text t) const override {
        if (!isValid() || (t != QAccessible::Name && t != QAccessible::Value)) {
            return {};
        }
        // The name alone carries the text: a reader that speaks both would say it twice.
        if (t == QAccessible::Value) {
            return {};
        }
        return m_row < 0 ? m_grid->accessibleColumnHeader(m_column)
                         : m_grid->accessibleText(m_row, m_column);
    }
    void setText(QAccessible::Text, const QString&) override {}

    [[nodiscard]] QRect rect() const override {
        if (!isValid()) {
            return {};
        }
        const QRect r = m_row < 0 ? headerRect() : m_grid->accessibleCellRect(m_row, m_column);
        return {m_grid->viewport()->mapToGlobal(r.topLeft()), r.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return m_row < 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        const QRect r = m_row < 0 ? headerRect() : m_grid->accessibleCellRect(m_row, m_column);
        if (!m_grid->viewport()->rect().intersects(r)) {
            s.offscreen = true;
        }
        if (m_row < 0) {
            return s;
        }
        s.selectable = true;
        s.focusable = true;
        s.selected = m_grid->accessibleCellSelected(m_row, m_column);
        const auto current = m_grid->accessibleCurrentCell();
        s.focused = m_grid->hasFocus() && current == std::pair(m_row, m_column);
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }

    // QAccessibleTableCellInterface
    [[nodiscard]] bool isSelected() const override {
        return isValid() && m_row >= 0 && m_grid->accessibleCellSelected(m_row, m_column);
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override {
        auto* table = dynamic_cast<GridAccessible*>(parent());
        QAccessibleInterface* header =
            table != nullptr && m_row >= 0 ? table->headerAt(m_column) : nullptr;
        return header != nullptr ? QList<QAccessibleInterface*>{header}
                                 : QList<QAccessibleInterface*>{};
    }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return m_column; }
    [[nodiscard]] int rowIndex() const override { return m_row; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

    [[nodiscard]] const MWGridWidget* grid() const { return m_grid.data(); }
    [[nodiscard]] int row() const { return m_row; }
    [[nodiscard]] int column() const { return m_column; }

private:
    // A header stands above its column's first row.
    [[nodiscard]] QRect headerRect() const {
        const QRect first = m_grid->accessibleCellRect(0, m_column);
        const MWGrid& g = m_grid->grid();
        const int above = m_grid->firstDataRow() - 1;
        const int top = g.rowTop(0);
        return {first.left(), top, first.width(),
                std::max(g.rowTop(above) + g.rowHeight(above) - top, 0)};
    }

    QPointer<MWGridWidget> m_grid;
    int m_row;
    int m_column;
};

QAccessibleInterface* gridFactory(const QString&, QObject* object) {
    if (auto* grid = qobject_cast<MWGridWidget*>(object)) {
        return new GridAccessible(grid);
    }
    return nullptr;
}

}  // namespace

void installAccessibility() {
    QAccessible::installFactory(&gridFactory);
    QAccessible::installFactory(&tabBarAccessible);
    QAccessible::installFactory(&proxyAccessible);
    QAccessible::installFactory(&listAccessible);
    QAccessible::installFactory(&paintedTextAccessible);
}

GridAccessible::GridAccessible(MWGridWidget* grid) : QAccessibleWidget(grid, QAccessible::Table) {}

GridAccessible::~GridAccessible() {
    forgetCells();
}

MWGridWidget* GridAccessible::grid() const {
    return static_cast<MWGridWidget*>(widget());
}

void* GridAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface) {
        return static_cast<QAccessibleTableInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State GridAccessible::state() const {
    QAccessible::State s = QAccessibleWidget::state();
    // While the table has the focus its current cell carries it: one focus at a time.
    s.focused = s.focused && !grid()->accessibleCurrentCell();
    s.multiSelectable = true;
    s.extSelectable = true;
    return s;
}

void GridAccessible::forgetCells() {
    const QList<QAccessible::Id> ids = m_cells.values();
    m_cells.clear();
    for (const QAccessible::Id id : ids) {
        QAccessible::deleteAccessibleInterface(id);
    }
}

void GridAccessible::modelChange(QAccessibleTableModelChangeEvent*) {
    forgetCells();
}

int GridAccessible::headerCount() const {
    const MWGridWidget* g = grid();
    const int columns = g->accessibleColumnCount();
    for (int c = 0; c < columns; ++c) {
        if (!g->accessibleColumnHeader(c).isEmpty()) {
            return columns;
        }
    }
    return 0;
}

QAccessibleInterface* GridAccessible::cachedCell(int row, int column) const {
    const quint64 key = cellKey(row, column);
    if (const auto it = m_cells.constFind(key); it != m_cells.cend()) {
        if (QAccessibleInterface* cell = QAccessible::accessibleInterface(*it)) {
            return cell;
        }
    }
    auto* cell = new GridCellAccessible(grid(), row, column);
    m_cells.insert(key, QAccessible::registerAccessibleInterface(cell));
    return cell;
}

QAccessibleInterface* GridAccessible::cellAt(int row, int column) const {
    const MWGridWidget* g = grid();
    if (row < 0 || column < 0 || row >= g->accessibleRowCount() ||
        column >= g->accessibleColumnCount()) {
        return nullptr;
    }
    return cachedCell(row, column);
}

QAccessibleInterface* GridAccessible::headerAt(int column) const {
    if (column < 0 || column >= headerCount()) {
        return nullptr;
    }
    return cachedCell(-1, column);
}

int GridAccessible::childCount() const {
    return headerCount() + rowCount() * columnCount();
}

// The headers come first, then the cells row by row.
QAccessibleInterface* GridAccessible::child(int index) const {
    const int headers = headerCount();
    if (index < 0) {
        return nullptr;
    }
    if (index < headers) {
        return headerAt(index);
    }
    const int columns = columnCount();
    if (columns == 0) {
        return nullptr;
    }
    return cellAt((index - headers) / columns, (index - headers) % columns);
}

int GridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const GridCellAccessible*>(child);
    if (cell == nullptr || cell->grid() != grid() || !cell->isValid()) {
        return -1;
    }
    if (cell->row() < 0) {
        return cell->column() < headerCount() ? cell->column() : -1;
    }
    return headerCount() + cell->row() * columnCount() + cell->column();
}

QAccessibleInterface* GridAccessible::childAt(int x, int y) const {
    const MWGridWidget* g = grid();
    const QPoint local = g->viewport()->mapFromGlobal(QPoint(x, y));
    if (!g->viewport()->rect().contains(local)) {
        return nullptr;
    }
    const int rows = rowCount();
    const int columns = columnCount();
    for (int c = 0; c < columns; ++c) {
        if (QAccessibleInterface* header = headerAt(c);
            header != nullptr && header->rect().contains(QPoint(x, y))) {
            return header;
        }
    }
    const GridCell cell = g->grid().cellAt(local.x(), local.y());
    const int row = cell.row - g->firstDataRow();
    if (row < 0 || row >= rows) {
        return nullptr;
    }
    for (int c = 0; c < columns; ++c) {
        if (g->accessibleCellRect(row, c).contains(local)) {
            return cellAt(row, c);
        }
    }
    return nullptr;
}

QAccessibleInterface* GridAccessible::focusChild() const {
    const MWGridWidget* g = grid();
    if (!g->hasFocus()) {
        return nullptr;
    }
    const auto current = g->accessibleCurrentCell();
    return current ? cellAt(current->first, current->second) : nullptr;
}

int GridAccessible::rowCount() const {
    return grid()->accessibleRowCount();
}

int GridAccessible::columnCount() const {
    return grid()->accessibleColumnCount();
}

QString GridAccessible::columnDescription(int column) const {
    return grid()->accessibleColumnHeader(column);
}

bool GridAccessible::isRowSelected(int row) const {
    const int columns = columnCount();
    if (row < 0 || row >= rowCount() || columns == 0) {
        return false;
    }
    for (int c = 0; c < columns; ++c) {
        if (!grid()->accessibleCellSelected(row, c)) {
            return false;
        }
    }
    return true;
}

QList<int> GridAccessible::selectedRows() const {
    QList<int> rows;
    const int count = rowCount();
    for (int r = 0; r < count; ++r) {
        if (isRowSelected(r)) {
            rows.append(r);
        }
    }
    return rows;
}

int GridAccessible::selectedRowCount() const {
    return static_cast<int>(selectedRows().size());
}

QList<QAccessibleInterface*> GridAccessible::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    const int rows = rowCount();
    const int columns = columnCount();
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            if (grid()->accessibleCellSelected(r, c)) {
                cells.append(cellAt(r, c));
            }
        }
    }
    return cells;
}

int GridAccessible::selectedCellCount() const {
    return static_cast<int>(selectedCells().size());
}

// The grid selects one run of rows, as keys with Shift do: a row next to the selection extends
// it, any other row replaces it.
bool GridAccessible::selectRow(int row) {
    if (row < 0 || row >= rowCount()) {
        return false;
    }
    const QList<int> rows = selectedRows();
    if (rows.contains(row)) {
        return true;
    }
    MWGridWidget* g = grid();
    if (!rows.isEmpty() && row == rows.last() + 1) {
        return g->selectAccessibleRows(rows.first(), row);
    }
    if (!rows.isEmpty() && row == rows.first() - 1) {
        return g->selectAccessibleRows(rows.last(), row);
    }
    return g->selectAccessibleRows(row, row);
}

// Only an end of a run of several rows can leave it: the grid always has a current row.
bool GridAccessible::unselectRow(int row) {
    const QList<int> rows = selectedRows();
    if (!rows.contains(row)) {
        return true;
    }
    if (rows.size() < 2) {
        return false;
    }
    MWGridWidget* g = grid();
    if (row == rows.first()) {
        return g->selectAccessibleRows(rows.last(), row + 1);
    }
    if (row == rows.last()) {
        return g->selectAccessibleRows(rows.first(), row - 1);
    }
    return false;
}

}  // namespace nutrovex
