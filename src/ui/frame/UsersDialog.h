#pragma once

#include <QDialog>

#include "forms/frame/UsersForm.h"
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

// The users screen: a thin view of UsersForm. OK opens the selected user; Delete and Rename act
// on the selected entry, the one the list shows and announces.
class UsersDialog : public ScreenDialog {
    Q_OBJECT

public:
    UsersDialog(UsersForm form, SessionNotifier& notifier, QWidget* parent);

    [[nodiscard]] QListWidget* list() const { return m_list; }

    void accept() override;

private:
    void fill();
    void addUser();
    void deleteUser();
    void renameUser();
    // Runs a command through the notifier; true when it had something to say.
    bool run(UsersForm::Command command);

    UsersForm m_form;
    SessionNotifier* m_notifier;
    QListWidget* m_list;
};

}  // namespace nutrovex
