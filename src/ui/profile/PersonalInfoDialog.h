#pragma once

#include "forms/profile/PersonalInfoForm.h"
#include "ui/frame/ScreenDialog.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace nutrovex {

class CommitOnLeave;
class SessionNotifier;

// The personal information screen: a thin view of PersonalInfoForm. A list choice is stored and
// saved at once, a typed name or age once it is complete, and the screen shows what was stored.
class PersonalInfoDialog : public ScreenDialog {
    Q_OBJECT

public:
    PersonalInfoDialog(PersonalInfoForm form, SessionNotifier& notifier, QWidget* parent);

    void done(int result) override;

    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }
    [[nodiscard]] QComboBox* unitsCombo() const { return m_units; }
    [[nodiscard]] QComboBox* firstHeightCombo() const { return m_firstHeight; }
    [[nodiscard]] QComboBox* secondHeightCombo() const { return m_secondHeight; }
    [[nodiscard]] QLineEdit* ageEdit() const { return m_age; }
    [[nodiscard]] QComboBox* genderCombo() const { return m_gender; }
    [[nodiscard]] QLabel* firstHeightUnit() const { return m_firstUnit; }

private:
    void edit(PersonalInfoForm::Field field, const QString& text);
    void reset();
    // showAge false keeps a refused age as typed.
    void redisplay(bool showAge = true);

    PersonalInfoForm m_form;
    SessionNotifier* m_notifier;
    QLineEdit* m_name;
    QComboBox* m_units;
    QComboBox* m_firstHeight;
    QLabel* m_firstUnit;
    QComboBox* m_secondHeight;
    QLabel* m_secondUnit;
    QLineEdit* m_age;
    QComboBox* m_gender;
    CommitOnLeave* m_nameCommit;
    CommitOnLeave* m_ageCommit;
};

}  // namespace nutrovex
