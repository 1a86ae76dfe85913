#pragma once

#include <functional>
#include <vector>

#include "foods/LogFoodForm.h"
#include "ui/foods/FoodScreens.h"

class QComboBox;
class QLabel;
class QPushButton;

namespace nutrovex {

class FoodFieldsWidget;
class SessionNotifier;

// Log Food: pick a group, category and food, change the serving or values, pick the meal and
// log it into the current day; or log one of the recent foods again. Its menu manages the
// catalogue in place. openCatalogue opens the catalogue screen; without it that entry is disabled.
class LogFoodDialog : public FoodScreen {
    Q_OBJECT

public:
    LogFoodDialog(SessionNotifier& notifier, QWidget* parent, int group = -1, int category = -1,
                  int item = -1, std::function<void(QWidget*)> openCatalogue = {});

    // After OK: the list the food went into and its presented position there.
    [[nodiscard]] int loggedGroup() const { return m_loggedGroup; }
    [[nodiscard]] Position loggedPosition() const { return m_loggedPosition; }
    [[nodiscard]] bool catalogueChanged() const { return m_form.catalogueChanged(); }

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
    void deleteCategory();
    void deleteFoodItem();

private:
    void fillCategories();
    void fillFoods();
    void showValues();
    void catalogueEdited();

    SessionNotifier* m_notifier;
    FoodRunState* m_state;
    LogFoodForm m_form;
    std::function<void(QWidget*)> m_openCatalogue;
    QComboBox* m_groups;
    QLabel* m_categoryLabel;
    QComboBox* m_categories;
    QComboBox* m_foods;
    FoodFieldsWidget* m_fields;
    QComboBox* m_recent;
    QPushButton* m_log;
    QPushButton* m_again;
    std::vector<FoodItem> m_recentFoods;
    int m_loggedGroup = -1;
    Position m_loggedPosition = kNoPosition;
};

}  // namespace nutrovex
