#include "ui/foods/CategoryNameDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "foods/FoodForms.h"
#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

CategoryNameDialog::CategoryNameDialog(SessionNotifier& notifier, QWidget* parent, int group,
                                       Position category, bool edit)
    : FoodScreen(parent, QString(), false),
      m_notifier(&notifier),
      m_group(group),
      m_category(category),
      m_edit(edit),
      m_name(new QLineEdit(this)),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))),
      m_cancel(FoodScreen::addButton(QStringLiteral("Cancel"))) {
    const CategoryNameForm form(notifier.session().catalogue(), group, category, edit);
    setWindowTitle(QString::fromLatin1(form.caption()));
    menuBar()->hide();
    buttonRow()->addStretch();
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &CategoryNameDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* label = new QLabel(QStringLiteral("Enter a new category &name:"), this);
    label->setBuddy(m_name);
    m_name->setAccessibleName(QStringLiteral("Enter a new category name"));
    m_name->setMaxLength(static_cast<int>(CategoryNameForm::kTextLimit));
    m_name->setText(toQString(form.text));
    content()->addWidget(label);
    content()->addWidget(m_name);
    content()->addStretch();
    m_name->setFocus();
    m_name->selectAll();
}

void CategoryNameDialog::accept() {
    CategoryNameForm form(m_notifier->session().catalogue(), m_group, m_category, m_edit);
    const auto text = fromQString(m_name->text());
    form.text = text.value_or(std::string());
    const FormResult result = form.accept();
    if (result.message) {
        showMessage(this, *result.message);
        if (result.focus == FoodField::Cancel) {
            m_cancel->setFocus();
        } else {
            m_name->setFocus();
            m_name->selectAll();
        }
        return;
    }
    if (result.done()) {
        m_position = result.position;
        showFailure(this, m_notifier->apply(result.notices));
        FoodScreen::accept();
    }
}

}  // namespace nutrovex
