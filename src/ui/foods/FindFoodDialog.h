#pragma once

#include <optional>

#include "foods/FoodFinder.h"
#include "ui/foods/FoodScreens.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// Find: searches the catalogue's foods by part of their name and returns the one chosen. Opened
// with a text, it searches for it at once.
class FindFoodDialog : public FoodScreen {
    Q_OBJECT

public:
    FindFoodDialog(SessionNotifier& notifier, QWidget* parent, const QString& text = QString());

    // The result chosen with OK or a double click.
    [[nodiscard]] const std::optional<FindResult>& chosen() const { return m_chosen; }
    [[nodiscard]] QLineEdit* findField() const { return m_text; }
    [[nodiscard]] QListWidget* results() const { return m_results; }

public Q_SLOTS:
    void find();
    void accept() override;

private:
    void runSearch(bool tellNoMatch);
    SessionNotifier* m_notifier;
    FoodFinder* m_finder;
    QLineEdit* m_text;
    QPushButton* m_find;
    QListWidget* m_results;
    QPushButton* m_ok;
    std::optional<FindResult> m_chosen;
};

}  // namespace nutrovex
