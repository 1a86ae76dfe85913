#pragma once

#include <QDialog>

#include "logbook/Logbook.h"

class QLabel;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// "Select a range of days": the start and end dates with a "Set..." button each, OK and Cancel.
// The owner deletes the range on OK.
class DayRangeDialog : public QDialog {
    Q_OBJECT

public:
    DayRangeDialog(SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] const DayRange& range() const { return m_range; }
    [[nodiscard]] QPushButton* setStartButton() const { return m_setStart; }
    [[nodiscard]] QPushButton* setEndButton() const { return m_setEnd; }
    [[nodiscard]] QString startText() const;
    [[nodiscard]] QString endText() const;

private:
    void pick(bool start);
    void showDates();

    const Clock* m_clock;
    DayRange m_range;
    QLabel* m_start;
    QLabel* m_end;
    QPushButton* m_setStart;
    QPushButton* m_setEnd;
};

}  // namespace nutrovex
