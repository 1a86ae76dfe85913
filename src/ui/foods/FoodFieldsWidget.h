#pragma once

#include <QWidget>
#include <array>
#include <cstdint>
#include <optional>

#include "forms/foods/FoodFieldEdit.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace nutrovex {

class NumericEdit;

// The value fields every food form shares: serving amount and unit, whole calories, the five
// gram values and, where the form has one, the meal. Shows a FoodValueFields and reports each
// value once it is complete: a number when the person left its field, a unit or meal when chosen.
class FoodFieldsWidget : public QWidget {
    Q_OBJECT

public:
    // mealLabel: "BLDS:" or "Meal Type (BLDS)"; empty for a form without a meal.
    FoodFieldsWidget(QWidget* parent, const QString& mealLabel);

    // Writes every field; no edit signal goes out.
    void show(const FoodValueFields& fields);
    // Reports what the person typed that has not been reported yet, as leaving the fields would:
    // before OK or "Log", which a field that still has the focus has not seen.
    void commitAll();
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
    void edited(FoodField field, const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reportGrams(int nutrient);

    NumericEdit* m_amount;
    QComboBox* m_unit;
    QLineEdit* m_calories;
    std::array<NumericEdit*, kNutrientCount> m_grams{};  // [kCalories] unused
    QComboBox* m_meal = nullptr;
    std::array<QLabel*, 9> m_labels{};
    std::optional<double> m_shownAmount;
};

// Lets a food form follow its fields: each value goes to the form, and what the form recomputes
// is shown again. The form lives as long as `owner`, which holds the connection.
template <typename Form>
void followFoodFields(FoodFieldsWidget* fields, QObject* owner, Form& form) {
    QObject::connect(fields, &FoodFieldsWidget::edited, owner,
                     [fields, &form](FoodField field, const QString& text) {
                         (void)form.edit(field, text.toStdString());
                         fields->show(form.view().fields);
                     });
}

}  // namespace nutrovex
