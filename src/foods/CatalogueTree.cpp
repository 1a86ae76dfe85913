#include "foods/CatalogueTree.h"

#include <string>

#include "core/Cp1252.h"
#include "core/FoodItem.h"

namespace nutrovex {

TreeMenuState treeMenuState(TreeNode node, const CatalogueClipboard& clipboard) {
    const bool group = node == TreeNode::Group;
    const bool category = node == TreeNode::Category;
    const bool food = node == TreeNode::Food;
    TreeMenuState s;
    s.cut = s.copy = s.rename = !group;
    s.paste = (clipboard.holdsCategory() && (group || category)) ||
              (clipboard.holdsFood() && (category || food));
    s.insertCategory = true;
    s.insertFood = !group;
    s.deleteAllCategories = group;
    s.deleteCategory = !group;
    s.deleteFood = food;
    return s;
}

ScreenMessage renameRefusal(TreeNode node) {
    if (node == TreeNode::Category) {
        return {"You entered a duplicate or invalid category.", "Rename Category",
                MessageKind::Warning};
    }
    return {"You entered a duplicate or invalid name.", "Rename Food", MessageKind::Warning};
}

TreePaste pasteIntoTree(const CatalogueClipboard& clipboard, FoodCatalogue& catalogue,
                        TreeNode node, int group, Position category) {
    TreePaste out;
    if (clipboard.holdsCategory() && node != TreeNode::Food) {
        if (groupIsFull(catalogue, group)) {
            out.message = ScreenMessage{"You can enter a maximum of " +
                                            std::to_string(kMaxCategoriesPerGroup) +
                                            " categories per food group.",
                                        "Paste Category", MessageKind::Warning};
            return out;
        }
        out.position = clipboard.pasteCategory(catalogue, group);
        if (out.position == kNoPosition) {
            out.message = ScreenMessage{"You entered a duplicate or invalid category.",
                                        "Paste Category", MessageKind::Warning};
        }
    } else if (clipboard.holdsFood() && node != TreeNode::Group) {
        const FoodCategory* c = categoryAt(catalogue, group, category);
        if (c != nullptr && categoryIsFull(*c)) {
            out.message =
                ScreenMessage{"You can enter a maximum of " + std::to_string(kMaxFoodsPerCategory) +
                                  " food items per category.",
                              "Paste Food", MessageKind::Warning};
            return out;
        }
        out.position = clipboard.pasteFood(catalogue, group, category);
        if (out.position == kNoPosition && c != nullptr) {
            out.message = ScreenMessage{"You entered a duplicate or invalid name.", "Paste Food",
                                        MessageKind::Warning};
        }
    }
    if (out.position != kNoPosition) {
        out.notices = kCatalogueChanged;
    }
    return out;
}

Confirmation confirmDeleteAllCategories(int group) {
    const char* name = (group >= 0 && group <= kAllFoodsGroup) ? kFoodGroupNames[group] : "";
    return {{"Are you sure you want to delete all categories and food items under the '" +
                 std::string(name) + "' food group?",
             "Delete All Categories", MessageKind::Warning}};
}

Confirmation confirmDeleteCategory(std::string_view categoryName) {
    return {{"Are you sure you want to delete the category " + quotedText(categoryName) +
                 " and all food items?",
             "Delete Category", MessageKind::Warning}};
}

Confirmation confirmDeleteFoodItem(std::string_view foodName) {
    return {{"Are you sure you want to delete the food item " + quotedText(foodName) + "?",
             "Delete Food Item", MessageKind::Warning},
            true};
}

}  // namespace nutrovex
