#pragma once

#include <QDialog>
#include <functional>

#include "core/ScreenMessage.h"
#include "forms/exercise/EditExerciseForm.h"

class QPushButton;

namespace nutrovex {

class ExercisePicker;
class SessionNotifier;

// "Edit Exercise": a thin view of EditExerciseForm. "Log" (the default button) stores the
// exercise back, "Cancel" leaves it.
class EditExerciseDialog : public QDialog {
    Q_OBJECT

public:
    EditExerciseDialog(EditExerciseForm form, SessionNotifier& notifier, QWidget* parent);

    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);

    [[nodiscard]] ExercisePicker* picker() const { return m_picker; }
    [[nodiscard]] QPushButton* logButton() const { return m_log; }

private:
    bool present(const ScreenMessage& message);
    void redraw();
    void store();

    EditExerciseForm m_form;
    SessionNotifier* m_notifier;
    ExercisePicker* m_picker;
    QPushButton* m_log;
    QPushButton* m_cancel;
    std::function<bool(const ScreenMessage&)> m_present;
};

}  // namespace nutrovex
