#pragma once

#include <array>
#include <functional>

#include "forms/foods/RecipeEditorForm.h"
#include "ui/foods/FoodScreens.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// The recipe editor: a thin view of RecipeEditorForm. Name, group and servings; the ingredient
// lines with the selected one's amount and unit; a food to add picked from the catalogue or
// found; the dish's values per serving and whole, live. OK saves the recipe and its food, or says
// what stops it and stays; Cancel leaves everything as it was.
class RecipeEditorDialog : public FoodScreen {
    Q_OBJECT

public:
    RecipeEditorDialog(RecipeEditorForm form, SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] const RecipeEditorForm& form() const { return m_form; }

    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }
    [[nodiscard]] QComboBox* groupList() const { return m_group; }
    [[nodiscard]] QLineEdit* servingsEdit() const { return m_servings; }
    [[nodiscard]] QListWidget* lineList() const { return m_lines; }
    [[nodiscard]] QLineEdit* amountEdit() const { return m_amount; }
    [[nodiscard]] QComboBox* unitList() const { return m_unit; }
    [[nodiscard]] QComboBox* pickGroupList() const { return m_pickGroup; }
    [[nodiscard]] QComboBox* pickCategoryList() const { return m_pickCategory; }
    [[nodiscard]] QComboBox* pickFoodList() const { return m_pickFood; }
    [[nodiscard]] QPushButton* addButton() const { return m_add; }
    [[nodiscard]] QPushButton* removeButton() const { return m_remove; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }
    // Per serving (column 0) or whole (1), in the catalogue's order of values.
    [[nodiscard]] QLabel* valueLabel(int column, int nutrient) const {
        return m_values[static_cast<std::size_t>(column)][static_cast<std::size_t>(nutrient)];
    }
    [[nodiscard]] QLabel* problemsLabel() const { return m_problems; }

    // How messages are put to the person (a message box unless replaced).
    void setMessagePresenter(std::function<void(const ScreenMessage&)> present);

public Q_SLOTS:
    void save();
    void find();

private:
    void redisplay();
    void run(RecipeEditorForm::Command command);
    void edited(RecipeEditorForm::Field field, const QString& text);

    RecipeEditorForm m_form;
    SessionNotifier* m_notifier;
    QPushButton* m_ok;
    QLineEdit* m_name;
    QComboBox* m_group;
    QLineEdit* m_servings;
    QListWidget* m_lines;
    QLineEdit* m_amount;
    QComboBox* m_unit;
    QPushButton* m_remove;
    QComboBox* m_pickGroup;
    QComboBox* m_pickCategory;
    QComboBox* m_pickFood;
    QPushButton* m_add;
    std::array<std::array<QLabel*, kNutrientCount>, 2> m_values{};
    QLabel* m_problems;
    QLabel* m_notice;
    std::function<void(const ScreenMessage&)> m_present;
};

}  // namespace nutrovex
