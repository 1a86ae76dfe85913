#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/CatalogueOps.h"
#include "foods/CatalogueTree.h"
#include "foods/Confirmation.h"
#include "foods/FoodCsv.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

// A node of the catalogue tree: a group, a category of it, or a food of that category.
struct TreePlace {
    TreeNode node = TreeNode::Group;
    int group = 0;
    Position category = kNoPosition;
    Position food = kNoPosition;

    [[nodiscard]] static TreePlace ofGroup(int group) { return {TreeNode::Group, group}; }
    [[nodiscard]] static TreePlace ofCategory(int group, Position category) {
        return {TreeNode::Category, group, category};
    }
    [[nodiscard]] static TreePlace ofFood(int group, Position category, Position food) {
        return {TreeNode::Food, group, category, food};
    }
    friend bool operator==(const TreePlace&, const TreePlace&) = default;
};

// What a command of the catalogue screen did: what changed (the catalogue is then saved when the
// screen closes), which group's nodes are to be built again, the node to select, and the refusal
// to show. After a refused rename the label editor opens again on the same node.
struct TreeChange {
    Notices notices;
    std::optional<int> changedGroup;
    std::optional<TreePlace> select;
    std::optional<ScreenMessage> message;
    bool reopenEditor = false;
};

// Which Delete a node's key or menu entry means.
enum class TreeDelete : uint8_t { AllCategories, Category, Food };

// The catalogue screen: the tree's texts and menus, renaming in place, the clipboard, deleting
// and the find field.
class CatalogueScreenForm {
public:
    CatalogueScreenForm(FoodCatalogue& catalogue, CatalogueClipboard& clipboard)
        : m_catalogue(&catalogue), m_clipboard(&clipboard) {}

    [[nodiscard]] FoodCatalogue& catalogue() { return *m_catalogue; }
    [[nodiscard]] const CatalogueClipboard& clipboard() const { return *m_clipboard; }
    [[nodiscard]] bool exists(const TreePlace& place) const;
    // The node's label: the group's shown name, the category's or the food's name.
    [[nodiscard]] std::string_view label(const TreePlace& place) const;
    [[nodiscard]] TreeMenuState menu(const TreePlace& place) const;

    // The label editor's text; an empty text leaves the name as it was.
    [[nodiscard]] TreeChange rename(const TreePlace& place, std::string_view text);

    [[nodiscard]] TreeChange copy(const TreePlace& place);
    [[nodiscard]] TreeChange cut(const TreePlace& place);
    // A held category goes into the node's group; a held food into the node's category.
    [[nodiscard]] TreeChange paste(const TreePlace& place);

    // The question before a delete, or none when the node offers no such delete.
    [[nodiscard]] std::optional<Confirmation> confirmDelete(const TreePlace& place,
                                                            TreeDelete what) const;
    // The key Delete on a node: its category or its food; nothing on a group.
    [[nodiscard]] static std::optional<TreeDelete> deleteForKey(const TreePlace& place);
    // On Yes of confirmDelete().
    [[nodiscard]] TreeChange remove(const TreePlace& place, TreeDelete what);

    // After another screen stored a category or a food (the category dialog, the food editors):
    // the group's nodes are built again and the new node selected.
    [[nodiscard]] static TreeChange stored(const TreePlace& place);

    // The find field: the refusal ("Please enter a find string.", "No matching food items
    // found."), or the results for the find dialog.
    struct FindAnswer {
        std::optional<ScreenMessage> message;
        std::string text;  // stripped, for the find dialog
    };
    [[nodiscard]] FindAnswer find(std::string_view text);
    [[nodiscard]] FoodFinder& finder() { return m_finder; }
    // The node of a find result.
    [[nodiscard]] static TreePlace placeOf(const FindResult& result) {
        return TreePlace::ofFood(result.group, result.category, result.food);
    }

private:
    [[nodiscard]] static TreeChange changedIn(int group, std::optional<TreePlace> select);

    FoodCatalogue* m_catalogue;
    CatalogueClipboard* m_clipboard;
    FoodFinder m_finder;
};

// What an import of a food list came to: the counts, and the first refused rows with their lines.
[[nodiscard]] ScreenMessage importMessage(const ImportReport& report);

}  // namespace nutrovex
