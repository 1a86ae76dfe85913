#include "forms/catalogue/CatalogueForm.h"

#include "core/StoredSize.h"
#include "session/FoodCsvFiles.h"

namespace nutrovex {

namespace {

constexpr Notices kTreeChanged{.catalogue = true, .dataChanged = true};

}  // namespace

CatalogueForm::CatalogueForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state)
    : m_catalogue(&catalogue), m_days(&days), m_state(&state) {}

bool CatalogueForm::exists(const TreePlace& place) const {
    switch (place.node) {
        case TreeNode::Group:
            return place.group >= 0 && place.group < kFoodGroupCount;
        case TreeNode::Category:
            return categoryAt(*m_catalogue, place.group, place.category) != nullptr;
        case TreeNode::Food:
            return foodAt(*m_catalogue, place.group, place.category, place.food) != nullptr;
    }
    return false;
}

std::string_view CatalogueForm::label(const TreePlace& place) const {
    if (!exists(place)) {
        return {};
    }
    switch (place.node) {
        case TreeNode::Group:
            return kFoodGroupNames[place.group];
        case TreeNode::Category:
            return categoryAt(*m_catalogue, place.group, place.category)->name.view();
        case TreeNode::Food:
            return foodAt(*m_catalogue, place.group, place.category, place.food)->name.view();
    }
    return {};
}

int CatalogueForm::categoryCount(int group) const {
    if (group < 0 || group >= kFoodGroupCount) {
        return 0;
    }
    return static_cast<int>(m_catalogue->groups[static_cast<std::size_t>(group)].size());
}

int CatalogueForm::foodCount(int group, Position category) const {
    const FoodCategory* c = categoryAt(*m_catalogue, group, category);
    return c != nullptr ? static_cast<int>(c->foods.size()) : 0;
}

TreeMenuState CatalogueForm::menu(const TreePlace& place) const {
    return treeMenuState(place.node, m_state->catalogueClipboard);
}

CatalogueView CatalogueForm::view() const {
    return {m_selected, menu(m_selected), m_changedGroup, m_reopenEditor};
}

void CatalogueForm::select(const TreePlace& place) {
    m_selected = place;
    m_changedGroup.reset();
    m_reopenEditor = false;
}

Outcome CatalogueForm::changedIn(int group, const TreePlace& select) {
    m_changedGroup = group;
    m_selected = select;
    return {.notices = kTreeChanged, .save = SavePoint::Catalogue};
}

Outcome CatalogueForm::stored(const TreePlace& place) {
    m_reopenEditor = false;
    return changedIn(place.group, place);
}

Outcome CatalogueForm::edit(Field, std::string_view text) {
    m_changedGroup.reset();
    m_reopenEditor = false;
    return rename(text);
}

Outcome CatalogueForm::rename(std::string_view text) {
    const TreePlace place = m_selected;
    if (text.empty() || !canRenameInPlace(place.node) || !exists(place)) {
        return {};
    }
    // The label editor holds 21 characters; a longer text cannot come from it.
    const std::string_view name = text.substr(0, kRenameLimit);
    if (place.node == TreeNode::Category) {
        const Position at = renameCategory(*m_catalogue, place.group, place.category, name);
        if (at != kNoPosition) {
            return changedIn(place.group, TreePlace::ofCategory(place.group, at));
        }
    } else {
        const Position at =
            renameFoodItem(*m_catalogue, place.group, place.category, place.food, name);
        if (at != kNoPosition) {
            return changedIn(place.group, TreePlace::ofFood(place.group, place.category, at));
        }
    }
    m_reopenEditor = true;
    return {.message = renameRefusal(place.node)};
}

std::optional<CatalogueForm::Command> CatalogueForm::deleteForKey() const {
    switch (m_selected.node) {
        case TreeNode::Category:
            return Command::DeleteCategory;
        case TreeNode::Food:
            return Command::DeleteFood;
        case TreeNode::Group:
            break;
    }
    return std::nullopt;
}

std::optional<Confirmation> CatalogueForm::confirmation(Command id) const {
    const TreePlace& place = m_selected;
    if (!exists(place)) {
        return std::nullopt;
    }
    const TreeMenuState m = menu(place);
    switch (id) {
        case Command::DeleteAllCategories:
            return m.deleteAllCategories
                       ? std::optional<Confirmation>(confirmDeleteAllCategories(place.group))
                       : std::nullopt;
        case Command::DeleteCategory:
            return m.deleteCategory
                       ? std::optional<Confirmation>(confirmDeleteCategory(
                             categoryAt(*m_catalogue, place.group, place.category)->name.view()))
                       : std::nullopt;
        case Command::DeleteFood:
            return m.deleteFood ? std::optional<Confirmation>(confirmDeleteFoodItem(label(place)))
                                : std::nullopt;
        default:
            return std::nullopt;
    }
}

Outcome CatalogueForm::command(Command id) {
    m_changedGroup.reset();
    m_reopenEditor = false;
    const TreePlace place = m_selected;
    CatalogueClipboard& clipboard = m_state->catalogueClipboard;
    switch (id) {
        case Command::Copy:
            if (place.node == TreeNode::Category) {
                (void)clipboard.copyCategory(*m_catalogue, place.group, place.category);
            } else if (place.node == TreeNode::Food) {
                (void)clipboard.copyFood(*m_catalogue, place.group, place.category, place.food);
            }
            return {};
        case Command::Cut:
            if (place.node == TreeNode::Category &&
                clipboard.cutCategory(*m_catalogue, place.group, place.category)) {
                return changedIn(place.group, TreePlace::ofGroup(place.group));
            }
            if (place.node == TreeNode::Food &&
                clipboard.cutFood(*m_catalogue, place.group, place.category, place.food)) {
                return changedIn(place.group, TreePlace::ofCategory(place.group, place.category));
            }
            return {};
        case Command::Paste:
            return paste();
        default:
            return remove(id);
    }
}

Outcome CatalogueForm::paste() {
    const TreePlace place = m_selected;
    if (!exists(place) || !menu(place).paste) {
        return {};
    }
    const CatalogueClipboard& clipboard = m_state->catalogueClipboard;
    const bool category = clipboard.holdsCategory();
    const TreePaste pasted =
        pasteIntoTree(clipboard, *m_catalogue, place.node, place.group, place.category);
    if (pasted.position == kNoPosition) {
        return {.message = pasted.message};
    }
    return changedIn(place.group,
                     category ? TreePlace::ofCategory(place.group, pasted.position)
                              : TreePlace::ofFood(place.group, place.category, pasted.position));
}

Outcome CatalogueForm::remove(Command id) {
    const TreePlace place = m_selected;
    if (!confirmation(id)) {
        return {};
    }
    switch (id) {
        case Command::DeleteAllCategories:
            deleteAllCategories(*m_catalogue, place.group);
            return changedIn(place.group, TreePlace::ofGroup(place.group));
        case Command::DeleteCategory:
            (void)deleteCategory(*m_catalogue, place.group, place.category);
            return changedIn(place.group, TreePlace::ofGroup(place.group));
        case Command::DeleteFood:
            (void)deleteFoodItem(*m_catalogue, place.group, place.category, place.food);
            return changedIn(place.group, TreePlace::ofCategory(place.group, place.category));
        default:
            return {};
    }
}

Outcome CatalogueForm::find(std::string_view text) {
    switch (m_finder.find(*m_catalogue, text)) {
        case FoodFinder::Outcome::NothingToFind:
            return {.message =
                        ScreenMessage{kEmptyFindMessage, kFindCaption, MessageKind::Warning}};
        case FoodFinder::Outcome::NoMatch:
            return {.message = ScreenMessage{kNoMatchMessage, kFindCaption, MessageKind::Warning}};
        case FoodFinder::Outcome::Found:
            break;
    }
    return {};
}

FindFoodForm CatalogueForm::findForm() const {
    const std::string text =
        m_finder.history().empty() ? std::string() : m_finder.history().front();
    return FindFoodForm(*m_catalogue, m_state->finder, text);
}

void CatalogueForm::select(const FindResult& found) {
    select(TreePlace::ofFood(found.group, found.category, found.food));
}

std::optional<FoodItemForm> CatalogueForm::insertFoodForm() const {
    if (m_selected.node != TreeNode::Food) {
        return std::nullopt;
    }
    return FoodItemForm::insertIntoDay(*m_catalogue, m_selected.group, m_selected.category,
                                       m_selected.food, *m_days, m_state->view);
}

std::optional<FoodItemForm> CatalogueForm::editFoodForm() const {
    if (m_selected.node != TreeNode::Food) {
        return std::nullopt;
    }
    return FoodItemForm::editItem(*m_catalogue, m_selected.group, m_selected.category,
                                  m_selected.food);
}

std::optional<FoodItemForm> CatalogueForm::newFoodForm() const {
    if (m_selected.node == TreeNode::Group) {
        return std::nullopt;
    }
    return FoodItemForm::newItem(*m_catalogue, m_selected.group,
                                 m_selected.category == kNoPosition ? -1 : m_selected.category);
}

CategoryNameForm CatalogueForm::newCategoryForm() const {
    return CategoryNameForm(*m_catalogue, m_selected.group, kNoPosition, false);
}

Outcome CatalogueForm::importFile(const std::string& path, const ImportProgress& progress) {
    const FoodCsvText csv = readFoodCsvFile(path);
    if (!csv.failure.empty()) {
        return {.message = ScreenMessage{"The file " + path + " cannot be read: " + csv.failure,
                                         "Import", MessageKind::Warning}};
    }
    const FoodCsvImportResult result = importFoodCsv(*m_catalogue, csv, progress);
    if (result.abandoned) {
        m_changedGroup.reset();
        return {};
    }
    Outcome outcome{.message = importMessage(result.report)};
    if (result.notices.any()) {
        outcome.notices = kTreeChanged;
        outcome.save = SavePoint::Catalogue;
    }
    return outcome;
}

Outcome CatalogueForm::exportFile(const std::string& path) const {
    const StorageStatus written = exportFoodCsvFile(*m_catalogue, path);
    if (written) {
        return {};
    }
    return {.message =
                ScreenMessage{"The file " + path + " cannot be written: " + written.message(),
                              "Export", MessageKind::Warning}};
}

ScreenMessage importMessage(const ImportReport& report) {
    ScreenMessage m{"", "Import", MessageKind::Warning};
    if (!report.fileRefusal.empty()) {
        m.text = "Nothing was imported: line " + std::to_string(report.fileLine) + ": " +
                 report.fileRefusal + ".";
        return m;
    }
    m.text = std::to_string(report.foodsAdded) +
             (report.foodsAdded == 1 ? " food item" : " food items") + " and " +
             std::to_string(report.categoriesAdded) +
             (report.categoriesAdded == 1 ? " category" : " categories") + " imported.";
    if (report.refused.empty()) {
        return m;
    }
    m.text += " " + std::to_string(report.refused.size()) +
              (report.refused.size() == 1 ? " row was" : " rows were") + " refused:";
    constexpr std::size_t kShown = 5;
    for (std::size_t i = 0; i < report.refused.size() && i < kShown; ++i) {
        m.text +=
            "\nline " + std::to_string(report.refused[i].line) + ": " + report.refused[i].reason;
    }
    if (report.refused.size() > kShown) {
        m.text += "\n...";
    }
    return m;
}

}  // namespace nutrovex
