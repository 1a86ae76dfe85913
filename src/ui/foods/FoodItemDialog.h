#pragma once

#include "forms/foods/FoodItemForm.h"
#include "ui/foods/FoodScreens.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace nutrovex {

class FoodFieldsWidget;
class SessionNotifier;

// The food item dialogs, a thin view of FoodItemForm: a new catalogue food, an edited one, a
// catalogue food logged into the current day, and an edited logged food.
class FoodItemDialog : public FoodScreen {
    Q_OBJECT

public:
    FoodItemDialog(FoodItemForm form, SessionNotifier& notifier, QWidget* parent);

    // After OK, result() says where the food now stands.
    [[nodiscard]] const FoodItemForm& form() const { return m_form; }
    [[nodiscard]] QLineEdit* nameField() const { return m_name; }
    [[nodiscard]] FoodFieldsWidget* fields() const { return m_fields; }
    [[nodiscard]] QComboBox* groupList() const { return m_groups; }
    [[nodiscard]] QComboBox* categoryList() const { return m_categories; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }

public Q_SLOTS:
    void accept() override;

private:
    void fillCategories();
    void newCategory();

    FoodItemForm m_form;
    SessionNotifier* m_notifier;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    QComboBox* m_groups = nullptr;
    QComboBox* m_categories = nullptr;
    QLineEdit* m_name;
    FoodFieldsWidget* m_fields;
};

}  // namespace nutrovex
