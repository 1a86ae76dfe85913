#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/ScreenMessage.h"
#include "foods/CatalogueOps.h"
#include "foods/Confirmation.h"

namespace nutrovex {

// The three levels of the catalogue tree.
enum class TreeNode : uint8_t { Group, Category, Food };

// Which entries of the catalogue screen's menus a node offers.
struct TreeMenuState {
    bool cut = false;
    bool copy = false;
    bool paste = false;
    bool rename = false;
    bool insertCategory = false;
    bool insertFood = false;
    bool deleteAllCategories = false;
    bool deleteCategory = false;
    bool deleteFood = false;

    friend bool operator==(const TreeMenuState&, const TreeMenuState&) = default;
};

[[nodiscard]] TreeMenuState treeMenuState(TreeNode node, const CatalogueClipboard& clipboard);

// Label editing starts only on categories and foods.
[[nodiscard]] inline bool canRenameInPlace(TreeNode node) {
    return node != TreeNode::Group;
}

// The refusal after a rename in the tree failed; the label editor then opens again.
[[nodiscard]] ScreenMessage renameRefusal(TreeNode node);

// What the tree's Paste did on a node of (group, category): the new node's position, or why
// nothing was pasted. Nothing held for this node is no paste and no message.
struct TreePaste {
    Position position = kNoPosition;
    std::optional<ScreenMessage> message;
    Notices notices;  // the catalogue changed when something was pasted
};
[[nodiscard]] TreePaste pasteIntoTree(const CatalogueClipboard& clipboard, FoodCatalogue& catalogue,
                                      TreeNode node, int group, Position category);

[[nodiscard]] Confirmation confirmDeleteAllCategories(int group);
[[nodiscard]] Confirmation confirmDeleteCategory(std::string_view categoryName);
[[nodiscard]] Confirmation confirmDeleteFoodItem(std::string_view foodName);

}  // namespace nutrovex
