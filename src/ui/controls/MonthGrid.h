#pragma once

#include "controls/MonthCalendar.h"
#include "ui/controls/MWGridWidget.h"

namespace nutrovex {

// The month control of the date picker: a seven-column grid whose first row is the title with
// the month steps on its outer columns, the second the weekday initials and the rest the weeks.
// Only cells that hold a day can become current.
class MonthGrid : public MWGridWidget {
    Q_OBJECT

public:
    explicit MonthGrid(const Clock& clock, QWidget* parent = nullptr);

    [[nodiscard]] const MonthCalendar& calendar() const { return m_calendar; }
    // Shows the month of the date (month 0-based) with its day selected.
    void setDate(int year, int month, int day);
    void setCanGoBack(bool on);
    void setCanGoForward(bool on);
    // Step a month, when the flag allows it.
    void showPreviousMonth();
    void showNextMonth();

    // Read as a table of the weeks: days named in full, weekdays as the column headers.
    [[nodiscard]] int firstDataRow() const override;
    [[nodiscard]] QString accessibleText(int row, int column) const override;
    [[nodiscard]] QString accessibleColumnHeader(int column) const override;
    [[nodiscard]] bool accessibleCellSelected(int row, int column) const override;
    bool selectAccessibleRows(int anchor, int current) override;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void daySelected(int year, int month, int day);
    void previousMonthShown();
    void nextMonthShown();

protected:
    [[nodiscard]] bool refuseCell(int row, int column) const override;
    [[nodiscard]] QString cellText(int row, int column) const override;
    [[nodiscard]] int cellAlignment(int row, int column) const override;
    [[nodiscard]] QColor cellBackground(int row, int column) const override;
    [[nodiscard]] QColor cellTextColour(int row, int column) const override;
    [[nodiscard]] virtual QColor todayColour() const;

    void drawGridLines(QPainter& p) override;
    void drawHeaders(QPainter& p) override;
    void drawCell(QPainter& p, int row, int column, const QRect& rect) override;
    void drawSelection(QPainter& p) override;
    void drawCurrentCell(QPainter& p) override;
    void drawDecorations(QPainter& p) override;

    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // tapped: the owner hears of the day even when it was already selected.
    void reached(bool tapped);
    void selectShownDay();
    // Shows the day the calendar moved to, telling the owner of a new month and day.
    void moved(int year, int month, int day);
    void layoutCells();
    [[nodiscard]] QSize cellSizeHint() const;

    MonthCalendar m_calendar;
};

}  // namespace nutrovex
