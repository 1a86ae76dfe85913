#include "ui/foods/LogFoodDialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <iterator>

#include "foods/RecentFoods.h"
#include "ui/TextConvert.h"
#include "ui/controls/NumericEdit.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodFieldsWidget.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

void fillList(QComboBox* list, const std::vector<std::string_view>& names, int selected) {
    const QSignalBlocker block(list);
    list->clear();
    for (const std::string_view name : names) {
        list->addItem(toQString(name));
    }
    list->setCurrentIndex(selected);
}

}  // namespace

LogFoodDialog::LogFoodDialog(LogFoodForm form, SessionNotifier& notifier, QWidget* parent,
                             FoodOpeners openers)
    : FoodScreen(parent, QString(), false),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_openers(std::move(openers)),
      m_groups(new QComboBox(this)),
      m_categoryLabel(nullptr),
      m_categories(new QComboBox(this)),
      m_foods(new QComboBox(this)),
      m_fields(nullptr),
      m_recent(nullptr),
      m_log(FoodScreen::addButton(QStringLiteral("&Log"))),
      m_again(nullptr) {
    QPushButton* cancel = FoodScreen::addButton(QStringLiteral("Cancel"));
    QPushButton* findButton = FoodScreen::addButton(QStringLiteral("&Find"));
    buttonRow()->addStretch();
    m_log->setDefault(true);
    connect(m_log, &QPushButton::clicked, this, &LogFoodDialog::log);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(findButton, &QPushButton::clicked, this, &LogFoodDialog::find);

    QMenu* findMenu = menuBar()->addMenu(QStringLiteral("Fi&nd"));
    findMenu->addAction(QStringLiteral("&Find Food"), this, &LogFoodDialog::find);
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    QMenu* newMenu = edit->addMenu(QStringLiteral("&New"));
    newMenu->addAction(QStringLiteral("&Category"), this, &LogFoodDialog::newCategory);
    newMenu->addAction(QStringLiteral("Food &Item"), this, &LogFoodDialog::newFoodItem);
    newMenu->addAction(QStringLiteral("&Recipe..."), this, &LogFoodDialog::newRecipe)
        ->setEnabled(static_cast<bool>(m_openers.newRecipe));
    QMenu* deleteMenu = edit->addMenu(QStringLiteral("&Delete"));
    deleteMenu->addAction(QStringLiteral("&Category"), this, &LogFoodDialog::deleteCategory);
    deleteMenu->addAction(QStringLiteral("&Food item"), this, &LogFoodDialog::deleteFoodItem);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    QAction* catalogue = options->addAction(QStringLiteral("&Catalogue..."), this, [this] {
        m_openers.catalogue(this);
        // The catalogue may have changed under the lists.
        m_form.select(m_form.view().group, -1, -1);
        showForm();
    });
    catalogue->setEnabled(static_cast<bool>(m_openers.catalogue));
    options->addAction(QStringLiteral("&About..."), this, [this] { AboutDialog(this).exec(); });

    auto* lists = new QGridLayout;
    auto addList = [&](const QString& text, QComboBox* list, int row) {
        auto* label = new QLabel(text, this);
        label->setBuddy(list);
        list->setAccessibleName(accessibleText(text));
        lists->addWidget(label, 2 * row, 0);
        lists->addWidget(list, 2 * row + 1, 0);
        return label;
    };
    addList(QStringLiteral("Select a food g&roup:"), m_groups, 0);
    m_categoryLabel = addList(QStringLiteral("Select a ca&tegory:"), m_categories, 1);
    addList(QStringLiteral("Select a food ite&m:"), m_foods, 2);
    content()->addLayout(lists);
    for (int g = 0; g < kFoodGroupCount; ++g) {
        m_groups->addItem(toQString(kFoodGroupNames[g]));
    }

    m_fields = new FoodFieldsWidget(this, QStringLiteral("BL&DS:"));
    content()->addWidget(m_fields);

    auto* recentRow = new QGridLayout;
    m_recent = new QComboBox(this);
    auto* recentLabel =
        new QLabel(QString::fromLatin1("&") + QString::fromLatin1(kRecentLabel), this);
    recentLabel->setBuddy(m_recent);
    m_recent->setAccessibleName(accessibleText(QString::fromLatin1(kRecentLabel)));
    m_again = new QPushButton(QString::fromLatin1(kLogAgainText), this);
    m_again->setAccessibleName(accessibleText(QString::fromLatin1(kLogAgainText)));
    m_again->setAutoDefault(false);
    recentRow->addWidget(recentLabel, 0, 0);
    recentRow->addWidget(m_recent, 1, 0);
    recentRow->addWidget(m_again, 1, 1);
    recentRow->setColumnStretch(0, 1);
    content()->addLayout(recentRow);
    content()->addStretch();
    const std::vector<std::string> recent = m_form.view().recentFoods;
    for (const std::string& f : recent) {
        m_recent->addItem(toQString(f));
    }
    m_recent->setEnabled(!recent.empty());
    m_again->setEnabled(!recent.empty());
    connect(m_again, &QPushButton::clicked, this, &LogFoodDialog::logAgain);

    for (const auto& [list, field] :
         {std::pair{m_groups, FoodField::Group}, std::pair{m_categories, FoodField::Category},
          std::pair{m_foods, FoodField::Food}}) {
        connect(list, &QComboBox::activated, this, [this, list, field](int index) {
            (void)m_form.edit(field, fromQString(list->itemText(index)).value_or(std::string()));
            showForm();
        });
    }
    followFoodFields(m_fields, this, m_form);

    // Top to bottom, then the buttons.
    QWidget* order[] = {m_groups,
                        m_categories,
                        m_foods,
                        m_fields->amountEdit(),
                        m_fields->unitList(),
                        m_fields->caloriesEdit()};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
    setTabOrder(m_fields->lastField(), m_recent);
    setTabOrder(m_recent, m_again);
    setTabOrder(m_again, m_log);
    setTabOrder(m_log, cancel);
    setTabOrder(cancel, findButton);

    showForm();
    m_groups->setFocus();
}

void LogFoodDialog::showForm() {
    const LogFoodView v = m_form.view();
    dateLine()->setText(toQString(v.date));
    {
        const QSignalBlocker block(m_groups);
        m_groups->setCurrentIndex(v.group);
    }
    fillList(m_categories, v.categoryNames, v.category);
    m_categories->setEnabled(v.categoryListEnabled);
    m_categoryLabel->setEnabled(v.categoryListEnabled);
    fillList(m_foods, v.foodNames, v.item);
    m_foods->setEnabled(v.valuesEnabled);
    m_fields->setValuesEnabled(v.valuesEnabled);
    m_log->setEnabled(v.valuesEnabled);
    m_fields->show(v.fields);
}

void LogFoodDialog::logged(const Outcome& outcome) {
    (void)showFailure(this, m_notifier->apply(outcome));
    if (outcome.message) {
        (void)showMessage(this, *outcome.message);
        if (QWidget* w = m_fields->widgetFor(m_form.result().focus)) {
            w->setFocus();
        }
        return;
    }
    if (m_form.result().status == FormResult::Status::ClosedWithoutChange) {
        reject();
    } else if (m_form.result().done()) {
        accept();
    }
}

void LogFoodDialog::log() {
    if (!m_form.view().valuesEnabled) {
        return;
    }
    m_fields->commitAll();
    logged(m_form.command(LogFoodForm::Command::Log));
}

void LogFoodDialog::logAgain() {
    m_form.selectRecent(m_recent->currentIndex());
    logged(m_form.command(LogFoodForm::Command::LogAgain));
}

void LogFoodDialog::find() {
    FindFoodDialog dialog(m_form.findForm(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const std::optional<FindResult> chosen = dialog.form().chosen();
    if (!chosen) {
        return;
    }
    m_form.select(chosen->group, chosen->category, chosen->food);
    showForm();
}

void LogFoodDialog::newCategory() {
    CategoryNameDialog dialog(m_form.newCategoryForm(), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted) {
        const FormResult& made = dialog.form().result();
        m_form.select(made.group, made.position, -1);
        showForm();
    }
}

void LogFoodDialog::newFoodItem() {
    FoodItemDialog dialog(m_form.newFoodItemForm(), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted) {
        const FormResult& made = dialog.form().result();
        m_form.select(made.group, made.category, made.position);
        showForm();
    }
}

void LogFoodDialog::newRecipe() {
    if (!m_openers.newRecipe) {
        return;
    }
    if (const std::optional<FoodPlace> made = m_openers.newRecipe(this, {})) {
        m_form.select(made->group, made->category, made->item);
    } else {
        // The catalogue may have changed under the lists.
        m_form.select(m_form.view().group, -1, -1);
    }
    showForm();
}

void LogFoodDialog::deleteSelected(LogFoodForm::Command command) {
    const std::optional<Confirmation> question = m_form.confirmation(command);
    if (question && showMessage(this, question->message)) {
        (void)showOutcome(this, *m_notifier, m_form.command(command));
        showForm();
    }
}

void LogFoodDialog::deleteCategory() {
    deleteSelected(LogFoodForm::Command::DeleteCategory);
}

void LogFoodDialog::deleteFoodItem() {
    deleteSelected(LogFoodForm::Command::DeleteFood);
}

}  // namespace nutrovex
