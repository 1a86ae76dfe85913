#pragma once

#include <array>

#include "forms/logbook/ActivityForm.h"
#include "ui/logbook/LogbookScreen.h"

class QButtonGroup;
class QLineEdit;
class QRadioButton;

namespace nutrovex {

// The activity/BMR screen of the logbook's current day: a thin view of ActivityForm.
class ActivityDialog : public LogbookScreen {
    Q_OBJECT

public:
    ActivityDialog(ActivityForm form, SessionNotifier& notifier, QWidget* parent);

    void done(int result) override;

    // Levels 1..5.
    [[nodiscard]] QRadioButton* levelButton(int level) const {
        return m_levels[static_cast<std::size_t>(level - 1)];
    }
    [[nodiscard]] QLineEdit* bmrEdit() const { return m_bmr; }
    [[nodiscard]] QPushButton* defaultButton() const { return m_default; }

private:
    void refresh();
    void run(const Outcome& outcome);

    ActivityForm m_form;
    std::array<QRadioButton*, 5> m_levels{};
    QButtonGroup* m_group;
    QLineEdit* m_bmr;
    QPushButton* m_default;
};

}  // namespace nutrovex
