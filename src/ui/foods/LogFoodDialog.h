#pragma once

#include <functional>
#include <vector>

#include "forms/foods/LogFoodForm.h"
#include "ui/foods/FoodOpeners.h"
#include "ui/foods/FoodScreens.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace nutrovex {

class FoodFieldsWidget;
class SessionNotifier;

// Log Food: a thin view of LogFoodForm. Pick a group, category and food, change the serving or
// values, pick the meal and log it into the current day; or log one of the recent foods again.
// Its menu manages the catalogue in place. openers: the catalogue screen and the recipe editor;
// without one its entry is disabled.
class LogFoodDialog : public FoodScreen {
    Q_OBJECT

public:
    LogFoodDialog(LogFoodForm form, SessionNotifier& notifier, QWidget* parent,
                  FoodOpeners openers = {});

    // After OK, result() says where the food went.
    [[nodiscard]] const LogFoodForm& form() const { return m_form; }

    [[nodiscard]] QComboBox* groupList() const { return m_groups; }
    [[nodiscard]] QComboBox* categoryList() const { return m_categories; }
    [[nodiscard]] QComboBox* foodList() const { return m_foods; }
    [[nodiscard]] QComboBox* recentList() const { return m_recent; }
    [[nodiscard]] FoodFieldsWidget* fields() const { return m_fields; }
    [[nodiscard]] QPushButton* logButton() const { return m_log; }

public Q_SLOTS:
    void log();
    void logAgain();
    void find();
    void newCategory();
    void newFoodItem();
    void newRecipe();
    void deleteCategory();
    void deleteFoodItem();

private:
    void showForm();
    void logged(const Outcome& outcome);
    void deleteSelected(LogFoodForm::Command command);

    LogFoodForm m_form;
    SessionNotifier* m_notifier;
    FoodOpeners m_openers;
    QComboBox* m_groups;
    QLabel* m_categoryLabel;
    QComboBox* m_categories;
    QComboBox* m_foods;
    FoodFieldsWidget* m_fields;
    QComboBox* m_recent;
    QPushButton* m_log;
    QPushButton* m_again;
};

}  // namespace nutrovex
