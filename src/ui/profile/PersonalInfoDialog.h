#pragma once

#include "ui/frame/ScreenDialog.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace nutrovex {

class SessionNotifier;

// The personal information screen: name, units, height, age and gender. Every change is stored and
// saved at once, and the screen shows what was stored.
class PersonalInfoDialog : public ScreenDialog {
    Q_OBJECT

public:
    PersonalInfoDialog(SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }
    [[nodiscard]] QComboBox* unitsCombo() const { return m_units; }
    [[nodiscard]] QComboBox* firstHeightCombo() const { return m_firstHeight; }
    [[nodiscard]] QComboBox* secondHeightCombo() const { return m_secondHeight; }
    [[nodiscard]] QLineEdit* ageEdit() const { return m_age; }
    [[nodiscard]] QComboBox* genderCombo() const { return m_gender; }
    [[nodiscard]] QLabel* firstHeightUnit() const { return m_firstUnit; }

private:
    void save();
    void reset();
    // showAge false keeps a refused age as typed.
    void redisplay(bool showAge = true);

    SessionNotifier* m_notifier;
    QLineEdit* m_name;
    QComboBox* m_units;
    QComboBox* m_firstHeight;
    QLabel* m_firstUnit;
    QComboBox* m_secondHeight;
    QLabel* m_secondUnit;
    QLineEdit* m_age;
    QComboBox* m_gender;
};

}  // namespace nutrovex
