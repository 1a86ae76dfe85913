#include "ui/catalogue/CatalogueDialog.h"

#include <QAbstractItemDelegate>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/TextConvert.h"
#include "ui/catalogue/CFoodTreeCtrl.h"
#include "ui/catalogue/CatalogueTreeModel.h"
#include "ui/foods/CategoryNameDialog.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodItemDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/ScreenDialog.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/WaitCursor.h"

namespace nutrovex {

namespace {

// Smaller files are imported without showing the progress at once.
constexpr std::size_t kShowProgressFrom = 1000;

QAction* menuEntry(QMenu* menu, const char* text, QObject* owner) {
    auto* action = new QAction(QString::fromLatin1(text), owner);
    menu->addAction(action);
    return action;
}

}  // namespace

CatalogueDialog::CatalogueDialog(CatalogueForm form, SessionNotifier& notifier, QWidget* parent,
                                 CatalogueOpeners openers)
    : QDialog(parent),
      m_form(std::move(form)),
      m_notifier(&notifier),
      m_openers(std::move(openers)),
      m_model(new CatalogueTreeModel(m_form, this)),
      m_tree(new CFoodTreeCtrl(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_findEdit(new QLineEdit(this)),
      m_findButton(new QPushButton(QStringLiteral("Fi&nd"), this)),
      m_menuBar(new QMenuBar(this)),
      m_runFind([this](const FindFoodForm& found) -> std::optional<FindResult> {
          FindFoodDialog dialog(found, this);
          return dialog.exec() == QDialog::Accepted ? dialog.form().chosen() : std::nullopt;
      }) {
    setWindowTitle(QStringLiteral("Food Catalogue"));
    setModal(true);
    coverOpener(*this, parent);
    m_tree->setCatalogueModel(m_model);
    m_model->setRenamer(
        [this](const TreePlace& place, const QString& text) { renameFromEditor(place, text); });
    // Connected after the tree's own handler, so the editor is gone when the rename runs.
    connect(m_tree->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
            &CatalogueDialog::renameAfterEditorClosed);

    m_ok->setAccessibleName(QStringLiteral("OK"));
    m_ok->setAutoDefault(false);
    auto* findLabel = new QLabel(QStringLiteral("&Find:"), this);
    findLabel->setBuddy(m_findEdit);
    m_findEdit->setAccessibleName(QStringLiteral("Find:"));
    m_findEdit->setMaxLength(static_cast<int>(kFindHistoryTextLimit));
    m_findButton->setAccessibleName(QStringLiteral("Find"));
    m_findButton->setAutoDefault(false);

    auto* top = new QHBoxLayout;
    top->addWidget(m_ok);
    top->addSpacing(8);
    top->addWidget(findLabel);
    top->addWidget(m_findEdit, 1);
    top->addWidget(m_findButton);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(m_menuBar);
    layout->addLayout(top);
    layout->addWidget(m_tree, 1);

    buildMenus();
    setTabOrder(m_ok, m_findEdit);
    setTabOrder(m_findEdit, m_findButton);
    setTabOrder(m_findButton, m_tree);

    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_findButton, &QPushButton::clicked, this, &CatalogueDialog::find);
    connect(m_findEdit, &QLineEdit::returnPressed, this, &CatalogueDialog::find);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        m_form.select(m_tree->currentPlace());
        updateMenus();
    });
    connect(m_tree, &CFoodTreeCtrl::foodEntered, this, &CatalogueDialog::enterFood);
    connect(m_tree, &CFoodTreeCtrl::nodeDoubleClicked, this, &CatalogueDialog::editFood);
    connect(m_tree, &CFoodTreeCtrl::deletePressed, this, [this] {
        if (const std::optional<CatalogueForm::Command> what = m_form.deleteForKey()) {
            askDelete(*what);
        }
    });
    connect(m_tree, &CFoodTreeCtrl::menuRequested, this, [this](const QPoint& at) {
        updateMenus();
        QMenu menu(this);
        for (QMenu* sub : {m_editMenu, m_insertMenu, m_deleteMenu}) {
            menu.addMenu(sub);
        }
        menu.addSeparator();
        menu.addAction(m_import);
        menu.addAction(m_export);
        menu.exec(at);
    });
    using Signal = void (SessionNotifier::*)();
    for (const Signal signal : {&SessionNotifier::dataChanged, &SessionNotifier::userChanged}) {
        connect(m_notifier, signal, this, [this] {
            if (!m_publishing) {
                m_model->reload();
                updateMenus();
            }
        });
    }

    m_tree->setCurrentIndex(m_model->index(0, 0));
    m_form.select(m_tree->currentPlace());
    m_tree->setFocus();
    updateMenus();
}

CatalogueDialog::~CatalogueDialog() = default;

void CatalogueDialog::buildMenus() {
    // The menus' titles keep out of the way of "&Import...", "&Export...", "&Find:" and "Fi&nd".
    m_editMenu = m_menuBar->addMenu(QStringLiteral("Edi&t"));
    m_cut = menuEntry(m_editMenu, "Cu&t", this);
    m_cut->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_X));
    m_copy = menuEntry(m_editMenu, "&Copy", this);
    m_copy->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    m_paste = menuEntry(m_editMenu, "&Paste", this);
    m_paste->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_V));
    m_editMenu->addSeparator();
    m_rename = menuEntry(m_editMenu, "&Rename", this);
    m_editRecipe = menuEntry(m_editMenu, "Edit Rec&ipe...", this);
    m_editMenu->addSeparator();
    m_insertMenu = m_menuBar->addMenu(QStringLiteral("In&sert"));
    m_insertCategory = menuEntry(m_insertMenu, "&Category", this);
    m_insertFood = menuEntry(m_insertMenu, "&Food Item", this);
    m_newRecipe = menuEntry(m_insertMenu, "&Recipe...", this);
    m_deleteMenu = m_menuBar->addMenu(QStringLiteral("&Delete"));
    m_deleteAll = menuEntry(m_deleteMenu, "&All Categories", this);
    m_deleteCategory = menuEntry(m_deleteMenu, "&Category", this);
    m_menuBar->addSeparator();
    m_import = m_menuBar->addAction(QStringLiteral("&Import..."));
    m_export = m_menuBar->addAction(QStringLiteral("&Export..."));
    (void)addAboutMenu(m_menuBar, this);
    // The clipboard keys belong to the tree, so the find field keeps its own.
    for (QAction* a : {m_cut, m_copy, m_paste}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_tree->addAction(a);
    }

    using Command = CatalogueForm::Command;
    connect(m_cut, &QAction::triggered, this, [this] { showChange(m_form.command(Command::Cut)); });
    connect(m_copy, &QAction::triggered, this,
            [this] { showChange(m_form.command(Command::Copy)); });
    connect(m_paste, &QAction::triggered, this,
            [this] { showChange(m_form.command(Command::Paste)); });
    connect(m_rename, &QAction::triggered, this,
            [this] { m_tree->editPlace(m_tree->currentPlace()); });
    connect(m_insertCategory, &QAction::triggered, this, &CatalogueDialog::insertCategory);
    connect(m_insertFood, &QAction::triggered, this, &CatalogueDialog::insertFood);
    connect(m_newRecipe, &QAction::triggered, this, [this] { openRecipe(false); });
    connect(m_editRecipe, &QAction::triggered, this, [this] { openRecipe(true); });
    connect(m_deleteAll, &QAction::triggered, this,
            [this] { askDelete(Command::DeleteAllCategories); });
    connect(m_deleteCategory, &QAction::triggered, this,
            [this] { askDelete(Command::DeleteCategory); });
    connect(m_import, &QAction::triggered, this, &CatalogueDialog::importCsv);
    connect(m_export, &QAction::triggered, this, &CatalogueDialog::exportCsv);
}

void CatalogueDialog::updateMenus() {
    const CatalogueView v = m_form.view();
    const TreeMenuState& m = v.menu;
    const bool groupMenu = v.selected.node == TreeNode::Group;
    m_cut->setEnabled(m.cut);
    m_copy->setEnabled(m.copy);
    m_paste->setEnabled(m.paste);
    m_rename->setEnabled(m.rename);
    m_insertCategory->setEnabled(m.insertCategory);
    // A group's menu has no "Food Item" in Insert and "All Categories" in Delete; the menu of a
    // category or food has "Food Item" and "Category".
    m_insertFood->setVisible(!groupMenu);
    m_insertFood->setEnabled(m.insertFood);
    m_deleteAll->setVisible(groupMenu);
    m_deleteAll->setEnabled(m.deleteAllCategories);
    m_deleteCategory->setVisible(!groupMenu);
    m_deleteCategory->setEnabled(m.deleteCategory);
    const TreePlace& at = v.selected;
    m_newRecipe->setEnabled(static_cast<bool>(m_openers.newRecipe));
    m_editRecipe->setEnabled(m_openers.editRecipe && m_openers.isRecipeFood &&
                             at.node == TreeNode::Food &&
                             m_openers.isRecipeFood({at.group, at.category, at.food}));
}

void CatalogueDialog::openRecipe(bool edit) {
    const TreePlace at = m_form.view().selected;
    std::optional<FoodPlace> made;
    if (edit && m_openers.editRecipe && at.node == TreeNode::Food) {
        made = m_openers.editRecipe(this, {at.group, at.category, at.food});
    } else if (!edit && m_openers.newRecipe) {
        made = m_openers.newRecipe(this);
    }
    if (made) {
        selectPlace(TreePlace::ofFood(made->group, made->category, made->item));
    }
    updateMenus();
}

void CatalogueDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void CatalogueDialog::setFileChooser(std::function<QString(bool)> choose) {
    m_chooseFile = std::move(choose);
}

void CatalogueDialog::setFindRunner(
    std::function<std::optional<FindResult>(const FindFoodForm& found)> run) {
    m_runFind = std::move(run);
}

bool CatalogueDialog::present(const ScreenMessage& message) {
    return m_present ? m_present(message) : showMessage(this, message);
}

void CatalogueDialog::publish(const Outcome& outcome) {
    m_publishing = true;
    showFailure(this, m_notifier->apply(outcome));
    m_publishing = false;
}

void CatalogueDialog::showChange(const Outcome& outcome) {
    const CatalogueView v = m_form.view();
    if (v.changedGroup) {
        m_model->groupChanged(*v.changedGroup);
    }
    if (outcome.notices.any() || outcome.save != SavePoint::Nothing) {
        publish(outcome);
    }
    if (v.changedGroup || v.reopenEditor) {
        m_tree->selectPlace(v.selected);
    }
    if (outcome.message) {
        (void)present(*outcome.message);
    }
    afterCommand();
    // Last: taking the focus from an open editor would end its edit again.
    if (v.reopenEditor) {
        m_tree->editPlace(v.selected);
    }
}

void CatalogueDialog::afterCommand() {
    if (m_tree->currentIndex().isValid()) {
        m_tree->scrollTo(m_tree->currentIndex());
    }
    m_tree->setFocus();
    updateMenus();
}

void CatalogueDialog::selectPlace(const TreePlace& place) {
    m_tree->selectPlace(place);
    m_form.select(m_tree->currentPlace());
    updateMenus();
}

void CatalogueDialog::renameFromEditor(const TreePlace& place, const QString& text) {
    // Held until the editor has closed: the rename builds the group's nodes again.
    m_pendingRename = PendingRename{place, text};
}

void CatalogueDialog::renameAfterEditorClosed() {
    if (!m_pendingRename) {
        return;
    }
    const PendingRename pending = *m_pendingRename;
    m_pendingRename.reset();
    m_form.select(pending.place);
    const std::optional<std::string> name = fromQString(pending.text);
    if (!name) {
        // A character the catalogue cannot hold: refused as a taken name is.
        (void)present(renameRefusal(pending.place.node));
        afterCommand();
        m_tree->editPlace(pending.place);
        return;
    }
    showChange(m_form.edit(CatalogueForm::Field::Label, *name));
}

void CatalogueDialog::askDelete(CatalogueForm::Command what) {
    m_form.select(m_tree->currentPlace());
    const std::optional<Confirmation> question = m_form.confirmation(what);
    if (!question) {
        return;
    }
    ScreenMessage ask = question->message;
    // The catalogue's delete questions are Yes/No with the exclamation icon.
    const std::unique_ptr<QMessageBox> box = makeMessageBox(this, ask);
    bool yes = false;
    if (m_present) {
        yes = m_present(ask);
    } else {
        box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box->setDefaultButton(question->noIsDefault ? QMessageBox::No : QMessageBox::Yes);
        yes = box->exec() == QMessageBox::Yes;
    }
    if (yes) {
        showChange(m_form.command(what));
    } else {
        afterCommand();
    }
}

void CatalogueDialog::enterFood() {
    std::optional<FoodItemForm> insert = m_form.insertFoodForm();
    if (!insert) {
        return;
    }
    FoodItemDialog dialog(std::move(*insert), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted && dialog.form().result().done()) {
        // The day's food grid beneath, if one is open, shows the new entry.
        m_notifier->announceFoodLogged(dialog.form().result().group,
                                       dialog.form().result().position);
    }
    afterCommand();
}

void CatalogueDialog::editFood() {
    std::optional<FoodItemForm> edit = m_form.editFoodForm();
    if (!edit) {
        return;
    }
    const TreePlace place = m_form.view().selected;
    FoodItemDialog dialog(std::move(*edit), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted && dialog.form().result().done()) {
        showChange(m_form.stored(
            TreePlace::ofFood(place.group, place.category, dialog.form().result().position)));
    }
}

void CatalogueDialog::insertCategory() {
    CategoryNameDialog dialog(m_form.newCategoryForm(), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted && dialog.form().result().done()) {
        const FormResult& made = dialog.form().result();
        showChange(m_form.stored(TreePlace::ofCategory(made.group, made.position)));
    }
}

void CatalogueDialog::insertFood() {
    std::optional<FoodItemForm> create = m_form.newFoodForm();
    if (!create) {
        return;
    }
    FoodItemDialog dialog(std::move(*create), *m_notifier, this);
    if (dialog.exec() == QDialog::Accepted && dialog.form().result().done()) {
        const FormResult& made = dialog.form().result();
        showChange(m_form.stored(TreePlace::ofFood(made.group, made.category, made.position)));
    }
}

void CatalogueDialog::find() {
    const std::optional<std::string> text = fromQString(m_findEdit->text());
    const Outcome refused = m_form.find(text.value_or(std::string()));
    if (refused.message) {
        (void)present(*refused.message);
        m_findEdit->setFocus();
        return;
    }
    const std::optional<FindResult> chosen = m_runFind(m_form.findForm());
    if (chosen) {
        m_form.select(*chosen);
        m_tree->selectPlace(m_form.view().selected);
        afterCommand();
    }
}

void CatalogueDialog::importCsv() {
    const QString path = m_chooseFile ? m_chooseFile(false)
                                      : QFileDialog::getOpenFileName(
                                            this, QStringLiteral("Import Food Items"), QString(),
                                            QStringLiteral("Food lists (*.csv);;All files (*)"));
    if (path.isEmpty()) {
        return;
    }
    std::unique_ptr<QProgressDialog> progress;
    const Outcome outcome =
        m_form.importFile(path.toStdString(), [&](std::size_t rowsDone, std::size_t rows) {
            const auto done = static_cast<int>(rowsDone);
            const auto total = static_cast<int>(rows);
            if (!progress) {
                progress =
                    std::make_unique<QProgressDialog>(QStringLiteral("Importing food items..."),
                                                      QStringLiteral("&Cancel"), 0, total, this);
                progress->setWindowTitle(QStringLiteral("Import"));
                progress->setWindowModality(Qt::WindowModal);
                progress->setAutoClose(false);
                progress->setAutoReset(false);
                progress->setMinimumDuration(rows >= kShowProgressFrom ? 0 : 2000);
            }
            progress->setValue(done);
            Q_EMIT importProgress(done, total);
            return !progress->wasCanceled();
        });
    progress.reset();
    m_model->reload();
    if (outcome.notices.any()) {
        publish(outcome);
    }
    if (outcome.message) {
        (void)present(*outcome.message);
    }
    afterCommand();
}

void CatalogueDialog::exportCsv() {
    const QString path =
        m_chooseFile ? m_chooseFile(true)
                     : QFileDialog::getSaveFileName(
                           this, QStringLiteral("Export Food Items"), QStringLiteral("foods.csv"),
                           QStringLiteral("Food lists (*.csv);;All files (*)"));
    if (path.isEmpty()) {
        return;
    }
    const Outcome written = [&] {
        const WaitCursor wait;
        return m_form.exportFile(path.toStdString());
    }();
    if (written.message) {
        (void)present(*written.message);
    }
    afterCommand();
}

void CatalogueDialog::done(int result) {
    // Whatever the screen changed and could not save at once is saved when it closes.
    showFailure(this, m_notifier->save(m_form.close()));
    QDialog::done(result);
}

}  // namespace nutrovex
