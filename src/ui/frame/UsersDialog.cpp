#include "ui/frame/UsersDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

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

UsersDialog::UsersDialog(UsersForm form, SessionNotifier& notifier, QWidget* parent)
    : ScreenDialog(QStringLiteral("Users"), parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_list(new QListWidget(this)) {
    auto* prompt = new QLabel(QStringLiteral("&Select a user:"), this);
    prompt->setBuddy(m_list);
    m_list->setAccessibleName(QStringLiteral("Select a user:"));
    body()->addWidget(prompt);
    body()->addWidget(m_list, 1);

    auto* buttons = new QHBoxLayout;
    const auto addButton = [&](const QString& text, const QString& name,
                               void (UsersDialog::*pressed)()) {
        auto* button = new QPushButton(text, this);
        button->setAccessibleName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, pressed);
        buttons->addWidget(button);
    };
    addButton(QStringLiteral("&New..."), QStringLiteral("New..."), &UsersDialog::addUser);
    addButton(QStringLiteral("&Delete"), QStringLiteral("Delete"), &UsersDialog::deleteUser);
    addButton(QStringLiteral("R&ename..."), QStringLiteral("Rename..."), &UsersDialog::renameUser);
    body()->addLayout(buttons);

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    fill();
    // The entry the list shows selected, however it was chosen (a tap, the keys, or a screen
    // reader), is the one the commands act on.
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> chosen = m_list->selectedItems();
        if (!chosen.isEmpty()) {
            (void)m_form.edit(UsersForm::Field::Selected, fromQString(chosen.front()->text()));
        }
    });
    connect(m_list, &QListWidget::itemActivated, this, &UsersDialog::accept);
    setTabOrder(okButton(), m_list);
    m_list->setFocus();
}

void UsersDialog::fill() {
    const UsersView v = m_form.view();
    const QSignalBlocker block(m_list);
    m_list->clear();
    for (const std::string& name : v.names) {
        m_list->addItem(toQString(name));
    }
    if (v.selected >= 0) {
        m_list->setCurrentRow(v.selected);
        (void)m_form.edit(UsersForm::Field::Selected,
                          v.names[static_cast<std::size_t>(v.selected)]);
    }
}

bool UsersDialog::run(UsersForm::Command command) {
    Outcome outcome;
    {
        const WaitCursor wait;
        outcome = m_form.command(command);
    }
    return showOutcome(this, *m_notifier, outcome);
}

void UsersDialog::accept() {
    if (run(UsersForm::Command::Open)) {
        fill();
        return;  // stay, so the person sees which user is open
    }
    ScreenDialog::accept();
}

void UsersDialog::addUser() {
    UserNameDialog ask(QStringLiteral("New User"), QStringLiteral("Enter user name:"), this);
    while (ask.exec() == QDialog::Accepted) {
        (void)m_form.edit(UsersForm::Field::NewName, fromQString(ask.nameEdit()->text()));
        Outcome outcome;
        {
            const WaitCursor wait;
            outcome = m_form.command(UsersForm::Command::Add);
        }
        if (!outcome.notices.any()) {
            // Refused: the name dialog stays for another name.
            if (outcome.message) {
                (void)showMessage(&ask, *outcome.message);
            }
            ask.nameEdit()->selectAll();
            ask.nameEdit()->setFocus();
            continue;
        }
        (void)showOutcome(this, *m_notifier, outcome);
        fill();
        return;
    }
}

void UsersDialog::deleteUser() {
    const std::optional<ScreenMessage> question = m_form.confirmation(UsersForm::Command::Delete);
    if (!question || !showMessage(this, *question)) {
        return;
    }
    (void)run(UsersForm::Command::Delete);
    fill();
}

void UsersDialog::renameUser() {
    if (m_form.selectedName().empty()) {
        return;
    }
    UserNameDialog ask(QStringLiteral("Rename User"), QStringLiteral("Enter a new user name:"),
                       this);
    ask.nameEdit()->setText(toQString(m_form.selectedName()));
    ask.nameEdit()->selectAll();
    if (ask.exec() != QDialog::Accepted) {
        return;
    }
    (void)m_form.edit(UsersForm::Field::NewName, fromQString(ask.nameEdit()->text()));
    (void)run(UsersForm::Command::Rename);
    fill();
}

}  // namespace nutrovex
