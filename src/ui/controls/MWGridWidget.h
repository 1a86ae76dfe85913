#pragma once

#include <QAbstractScrollArea>
#include <QColor>
#include <QCursor>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <array>
#include <functional>
#include <optional>
#include <utility>

#include "controls/MWGrid.h"

class QPainter;

namespace nutrovex {

// The program's table control: paints an MWGrid double-buffered and feeds it taps, drags, keys
// and scroll requests. Derived grids (exercise list, food grid, calendar month, summary table)
// supply cell texts, colours, refused cells and their own drawing steps by overriding.
class MWGridWidget : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit MWGridWidget(QWidget* parent = nullptr);
    ~MWGridWidget() override;

    [[nodiscard]] MWGrid& grid() { return m_grid; }
    [[nodiscard]] const MWGrid& grid() const { return m_grid; }
    [[nodiscard]] int currentRow() const { return m_grid.current().row; }
    [[nodiscard]] int currentColumn() const { return m_grid.current().column; }

    // After the owner changed counts, sizes or scrolling flags: scroll bars follow, all redraws.
    void refresh();

    // Two special cursors, shown over the cells while their flag is on (the first wins).
    void setSpecialCursor(int which, const QCursor& cursor);
    void setSpecialCursorOn(int which, bool on);

    // --- The grid as assistive technology reads it ---------------------------------------------
    // A table of the data rows (those below firstDataRow()) whose columns a derived grid may lay
    // out differently from its painted cells, as the food log lays several texts into one cell.
    // Row and column numbers here are the table's.
    // The first row of the table; the rows above it are its headers.
    [[nodiscard]] virtual int firstDataRow() const;
    [[nodiscard]] int accessibleRowCount() const;
    [[nodiscard]] virtual int accessibleColumnCount() const;
    [[nodiscard]] virtual QString accessibleText(int row, int column) const;
    // Empty when the grid has no header row for the column.
    [[nodiscard]] virtual QString accessibleColumnHeader(int column) const;
    // In viewport coordinates.
    [[nodiscard]] virtual QRect accessibleCellRect(int row, int column) const;
    // The rows the screen's commands act on.
    [[nodiscard]] virtual bool accessibleCellSelected(int row, int column) const;
    // The current cell as a table cell; nullopt on a header or an empty grid.
    [[nodiscard]] std::optional<std::pair<int, int>> accessibleCurrentCell() const;
    // Makes rows first..last the selection, current at last, as keys would; false (and nothing
    // changes) when the grid has no such rows or selects no rows.
    virtual bool selectAccessibleRows(int first, int last);
    // Tells assistive technology what changed since it was last told: rows, selection, the
    // current cell (again when its text changed: currentText). Input and refresh() call it; a
    // derived grid that changes the grid by other means calls it after.
    void announceChanges(bool currentText = false);

public Q_SLOTS:
    // Makes the cell current unless the grid refuses it.
    void selectCell(int row, int column);

Q_SIGNALS:
    // After every key press, with the current cell.
    void keyHandled(int row, int column);
    // After a tap, with the current cell.
    void cellTapped(int row, int column);
    // After assistive technology set the selection, with the current cell.
    void selectionSet(int row, int column);

protected:
    // --- Overridable operations ------------------------------------------------------------
    [[nodiscard]] virtual bool refuseCell(int row, int column) const;
    [[nodiscard]] virtual QString cellText(int row, int column) const;
    [[nodiscard]] virtual int cellAlignment(int row, int column) const;

    [[nodiscard]] virtual QColor windowTextColour() const;
    [[nodiscard]] virtual QColor buttonFaceColour() const;
    [[nodiscard]] virtual QColor highlightColour() const;
    [[nodiscard]] virtual QColor highlightTextColour() const;
    [[nodiscard]] virtual QColor windowColour() const;
    [[nodiscard]] virtual QColor marginColour() const;
    [[nodiscard]] virtual QColor gridLineColour() const;
    [[nodiscard]] virtual QColor cellBackground(int row, int column) const;
    [[nodiscard]] virtual QColor cellTextColour(int row, int column) const;
    [[nodiscard]] bool isHighlighted(int row, int column) const;

    // The drawing steps, in the order draw() runs them.
    virtual void draw(QPainter& p);
    virtual void prepareDraw(QPainter& p);
    virtual void drawBackground(QPainter& p);
    virtual void drawGridLines(QPainter& p);
    virtual void drawHeaders(QPainter& p);
    virtual void drawCells(QPainter& p);
    virtual void drawCell(QPainter& p, int row, int column, const QRect& rect);
    virtual void drawSelection(QPainter& p);
    virtual void drawCurrentCell(QPainter& p);
    virtual void drawDecorations(QPainter& p);
    virtual void finishDraw(QPainter& p);
    virtual void closeDraw(QPainter& p);

    [[nodiscard]] QRect cellRect(int row, int column) const;
    // Calls visit for every cell on screen: scrolling cells first, then those of the fixed rows
    // and columns drawn over them, each clipped to its part of the client area.
    void forEachVisibleCell(QPainter& p,
                            const std::function<void(int row, int column, const QRect&)>& visit);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    class Model;
    friend class Model;

    void syncScrollBars();
    void scrollAction(Orientation o, int action);
    void updateCursor();

    // The grid asks the widget which cells to refuse.
    class Model final : public MWGrid {
    public:
        explicit Model(const MWGridWidget& owner) : m_owner(owner) {}
        bool refuseCell(int32_t row, int32_t column) const override {
            return m_owner.refuseCell(row, column);
        }

    private:
        const MWGridWidget& m_owner;
    };

    Model m_grid;
    QPixmap m_buffer;
    std::array<QCursor, 2> m_cursors;
    std::array<bool, 2> m_cursorOn{false, false};
    bool m_syncing = false;

    // What assistive technology was last told.
    struct Announced {
        int rows = -1;
        int columns = -1;
        GridRange selection;
        bool all = false;
        std::optional<std::pair<int, int>> current;
    };
    Announced m_announced;
};

}  // namespace nutrovex
