#pragma once

#include <array>
#include <functional>

#include "forms/foods/MealsForm.h"
#include "ui/foods/FoodOpeners.h"
#include "ui/foods/FoodScreens.h"

class QLabel;
class QToolButton;

namespace nutrovex {

class SessionNotifier;

// The meals screen: a thin view of MealsForm. A group's picture opens that group's foods of the
// day. Closing it writes what changed. openers: the screens of other areas that a group's foods
// and Log Food open; none leaves that command disabled.
class MealsDialog : public FoodScreen {
    Q_OBJECT

public:
    MealsDialog(MealsForm form, SessionNotifier& notifier, QWidget* parent,
                FoodOpeners openers = {});

    [[nodiscard]] QString groupValue(int group, int line) const;
    [[nodiscard]] QString summaryValue(int column, int line) const;
    // The day against the person's targets under the summary; hidden without targets.
    [[nodiscard]] QLabel* targetsLabel() const { return m_targets; }

    void done(int result) override;

public Q_SLOTS:
    void refresh();
    void toggleNutrients();
    // The day's food screen of a group, 0 to 8.
    void openGroup(int group);

private:
    MealsForm m_form;
    SessionNotifier* m_notifier;
    FoodOpeners m_openers;
    std::array<QToolButton*, 8> m_groups{};
    std::array<std::array<QLabel*, 3>, 8> m_labels{};
    std::array<std::array<QLabel*, 3>, 8> m_values{};
    std::array<std::array<QLabel*, 3>, 2> m_summaryLabels{};
    std::array<std::array<QLabel*, 3>, 2> m_summaryValues{};
    QLabel* m_date;
    QLabel* m_targets = nullptr;
};

}  // namespace nutrovex
