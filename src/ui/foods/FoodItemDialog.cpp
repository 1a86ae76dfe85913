#include "ui/foods/FoodItemDialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalBlocker>

#include "ui/TextConvert.h"
#include "ui/controls/NumericEdit.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FoodFieldsWidget.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

FoodItemDialog::FoodItemDialog(FoodItemForm form, SessionNotifier& notifier, QWidget* parent)
    : FoodScreen(parent, toQString(form.view().caption), false),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))),
      m_cancel(FoodScreen::addButton(QStringLiteral("Cancel"))),
      m_name(new QLineEdit(this)),
      m_fields(nullptr) {
    menuBar()->hide();
    buttonRow()->addStretch();
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &FoodItemDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    const FoodItemView v = m_form.view();
    auto* top = new QGridLayout;
    int row = 0;
    if (v.listsShown) {
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
        newCategory->setAccessibleName(QStringLiteral("New... category"));
        newCategory->setAutoDefault(false);
        top->addWidget(groupLabel, row++, 0, 1, 2);
        top->addWidget(m_groups, row++, 0, 1, 2);
        top->addWidget(categoryLabel, row++, 0, 1, 2);
        top->addWidget(m_categories, row, 0);
        top->addWidget(newCategory, row++, 1);
        connect(m_groups, &QComboBox::activated, this, [this](int g) {
            (void)m_form.edit(FoodField::Group, kFoodGroupNames[g]);
            fillCategories();
        });
        connect(m_categories, &QComboBox::activated, this, [this](int c) {
            (void)m_form.edit(FoodField::Category,
                              fromQString(m_categories->itemText(c)).value_or(std::string()));
        });
        connect(newCategory, &QPushButton::clicked, this, &FoodItemDialog::newCategory);
        fillCategories();
    }
    auto* nameLabel = new QLabel(QStringLiteral("Enter a food &name:"), this);
    nameLabel->setBuddy(m_name);
    m_name->setAccessibleName(QStringLiteral("Enter a food name"));
    m_name->setMaxLength(20);
    m_name->setText(toQString(v.name));
    m_name->setReadOnly(v.nameReadOnly);
    if (v.nameReadOnly) {
        // A name that cannot be changed reads as text, not as a field waiting for typing.
        m_name->setFrame(false);
        QPalette plain = m_name->palette();
        plain.setBrush(QPalette::Base, plain.brush(QPalette::Window));
        m_name->setPalette(plain);
    }
    if (!v.date.empty()) {
        dateLine()->setText(toQString(v.date));
    }
    top->addWidget(nameLabel, row++, 0, 1, 2);
    top->addWidget(m_name, row++, 0, 1, 2);
    top->setColumnStretch(0, 1);
    content()->addLayout(top);

    m_fields =
        new FoodFieldsWidget(this, v.hasMeal ? QStringLiteral("Meal &Type (BLDS)") : QString());
    content()->addWidget(m_fields);
    content()->addStretch();
    m_fields->show(v.fields);

    connect(m_name, &QLineEdit::textEdited, this, [this](const QString& text) {
        (void)m_form.edit(FoodField::Name, fromQString(text).value_or(std::string()));
        m_ok->setEnabled(m_form.view().okEnabled);
    });
    followFoodFields(m_fields, this, m_form);
    m_ok->setEnabled(v.okEnabled);
    if (v.nameReadOnly) {
        m_fields->amountEdit()->setFocus();
    } else {
        m_name->setFocus();
    }
}

void FoodItemDialog::fillCategories() {
    const FoodItemView v = m_form.view();
    const QSignalBlocker blockGroups(m_groups);
    m_groups->setCurrentIndex(v.group);
    const QSignalBlocker block(m_categories);
    m_categories->clear();
    for (const std::string_view name : v.categoryNames) {
        m_categories->addItem(toQString(name));
    }
    m_categories->setCurrentIndex(v.category);
}

void FoodItemDialog::newCategory() {
    CategoryNameDialog dialog(m_form.newCategoryForm(), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_form.selectCategory(dialog.form().result().position);
        fillCategories();
    }
}

void FoodItemDialog::accept() {
    if (const auto name = fromQString(m_name->text())) {
        (void)m_form.edit(FoodField::Name, *name);
    }
    m_fields->commitAll();
    const Outcome outcome = m_form.command(FoodItemForm::Command::Ok);
    const FormResult& result = m_form.result();
    if (outcome.message) {
        showMessage(this, *outcome.message);
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
        showFailure(this, m_notifier->apply(outcome));
        FoodScreen::accept();
    }
}

}  // namespace nutrovex
