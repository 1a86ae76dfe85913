#pragma once

#include <QDialog>
#include <optional>
#include <string>

#include "ui/frame/ScreenDialog.h"

class QLineEdit;
class QListWidget;

namespace nutrovex {

class SessionNotifier;

// Asks for a user name: "New User" and "Rename User".
class UserNameDialog : public QDialog {
    Q_OBJECT

public:
    UserNameDialog(const QString& title, const QString& prompt, QWidget* parent);

    [[nodiscard]] QLineEdit* nameEdit() const { return m_name; }

private:
    QLineEdit* m_name;
};

// The users screen: pick the user to open, add, delete and rename users. OK opens the selected
// user.
class UsersDialog : public ScreenDialog {
    Q_OBJECT

public:
    UsersDialog(SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] QListWidget* list() const { return m_list; }

    void accept() override;

private:
    void fill(const std::string& selected);
    [[nodiscard]] std::optional<std::string> selectedName() const;
    void addUser();
    void deleteUser();
    void renameUser();

    SessionNotifier* m_notifier;
    QListWidget* m_list;
};

}  // namespace nutrovex
