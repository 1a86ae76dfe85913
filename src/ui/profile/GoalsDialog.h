#pragma once

#include "forms/profile/GoalsForm.h"
#include "ui/frame/ScreenDialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace nutrovex {

class CommitOnLeave;
class SessionNotifier;

// The goals screen: a thin view of GoalsForm. A typed weight is stored and saved once it is
// complete, a picked date at once.
class GoalsDialog : public ScreenDialog {
    Q_OBJECT

public:
    // weightChart opens the weight chart, targets the nutrient targets screen; without one its
    // command stays disabled.
    GoalsDialog(GoalsForm form, SessionNotifier& notifier, QWidget* parent,
                ScreenOpener weightChart = {}, ScreenOpener targets = {});

    void done(int result) override;

    [[nodiscard]] QLineEdit* startEdit() const { return m_start; }
    [[nodiscard]] QLineEdit* goalEdit() const { return m_goal; }
    [[nodiscard]] QLabel* startDate() const { return m_startDate; }
    [[nodiscard]] QLabel* targetDate() const { return m_targetDate; }
    [[nodiscard]] QPushButton* setStartButton() const { return m_setStart; }
    [[nodiscard]] QPushButton* setTargetButton() const { return m_setTarget; }
    [[nodiscard]] QLabel* sentence() const { return m_sentence; }
    [[nodiscard]] QAction* weightChartAction() const { return m_weightChart; }
    [[nodiscard]] QPushButton* targetsButton() const { return m_targets; }

private:
    void run(const Outcome& outcome);
    void pickDate(bool start);
    void reset();
    void redisplay();

    GoalsForm m_form;
    SessionNotifier* m_notifier;
    ScreenOpener m_openWeightChart;
    ScreenOpener m_openTargets;
    QLineEdit* m_start;
    QLabel* m_startUnit;
    QLabel* m_startDate;
    QPushButton* m_setStart;
    QLineEdit* m_goal;
    QLabel* m_goalUnit;
    QLabel* m_targetDate;
    QPushButton* m_setTarget;
    QLabel* m_sentence;
    QPushButton* m_targets;
    QAction* m_weightChart = nullptr;
    CommitOnLeave* m_startCommit = nullptr;
    CommitOnLeave* m_goalCommit = nullptr;
};

}  // namespace nutrovex
