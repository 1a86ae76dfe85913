#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "core/Position.h"
#include "core/ScreenMessage.h"

class QPushButton;

namespace nutrovex {

class ExerciseForm;
class ExerciseLog;
class ExercisePicker;
class SessionNotifier;

// "Edit Exercise": the exercise at a row of the current day in the exercise choice; "Log"
// (the default button) stores it back, "Cancel" leaves it.
class EditExerciseDialog : public QDialog {
    Q_OBJECT

public:
    EditExerciseDialog(SessionNotifier& notifier, QWidget* parent, Position row);
    ~EditExerciseDialog() override;

    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);

    [[nodiscard]] ExercisePicker* picker() const { return m_picker; }
    [[nodiscard]] QPushButton* logButton() const { return m_log; }

private:
    void store();

    SessionNotifier* m_notifier;
    Position m_row;
    std::unique_ptr<ExerciseLog> m_exercises;
    std::unique_ptr<ExerciseForm> m_form;
    ExercisePicker* m_picker;
    QPushButton* m_log;
    QPushButton* m_cancel;
    std::function<bool(const ScreenMessage&)> m_present;
};

}  // namespace nutrovex
