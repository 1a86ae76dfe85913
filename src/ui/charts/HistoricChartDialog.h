#pragma once

#include <QDialog>
#include <array>

#include "forms/charts/HistoricChartForm.h"

class QCheckBox;
class QLabel;
class QMenuBar;
class QPushButton;
class QRadioButton;

namespace nutrovex {

class HistoricChartWidget;
class SessionNotifier;

// The historic weight chart screen: a thin view of HistoricChartForm. Redraws whenever the
// session announces a change.
class HistoricChartDialog : public QDialog {
    Q_OBJECT

public:
    HistoricChartDialog(HistoricChartForm form, SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] HistoricChartWidget* chart() const { return m_chart; }
    [[nodiscard]] const HistoricChartForm& form() const { return m_form; }

private:
    void run(HistoricChartForm::Command command);
    void showForm();

    HistoricChartForm m_form;
    QMenuBar* m_menuBar;
    QPushButton* m_close;
    QLabel* m_title;
    HistoricChartWidget* m_chart;
    std::array<QRadioButton*, kHistorySpanCount> m_spans{};
    std::array<QAction*, kHistorySpanCount> m_spanActions{};
    QCheckBox* m_trend;
    QAction* m_trendAction;
    QLabel* m_rate;
};

}  // namespace nutrovex
