#pragma once

#include "foods/FoodForms.h"
#include "ui/foods/FoodScreens.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace nutrovex {

class FoodFieldsWidget;
class SessionNotifier;

// The food item dialogs: one form of food fields for a new catalogue food, an edited one, a
// catalogue food logged into the current day, and an edited logged food.
class FoodItemDialog : public FoodScreen {
    Q_OBJECT

public:
    FoodItemDialog(SessionNotifier& notifier, QWidget* parent, FoodItemForm form);

    // After OK: where the food now stands (see FormResult).
    [[nodiscard]] const FormResult& result() const { return m_result; }
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

    SessionNotifier* m_notifier;
    FoodItemForm m_form;
    FormResult m_result;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    QComboBox* m_groups = nullptr;
    QComboBox* m_categories = nullptr;
    QLineEdit* m_name;
    FoodFieldsWidget* m_fields;
};

// "New Food Item" in a group and category.
class NewFoodItemDialog : public FoodItemDialog {
public:
    NewFoodItemDialog(SessionNotifier& notifier, QWidget* parent, int group, int category);
};

// "Edit Food Item" for a catalogue food.
class EditFoodItemDialog : public FoodItemDialog {
public:
    EditFoodItemDialog(SessionNotifier& notifier, QWidget* parent, int group, Position category,
                       Position item);
};

// "Insert Food": logs a catalogue food into the current day with a meal.
class InsertFoodDialog : public FoodItemDialog {
public:
    InsertFoodDialog(SessionNotifier& notifier, QWidget* parent, int group, Position category,
                     Position item);
};

// Edits a food logged in the current day, shown at a presented position of the view's list.
class EditFoodEntryDialog : public FoodItemDialog {
public:
    EditFoodEntryDialog(SessionNotifier& notifier, QWidget* parent, const FoodLogView& view,
                        Position presented);
};

}  // namespace nutrovex
