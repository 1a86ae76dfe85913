#include "ui/foods/RecipeEditorDialog.h"
#include "ui/controls/AccessibleText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include "ui/TextConvert.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

namespace {

constexpr const char* kValueLabels[kNutrientCount] = {
    "Calories", "Carbohydrate (g)", "Fiber (g)", "Protein (g)", "Fat (g)", "Saturated fat (g)"};

template <typename Names>
void fill(QComboBox* list, const Names& names, int selected) {
    const QSignalBlocker block(list);
    list->clear();
    for (const auto& name : names) {
        list->addItem(toQString(name));
    }
    list->setCurrentIndex(selected);
}

QLabel* labelFor(const QString& text, QWidget* buddy, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    buddy->setAccessibleName(accessibleText(text));
    return label;
}

}  // namespace

RecipeEditorDialog::RecipeEditorDialog(RecipeEditorForm form, SessionNotifier& notifier,
                                       QWidget* parent)
    : FoodScreen(parent, toQString(form.view().caption), false),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_ok(FoodScreen::addButton(QStringLiteral("OK"))),
      m_name(new QLineEdit(this)),
      m_group(new QComboBox(this)),
      m_servings(new QLineEdit(this)),
      m_lines(new QListWidget(this)),
      m_amount(new QLineEdit(this)),
      m_unit(new QComboBox(this)),
      m_remove(new QPushButton(QStringLiteral("Re&move"), this)),
      m_pickGroup(new QComboBox(this)),
      m_pickCategory(new QComboBox(this)),
      m_pickFood(new QComboBox(this)),
      m_add(new QPushButton(QStringLiteral("A&dd"), this)),
      m_problems(new QLabel(this)),
      m_notice(new QLabel(this)),
      m_present([this](const ScreenMessage& m) { (void)showMessage(this, m); }) {
    QPushButton* cancel = FoodScreen::addButton(QStringLiteral("Cancel"));
    QPushButton* findButton = FoodScreen::addButton(QStringLiteral("&Find"));
    buttonRow()->addStretch();
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &RecipeEditorDialog::save);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(findButton, &QPushButton::clicked, this, &RecipeEditorDialog::find);

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->addAction(QStringLiteral("&Add Ingredient"), this,
                    [this] { run(RecipeEditorForm::Command::Add); });
    edit->addAction(QStringLiteral("&Remove Ingredient"), this,
                    [this] { run(RecipeEditorForm::Command::Remove); });
    edit->addAction(QStringLiteral("&Find Food..."), this, &RecipeEditorDialog::find);

    m_name->setMaxLength(static_cast<int>(kMaxRecipeNameLength));
    m_servings->setValidator(new QIntValidator(1, static_cast<int>(kMaxRecipeServings), this));
    m_amount->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9]{0,5}(\\.[0-9]{0,3})?")), m_amount));
    for (int g = 0; g < kFoodGroupCount; ++g) {
        m_group->addItem(toQString(kFoodGroupNames[g]));
        m_pickGroup->addItem(toQString(kFoodGroupNames[g]));
    }
    for (QPushButton* b : {m_remove, m_add}) {
        b->setAutoDefault(false);
        b->setAccessibleName(accessibleText(b->text()));
    }

    auto* top = new QGridLayout;
    top->addWidget(labelFor(QStringLiteral("&Name:"), m_name, this), 0, 0);
    top->addWidget(m_name, 0, 1, 1, 3);
    top->addWidget(labelFor(QStringLiteral("&Group:"), m_group, this), 1, 0);
    top->addWidget(m_group, 1, 1, 1, 3);
    top->addWidget(labelFor(QStringLiteral("&Servings:"), m_servings, this), 2, 0);
    top->addWidget(m_servings, 2, 1);
    top->setColumnStretch(3, 1);
    content()->addLayout(top);

    content()->addWidget(labelFor(QStringLiteral("&Ingredients:"), m_lines, this));
    content()->addWidget(m_lines, 1);
    auto* lineRow = new QHBoxLayout;
    lineRow->addWidget(labelFor(QStringLiteral("&Amount:"), m_amount, this));
    lineRow->addWidget(m_amount);
    lineRow->addWidget(labelFor(QStringLiteral("&Unit:"), m_unit, this));
    lineRow->addWidget(m_unit);
    lineRow->addWidget(m_remove);
    lineRow->addStretch(1);
    content()->addLayout(lineRow);

    auto* pick = new QGridLayout;
    pick->addWidget(labelFor(QStringLiteral("From g&roup:"), m_pickGroup, this), 0, 0);
    pick->addWidget(m_pickGroup, 0, 1);
    pick->addWidget(labelFor(QStringLiteral("Ca&tegory:"), m_pickCategory, this), 1, 0);
    pick->addWidget(m_pickCategory, 1, 1);
    pick->addWidget(labelFor(QStringLiteral("F&ood:"), m_pickFood, this), 2, 0);
    pick->addWidget(m_pickFood, 2, 1);
    pick->addWidget(m_add, 2, 2);
    pick->setColumnStretch(1, 1);
    content()->addLayout(pick);

    auto* totals = new QGridLayout;
    totals->addWidget(new QLabel(QStringLiteral("Per serving"), this), 0, 1, Qt::AlignRight);
    totals->addWidget(new QLabel(QStringLiteral("Whole dish"), this), 0, 2, Qt::AlignRight);
    for (int n = 0; n < kNutrientCount; ++n) {
        totals->addWidget(new QLabel(QString::fromLatin1(kValueLabels[n]), this), n + 1, 0);
        for (int column = 0; column < 2; ++column) {
            auto* value = new QLabel(this);
            value->setAlignment(Qt::AlignRight);
            setFigureCaption(value, QString::fromLatin1(kValueLabels[n]) +
                                        (column == 0 ? QStringLiteral(" per serving")
                                                     : QStringLiteral(" whole dish")));
            totals->addWidget(value, n + 1, column + 1);
            m_values[static_cast<std::size_t>(column)][static_cast<std::size_t>(n)] = value;
        }
    }
    totals->setColumnStretch(3, 1);
    content()->addLayout(totals);
    for (QLabel* l : {m_problems, m_notice}) {
        l->setWordWrap(true);
        content()->addWidget(l);
    }
    m_problems->setAccessibleName(QStringLiteral("Problems"));
    m_notice->setAccessibleName(QStringLiteral("Notice"));

    using Field = RecipeEditorForm::Field;
    connect(m_name, &QLineEdit::textEdited, this,
            [this](const QString& t) { edited(Field::Name, t); });
    connect(m_servings, &QLineEdit::textEdited, this,
            [this](const QString& t) { edited(Field::Servings, t); });
    connect(m_amount, &QLineEdit::textEdited, this,
            [this](const QString& t) { edited(Field::Amount, t); });
    for (const auto& [list, field] :
         {std::pair{m_group, Field::Group}, std::pair{m_unit, Field::Unit},
          std::pair{m_pickGroup, Field::PickGroup}, std::pair{m_pickCategory, Field::PickCategory},
          std::pair{m_pickFood, Field::PickFood}}) {
        connect(list, &QComboBox::activated, this,
                [this, list, field](int index) { edited(field, list->itemText(index)); });
    }
    connect(m_lines, &QListWidget::currentRowChanged, this, [this](int row) {
        m_form.selectLine(row);
        redisplay();
    });
    connect(m_remove, &QPushButton::clicked, this,
            [this] { run(RecipeEditorForm::Command::Remove); });
    connect(m_add, &QPushButton::clicked, this, [this] { run(RecipeEditorForm::Command::Add); });

    QWidget* order[] = {m_name, m_group,  m_servings,  m_lines,        m_amount,
                        m_unit, m_remove, m_pickGroup, m_pickCategory, m_pickFood,
                        m_add,  m_ok,     cancel,      findButton};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
    redisplay();
    m_name->setFocus();
}

void RecipeEditorDialog::setMessagePresenter(std::function<void(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void RecipeEditorDialog::edited(RecipeEditorForm::Field field, const QString& text) {
    if (const std::optional<std::string> typed = fromQString(text)) {
        (void)m_form.edit(field, *typed);
    }
    redisplay();
}

void RecipeEditorDialog::run(RecipeEditorForm::Command command) {
    (void)m_form.command(command);
    redisplay();
}

void RecipeEditorDialog::redisplay() {
    const RecipeEditorView v = m_form.view();
    setWindowTitle(toQString(v.caption));
    if (m_name->text() != toQString(v.name)) {
        m_name->setText(toQString(v.name));
    }
    {
        const QSignalBlocker block(m_group);
        m_group->setCurrentIndex(v.group);
    }
    if (m_servings->text() != toQString(v.servings)) {
        m_servings->setText(toQString(v.servings));
    }
    {
        const QSignalBlocker block(m_lines);
        m_lines->clear();
        for (const std::string& line : v.lines) {
            m_lines->addItem(toQString(line));
        }
        m_lines->setCurrentRow(v.selected);
    }
    if (m_amount->text() != toQString(v.amount)) {
        m_amount->setText(toQString(v.amount));
    }
    std::vector<std::string> units;
    for (const ServingUnit u : v.units) {
        units.emplace_back(isKnownUnit(u) ? unitName(u) : "?");
    }
    fill(m_unit, units, v.unit);
    for (QWidget* w : {static_cast<QWidget*>(m_amount), static_cast<QWidget*>(m_unit),
                       static_cast<QWidget*>(m_remove)}) {
        w->setEnabled(v.lineEnabled && v.canSave);
    }
    {
        const QSignalBlocker block(m_pickGroup);
        m_pickGroup->setCurrentIndex(v.pickGroup);
    }
    fill(m_pickCategory, v.categoryNames, v.pickCategory);
    fill(m_pickFood, v.foodNames, v.pickFood);
    m_add->setEnabled(v.canAdd);
    for (int n = 0; n < kNutrientCount; ++n) {
        showFigure(valueLabel(0, n), toQString(v.perServing[static_cast<std::size_t>(n)]));
        showFigure(valueLabel(1, n), toQString(v.whole[static_cast<std::size_t>(n)]));
    }
    QStringList problems;
    for (const std::string& p : v.problems) {
        problems << toQString(p);
    }
    for (const std::string& p : v.leftOut) {
        problems << QStringLiteral("Left out: ") + toQString(p);
    }
    m_problems->setText(problems.join(QLatin1Char('\n')));
    m_problems->setVisible(!problems.isEmpty());
    m_notice->setText(toQString(v.notice));
    m_notice->setVisible(!v.notice.empty());
    m_ok->setEnabled(v.canSave);
}

void RecipeEditorDialog::save() {
    const Outcome outcome = m_form.command(RecipeEditorForm::Command::Save);
    if (outcome.message) {
        m_present(*outcome.message);
        return;
    }
    (void)showFailure(this, m_notifier->apply(outcome));
    accept();
}

void RecipeEditorDialog::find() {
    FindFoodDialog dialog(m_form.findForm(), this);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    if (const std::optional<FindResult> chosen = dialog.form().chosen()) {
        m_form.pick(chosen->group, chosen->category, chosen->food);
        redisplay();
        m_add->setFocus();
    }
}

}  // namespace nutrovex
