#pragma once

#include <functional>

#include "forms/logbook/WeighInForm.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;
class QLineEdit;

namespace nutrovex {

// The weigh-in screen for the logbook's current date: a thin view of WeighInForm. The weight is
// written into the day as it is typed, and saved when the screen closes.
class WeighInDialog : public LogbookScreen {
    Q_OBJECT

public:
    // weightChart opens the weight chart with body-mass bands; without it the entry is disabled.
    WeighInDialog(WeighInForm form, SessionNotifier& notifier, QWidget* parent,
                  ScreenOpener weightChart = {});

    [[nodiscard]] QLineEdit* weightEdit() const { return m_weight; }

    void done(int result) override;

private:
    void load();

    WeighInForm m_form;
    bool m_typing = false;
    QLabel* m_date;
    QLineEdit* m_weight;
    QLabel* m_unit;
};

}  // namespace nutrovex
