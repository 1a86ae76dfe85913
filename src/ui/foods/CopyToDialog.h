#pragma once

#include <functional>

#include "forms/foods/CopyToForm.h"
#include "ui/frame/ScreenDialog.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// Copy To: a thin view of CopyToForm. What to copy, the date (on the calendar), the person; Copy
// copies and says what it did, and the screen stays for another copy. Closing it saves a copy
// into the open person's logbook.
class CopyToDialog : public ScreenDialog {
    Q_OBJECT

public:
    CopyToDialog(CopyToForm form, SessionNotifier& notifier, QWidget* parent);

    void done(int result) override;

    [[nodiscard]] QComboBox* whatList() const { return m_what; }
    [[nodiscard]] QLabel* dateLabel() const { return m_date; }
    [[nodiscard]] QPushButton* dateButton() const { return m_setDate; }
    [[nodiscard]] QComboBox* personList() const { return m_people; }
    [[nodiscard]] QPushButton* copyButton() const { return m_copy; }
    [[nodiscard]] QLabel* resultLabel() const { return m_result; }

private:
    void redisplay();
    void pickDate();
    void copy();

    CopyToForm m_form;
    SessionNotifier* m_notifier;
    QLabel* m_from;
    QComboBox* m_what;
    QLabel* m_date;
    QPushButton* m_setDate;
    QComboBox* m_people;
    QPushButton* m_copy;
    QLabel* m_result;
};

}  // namespace nutrovex
