#include "foods/CatalogueScreen.h"

namespace nutrovex {

namespace {

constexpr Notices kTreeChanged{.catalogue = true, .dataChanged = true};

}  // namespace

TreeChange CatalogueScreenForm::changedIn(int group, std::optional<TreePlace> select) {
    TreeChange change;
    change.notices = kTreeChanged;
    change.changedGroup = group;
    change.select = select;
    return change;
}

TreeChange CatalogueScreenForm::stored(const TreePlace& place) {
    return changedIn(place.group, place);
}

bool CatalogueScreenForm::exists(const TreePlace& place) const {
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

std::string_view CatalogueScreenForm::label(const TreePlace& place) const {
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

TreeMenuState CatalogueScreenForm::menu(const TreePlace& place) const {
    return treeMenuState(place.node, *m_clipboard);
}

TreeChange CatalogueScreenForm::rename(const TreePlace& place, std::string_view text) {
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
    TreeChange refused;
    refused.message = renameRefusal(place.node);
    refused.reopenEditor = true;
    refused.select = place;
    return refused;
}

TreeChange CatalogueScreenForm::copy(const TreePlace& place) {
    if (place.node == TreeNode::Category) {
        (void)m_clipboard->copyCategory(*m_catalogue, place.group, place.category);
    } else if (place.node == TreeNode::Food) {
        (void)m_clipboard->copyFood(*m_catalogue, place.group, place.category, place.food);
    }
    return {};
}

TreeChange CatalogueScreenForm::cut(const TreePlace& place) {
    if (place.node == TreeNode::Category &&
        m_clipboard->cutCategory(*m_catalogue, place.group, place.category)) {
        return changedIn(place.group, TreePlace::ofGroup(place.group));
    }
    if (place.node == TreeNode::Food &&
        m_clipboard->cutFood(*m_catalogue, place.group, place.category, place.food)) {
        return changedIn(place.group, TreePlace::ofCategory(place.group, place.category));
    }
    return {};
}

TreeChange CatalogueScreenForm::paste(const TreePlace& place) {
    if (!exists(place) || !menu(place).paste) {
        return {};
    }
    const bool category = m_clipboard->holdsCategory();
    const TreePaste pasted =
        pasteIntoTree(*m_clipboard, *m_catalogue, place.node, place.group, place.category);
    if (pasted.position == kNoPosition) {
        TreeChange refused;
        refused.message = pasted.message;
        return refused;
    }
    return changedIn(place.group,
                     category ? TreePlace::ofCategory(place.group, pasted.position)
                              : TreePlace::ofFood(place.group, place.category, pasted.position));
}

std::optional<TreeDelete> CatalogueScreenForm::deleteForKey(const TreePlace& place) {
    switch (place.node) {
        case TreeNode::Category:
            return TreeDelete::Category;
        case TreeNode::Food:
            return TreeDelete::Food;
        case TreeNode::Group:
            break;
    }
    return std::nullopt;
}

std::optional<Confirmation> CatalogueScreenForm::confirmDelete(const TreePlace& place,
                                                               TreeDelete what) const {
    if (!exists(place)) {
        return std::nullopt;
    }
    const TreeMenuState m = menu(place);
    switch (what) {
        case TreeDelete::AllCategories:
            return m.deleteAllCategories
                       ? std::optional<Confirmation>(confirmDeleteAllCategories(place.group))
                       : std::nullopt;
        case TreeDelete::Category:
            return m.deleteCategory
                       ? std::optional<Confirmation>(confirmDeleteCategory(
                             categoryAt(*m_catalogue, place.group, place.category)->name.view()))
                       : std::nullopt;
        case TreeDelete::Food:
            return m.deleteFood ? std::optional<Confirmation>(confirmDeleteFoodItem(label(place)))
                                : std::nullopt;
    }
    return std::nullopt;
}

TreeChange CatalogueScreenForm::remove(const TreePlace& place, TreeDelete what) {
    if (!confirmDelete(place, what)) {
        return {};
    }
    switch (what) {
        case TreeDelete::AllCategories:
            deleteAllCategories(*m_catalogue, place.group);
            return changedIn(place.group, TreePlace::ofGroup(place.group));
        case TreeDelete::Category:
            (void)deleteCategory(*m_catalogue, place.group, place.category);
            return changedIn(place.group, TreePlace::ofGroup(place.group));
        case TreeDelete::Food:
            (void)deleteFoodItem(*m_catalogue, place.group, place.category, place.food);
            return changedIn(place.group, TreePlace::ofCategory(place.group, place.category));
    }
    return {};
}

CatalogueScreenForm::FindAnswer CatalogueScreenForm::find(std::string_view text) {
    FindAnswer answer;
    answer.text = std::string(stripBlanks(text));
    switch (m_finder.find(*m_catalogue, text)) {
        case FoodFinder::Outcome::NothingToFind:
            answer.message = ScreenMessage{kEmptyFindMessage, kFindCaption, MessageKind::Warning};
            break;
        case FoodFinder::Outcome::NoMatch:
            answer.message = ScreenMessage{kNoMatchMessage, kFindCaption, MessageKind::Warning};
            break;
        case FoodFinder::Outcome::Found:
            break;
    }
    return answer;
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
