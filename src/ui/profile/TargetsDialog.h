#pragma once

#include <array>
#include <functional>

#include "forms/profile/TargetsForm.h"
#include "ui/frame/ScreenDialog.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace nutrovex {

class SessionNotifier;

// The targets screen: a thin view of TargetsForm. A line per nutrient, its amount and whether it
// is grams or a share of the food budget; OK checks the set and saves it, or says what is wrong
// and stays.
class TargetsDialog : public ScreenDialog {
    Q_OBJECT

public:
    TargetsDialog(TargetsForm form, SessionNotifier& notifier, QWidget* parent);

    void done(int result) override;

    [[nodiscard]] QLineEdit* amountEdit(TargetNutrient n) const {
        return m_amounts[static_cast<std::size_t>(n)];
    }
    [[nodiscard]] QComboBox* kindList(TargetNutrient n) const {
        return m_kinds[static_cast<std::size_t>(n)];
    }
    [[nodiscard]] QLabel* notice() const { return m_notice; }

    // How a refusal is put to the person (a message box unless replaced).
    void setMessagePresenter(std::function<void(const ScreenMessage&)> present);

private:
    void redisplay();
    void run(TargetsForm::Command command);

    TargetsForm m_form;
    SessionNotifier* m_notifier;
    std::array<QLineEdit*, kTargetNutrientCount> m_amounts{};
    std::array<QComboBox*, kTargetNutrientCount> m_kinds{};
    std::array<QLabel*, kTargetNutrientCount> m_equivalents{};
    QLabel* m_budget;
    QLabel* m_notice;
    std::function<void(const ScreenMessage&)> m_present;
};

}  // namespace nutrovex
