#include "ui/foods/FindFoodDialog.h"

#include <QCompleter>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QStringList>

#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"

namespace nutrovex {

FindFoodDialog::FindFoodDialog(FindFoodForm form, QWidget* parent)
    : FoodScreen(parent, QString::fromLatin1(kFindCaption), false),
      m_form(std::move(form)),
      m_text(new QLineEdit(this)),
      m_find(new QPushButton(QStringLiteral("&Find"), this)),
      m_results(new QListWidget(this)),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))) {
    menuBar()->hide();
    QPushButton* cancel = FoodScreen::addButton(QStringLiteral("Cancel"));
    buttonRow()->addStretch();
    connect(m_ok, &QPushButton::clicked, this, &FindFoodDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* search = new QGroupBox(QStringLiteral("Search"), this);
    auto* layout = new QGridLayout(search);
    auto* label = new QLabel(QStringLiteral("Fin&d:"), search);
    label->setBuddy(m_text);
    m_text->setAccessibleName(QStringLiteral("Find"));
    m_text->setMaxLength(static_cast<int>(kFindHistoryTextLimit));
    const FindFoodView v = m_form.view();
    QStringList history;
    for (const std::string& h : v.history) {
        history << toQString(h);
    }
    m_text->setCompleter(new QCompleter(history, m_text));
    m_find->setAccessibleName(QStringLiteral("Find"));
    m_find->setDefault(true);
    layout->addWidget(label, 0, 0);
    layout->addWidget(m_text, 0, 1);
    layout->addWidget(m_find, 0, 2);
    content()->addWidget(search);
    m_results->setAccessibleName(QStringLiteral("Results"));
    content()->addWidget(m_results, 1);
    setTabOrder(m_ok, cancel);
    setTabOrder(cancel, m_text);
    setTabOrder(m_text, m_find);
    setTabOrder(m_find, m_results);

    connect(m_find, &QPushButton::clicked, this, &FindFoodDialog::find);
    connect(m_results, &QListWidget::itemDoubleClicked, this, &FindFoodDialog::accept);
    connect(m_results, &QListWidget::itemActivated, this, &FindFoodDialog::accept);
    // Opened on a text it has searched already, without a message box before it is even shown.
    m_text->setText(toQString(v.text));
    showResults();
    m_text->setFocus();
}

void FindFoodDialog::find() {
    if (result() == QDialog::Accepted) {
        return;  // Enter on a result chose it; the default button must not search again
    }
    const auto text = fromQString(m_text->text());
    if (!text) {
        return;
    }
    (void)m_form.edit(FindFoodForm::Field::Text, *text);
    const Outcome outcome = m_form.command(FindFoodForm::Command::Find);
    showResults();
    if (outcome.message) {
        showMessage(this, *outcome.message);
    }
}

void FindFoodDialog::showResults() {
    const FindFoodView v = m_form.view();
    if (v.results.empty() && m_results->count() == 0) {
        return;
    }
    m_results->clear();
    for (const std::string& name : v.results) {
        m_results->addItem(toQString(name));
    }
    if (v.selected >= 0) {
        m_results->setCurrentRow(v.selected);
        m_results->setFocus();
    }
}

void FindFoodDialog::accept() {
    m_form.select(m_results->currentRow());
    FoodScreen::accept();
}

}  // namespace nutrovex
