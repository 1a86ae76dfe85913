#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "foods/Recipes.h"
#include "forms/catalogue/CatalogueForm.h"

class QAction;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

namespace nutrovex {

class CFoodTreeCtrl;
class CatalogueTreeModel;
class SessionNotifier;

// What the catalogue screen asks of the program around it; an empty one does nothing.
struct CatalogueOpeners {
    // The recipe editor on a new recipe, or on the recipe whose food is at a place; where the
    // recipe's food is after OK, none when nothing was saved. isRecipeFood says whether a food is
    // a recipe's.
    std::function<std::optional<FoodPlace>(QWidget* parent)> newRecipe;
    std::function<std::optional<FoodPlace>(QWidget* parent, const FoodPlace& food)> editRecipe;
    std::function<bool(const FoodPlace& food)> isRecipeFood;
};

// The catalogue screen, a thin view of CatalogueForm: the food tree with the menus of its
// selected node (as the menu bar and as a context menu), the find field, and Import... and
// Export... of the food list as CSV. Every change is saved at once.
class CatalogueDialog : public QDialog {
    Q_OBJECT

public:
    CatalogueDialog(CatalogueForm form, SessionNotifier& notifier, QWidget* parent,
                    CatalogueOpeners openers = {});
    ~CatalogueDialog() override;

    // How messages and questions are put to the person (a message box unless replaced); true on
    // Yes or OK.
    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);
    // How the CSV file is chosen (a file dialog unless replaced); empty when cancelled.
    void setFileChooser(std::function<QString(bool forSaving)> choose);
    // How the find screen is run on the foods found (the dialog, modally, unless replaced); the
    // food chosen, or none when it was cancelled.
    void setFindRunner(std::function<std::optional<FindResult>(const FindFoodForm& found)> run);

    [[nodiscard]] CFoodTreeCtrl* tree() const { return m_tree; }
    void selectPlace(const TreePlace& place);

    void importCsv();
    void exportCsv();

    void done(int result) override;

Q_SIGNALS:
    // While an import runs: rows done of all rows.
    void importProgress(int done, int total);

private:
    void buildMenus();
    void updateMenus();
    void showChange(const Outcome& outcome);
    void publish(const Outcome& outcome);
    bool present(const ScreenMessage& message);
    void renameFromEditor(const TreePlace& place, const QString& text);
    void renameAfterEditorClosed();
    void askDelete(CatalogueForm::Command what);
    void enterFood();
    void editFood();
    void insertCategory();
    void insertFood();
    void find();
    void afterCommand();
    void openRecipe(bool edit);

    CatalogueForm m_form;
    SessionNotifier* m_notifier;
    CatalogueOpeners m_openers;
    CatalogueTreeModel* m_model;
    CFoodTreeCtrl* m_tree;
    QPushButton* m_ok;
    QLineEdit* m_findEdit;
    QPushButton* m_findButton;
    QMenuBar* m_menuBar;
    QMenu* m_editMenu = nullptr;
    QMenu* m_insertMenu = nullptr;
    QMenu* m_deleteMenu = nullptr;
    QAction* m_cut = nullptr;
    QAction* m_copy = nullptr;
    QAction* m_paste = nullptr;
    QAction* m_rename = nullptr;
    QAction* m_editRecipe = nullptr;
    QAction* m_newRecipe = nullptr;
    QAction* m_insertCategory = nullptr;
    QAction* m_insertFood = nullptr;
    QAction* m_deleteAll = nullptr;
    QAction* m_deleteCategory = nullptr;
    QAction* m_import = nullptr;
    QAction* m_export = nullptr;
    std::function<bool(const ScreenMessage&)> m_present;
    std::function<QString(bool)> m_chooseFile;
    std::function<std::optional<FindResult>(const FindFoodForm&)> m_runFind;
    bool m_publishing = false;
    struct PendingRename {
        TreePlace place;
        QString text;
    };
    std::optional<PendingRename> m_pendingRename;
};

}  // namespace nutrovex
