#pragma once

#include <functional>

#include "core/Position.h"
#include "foods/FoodGridForm.h"
#include "ui/foods/FoodScreens.h"

class QAction;

namespace nutrovex {

class CFoodGridCtrl;
class SessionNotifier;

// The day's food screen for one list (a food group, or 8 for all foods): the grid with its
// clipboard, delete, edit, insert, sort and nutrient commands. select: a presented position to
// select, scroll into view and focus (as after a food was logged from the catalogue).
// openCatalogue: how Log Food opens the catalogue screen; none leaves that command disabled.
class FoodGridDialog : public FoodScreen {
    Q_OBJECT

public:
    FoodGridDialog(SessionNotifier& notifier, QWidget* parent, int group,
                   Position select = kNoPosition, std::function<void(QWidget*)> openCatalogue = {});

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

private:
    void updateActions();
    void apply(const Notices& notices);
    QAction* addAction(class QMenu* menu, const QString& text, const QKeySequence& key,
                       void (FoodGridDialog::*slot)());
    void command(FoodLogCommand c);

    SessionNotifier* m_notifier;
    FoodRunState* m_state;
    FoodGridForm m_form;
    CFoodGridCtrl* m_grid;
    std::function<void(QWidget*)> m_openCatalogue;
    QAction* m_copy = nullptr;
    QAction* m_cut = nullptr;
    QAction* m_paste = nullptr;
    QAction* m_delete = nullptr;
};

}  // namespace nutrovex
