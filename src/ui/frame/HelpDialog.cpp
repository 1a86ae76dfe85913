#include "ui/frame/HelpDialog.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/frame/Mnemonics.h"

namespace nutrovex {

HelpDialog::HelpDialog(HelpForm form, QWidget* parent)
    : ScreenDialog(QStringLiteral("Healthy Dieting"), parent),
      m_form(std::move(form)),
      m_text(new QPlainTextEdit(this)) {
    m_text->setReadOnly(true);
    m_text->setAccessibleName(QStringLiteral("Help text"));
    // Tab moves on to the buttons instead of being typed into the read-only text.
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByKeyboard | Qt::TextSelectableByMouse);
    body()->addWidget(m_text, 1);

    QString usedInButtons;
    auto* buttons = new QHBoxLayout;
    for (const HelpForm::Entry& command : HelpForm::buttons()) {
        const QString caption = toQString(command.caption);
        auto* button = new QPushButton(withMnemonic(caption, usedInButtons), this);
        button->setAccessibleName(caption);
        button->setAutoDefault(false);
        const HelpForm::Command id = command.command;
        connect(button, &QPushButton::clicked, this, [this, id] { run(id); });
        buttons->addWidget(button);
    }
    body()->addLayout(buttons);

    QString usedInMenu;
    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    for (const HelpForm::Entry& command : HelpForm::menuCommands()) {
        const HelpForm::Command id = command.command;
        QAction* action = help->addAction(withMnemonic(toQString(command.caption), usedInMenu));
        connect(action, &QAction::triggered, this, [this, id] { run(id); });
    }
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    addAboutCommand(options);

    run(HelpForm::Command::QuickHelp);
    setTabOrder(okButton(), m_text);
    m_text->setFocus();
}

void HelpDialog::run(HelpForm::Command command) {
    (void)m_form.command(command);
    m_text->setPlainText(
        toQString(m_form.view().text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
}

}  // namespace nutrovex
