#pragma once

#include "ui/frame/ScreenDialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// The goals screen: start and goal weights in the person's units with their dates, and the goal
// sentence under "Calorie Calculator". Every change is stored and saved at once.
class GoalsDialog : public ScreenDialog {
    Q_OBJECT

public:
    // weightChart opens the weight chart; without it "Weight Chart" stays disabled.
    GoalsDialog(SessionNotifier& notifier, QWidget* parent, ScreenOpener weightChart = {});

    [[nodiscard]] QLineEdit* startEdit() const { return m_start; }
    [[nodiscard]] QLineEdit* goalEdit() const { return m_goal; }
    [[nodiscard]] QLabel* startDate() const { return m_startDate; }
    [[nodiscard]] QLabel* targetDate() const { return m_targetDate; }
    [[nodiscard]] QPushButton* setStartButton() const { return m_setStart; }
    [[nodiscard]] QPushButton* setTargetButton() const { return m_setTarget; }
    [[nodiscard]] QLabel* sentence() const { return m_sentence; }
    [[nodiscard]] QAction* weightChartAction() const { return m_weightChart; }

private:
    void weightsEdited();
    void pickDate(bool start);
    void reset();
    void redisplay();

    SessionNotifier* m_notifier;
    ScreenOpener m_openWeightChart;
    QLineEdit* m_start;
    QLabel* m_startUnit;
    QLabel* m_startDate;
    QPushButton* m_setStart;
    QLineEdit* m_goal;
    QLabel* m_goalUnit;
    QLabel* m_targetDate;
    QPushButton* m_setTarget;
    QLabel* m_sentence;
    QAction* m_weightChart = nullptr;
};

}  // namespace nutrovex
