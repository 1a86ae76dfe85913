#include "ui/controls/ListAccessible.h"

#include <QAccessibleWidget>
#include <QListWidget>
#include <QPointer>
#include <QWindow>

namespace nutrovex {

namespace {

class RowAccessible final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    RowAccessible(QListWidget* list, int row) : m_list(list), m_row(row) {}

    [[nodiscard]] bool isValid() const override {
        return !m_list.isNull() && m_row < m_list->count();
    }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return m_list ? m_list->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_list.data());
    }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text t) const override {
        return isValid() && t == QAccessible::Name ? m_list->item(m_row)->text() : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        if (!isValid()) {
            return {};
        }
        const QRect r = m_list->visualItemRect(m_list->item(m_row));
        return {m_list->viewport()->mapToGlobal(r.topLeft()), r.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s;
        if (!isValid()) {
            s.invalid = true;
            return s;
        }
        const QListWidgetItem* item = m_list->item(m_row);
        s.selectable = true;
        s.focusable = true;
        s.selected = item->isSelected();
        s.focused = m_list->hasFocus() && m_list->currentRow() == m_row;
        s.disabled = (item->flags() & Qt::ItemIsEnabled) == 0;
        if (!m_list->viewport()->rect().intersects(m_list->visualItemRect(item))) {
            s.offscreen = true;
        }
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }
    [[nodiscard]] bool isSelected() const override {
        return isValid() && m_list->item(m_row)->isSelected();
    }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return 0; }
    [[nodiscard]] int rowIndex() const override { return m_row; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

private:
    QPointer<QListWidget> m_list;
    int m_row;
};

// Also a table of one column, so rows can be selected through it as in any list.
class ListWidgetAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit ListWidgetAccessible(QListWidget* list) : QAccessibleWidget(list, QAccessible::List) {}
    ~ListWidgetAccessible() override {
        for (const QAccessible::Id id : std::as_const(m_rows)) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

    [[nodiscard]] QListWidget* list() const { return static_cast<QListWidget*>(widget()); }

    [[nodiscard]] int childCount() const override { return list()->count(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= list()->count()) {
            return nullptr;
        }
        while (m_rows.size() <= index) {
            m_rows.append(QAccessible::registerAccessibleInterface(
                new RowAccessible(list(), static_cast<int>(m_rows.size()))));
        }
        return QAccessible::accessibleInterface(m_rows.at(index));
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto at =
            m_rows.indexOf(QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child)));
        return at < list()->count() ? static_cast<int>(at) : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const QListWidgetItem* item =
            list()->itemAt(list()->viewport()->mapFromGlobal(QPoint(x, y)));
        return item != nullptr ? child(list()->row(item)) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return list()->hasFocus() ? child(list()->currentRow()) : nullptr;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State s = QAccessibleWidget::state();
        // While the list has the focus its current row carries it: one focus at a time.
        s.focused = s.focused && list()->currentRow() < 0;
        s.multiSelectable = list()->selectionMode() == QAbstractItemView::MultiSelection ||
                            list()->selectionMode() == QAbstractItemView::ExtendedSelection;
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface) {
            return static_cast<QAccessibleTableInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        return column == 0 ? child(row) : nullptr;
    }
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount(); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : selectedRows()) {
            cells.append(child(row));
        }
        return cells;
    }
    [[nodiscard]] QString columnDescription(int) const override { return {}; }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override {
        return static_cast<int>(selectedRows().size());
    }
    [[nodiscard]] int columnCount() const override { return 1; }
    [[nodiscard]] int rowCount() const override { return list()->count(); }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override {
        QList<int> rows;
        for (int r = 0; r < list()->count(); ++r) {
            if (list()->item(r)->isSelected()) {
                rows.append(r);
            }
        }
        return rows;
    }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override {
        return row >= 0 && row < list()->count() && list()->item(row)->isSelected();
    }
    // Selects the row as the list's own selection mode allows; the current row stays.
    bool selectRow(int row) override {
        if (row < 0 || row >= list()->count() ||
            list()->selectionMode() == QAbstractItemView::NoSelection) {
            return false;
        }
        const bool single = list()->selectionMode() == QAbstractItemView::SingleSelection;
        list()->selectionModel()->select(
            list()->model()->index(row, 0),
            single ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Select);
        return true;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override {
        if (row < 0 || row >= list()->count()) {
            return false;
        }
        list()->selectionModel()->select(list()->model()->index(row, 0),
                                         QItemSelectionModel::Deselect);
        return true;
    }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    mutable QList<QAccessible::Id> m_rows;
};

}  // namespace

QAccessibleInterface* listAccessible(const QString&, QObject* object) {
    if (auto* list = qobject_cast<QListWidget*>(object)) {
        return new ListWidgetAccessible(list);
    }
    return nullptr;
}

}  // namespace nutrovex
