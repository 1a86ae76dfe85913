#pragma once

#include "forms/foods/FoodGridForm.h"
#include "ui/controls/MWGridWidget.h"

namespace nutrovex {

// The grid of a day's logged foods: two-line food rows, headers, totals and the day's exercises,
// drawn from the form's view. Double click and F2 ask for the row to be edited.
class CFoodGridCtrl : public MWGridWidget {
    Q_OBJECT

public:
    explicit CFoodGridCtrl(QWidget* parent);

    // Shows the rows and the form's selection; counts and heights follow, all redraws.
    void show(const FoodGridView& view);
    // Makes a row current, scrolled into view, with no other row selected.
    void selectRow(int row);
    [[nodiscard]] RowRange selectedRows() const;

    // Read as a table of name, meal, serving and every nutrient, whichever pair is painted.
    [[nodiscard]] int accessibleColumnCount() const override;
    [[nodiscard]] QString accessibleText(int row, int column) const override;
    [[nodiscard]] QString accessibleColumnHeader(int column) const override;
    [[nodiscard]] QRect accessibleCellRect(int row, int column) const override;

Q_SIGNALS:
    void editRequested(int row);
    // The person moved the selection, or selected everything.
    void selected(RowRange rows);

protected:
    void drawCell(QPainter& p, int row, int column, const QRect& rect) override;
    void drawDecorations(QPainter& p) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    FoodLogRows m_rows;
    uint16_t m_nutrientView = 0;
};

}  // namespace nutrovex
