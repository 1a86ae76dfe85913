#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/FoodCatalogue.h"
#include "core/Position.h"
#include "core/ScreenMessage.h"
#include "foods/CatalogueOps.h"
#include "foods/CatalogueTree.h"
#include "foods/Confirmation.h"
#include "foods/FoodCsv.h"
#include "foods/FoodFinder.h"
#include "foods/FoodRunState.h"
#include "forms/foods/CategoryNameForm.h"
#include "forms/foods/FindFoodForm.h"
#include "forms/foods/FoodItemForm.h"
#include "logbook/DayCursor.h"

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

// What the catalogue screen shows besides the tree itself: the selected node with the menus it
// offers, and what the last command changed: the group whose nodes are built again, and whether
// the label editor opens again (after a refused rename) on the selected node.
struct CatalogueView {
    TreePlace selected;
    TreeMenuState menu;
    std::optional<int> changedGroup;
    bool reopenEditor = false;
};

// The catalogue screen: the food tree with the menus of its selected node, renaming in place,
// the clipboard, deleting, the find field, and Import... and Export... of the food list as CSV.
// Every change of the catalogue is saved at once.
class CatalogueForm {
public:
    CatalogueForm(FoodCatalogue& catalogue, DayCursor& days, FoodRunState& state);
    CatalogueForm(CatalogueForm&&) = default;
    CatalogueForm& operator=(CatalogueForm&&) = delete;

    enum class Field : uint8_t {
        Label,  // the label editor's text: renames the selected node (an empty text does not)
    };
    enum class Command : uint8_t {
        Cut,
        Copy,
        Paste,  // a held category into the node's group, a held food into its category
        DeleteAllCategories,
        DeleteCategory,
        DeleteFood,
    };

    // The tree, read as it is drawn: a catalogue of 200,000 foods opens as eight rows.
    [[nodiscard]] bool exists(const TreePlace& place) const;
    // The node's label: the group's shown name, the category's or the food's name.
    [[nodiscard]] std::string_view label(const TreePlace& place) const;
    [[nodiscard]] int categoryCount(int group) const;
    [[nodiscard]] int foodCount(int group, Position category) const;

    [[nodiscard]] CatalogueView view() const;
    // The tree's current node.
    void select(const TreePlace& place);
    Outcome edit(Field field, std::string_view text);
    // The question before a delete, or none when the selected node offers no such delete.
    [[nodiscard]] std::optional<Confirmation> confirmation(Command id) const;
    // The key Delete on the selected node: its category or its food; nothing on a group.
    [[nodiscard]] std::optional<Command> deleteForKey() const;
    Outcome command(Command id);
    // The catalogue is saved after each change; a food logged into the day from here is saved with
    // the user's data when the screen closes.
    [[nodiscard]] SavePoint close() const { return SavePoint::Both; }

    // The find field: the refusal ("Please enter a find string.", "No matching food items
    // found."), or the find screen on its results.
    [[nodiscard]] Outcome find(std::string_view text);
    [[nodiscard]] FindFoodForm findForm() const;
    // The node of a food found.
    void select(const FindResult& found);

    // The screens the tree opens on its selected node, and what happens once one stored a
    // category or a food: the group's nodes are built again, the new node selected and the
    // catalogue saved.
    [[nodiscard]] std::optional<FoodItemForm> insertFoodForm() const;
    [[nodiscard]] std::optional<FoodItemForm> editFoodForm() const;
    [[nodiscard]] std::optional<FoodItemForm> newFoodForm() const;
    [[nodiscard]] CategoryNameForm newCategoryForm() const;
    Outcome stored(const TreePlace& place);

    // Import...: the food list in the file, read and added as the tool imports one. The progress
    // hears the rows done of all rows as the import goes and stops it by returning false, which
    // leaves the catalogue as it was and says nothing. Otherwise the outcome says what was
    // imported, or why the file was refused, and saves the catalogue when anything was added.
    Outcome importFile(const std::string& path, const ImportProgress& progress = {});
    // Export...: the food list written to the file as CSV; the refusal when it cannot be written.
    [[nodiscard]] Outcome exportFile(const std::string& path) const;

private:
    [[nodiscard]] TreeMenuState menu(const TreePlace& place) const;
    Outcome changedIn(int group, const TreePlace& select);
    Outcome rename(std::string_view text);
    Outcome paste();
    Outcome remove(Command id);

    FoodCatalogue* m_catalogue;
    DayCursor* m_days;
    FoodRunState* m_state;
    FoodFinder m_finder;
    TreePlace m_selected;
    std::optional<int> m_changedGroup;
    bool m_reopenEditor = false;
};

// What an import of a food list came to: the counts, and the first refused rows with their lines.
[[nodiscard]] ScreenMessage importMessage(const ImportReport& report);

}  // namespace nutrovex
