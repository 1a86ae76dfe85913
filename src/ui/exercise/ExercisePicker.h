#pragma once

#include <QWidget>
#include <functional>

#include "core/ScreenMessage.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace nutrovex {

class DayCursor;
class ExerciseForm;

// The exercise choice shared by the exercise log and "Edit Exercise": type, variant and
// sub-variant, the name of a user-defined exercise, minutes, calories and the "Calories" button.
class ExercisePicker : public QWidget {
    Q_OBJECT

public:
    ExercisePicker(ExerciseForm& form, DayCursor& days,
                   std::function<bool(const ScreenMessage&)> present, QWidget* parent);

    // Shows the form again (after it changed underneath, e.g. a logged entry cleared the edits).
    void showForm();

    [[nodiscard]] QComboBox* typeCombo() const { return m_type; }
    [[nodiscard]] QComboBox* variantCombo() const { return m_variant; }
    [[nodiscard]] QComboBox* subVariantCombo() const { return m_sub; }
    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }
    [[nodiscard]] QLineEdit* minutesEdit() const { return m_minutes; }
    [[nodiscard]] QLineEdit* caloriesEdit() const { return m_calories; }
    [[nodiscard]] QPushButton* caloriesButton() const { return m_caloriesButton; }
    [[nodiscard]] QWidget* lastControl() const;

Q_SIGNALS:
    // Minutes or calories changed: "Log" follows the form's rule.
    void editsChanged();

private:
    void fillVariants();
    void fillSubVariants();
    void updateStates();

    ExerciseForm* m_form;
    DayCursor* m_days;
    std::function<bool(const ScreenMessage&)> m_present;
    QComboBox* m_type;
    QComboBox* m_variant;
    QComboBox* m_sub;
    QLabel* m_nameLabel;
    QLineEdit* m_name;
    QLineEdit* m_minutes;
    QLineEdit* m_calories;
    QPushButton* m_caloriesButton;
};

}  // namespace nutrovex
