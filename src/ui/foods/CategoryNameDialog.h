#pragma once

#include "core/Position.h"
#include "ui/foods/FoodScreens.h"

class QLineEdit;
class QPushButton;

namespace nutrovex {

class SessionNotifier;

// "New Category" in a group, or "Edit Category" for the category at a position.
class CategoryNameDialog : public FoodScreen {
    Q_OBJECT

public:
    CategoryNameDialog(SessionNotifier& notifier, QWidget* parent, int group, Position category,
                       bool edit);

    // After OK: the category's position in its group.
    [[nodiscard]] Position position() const { return m_position; }
    [[nodiscard]] QLineEdit* nameField() const { return m_name; }

public Q_SLOTS:
    void accept() override;

private:
    SessionNotifier* m_notifier;
    int m_group;
    Position m_category;
    bool m_edit;
    QLineEdit* m_name;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    Position m_position = kNoPosition;
};

}  // namespace nutrovex
