#include "ui/frame/UsersDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "session/MainFrameForm.h"
#include "session/Session.h"
#include "session/UsersForm.h"
#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/WaitCursor.h"

namespace nutrovex {

UserNameDialog::UserNameDialog(const QString& title, const QString& prompt, QWidget* parent)
    : QDialog(parent), m_name(new QLineEdit(this)) {
    setWindowTitle(title);
    setModal(true);
    auto* label = new QLabel(prompt, this);
    label->setBuddy(m_name);
    m_name->setAccessibleName(prompt);
    m_name->setMaxLength(64);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setAccessibleName(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleName(QStringLiteral("Cancel"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_name);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

UsersDialog::UsersDialog(SessionNotifier& notifier, QWidget* parent)
    : ScreenDialog(QStringLiteral("Users"), parent),
      m_notifier(&notifier),
      m_list(new QListWidget(this)) {
    auto* prompt = new QLabel(QStringLiteral("&Select a user:"), this);
    prompt->setBuddy(m_list);
    m_list->setAccessibleName(QStringLiteral("Select a user:"));
    body()->addWidget(prompt);
    body()->addWidget(m_list, 1);

    auto* buttons = new QHBoxLayout;
    const auto addButton = [&](const QString& text, const QString& name,
                               void (UsersDialog::*run)()) {
        auto* button = new QPushButton(text, this);
        button->setAccessibleName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, run);
        buttons->addWidget(button);
    };
    addButton(QStringLiteral("&New..."), QStringLiteral("New..."), &UsersDialog::addUser);
    addButton(QStringLiteral("&Delete"), QStringLiteral("Delete"), &UsersDialog::deleteUser);
    addButton(QStringLiteral("R&ename..."), QStringLiteral("Rename..."), &UsersDialog::renameUser);
    body()->addLayout(buttons);

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    const Session& session = notifier.session();
    const Position pre = session.preselectedUser();
    fill(pre == kNoPosition ? std::string() : std::string(session.users().nameAt(pre)));
    connect(m_list, &QListWidget::itemActivated, this, &UsersDialog::accept);
    setTabOrder(okButton(), m_list);
    m_list->setFocus();
}

void UsersDialog::fill(const std::string& selected) {
    const UserList& users = m_notifier->session().users();
    m_list->clear();
    for (std::size_t i = 0; i < users.count(); ++i) {
        const std::string_view name = users.nameAt(static_cast<Position>(i));
        m_list->addItem(toQString(name));
        if (name == selected) {
            m_list->setCurrentRow(static_cast<int>(i));
        }
    }
    if (m_list->currentRow() < 0 && m_list->count() > 0) {
        m_list->setCurrentRow(0);
    }
}

std::optional<std::string> UsersDialog::selectedName() const {
    const QListWidgetItem* item = m_list->currentItem();
    if (item == nullptr) {
        return std::nullopt;
    }
    return fromQString(item->text());
}

void UsersDialog::accept() {
    Session& session = m_notifier->session();
    const std::optional<std::string> name = selectedName();
    if (name && *name != session.openUserName()) {
        SessionStatus status;
        {
            const WaitCursor wait;
            status = session.switchUser(*name);
        }
        m_notifier->announceUserChanged();
        if (!showFailure(this, status)) {
            fill(std::string(session.openUserName()));
            return;  // stay, so the person sees which user is open
        }
    }
    ScreenDialog::accept();
}

void UsersDialog::addUser() {
    Session& session = m_notifier->session();
    UserNameDialog ask(QStringLiteral("New User"), QStringLiteral("Enter user name:"), this);
    while (ask.exec() == QDialog::Accepted) {
        const std::optional<std::string> name = fromQString(ask.nameEdit()->text());
        const bool fresh = name && session.users().find(*name) == kNoPosition;
        SessionStatus status;
        if (fresh) {
            const WaitCursor wait;
            status = session.addUser(*name);
        }
        // Refused: a duplicate, a name that cannot be a folder, or one the list could not take.
        if (!fresh || session.users().find(*name) == kNoPosition) {
            (void)showMessage(&ask, UsersForm::addRefusal(name));
            ask.nameEdit()->selectAll();
            ask.nameEdit()->setFocus();
            continue;
        }
        m_notifier->announceUserChanged();
        (void)showFailure(this, status);
        fill(*name);
        return;
    }
}

void UsersDialog::deleteUser() {
    const std::optional<std::string> name = selectedName();
    if (!name || !showMessage(this, UsersForm::confirmDelete(*name))) {
        return;
    }
    Session& session = m_notifier->session();
    bool refused = false;
    SessionStatus status;
    {
        const WaitCursor wait;
        status = deleteUserKeepingOneOpen(session, *name, refused);
    }
    m_notifier->announceUserChanged();
    if (refused) {
        (void)showMessage(this, UsersForm::deleteRefusal());
    } else {
        (void)showFailure(this, status);
    }
    fill(std::string(session.openUserName()));
}

void UsersDialog::renameUser() {
    const std::optional<std::string> name = selectedName();
    if (!name) {
        return;
    }
    UserNameDialog ask(QStringLiteral("Rename User"), QStringLiteral("Enter a new user name:"),
                       this);
    ask.nameEdit()->setText(toQString(*name));
    ask.nameEdit()->selectAll();
    if (ask.exec() != QDialog::Accepted) {
        return;
    }
    Session& session = m_notifier->session();
    const std::optional<std::string> newName = fromQString(ask.nameEdit()->text());
    const bool wasOpen = session.openUserName() == *name;
    SessionStatus status;
    bool renamed = false;
    if (newName) {
        const WaitCursor wait;
        status = session.renameUser(*name, *newName);
        renamed = session.users().find(*name) == kNoPosition;
        // The open user's data goes to the new name's folder at once.
        if (renamed && wasOpen) {
            for (std::string& f : session.saveModified().failures) {
                status.add(std::move(f));
            }
        }
    }
    if (!renamed) {
        (void)showMessage(this, UsersForm::renameRefusal(newName));
        return;
    }
    m_notifier->announceUserChanged();
    (void)showFailure(this, status);
    fill(*newName);
}

}  // namespace nutrovex
