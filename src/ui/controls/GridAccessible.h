#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

namespace nutrovex {

class MWGridWidget;

// The grid control as a table for assistive technology: its data rows and columns as cells named
// by their texts, the header row as column headers, the current cell as the focused one and the
// rows the screen's commands act on as the selected ones. Selecting rows through it sets the
// grid's own selection. Cells are made as they are asked for and live as long as the table's
// shape does.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit GridAccessible(MWGridWidget* grid);
    ~GridAccessible() override;

    [[nodiscard]] MWGridWidget* grid() const;

    // QAccessibleInterface
    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] QAccessible::State state() const override;

    // QAccessibleTableInterface
    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override;
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override;
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override;
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override;
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* event) override;

    // The header cell of a column, or null when the grid has no header row.
    [[nodiscard]] QAccessibleInterface* headerAt(int column) const;

private:
    [[nodiscard]] int headerCount() const;
    [[nodiscard]] QAccessibleInterface* cachedCell(int row, int column) const;
    void forgetCells();

    // Interface ids by (row, column); the header row is row -1.
    mutable QHash<quint64, QAccessible::Id> m_cells;
};

// Lets every grid control answer as a table, and tab strips, lists of texts and containers that
// pass the focus on claim the focus only while they have it. The grid control calls it; the program
// calls it at start for the rest.
void installAccessibility();

}  // namespace nutrovex
