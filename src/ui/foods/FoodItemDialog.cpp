#include "ui/foods/FoodItemDialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>

#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/controls/NumericEdit.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FoodFieldsWidget.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

FoodItemDialog::FoodItemDialog(SessionNotifier& notifier, QWidget* parent, FoodItemForm form)
    : FoodScreen(parent, QString::fromLatin1(form.caption()), false),
      m_notifier(&notifier),
      m_form(std::move(form)),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))),
      m_cancel(FoodScreen::addButton(QStringLiteral("Cancel"))),
      m_name(new QLineEdit(this)),
      m_fields(nullptr) {
    menuBar()->hide();
    buttonRow()->addStretch();
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &FoodItemDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* top = new QGridLayout;
    int row = 0;
    if (m_form.kind() == FoodFormKind::NewItem) {
        m_groups = new QComboBox(this);
        m_categories = new QComboBox(this);
        auto* groupLabel = new QLabel(QStringLiteral("Select a food &group:"), this);
        groupLabel->setBuddy(m_groups);
        m_groups->setAccessibleName(QStringLiteral("Select a food group"));
        for (int g = 0; g < kFoodGroupCount; ++g) {
            m_groups->addItem(toQString(kFoodGroupNames[g]));
        }
        auto* categoryLabel = new QLabel(QStringLiteral("Select a cat&egory:"), this);
        categoryLabel->setBuddy(m_categories);
        m_categories->setAccessibleName(QStringLiteral("Select a category"));
        auto* newCategory = new QPushButton(QStringLiteral("Ne&w..."), this);
        newCategory->setAccessibleName(QStringLiteral("New category"));
        newCategory->setAutoDefault(false);
        top->addWidget(groupLabel, row++, 0, 1, 2);
        top->addWidget(m_groups, row++, 0, 1, 2);
        top->addWidget(categoryLabel, row++, 0, 1, 2);
        top->addWidget(m_categories, row, 0);
        top->addWidget(newCategory, row++, 1);
        connect(m_groups, &QComboBox::activated, this, [this](int g) {
            m_form.selectGroup(g);
            fillCategories();
        });
        connect(m_categories, &QComboBox::activated, this,
                [this](int c) { m_form.selectCategory(c); });
        connect(newCategory, &QPushButton::clicked, this, &FoodItemDialog::newCategory);
        fillCategories();
    }
    auto* nameLabel = new QLabel(QStringLiteral("Enter a food &name:"), this);
    nameLabel->setBuddy(m_name);
    m_name->setAccessibleName(QStringLiteral("Enter a food name"));
    m_name->setMaxLength(20);
    m_name->setText(toQString(m_form.name));
    m_name->setReadOnly(m_form.nameReadOnly());
    top->addWidget(nameLabel, row++, 0, 1, 2);
    top->addWidget(m_name, row++, 0, 1, 2);
    top->setColumnStretch(0, 1);
    content()->addLayout(top);

    m_fields = new FoodFieldsWidget(
        this, m_form.hasMeal() ? QStringLiteral("Meal &Type (BLDS)") : QString());
    content()->addWidget(m_fields);
    content()->addStretch();
    m_fields->show(m_form.fields);

    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_form.name = fromQString(text).value_or(std::string());
        m_ok->setEnabled(m_form.okEnabled());
    });
    followFoodFields(m_fields, this, m_form);
    m_ok->setEnabled(m_form.okEnabled());
    if (m_form.nameReadOnly()) {
        m_fields->amountEdit()->setFocus();
    } else {
        m_name->setFocus();
    }
}

void FoodItemDialog::fillCategories() {
    const QSignalBlocker blockGroups(m_groups);
    m_groups->setCurrentIndex(m_form.group());
    const QSignalBlocker block(m_categories);
    m_categories->clear();
    for (const std::string_view name : m_form.categoryNames()) {
        m_categories->addItem(toQString(name));
    }
    m_categories->setCurrentIndex(m_form.category());
}

void FoodItemDialog::newCategory() {
    CategoryNameDialog dialog(*m_notifier, this, m_form.group(), kNoPosition, false);
    if (dialog.exec() == QDialog::Accepted) {
        m_form.selectGroup(m_form.group());
        m_form.selectCategory(static_cast<int>(dialog.position()));
        fillCategories();
    }
}

void FoodItemDialog::accept() {
    if (const auto name = fromQString(m_name->text())) {
        m_form.name = *name;
    }
    m_fields->read(m_form.fields);
    const FormResult result = m_form.accept();
    if (result.message) {
        showMessage(this, *result.message);
        QWidget* focus = result.focus == FoodField::Name     ? m_name
                         : result.focus == FoodField::Cancel ? m_cancel
                                                             : m_fields->widgetFor(result.focus);
        if (focus) {
            focus->setFocus();
        }
        return;
    }
    if (result.status == FormResult::Status::ClosedWithoutChange) {
        reject();
        return;
    }
    if (result.done()) {
        m_result = result;
        showFailure(this, m_notifier->apply(result.notices));
        FoodScreen::accept();
    }
}

NewFoodItemDialog::NewFoodItemDialog(SessionNotifier& notifier, QWidget* parent, int group,
                                     int category)
    : FoodItemDialog(notifier, parent,
                     FoodItemForm::newItem(notifier.session().catalogue(), group, category)) {}

EditFoodItemDialog::EditFoodItemDialog(SessionNotifier& notifier, QWidget* parent, int group,
                                       Position category, Position item)
    : FoodItemDialog(
          notifier, parent,
          FoodItemForm::editItem(notifier.session().catalogue(), group, category, item)) {}

InsertFoodDialog::InsertFoodDialog(SessionNotifier& notifier, QWidget* parent, int group,
                                   Position category, Position item)
    : FoodItemDialog(
          notifier, parent,
          FoodItemForm::insertIntoDay(notifier.session().catalogue(), group, category, item,
                                      notifier.session().days(), foodRunState(notifier).view)) {}

EditFoodEntryDialog::EditFoodEntryDialog(SessionNotifier& notifier, QWidget* parent,
                                         const FoodLogView& view, Position presented)
    : FoodItemDialog(notifier, parent,
                     FoodItemForm::editLoggedEntry(notifier.session().days(), view, presented)) {}

}  // namespace nutrovex
