#pragma once

#include "foods/FoodGridForm.h"
#include "ui/controls/MWGridWidget.h"

namespace nutrovex {

// The grid of a day's logged foods: two-line food rows, headers, totals and the day's exercises,
// drawn from the form's rows. Double click and F2 ask for the row to be edited.
class CFoodGridCtrl : public MWGridWidget {
    Q_OBJECT

public:
    CFoodGridCtrl(const FoodGridForm& form, QWidget* parent);

    // After the form read its rows again: counts and heights follow, all redraws.
    void reload();
    // Makes a row current, scrolled into view, with no other row selected.
    void selectRow(int row);
    [[nodiscard]] RowRange selectedRows() const;

Q_SIGNALS:
    void editRequested(int row);

protected:
    void drawCell(QPainter& p, int row, int column, const QRect& rect) override;
    void drawDecorations(QPainter& p) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    const FoodGridForm* m_form;
};

}  // namespace nutrovex
