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

#include "foods/FoodCsv.h"
#include "session/FoodCsvFiles.h"
#include "session/Session.h"
#include "ui/TextConvert.h"
#include "ui/catalogue/CFoodTreeCtrl.h"
#include "ui/catalogue/CatalogueTreeModel.h"
#include "ui/frame/MessageBoxes.h"
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

CatalogueDialog::CatalogueDialog(SessionNotifier& notifier, QWidget* parent,
                                 CatalogueOpeners openers, CatalogueClipboard* clipboard)
    : QDialog(parent),
      m_notifier(&notifier),
      m_openers(std::move(openers)),
      m_ownClipboard(clipboard ? nullptr : std::make_unique<CatalogueClipboard>()),
      m_form(std::make_unique<CatalogueScreenForm>(notifier.session().catalogue(),
                                                   clipboard ? *clipboard : *m_ownClipboard)),
      m_model(new CatalogueTreeModel(*m_form, this)),
      m_tree(new CFoodTreeCtrl(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_findEdit(new QLineEdit(this)),
      m_findButton(new QPushButton(QStringLiteral("Fi&nd"), this)),
      m_menuBar(new QMenuBar(this)) {
    setWindowTitle(QStringLiteral("Food Catalogue"));
    setModal(true);
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
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CatalogueDialog::updateMenus);
    connect(m_tree, &CFoodTreeCtrl::foodEntered, this, &CatalogueDialog::enterFood);
    connect(m_tree, &CFoodTreeCtrl::nodeDoubleClicked, this, &CatalogueDialog::editFood);
    connect(m_tree, &CFoodTreeCtrl::deletePressed, this, [this] {
        if (const std::optional<TreeDelete> what =
                CatalogueScreenForm::deleteForKey(m_tree->currentPlace())) {
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
    m_editMenu->addSeparator();
    m_insertMenu = m_menuBar->addMenu(QStringLiteral("In&sert"));
    m_insertCategory = menuEntry(m_insertMenu, "&Category", this);
    m_insertFood = menuEntry(m_insertMenu, "&Food Item", this);
    m_deleteMenu = m_menuBar->addMenu(QStringLiteral("&Delete"));
    m_deleteAll = menuEntry(m_deleteMenu, "&All Categories", this);
    m_deleteCategory = menuEntry(m_deleteMenu, "&Category", this);
    m_menuBar->addSeparator();
    m_import = m_menuBar->addAction(QStringLiteral("&Import..."));
    m_export = m_menuBar->addAction(QStringLiteral("&Export..."));
    // The clipboard keys belong to the tree, so the find field keeps its own.
    for (QAction* a : {m_cut, m_copy, m_paste}) {
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        m_tree->addAction(a);
    }

    connect(m_cut, &QAction::triggered, this,
            [this] { showChange(m_form->cut(m_tree->currentPlace())); });
    connect(m_copy, &QAction::triggered, this,
            [this] { showChange(m_form->copy(m_tree->currentPlace())); });
    connect(m_paste, &QAction::triggered, this,
            [this] { showChange(m_form->paste(m_tree->currentPlace())); });
    connect(m_rename, &QAction::triggered, this,
            [this] { m_tree->editPlace(m_tree->currentPlace()); });
    connect(m_insertCategory, &QAction::triggered, this, &CatalogueDialog::insertCategory);
    connect(m_insertFood, &QAction::triggered, this, &CatalogueDialog::insertFood);
    connect(m_deleteAll, &QAction::triggered, this,
            [this] { askDelete(TreeDelete::AllCategories); });
    connect(m_deleteCategory, &QAction::triggered, this,
            [this] { askDelete(TreeDelete::Category); });
    connect(m_import, &QAction::triggered, this, &CatalogueDialog::importCsv);
    connect(m_export, &QAction::triggered, this, &CatalogueDialog::exportCsv);
}

void CatalogueDialog::updateMenus() {
    const TreePlace place = m_tree->currentPlace();
    const TreeMenuState m = m_form->menu(place);
    const bool groupMenu = place.node == TreeNode::Group;
    m_cut->setEnabled(m.cut);
    m_copy->setEnabled(m.copy);
    m_paste->setEnabled(m.paste);
    m_rename->setEnabled(m.rename);
    m_insertCategory->setEnabled(m.insertCategory && m_openers.newCategory != nullptr);
    // A group's menu has no "Food Item" in Insert and "All Categories" in Delete; the menu of a
    // category or food has "Food Item" and "Category".
    m_insertFood->setVisible(!groupMenu);
    m_insertFood->setEnabled(m.insertFood && m_openers.newFood != nullptr);
    m_deleteAll->setVisible(groupMenu);
    m_deleteAll->setEnabled(m.deleteAllCategories);
    m_deleteCategory->setVisible(!groupMenu);
    m_deleteCategory->setEnabled(m.deleteCategory);
}

void CatalogueDialog::setMessagePresenter(std::function<bool(const ScreenMessage&)> present) {
    m_present = std::move(present);
}

void CatalogueDialog::setFileChooser(std::function<QString(bool)> choose) {
    m_chooseFile = std::move(choose);
}

bool CatalogueDialog::present(const ScreenMessage& message) {
    return m_present ? m_present(message) : showMessage(this, message);
}

void CatalogueDialog::publish(const Notices& notices) {
    m_publishing = true;
    showFailure(this, m_notifier->apply(notices));
    m_publishing = false;
}

void CatalogueDialog::showChange(const TreeChange& change) {
    if (change.changedGroup) {
        m_model->groupChanged(*change.changedGroup);
    }
    if (change.notices.any()) {
        publish(change.notices);
    }
    if (change.select) {
        m_tree->selectPlace(*change.select);
    }
    if (change.message) {
        (void)present(*change.message);
    }
    afterCommand();
    // Last: taking the focus from an open editor would end its edit again.
    if (change.reopenEditor && change.select) {
        m_tree->editPlace(*change.select);
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
    const std::optional<std::string> name = fromQString(pending.text);
    TreeChange change;
    if (!name) {
        change.message = renameRefusal(pending.place.node);
        change.reopenEditor = true;
        change.select = pending.place;
    } else {
        change = m_form->rename(pending.place, *name);
    }
    showChange(change);
}

void CatalogueDialog::askDelete(TreeDelete what) {
    const TreePlace place = m_tree->currentPlace();
    const std::optional<Confirmation> question = m_form->confirmDelete(place, what);
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
        showChange(m_form->remove(place, what));
    } else {
        afterCommand();
    }
}

void CatalogueDialog::enterFood() {
    const TreePlace place = m_tree->currentPlace();
    if (place.node != TreeNode::Food || !m_openers.insertFood) {
        return;
    }
    const std::optional<Position> logged = m_openers.insertFood(this, place);
    if (logged && m_openers.selectInFoodGrid) {
        m_openers.selectInFoodGrid(*logged);
    }
    afterCommand();
}

void CatalogueDialog::editFood() {
    const TreePlace place = m_tree->currentPlace();
    if (place.node != TreeNode::Food || !m_openers.editFood) {
        return;
    }
    if (const std::optional<TreePlace> edited = m_openers.editFood(this, place)) {
        showChange(CatalogueScreenForm::stored(*edited));
    }
}

void CatalogueDialog::insertCategory() {
    if (!m_openers.newCategory) {
        return;
    }
    if (const std::optional<TreePlace> added =
            m_openers.newCategory(this, m_tree->currentPlace().group)) {
        showChange(CatalogueScreenForm::stored(*added));
    }
}

void CatalogueDialog::insertFood() {
    const TreePlace place = m_tree->currentPlace();
    if (place.node == TreeNode::Group || !m_openers.newFood) {
        return;
    }
    if (const std::optional<TreePlace> added = m_openers.newFood(this, place)) {
        showChange(CatalogueScreenForm::stored(*added));
    }
}

void CatalogueDialog::find() {
    const std::optional<std::string> text = fromQString(m_findEdit->text());
    const CatalogueScreenForm::FindAnswer answer = m_form->find(text.value_or(std::string()));
    if (answer.message) {
        (void)present(*answer.message);
        m_findEdit->setFocus();
        return;
    }
    std::optional<TreePlace> chosen;
    if (m_openers.findFood) {
        chosen = m_openers.findFood(this, m_form->finder(), answer.text);
    } else {
        chosen = CatalogueScreenForm::placeOf(m_form->finder().results().front());
    }
    if (chosen) {
        m_tree->selectPlace(*chosen);
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
    const FoodCsvText csv = readFoodCsvFile(path.toStdString());
    if (!csv.failure.empty()) {
        (void)present({"The file " + path.toStdString() + " cannot be read: " + csv.failure,
                       "Import", MessageKind::Warning});
        return;
    }
    std::unique_ptr<QProgressDialog> progress;
    const FoodCsvImportResult result = importFoodCsv(
        m_notifier->session().catalogue(), csv, [&](std::size_t rowsDone, std::size_t rows) {
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
    m_model->reload();
    if (result.abandoned) {
        afterCommand();
        return;
    }
    if (result.notices.any()) {
        publish(result.notices);
    }
    (void)present(importMessage(result.report));
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
    const StorageStatus written = [&] {
        const WaitCursor wait;
        return exportFoodCsvFile(m_notifier->session().catalogue(), path.toStdString());
    }();
    if (!written) {
        (void)present(
            {"The file " + path.toStdString() + " cannot be written: " + written.message(),
             "Export", MessageKind::Warning});
    }
    afterCommand();
}

void CatalogueDialog::done(int result) {
    // The catalogue is saved when the screen closes.
    showFailure(this, m_notifier->applyAndSave(Notices{}));
    QDialog::done(result);
}

}  // namespace nutrovex
