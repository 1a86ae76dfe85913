#pragma once

#include <QDialog>
#include <QString>

#include "core/CalendarDate.h"

class QPushButton;

namespace nutrovex {

class MonthGrid;

// The modal date picker: one month to tap a day in, the month steps in its title, "OK" and
// "Cancel". The owner sets the starting date (and perhaps a caption) before showing it and reads
// the picked date after OK.
class CalendarPickerDialog : public QDialog {
    Q_OBJECT

public:
    explicit CalendarPickerDialog(const Clock& clock, QWidget* parent = nullptr);

    // A caption that is not empty becomes the dialog's title.
    void setCaption(const QString& caption);
    // Month 0-based, day 1-based.
    void setDate(int year, int month, int day);
    [[nodiscard]] int year() const;
    [[nodiscard]] int month() const;
    [[nodiscard]] int day() const;
    // 0 = Sunday, of the selected day.
    [[nodiscard]] int weekday() const;

    [[nodiscard]] MonthGrid* monthGrid() const { return m_grid; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }
    [[nodiscard]] QPushButton* cancelButton() const { return m_cancel; }

private:
    MonthGrid* m_grid;
    QPushButton* m_ok;
    QPushButton* m_cancel;
};

}  // namespace nutrovex
