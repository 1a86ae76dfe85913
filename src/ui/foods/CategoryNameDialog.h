#pragma once

#include "forms/foods/CategoryNameForm.h"
#include "ui/foods/FoodScreens.h"

class QLineEdit;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// "New Category" in a group, or "Edit Category" for the category at a position: a thin view of
// CategoryNameForm.
class CategoryNameDialog : public FoodScreen {
    Q_OBJECT

public:
    CategoryNameDialog(CategoryNameForm form, SessionNotifier& notifier, QWidget* parent);

    // After OK, result() gives the category's position in its group.
    [[nodiscard]] const CategoryNameForm& form() const { return m_form; }
    [[nodiscard]] QLineEdit* nameField() const { return m_name; }
    [[nodiscard]] QPushButton* okButton() const { return m_ok; }

public Q_SLOTS:
    void accept() override;

private:
    CategoryNameForm m_form;
    SessionNotifier* m_notifier;
    QLineEdit* m_name;
    QPushButton* m_ok;
    QPushButton* m_cancel;
};

}  // namespace nutrovex
