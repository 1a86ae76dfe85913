#pragma once

#include <functional>

#include "logbook/WeighIn.h"
#include "ui/logbook/LogbookScreen.h"

class QLabel;
class QLineEdit;

namespace nutrovex {

// The weigh-in screen for the logbook's current date: a thin view of WeighIn. The weight is
// written into the day as it is typed; the logbook saves when the screen closes.
class WeighInDialog : public LogbookScreen {
    Q_OBJECT

public:
    // weightChart opens the weight chart with body-mass bands; without it the entry is disabled.
    WeighInDialog(SessionNotifier& notifier, QWidget* parent,
                  std::function<void(QWidget*)> weightChart = {});

    [[nodiscard]] QLineEdit* weightEdit() const { return m_weight; }

private:
    void load();

    WeighIn m_form;
    QLabel* m_date;
    QLineEdit* m_weight;
    QLabel* m_unit;
};

}  // namespace nutrovex
