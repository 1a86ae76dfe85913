#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/Recipe.h"
#include "core/ScreenMessage.h"
#include "core/ServingUnits.h"
#include "foods/FoodFinder.h"
#include "foods/Recipes.h"
#include "forms/foods/FindFoodForm.h"

namespace nutrovex {

class Session;

// Where the recipe screens find a person's recipes: the catalogue their foods are in, the recipes
// themselves, the find's index, and why Recipes.json or the catalogue could not be read whole
// (empty when both were): a recipe is then never saved.
struct RecipeShelf {
    FoodCatalogue* catalogue = nullptr;
    RecipeBook* book = nullptr;
    FoodFinder* finder = nullptr;
    std::string failure;
};
[[nodiscard]] RecipeShelf recipeShelf(Session& session);

struct RecipeEditorView {
    std::string caption;  // "New Recipe" or "Edit Recipe"
    std::string name;
    int group = 0;
    std::string servings;
    // "Bagel, 2 item: 490 cal", or the line's problem when its food cannot be measured.
    std::vector<std::string> lines;
    int selected = -1;
    // The selected line's amount and unit.
    bool lineEnabled = false;
    std::string amount;
    std::vector<ServingUnit> units;
    int unit = -1;
    // The catalogue to add from: a group, its categories and the category's foods.
    int pickGroup = 0;
    std::vector<std::string_view> categoryNames;
    int pickCategory = -1;
    std::vector<std::string_view> foodNames;
    int pickFood = -1;
    bool canAdd = false;
    // Calories whole, grams to a tenth, in the catalogue's order of values.
    std::array<std::string, kNutrientCount> perServing{};
    std::array<std::string, kNutrientCount> whole{};
    // What stops the recipe from being made as it stands (a missing ingredient named), what a
    // saved meal left out, and why nothing can be saved at all.
    std::vector<std::string> problems;
    std::vector<std::string> leftOut;
    std::string notice;
    bool canSave = true;
};

// The recipe editor: a name, the group of its food, the servings it makes, and its ingredients,
// each a catalogue food in an amount and unit, with the dish's values live per serving and whole.
// OK makes or updates the recipe and its food in the category "Recipes" of the group.
class RecipeEditorForm {
public:
    // A new recipe, perhaps drafted from logged entries (Save Meal as Recipe).
    static RecipeEditorForm newRecipe(RecipeShelf shelf, RecipeDraft draft = {});
    // The recipe whose food is at the place; none when that food is not a recipe's.
    static std::optional<RecipeEditorForm> editFood(RecipeShelf shelf, const FoodPlace& food);
    [[nodiscard]] static bool isRecipeFood(const RecipeShelf& shelf, const FoodPlace& food);

    enum class Field : uint8_t {
        Name,
        Group,     // a group's shown name
        Servings,  // whole servings, 1 to 1000
        Amount,    // the selected line's amount
        Unit,      // the selected line's unit, by name
        PickGroup,
        PickCategory,
        PickFood,
    };
    enum class Command : uint8_t {
        Add,     // the picked food, in its own serving, as a new line
        Remove,  // the selected line
        Save,    // OK: refused with a message naming the field or ingredient; else made and saved
    };

    [[nodiscard]] RecipeEditorView view() const;
    Outcome edit(Field field, std::string_view text);
    void selectLine(int line);
    [[nodiscard]] FindFoodForm findForm() const;
    // A food found: picked, ready to be added.
    void pick(int group, int category, int food);
    Outcome command(Command id);
    // After Save: where the recipe's food is.
    [[nodiscard]] const std::optional<FoodPlace>& saved() const { return m_saved; }
    // The catalogue and recipes are saved by Save itself.
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

    [[nodiscard]] static const char* caption() { return "Recipe"; }

private:
    explicit RecipeEditorForm(RecipeShelf shelf) : m_shelf(std::move(shelf)) {}
    [[nodiscard]] const FoodItem* pickedFood() const;
    [[nodiscard]] const FoodItem* lineFood(std::size_t line) const;
    void fixPick();

    RecipeShelf m_shelf;
    Recipe m_recipe;
    std::string m_servings = "1";
    std::vector<std::string> m_amounts;  // each line's amount as typed
    std::vector<std::string> m_leftOut;
    std::optional<std::string> m_editedName;
    int m_selected = -1;
    int m_pickGroup = 0;
    int m_pickCategory = -1;
    int m_pickFood = -1;
    std::optional<FoodPlace> m_saved;
};

}  // namespace nutrovex
