#pragma once

#include <QDialog>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "foods/CatalogueScreen.h"

class QAction;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

namespace nutrovex {

class CFoodTreeCtrl;
class CatalogueTreeModel;
class SessionNotifier;

// The screens of other areas that the catalogue screen opens, filled in by whoever creates it.
// A command whose opener is empty stays in the menu, disabled.
struct CatalogueOpeners {
    // Insert Food on a catalogue food: logs it into the current day (applying what changed
    // through the notifier); the logged entry's position in the day's food grid, or nullopt when
    // the person cancelled.
    std::function<std::optional<Position>(QWidget* parent, const TreePlace& food)> insertFood;
    // Tells the logbook's food grid to refresh and select the entry at that position.
    std::function<void(Position presented)> selectInFoodGrid;
    // Edit Food Item on a catalogue food; the food's place after the edit, or nullopt.
    std::function<std::optional<TreePlace>(QWidget* parent, const TreePlace& food)> editFood;
    // The new-item editor with the group and category preselected; the new food's place.
    std::function<std::optional<TreePlace>(QWidget* parent, const TreePlace& at)> newFood;
    // The category dialog for a new category in the group; the new category's place.
    std::function<std::optional<TreePlace>(QWidget* parent, int group)> newCategory;
    // The find dialog on the finder's results for text; the chosen result's place. Without it
    // the find field selects the first result.
    std::function<std::optional<TreePlace>(QWidget* parent, FoodFinder& finder,
                                           const std::string& text)>
        findFood;
};

// The catalogue screen: the food tree with the menus of its selected node (as the menu bar and
// as a context menu), the find field, and Import... and Export... of the food list as CSV. Every
// change marks the catalogue modified; it is saved when the screen closes.
class CatalogueDialog : public QDialog {
    Q_OBJECT

public:
    // clipboard: the catalogue's clipboard for the whole run; the screen keeps its own if null.
    CatalogueDialog(SessionNotifier& notifier, QWidget* parent, CatalogueOpeners openers = {},
                    CatalogueClipboard* clipboard = nullptr);
    ~CatalogueDialog() override;

    // How messages and questions are put to the person (a message box unless replaced); true on
    // Yes or OK.
    void setMessagePresenter(std::function<bool(const ScreenMessage&)> present);
    // How the CSV file is chosen (a file dialog unless replaced); empty when cancelled.
    void setFileChooser(std::function<QString(bool forSaving)> choose);

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
    void showChange(const TreeChange& change);
    void publish(const Notices& notices);
    bool present(const ScreenMessage& message);
    void renameFromEditor(const TreePlace& place, const QString& text);
    void renameAfterEditorClosed();
    void askDelete(TreeDelete what);
    void enterFood();
    void editFood();
    void insertCategory();
    void insertFood();
    void find();
    void afterCommand();

    SessionNotifier* m_notifier;
    CatalogueOpeners m_openers;
    std::unique_ptr<CatalogueClipboard> m_ownClipboard;
    std::unique_ptr<CatalogueScreenForm> m_form;
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
    QAction* m_insertCategory = nullptr;
    QAction* m_insertFood = nullptr;
    QAction* m_deleteAll = nullptr;
    QAction* m_deleteCategory = nullptr;
    QAction* m_import = nullptr;
    QAction* m_export = nullptr;
    std::function<bool(const ScreenMessage&)> m_present;
    std::function<QString(bool)> m_chooseFile;
    bool m_publishing = false;
    struct PendingRename {
        TreePlace place;
        QString text;
    };
    std::optional<PendingRename> m_pendingRename;
};

}  // namespace nutrovex
