#pragma once

#include <QHash>
#include <QLabel>
#include <QStaticText>
#include <array>

#include "forms/logbook/SummaryTableForm.h"
#include "ui/controls/MWGridWidget.h"
#include "ui/logbook/LogbookScreen.h"

namespace nutrovex {

// The summary table on the grid: a header row, then one row per day of the logbook; the current
// date's row is highlighted. Cells are read from the day records as they are painted.
class SummaryTableGrid : public MWGridWidget {
    Q_OBJECT

public:
    explicit SummaryTableGrid(SummaryTableForm form, QWidget* parent = nullptr);

    // After the days changed: the rows follow, the current day's row is shown.
    void reload();
    [[nodiscard]] int currentDayRow() const { return m_currentDayRow; }
    [[nodiscard]] QString text(int row, int column) const { return cellText(row, column); }
    // Whether a grid row's date carries the mark of a day within the person's targets.
    [[nodiscard]] bool markedWithinTargets(int row) const;
    [[nodiscard]] const SummaryTableView& view() const { return m_view; }

protected:
    [[nodiscard]] QString cellText(int row, int column) const override;
    [[nodiscard]] int cellAlignment(int row, int column) const override;
    [[nodiscard]] QColor cellBackground(int row, int column) const override;
    [[nodiscard]] QColor cellTextColour(int row, int column) const override;
    void changeEvent(QEvent* event) override;
    void drawCell(QPainter& p, int row, int column, const QRect& rect) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void sizeColumns();
    // Each column's narrowest width that shows its widest possible text.
    std::array<int, 8> m_naturalWidths{};

    SummaryTableForm m_form;
    SummaryTableView m_view;
    // Laid-out texts: the same figures recur on every screenful, and laying out is most of the
    // cost of painting one.
    QHash<QString, QStaticText> m_laidOut;
    int m_currentDayRow = -1;  // grid row, or -1
};

class SummaryTableDialog : public LogbookScreen {
    Q_OBJECT

public:
    SummaryTableDialog(SummaryTableForm form, SessionNotifier& notifier, QWidget* parent);
    [[nodiscard]] SummaryTableGrid* table() const { return m_grid; }
    [[nodiscard]] QLabel* legend() const { return m_legend; }

private:
    void showLegend();

    SummaryTableGrid* m_grid;
    QLabel* m_legend;
};

}  // namespace nutrovex
