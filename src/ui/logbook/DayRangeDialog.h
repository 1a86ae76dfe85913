#pragma once

#include <QDialog>

#include "forms/logbook/DayRangeForm.h"

class QLabel;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// "Select a range of days": the start and end dates with a "Set..." button each, OK and Cancel.
// OK deletes the days of the range.
class DayRangeDialog : public QDialog {
    Q_OBJECT

public:
    DayRangeDialog(DayRangeForm form, SessionNotifier& notifier, QWidget* parent);

    void accept() override;
    [[nodiscard]] QPushButton* setStartButton() const { return m_setStart; }
    [[nodiscard]] QPushButton* setEndButton() const { return m_setEnd; }
    [[nodiscard]] QString startText() const;
    [[nodiscard]] QString endText() const;

private:
    void pick(bool start);
    void showDates();

    DayRangeForm m_form;
    SessionNotifier* m_notifier;
    QLabel* m_start;
    QLabel* m_end;
    QPushButton* m_setStart;
    QPushButton* m_setEnd;
};

}  // namespace nutrovex
