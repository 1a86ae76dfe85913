#include "ui/foods/FoodGridDialog.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/foods/LogFoodDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {

FoodGridDialog::FoodGridDialog(SessionNotifier& notifier, QWidget* parent, int group,
                               Position select, std::function<void(QWidget*)> openCatalogue)
    : FoodScreen(parent, QString(), true),
      m_notifier(&notifier),
      m_state(&foodRunState(notifier)),
      m_form(notifier.session().days(), *m_state, group),
      m_grid(new CFoodGridCtrl(m_form, this)),
      m_openCatalogue(std::move(openCatalogue)) {
    setWindowTitle(toQString(m_form.title()));
    QPushButton* ok = FoodScreen::addButton(QStringLiteral("OK"));
    QPushButton* insert = FoodScreen::addButton(QStringLiteral("&Insert Food Item"));
    QPushButton* toggle = FoodScreen::addButton(QStringLiteral("Nutrient &Toggle"));
    buttonRow()->addStretch();
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(insert, &QPushButton::clicked, this, &FoodGridDialog::insertFood);
    connect(toggle, &QPushButton::clicked, this,
            [this] { command(FoodLogCommand::NutrientToggle); });

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

    QMenu* sort = menuBar()->addMenu(QStringLiteral("&Sort"));
    sort->addAction(QStringLiteral("Sort &Alphabetical"), this,
                    [this] { command(FoodLogCommand::SortAlphabetical); });
    sort->addAction(QStringLiteral("Sort by &Meal (BLDS)"), this,
                    [this] { command(FoodLogCommand::SortByMeal); });
    sort->addAction(QStringLiteral("Sort &Toggle"), this,
                    [this] { command(FoodLogCommand::SortToggle); });
    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    view->addAction(QStringLiteral("&Nutrient Toggle"), this,
                    [this] { command(FoodLogCommand::NutrientToggle); });

    content()->addWidget(m_grid, 1);
    connect(m_grid, &CFoodGridCtrl::editRequested, this, &FoodGridDialog::edit);
    connect(m_grid, &MWGridWidget::keyHandled, this, &FoodGridDialog::updateActions);
    connect(m_grid, &MWGridWidget::cellTapped, this, &FoodGridDialog::updateActions);
    for (auto signal : {&SessionNotifier::dataChanged, &SessionNotifier::dayCreated,
                        &SessionNotifier::userChanged, &SessionNotifier::personalInfoReset}) {
        connect(&notifier, signal, this, &FoodGridDialog::refresh);
    }

    const int row = m_form.rowOfFood(select);
    m_grid->selectRow(row >= 0 ? row : std::max(static_cast<int>(m_form.rows().firstFoodRow), 0));
    updateActions();
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
    m_form.refresh();
    m_grid->reload();
    updateActions();
}

void FoodGridDialog::updateActions() {
    const RowRange rows = m_grid->selectedRows();
    m_copy->setEnabled(m_form.canCopy(rows));
    m_cut->setEnabled(m_form.canDelete(rows));
    m_delete->setEnabled(m_form.canDelete(rows));
    m_paste->setEnabled(m_form.canPaste());
}

void FoodGridDialog::apply(const Notices& notices) {
    // The notifier's dataChanged redraws this screen with every other one.
    showFailure(this, m_notifier->apply(notices));
    if (!notices.dataChanged) {
        refresh();
    }
}

void FoodGridDialog::command(FoodLogCommand c) {
    apply(m_form.command(c));
}

void FoodGridDialog::copy() {
    m_form.copy(m_grid->selectedRows());
    updateActions();
}

void FoodGridDialog::cut() {
    apply(m_form.cut(m_grid->selectedRows()));
}

void FoodGridDialog::paste() {
    const PasteOutcome outcome = m_form.paste();
    apply(outcome.notices);
    if (outcome.message) {
        showMessage(this, *outcome.message);
    }
    if (const int row = m_form.rowOfFood(outcome.lastPosition); row >= 0) {
        m_grid->selectRow(row);
    }
}

void FoodGridDialog::selectAll() {
    m_grid->grid().setSelectAll(true);
    m_grid->refresh();
    updateActions();
}

void FoodGridDialog::deleteRows() {
    const RowRange rows = m_grid->selectedRows();
    if (!m_form.canDelete(rows) || !showMessage(this, FoodGridForm::confirmDelete().message)) {
        return;
    }
    apply(m_form.deleteRows(rows));
    m_grid->selectRow(std::min(rows.first, rows.last));
}

void FoodGridDialog::edit(int row) {
    const auto food = m_form.foodAtRow(row);
    if (!food) {
        insertFood();
        return;
    }
    EditFoodEntryDialog dialog(*m_notifier, this, m_form.view(), *food);
    if (dialog.exec() == QDialog::Accepted) {
        refresh();
        if (const int r = m_form.rowOfFood(dialog.result().position); r >= 0) {
            m_grid->selectRow(r);
        }
    }
}

void FoodGridDialog::insertFood() {
    const int group =
        m_form.shownGroup() == kAllFoodsGroup ? m_state->nextLogGroup : m_form.shownGroup();
    LogFoodDialog dialog(*m_notifier, this, group, -1, -1, m_openCatalogue);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    refresh();
    const int loggedGroup = dialog.loggedGroup();
    if (loggedGroup == m_form.shownGroup()) {
        if (const int r = m_form.rowOfFood(dialog.loggedPosition()); r >= 0) {
            m_grid->selectRow(r);
        }
    }
    m_grid->setFocus();
}

void FoodGridDialog::copyMealFromYesterday(int meal) {
    const CopyOutcome outcome = m_form.copyMealFromYesterday(static_cast<uint16_t>(meal));
    apply(outcome.notices);
    if (outcome.message) {
        showMessage(this, *outcome.message);
    }
    if (const int r = m_form.rowOfFood(outcome.lastPosition); r >= 0) {
        m_grid->selectRow(r);
    }
}

}  // namespace nutrovex
