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
#include "session/Session.h"
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

LogFoodDialog::LogFoodDialog(SessionNotifier& notifier, QWidget* parent, int group, int category,
                             int item, std::function<void(QWidget*)> openCatalogue)
    : FoodScreen(parent, QString(), false),
      m_notifier(&notifier),
      m_state(&foodRunState(notifier)),
      m_form(notifier.session().catalogue(), notifier.session().days(), m_state->view,
             group >= 0 ? group : m_state->nextLogGroup, category, item),
      m_openCatalogue(std::move(openCatalogue)),
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
    QMenu* deleteMenu = edit->addMenu(QStringLiteral("&Delete"));
    deleteMenu->addAction(QStringLiteral("&Category"), this, &LogFoodDialog::deleteCategory);
    deleteMenu->addAction(QStringLiteral("&Food item"), this, &LogFoodDialog::deleteFoodItem);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    QAction* catalogue = options->addAction(QStringLiteral("&Catalogue..."), this, [this] {
        m_openCatalogue(this);
        m_form.selectGroup(m_form.group());  // the catalogue may have changed under the lists
        fillCategories();
    });
    catalogue->setEnabled(static_cast<bool>(m_openCatalogue));
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
    m_recentFoods = recentFoods(notifier.session().store());
    for (const FoodItem& f : m_recentFoods) {
        m_recent->addItem(toQString(recentFoodText(f)));
    }
    m_recent->setEnabled(!m_recentFoods.empty());
    m_again->setEnabled(!m_recentFoods.empty());
    connect(m_again, &QPushButton::clicked, this, &LogFoodDialog::logAgain);

    connect(m_groups, &QComboBox::activated, this, [this](int g) {
        m_form.selectGroup(g);
        fillCategories();
    });
    connect(m_categories, &QComboBox::activated, this, [this](int c) {
        m_form.selectCategory(c);
        fillFoods();
    });
    connect(m_foods, &QComboBox::activated, this, [this](int i) {
        m_form.selectItem(i);
        showValues();
    });
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

    {
        const QSignalBlocker block(m_groups);
        m_groups->setCurrentIndex(m_form.group());
    }
    fillCategories();
    m_groups->setFocus();
}

void LogFoodDialog::fillCategories() {
    {
        const QSignalBlocker block(m_groups);
        m_groups->setCurrentIndex(m_form.group());
    }
    fillList(m_categories, m_form.categoryNames(), m_form.category());
    m_categories->setEnabled(m_form.categoryListEnabled());
    m_categoryLabel->setEnabled(m_form.categoryListEnabled());
    fillFoods();
}

void LogFoodDialog::fillFoods() {
    fillList(m_foods, m_form.foodNames(), m_form.item());
    showValues();
}

void LogFoodDialog::showValues() {
    const bool enabled = m_form.valuesEnabled();
    m_foods->setEnabled(enabled);
    m_fields->setValuesEnabled(enabled);
    m_log->setEnabled(enabled);
    m_fields->show(m_form.fields);
}

void LogFoodDialog::log() {
    if (!m_form.valuesEnabled()) {
        return;
    }
    m_fields->read(m_form.fields);
    const FormResult result = m_form.log();
    if (result.message) {
        showMessage(this, *result.message);
        if (QWidget* w = m_fields->widgetFor(result.focus)) {
            w->setFocus();
        }
        return;
    }
    if (result.status == FormResult::Status::ClosedWithoutChange) {
        reject();
        return;
    }
    if (result.done()) {
        showFailure(this, m_notifier->apply(result.notices));
        m_loggedGroup = m_form.group();
        m_loggedPosition = m_form.loggedPosition();
        m_state->nextLogGroup = m_form.nextInitialGroup();
        accept();
    }
}

void LogFoodDialog::logAgain() {
    const int index = m_recent->currentIndex();
    if (index < 0 || static_cast<std::size_t>(index) >= m_recentFoods.size()) {
        return;
    }
    const FoodItem& food = m_recentFoods[static_cast<std::size_t>(index)];
    FoodLogView view = m_state->view;
    view.shownGroup = food.group;
    const auto meal = static_cast<uint16_t>(std::max(m_fields->mealList()->currentIndex(), 0));
    const CopyOutcome outcome = nutrovex::logAgain(m_notifier->session().days(), view, food, meal);
    showFailure(this, m_notifier->apply(outcome.notices));
    if (outcome.message) {
        showMessage(this, *outcome.message);  // the food stays chosen, for another day
        return;
    }
    if (outcome.copied == 0) {
        reject();  // the day could not be made
        return;
    }
    m_loggedGroup = food.group;
    m_loggedPosition = outcome.lastPosition;
    m_state->nextLogGroup = food.group;
    accept();
}

void LogFoodDialog::find() {
    FindFoodDialog dialog(*m_notifier, this);
    if (dialog.exec() != QDialog::Accepted || !dialog.chosen()) {
        return;
    }
    const FindResult& r = *dialog.chosen();
    m_form.selectFood(r.group, r.category, r.food);
    fillCategories();
}

void LogFoodDialog::catalogueEdited() {
    showFailure(this, m_notifier->apply(Notices{.catalogue = true, .dataChanged = true}));
    fillCategories();
}

void LogFoodDialog::newCategory() {
    CategoryNameDialog dialog(*m_notifier, this, m_form.group(), kNoPosition, false);
    if (dialog.exec() == QDialog::Accepted) {
        m_form.categoryCreated(dialog.position());
        fillCategories();
    }
}

void LogFoodDialog::newFoodItem() {
    NewFoodItemDialog dialog(*m_notifier, this, m_form.group(), m_form.category());
    if (dialog.exec() == QDialog::Accepted) {
        const FormResult& r = dialog.result();
        m_form.foodCreated(r.group, r.category, r.position);
        fillCategories();
    }
}

void LogFoodDialog::deleteCategory() {
    const auto question = m_form.confirmDeleteCategory();
    if (question && showMessage(this, question->message)) {
        m_form.deleteCategory();
        catalogueEdited();
    }
}

void LogFoodDialog::deleteFoodItem() {
    const auto question = m_form.confirmDeleteFood();
    if (question && showMessage(this, question->message)) {
        m_form.deleteFood();
        catalogueEdited();
    }
}

}  // namespace nutrovex
