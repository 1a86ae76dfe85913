#pragma once

#include <functional>

#include "core/Position.h"
#include "forms/foods/FoodGridForm.h"
#include "ui/foods/FoodOpeners.h"
#include "ui/foods/FoodScreens.h"

class QAction;

namespace nutrovex {

class CFoodGridCtrl;
class SessionNotifier;

// The day's food screen for one list (a food group, or 8 for all foods): a thin view of
// FoodGridForm, with its clipboard, delete, edit, insert, sort and nutrient commands, Copy To and
// Save as Recipe. openers: the screens of other areas it and Log Food open; none leaves that
// command disabled.
class FoodGridDialog : public FoodScreen {
    Q_OBJECT

public:
    FoodGridDialog(FoodGridForm form, SessionNotifier& notifier, QWidget* parent,
                   FoodOpeners openers = {});

    [[nodiscard]] CFoodGridCtrl* grid() const { return m_grid; }
    [[nodiscard]] const FoodGridForm& form() const { return m_form; }

public Q_SLOTS:
    void refresh();
    void copy();
    void cut();
    void paste();
    void selectAll();
    void deleteRows();
    void edit(int row);
    void insertFood();
    void copyMealFromYesterday(int meal);
    void copyTo();
    // The selected foods (meal -1) or a meal's entries become a new recipe's ingredients.
    void saveAsRecipe(int meal);

private:
    void updateActions();
    void run(FoodGridForm::Command command);
    QAction* addAction(class QMenu* menu, const QString& text, const QKeySequence& key,
                       void (FoodGridDialog::*slot)());

    FoodGridForm m_form;
    SessionNotifier* m_notifier;
    CFoodGridCtrl* m_grid;
    FoodOpeners m_openers;
    QAction* m_copy = nullptr;
    QAction* m_cut = nullptr;
    QAction* m_paste = nullptr;
    QAction* m_delete = nullptr;
};

}  // namespace nutrovex
