#include "ui/foods/FoodGridDialog.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

FoodGridDialog::FoodGridDialog(FoodGridForm form, SessionNotifier& notifier, QWidget* parent,
                               FoodOpeners openers)
    : FoodScreen(parent, QString(), true),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_grid(new CFoodGridCtrl(this)),
      m_openers(std::move(openers)) {
    using Command = FoodGridForm::Command;
    setWindowTitle(toQString(m_form.view().title));
    QPushButton* ok = FoodScreen::addButton(QStringLiteral("OK"));
    QPushButton* insert = FoodScreen::addButton(QStringLiteral("&Insert Food Item"));
    QPushButton* toggle = FoodScreen::addButton(QStringLiteral("Nutrient &Toggle"));
    buttonRow()->addStretch();
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(insert, &QPushButton::clicked, this, &FoodGridDialog::insertFood);
    connect(toggle, &QPushButton::clicked, this, [this] { run(Command::NutrientToggle); });

    QMenu* editMenu = menuBar()->addMenu(QStringLiteral("&Edit"));
    m_cut = addAction(editMenu, QStringLiteral("Cu&t"), QKeySequence::Cut, &FoodGridDialog::cut);
    m_copy =
        addAction(editMenu, QStringLiteral("&Copy"), QKeySequence::Copy, &FoodGridDialog::copy);
    m_paste =
        addAction(editMenu, QStringLiteral("&Paste"), QKeySequence::Paste, &FoodGridDialog::paste);
    addAction(editMenu, QStringLiteral("Select &All"), QKeySequence::SelectAll,
              &FoodGridDialog::selectAll);
    editMenu->addSeparator();
    QAction* editRow = editMenu->addAction(QStringLiteral("&Edit"));
    editRow->setShortcut(QKeySequence(Qt::Key_F2));
    editRow->setShortcutContext(Qt::WidgetShortcut);  // the grid's own F2 does it
    connect(editRow, &QAction::triggered, this, [this] { edit(m_grid->currentRow()); });
    m_delete = addAction(editMenu, QStringLiteral("&Delete"), QKeySequence(Qt::Key_Delete),
                         &FoodGridDialog::deleteRows);
    addAction(editMenu, QStringLiteral("&Insert Food Item"), QKeySequence(),
              &FoodGridDialog::insertFood);
    QMenu* copyMeal = editMenu->addMenu(QStringLiteral("Cop&y Meal From Yesterday"));
    for (int meal = 0; meal < kMealCount; ++meal) {
        copyMeal->addAction(toQString(mealName(static_cast<uint16_t>(meal))), this,
                            [this, meal] { copyMealFromYesterday(meal); });
    }
    QAction* copyTo =
        editMenu->addAction(QStringLiteral("C&opy To..."), this, &FoodGridDialog::copyTo);
    copyTo->setEnabled(static_cast<bool>(m_openers.copyTo));
    QMenu* recipe = editMenu->addMenu(QStringLiteral("Save as &Recipe"));
    recipe->setEnabled(static_cast<bool>(m_openers.newRecipe));
    recipe->addAction(QStringLiteral("&Selected Foods..."), this, [this] { saveAsRecipe(-1); });
    for (int meal = 0; meal < kMealCount; ++meal) {
        recipe->addAction(toQString(mealName(static_cast<uint16_t>(meal))) + QStringLiteral("..."),
                          this, [this, meal] { saveAsRecipe(meal); });
    }

    QMenu* sort = menuBar()->addMenu(QStringLiteral("&Sort"));
    sort->addAction(QStringLiteral("Sort &Alphabetical"), this,
                    [this] { run(Command::SortAlphabetical); });
    sort->addAction(QStringLiteral("Sort by &Meal (BLDS)"), this,
                    [this] { run(Command::SortByMeal); });
    sort->addAction(QStringLiteral("Sort &Toggle"), this, [this] { run(Command::SortToggle); });
    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    view->addAction(QStringLiteral("&Nutrient Toggle"), this,
                    [this] { run(Command::NutrientToggle); });
    (void)addAboutMenu(menuBar(), this);

    content()->addWidget(m_grid, 1);
    connect(m_grid, &CFoodGridCtrl::editRequested, this, &FoodGridDialog::edit);
    connect(m_grid, &CFoodGridCtrl::selected, this, [this](RowRange rows) {
        m_form.select(rows);
        updateActions();
    });
    connect(&notifier, &SessionNotifier::foodLogged, this, [this](int group, int presented) {
        m_form.selectFood(group, static_cast<Position>(presented));
        refresh();
    });
    for (auto signal : {&SessionNotifier::dataChanged, &SessionNotifier::dayCreated,
                        &SessionNotifier::userChanged, &SessionNotifier::personalInfoReset}) {
        connect(&notifier, signal, this, &FoodGridDialog::refresh);
    }
    refresh();
    m_grid->setFocus();
}

QAction* FoodGridDialog::addAction(QMenu* menu, const QString& text, const QKeySequence& key,
                                   void (FoodGridDialog::*slot)()) {
    QAction* action = menu->addAction(text);
    action->setShortcut(key);
    QWidget::addAction(action);  // the keys work while the menu is closed
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void FoodGridDialog::refresh() {
    const FoodGridView v = m_form.view();
    dateLine()->setText(toQString(v.date));
    m_grid->show(v);
    // The grid keeps the selection within its rows.
    m_form.select(m_grid->selectedRows());
    updateActions();
}

void FoodGridDialog::updateActions() {
    const FoodGridView v = m_form.view();
    m_copy->setEnabled(v.canCopy);
    m_cut->setEnabled(v.canDelete);
    m_delete->setEnabled(v.canDelete);
    m_paste->setEnabled(v.canPaste);
}

void FoodGridDialog::run(FoodGridForm::Command command) {
    const Outcome outcome = m_form.command(command);
    // The notifier's dataChanged redraws this screen with every other one.
    (void)showFailure(this, m_notifier->apply(outcome));
    if (!outcome.notices.dataChanged) {
        refresh();
    }
    if (outcome.message) {
        (void)showMessage(this, *outcome.message);
    }
}

void FoodGridDialog::copy() {
    run(FoodGridForm::Command::Copy);
}

void FoodGridDialog::cut() {
    run(FoodGridForm::Command::Cut);
}

void FoodGridDialog::paste() {
    run(FoodGridForm::Command::Paste);
}

void FoodGridDialog::selectAll() {
    m_grid->grid().setSelectAll(true);
    m_grid->refresh();
    m_form.select(m_grid->selectedRows());
    updateActions();
}

void FoodGridDialog::deleteRows() {
    const std::optional<Confirmation> question = m_form.confirmation(FoodGridForm::Command::Delete);
    if (!question || !showMessage(this, question->message)) {
        return;
    }
    run(FoodGridForm::Command::Delete);
}

void FoodGridDialog::edit(int row) {
    std::optional<FoodItemForm> entry = m_form.editForm(row);
    if (!entry) {
        insertFood();
        return;
    }
    FoodItemDialog dialog(std::move(*entry), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_form.selectFood(dialog.form().result().group, dialog.form().result().position);
        refresh();
    }
}

void FoodGridDialog::insertFood() {
    LogFoodDialog dialog(m_form.logFoodForm(), *m_notifier, this, m_openers);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    m_form.selectFood(dialog.form().result().group, dialog.form().result().position);
    refresh();
    m_grid->setFocus();
}

void FoodGridDialog::copyMealFromYesterday(int meal) {
    run(static_cast<FoodGridForm::Command>(static_cast<int>(FoodGridForm::Command::CopyBreakfast) +
                                           meal));
}

void FoodGridDialog::copyTo() {
    if (m_openers.copyTo) {
        m_openers.copyTo(this, m_form.shownGroup(), m_form.selectedFoods());
        refresh();
    }
}

void FoodGridDialog::saveAsRecipe(int meal) {
    if (m_openers.newRecipe) {
        (void)m_openers.newRecipe(this, meal < 0 ? m_form.selectedFoods() : m_form.mealFoods(meal));
        refresh();
    }
}

}  // namespace nutrovex
