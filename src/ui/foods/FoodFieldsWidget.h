#pragma once

#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>

#include "foods/FoodForms.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace nutrovex {

class NumericEdit;

// The value fields every food form shares: serving amount and unit, whole calories, the five
// gram values and, where the form has one, the meal. Shows a FoodValueFields and reports edits.
class FoodFieldsWidget : public QWidget {
    Q_OBJECT

public:
    // mealLabel: "BLDS:" or "Meal Type (BLDS)"; empty for a form without a meal.
    FoodFieldsWidget(QWidget* parent, const QString& mealLabel);

    // Writes every field; no edit signal goes out.
    void show(const FoodValueFields& fields);
    // Reads what the person typed that has not been reported yet: the focused numeric field is
    // read first (a changed amount is reported), then calories, grams and meal into fields.
    void read(FoodValueFields& fields);
    void setValuesEnabled(bool enabled);
    [[nodiscard]] QWidget* widgetFor(FoodField field) const;

    [[nodiscard]] NumericEdit* amountEdit() const { return m_amount; }
    [[nodiscard]] QComboBox* unitList() const { return m_unit; }
    [[nodiscard]] QLineEdit* caloriesEdit() const { return m_calories; }
    [[nodiscard]] NumericEdit* gramsEdit(int nutrient) const {
        return m_grams[static_cast<std::size_t>(nutrient)];
    }
    [[nodiscard]] QComboBox* mealList() const { return m_meal; }
    [[nodiscard]] QWidget* lastField() const;

Q_SIGNALS:
    void amountCommitted(std::optional<double> amount);
    void unitChosen(int index);
    void caloriesEdited(std::optional<uint32_t> calories);
    void caloriesLeft();
    void gramsEdited(int nutrient, std::optional<double> grams);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] std::optional<uint32_t> typedCalories() const;

    NumericEdit* m_amount;
    QComboBox* m_unit;
    QLineEdit* m_calories;
    std::array<NumericEdit*, kNutrientCount> m_grams{};  // [kCalories] unused
    QComboBox* m_meal = nullptr;
    std::array<QLabel*, 9> m_labels{};
    std::optional<double> m_shownAmount;
};

// Lets a food form follow its fields: each edit goes to the form, and what the form recomputes
// is shown again. The form lives as long as `owner`, which holds the connections.
template <typename Form>
void followFoodFields(FoodFieldsWidget* fields, QObject* owner, Form& form) {
    QObject::connect(fields, &FoodFieldsWidget::amountCommitted, owner,
                     [fields, &form](std::optional<double> amount) {
                         form.amountChanged(amount);
                         fields->show(form.fields);
                     });
    QObject::connect(fields, &FoodFieldsWidget::unitChosen, owner, [fields, &form](int index) {
        form.unitChosen(index);
        fields->show(form.fields);
    });
    QObject::connect(fields, &FoodFieldsWidget::caloriesEdited, owner,
                     [&form](std::optional<uint32_t> calories) { form.caloriesEdited(calories); });
    QObject::connect(
        fields, &FoodFieldsWidget::gramsEdited, owner,
        [&form](int nutrient, std::optional<double> grams) { form.gramsEdited(nutrient, grams); });
    QObject::connect(fields, &FoodFieldsWidget::caloriesLeft, owner, [fields, &form] {
        if (form.caloriesLeft()) {
            fields->show(form.fields);
        }
    });
}

}  // namespace nutrovex
