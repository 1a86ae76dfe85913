#include "ui/foods/CategoryNameDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

CategoryNameDialog::CategoryNameDialog(CategoryNameForm form, SessionNotifier& notifier,
                                       QWidget* parent)
    : FoodScreen(parent, QString(), false),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_name(new QLineEdit(this)),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))),
      m_cancel(FoodScreen::addButton(QStringLiteral("Cancel"))) {
    const CategoryNameView v = m_form.view();
    setWindowTitle(toQString(v.caption));
    menuBar()->hide();
    buttonRow()->addStretch();
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &CategoryNameDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* label = new QLabel(QStringLiteral("Enter a new category &name:"), this);
    label->setBuddy(m_name);
    m_name->setAccessibleName(QStringLiteral("Enter a new category name"));
    m_name->setMaxLength(static_cast<int>(CategoryNameForm::kTextLimit));
    m_name->setText(toQString(v.text));
    content()->addWidget(label);
    content()->addWidget(m_name);
    content()->addStretch();
    m_ok->setEnabled(v.okEnabled);
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString& text) {
        (void)m_form.edit(FoodField::Name, fromQString(text).value_or(std::string()));
        m_ok->setEnabled(m_form.view().okEnabled);
    });
    m_name->setFocus();
    m_name->selectAll();
}

void CategoryNameDialog::accept() {
    (void)m_form.edit(FoodField::Name, fromQString(m_name->text()).value_or(std::string()));
    if (!m_form.view().okEnabled) {
        return;  // Enter in an empty field
    }
    const Outcome outcome = m_form.command(CategoryNameForm::Command::Ok);
    if (outcome.message) {
        showMessage(this, *outcome.message);
        if (m_form.result().focus == FoodField::Cancel) {
            m_cancel->setFocus();
        } else {
            m_name->setFocus();
            m_name->selectAll();
        }
        return;
    }
    if (m_form.result().done()) {
        showFailure(this, m_notifier->apply(outcome));
        FoodScreen::accept();
    }
}

}  // namespace nutrovex
