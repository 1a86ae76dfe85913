#pragma once

#include <QDialog>
#include <memory>

#include "forms/charts/BodyMassChartForm.h"

class QLabel;
class QMenuBar;
class QPushButton;

namespace nutrovex {

class BodyMassChartWidget;
class SessionNotifier;

// The weight chart with body-mass bands: a thin view of BodyMassChartForm, redrawn whenever the
// session announces a change.
class BodyMassChartDialog : public QDialog {
    Q_OBJECT

public:
    BodyMassChartDialog(BodyMassChartForm form, SessionNotifier& notifier, QWidget* parent);

    // What the "Weight Chart" commands do: shows the missing-data message and opens nothing, or
    // runs the chart modally until it is closed. Returns whether the chart opened.
    static bool openChecked(BodyMassChartForm form, SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] BodyMassChartWidget* chart() const { return m_chart; }

private:
    void refresh();

    BodyMassChartForm m_form;
    QMenuBar* m_menuBar;
    QPushButton* m_ok;
    BodyMassChartWidget* m_chart;
    QLabel* m_current;
    QLabel* m_goal;
};

}  // namespace nutrovex
