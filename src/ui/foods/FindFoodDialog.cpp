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

#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

FindFoodDialog::FindFoodDialog(SessionNotifier& notifier, QWidget* parent, const QString& text)
    : FoodScreen(parent, QString::fromLatin1(kFindCaption), false),
      m_notifier(&notifier),
      m_finder(&foodRunState(notifier).finder),
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
    QStringList history;
    for (const std::string& h : m_finder->history()) {
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
    if (!text.isEmpty()) {
        m_text->setText(text);
        runSearch(false);  // opening on a text: no message box before the screen is even shown
    }
    m_text->setFocus();
}

void FindFoodDialog::find() {
    runSearch(true);
}

void FindFoodDialog::runSearch(bool tellNoMatch) {
    if (result() == QDialog::Accepted) {
        return;  // Enter on a result chose it; the default button must not search again
    }
    const auto text = fromQString(m_text->text());
    if (!text) {
        return;
    }
    const FoodFinder::Outcome outcome = m_finder->find(m_notifier->session().catalogue(), *text);
    if (outcome == FoodFinder::Outcome::NothingToFind) {
        return;
    }
    m_results->clear();
    const auto& results = m_finder->results();
    for (std::size_t i = 0; i < results.size(); ++i) {
        auto* item = new QListWidgetItem(toQString(results[i].item.name.view()), m_results);
        item->setData(Qt::UserRole, static_cast<int>(i));
    }
    if (results.empty()) {
        if (tellNoMatch) {
            showMessage(this, {kNoMatchMessage, kFindCaption, MessageKind::Warning});
        }
        return;
    }
    m_results->setCurrentRow(0);
    m_results->setFocus();
}

void FindFoodDialog::accept() {
    const QListWidgetItem* item = m_results->currentItem();
    const auto& results = m_finder->results();
    if (item) {
        const auto i = static_cast<std::size_t>(item->data(Qt::UserRole).toInt());
        if (i < results.size()) {
            m_chosen = results[i];
        }
    }
    FoodScreen::accept();
}

}  // namespace nutrovex
