#pragma once

#include <optional>

#include "forms/foods/FindFoodForm.h"
#include "ui/foods/FoodScreens.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace nutrovex {

// Find: a thin view of FindFoodForm. It searches the catalogue's foods by part of their name and
// returns the one chosen with OK or a double click (the form's chosen()).
class FindFoodDialog : public FoodScreen {
    Q_OBJECT

public:
    FindFoodDialog(FindFoodForm form, QWidget* parent);

    [[nodiscard]] const FindFoodForm& form() const { return m_form; }
    [[nodiscard]] QLineEdit* findField() const { return m_text; }
    [[nodiscard]] QListWidget* results() const { return m_results; }

public Q_SLOTS:
    void find();
    void accept() override;

private:
    void showResults();

    FindFoodForm m_form;
    QLineEdit* m_text;
    QPushButton* m_find;
    QListWidget* m_results;
    QPushButton* m_ok;
};

}  // namespace nutrovex
