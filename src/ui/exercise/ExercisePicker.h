#pragma once

#include <QWidget>

#include "forms/exercise/ExerciseChoice.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace nutrovex {

// The exercise choice shared by the exercise log and "Edit Exercise": type, variant and
// sub-variant, the name of a user-defined exercise, minutes, calories and the "Calories" button.
// It shows an ExerciseChoiceView and reports what the person changed.
class ExercisePicker : public QWidget {
    Q_OBJECT

public:
    explicit ExercisePicker(QWidget* parent);

    // Shows the choice; no change is reported for it.
    void show(const ExerciseChoiceView& choice);

    [[nodiscard]] QComboBox* typeCombo() const { return m_type; }
    [[nodiscard]] QComboBox* variantCombo() const { return m_variant; }
    [[nodiscard]] QComboBox* subVariantCombo() const { return m_sub; }
    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }
    [[nodiscard]] QLineEdit* minutesEdit() const { return m_minutes; }
    [[nodiscard]] QLineEdit* caloriesEdit() const { return m_calories; }
    [[nodiscard]] QPushButton* caloriesButton() const { return m_caloriesButton; }
    [[nodiscard]] QWidget* lastControl() const;

Q_SIGNALS:
    // A list entry (by its text) or an edit changed.
    void edited(ExerciseChoice::Field field, const QString& text);
    void caloriesRequested();

private:
    QComboBox* m_type;
    QComboBox* m_variant;
    QComboBox* m_sub;
    QLabel* m_nameLabel;
    QLineEdit* m_name;
    QLineEdit* m_minutes;
    QLineEdit* m_calories;
    QPushButton* m_caloriesButton;
    bool m_showing = false;
};

}  // namespace nutrovex
