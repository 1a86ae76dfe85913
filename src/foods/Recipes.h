#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"
#include "core/Recipe.h"
#include "core/ScreenMessage.h"

namespace nutrovex {

// Recipes and the catalogue: what a recipe's ingredients add up to, and the catalogue food of the
// category "Recipes" that holds its values per serving. Nothing here saves: a change returns the
// notices (catalogue and recipes) for the session.

// One ingredient measured as Log Food measures a catalogue food in a serving of the person's
// choosing: the food's reference serving for the unit, the serving ratio, nutrient x ratio.
struct IngredientValues {
    const FoodItem* food = nullptr;  // the catalogue food; null when it is missing
    Nutrients values{};              // zeros when the food is missing or cannot be measured
    std::optional<RecipeProblem> problem;
};

struct RecipeDish {
    std::vector<IngredientValues> ingredients;
    Nutrients whole{};       // every ingredient's values added up
    Nutrients perServing{};  // the whole divided by the servings, rounded as the food editor
                             // rounds: whole calories (halves up), grams to a tenth

    [[nodiscard]] bool complete() const { return !firstProblem().has_value(); }
    [[nodiscard]] std::optional<RecipeProblem> firstProblem() const;
};

// The dish as the catalogue stands: the live totals of a recipe editor. An ingredient that is
// missing (deleted or renamed in the catalogue) or whose unit cannot measure its food says so and
// adds nothing.
[[nodiscard]] RecipeDish measureRecipe(const FoodCatalogue& catalogue, const Recipe& recipe);

// The catalogue food of a recipe: its name, one "item" being one serving (reference and serving
// alike, ratio 1), the values per serving.
[[nodiscard]] FoodItem recipeFood(const Recipe& recipe, const Nutrients& perServing);

struct FoodPlace {
    int group = 0;
    Position category = kNoPosition;
    Position item = kNoPosition;

    friend bool operator==(const FoodPlace&, const FoodPlace&) = default;
};

// Where the recipe's food is: the food of the recipe's name in the category "Recipes" of its
// group; nullopt when it is not there (deleted or renamed in the catalogue).
[[nodiscard]] std::optional<FoodPlace> recipeFoodPlace(const FoodCatalogue& catalogue,
                                                       const Recipe& recipe);

// What a save replaces: nothing (a new recipe; a name already used is refused), the recipe of the
// same name when there is one (the tool's make-or-update), or the recipe being edited, named by
// its name before the edit (it may be renamed).
enum class RecipeSaveMode : uint8_t { New, MakeOrUpdate, Edit };

struct RecipeSaveResult {
    std::optional<RecipeProblem> problem;  // refused: nothing changed
    Notices notices;
    FoodPlace place;  // where the recipe's food now is
    FoodItem food;    // the food as the catalogue holds it

    [[nodiscard]] bool ok() const { return !problem.has_value(); }
};

// Makes or updates a recipe and its food. The name is stripped of blanks as the food editors do;
// then the recipe must keep its own rules (core/Recipe.h), every ingredient must be in the
// catalogue and measurable in its unit and none may be the recipe's own food, one serving must fit
// a food (10000 calories, 1000 g of the rest), and the catalogue's rules must let the food in: the
// category "Recipes" is made when the group has none (unless it holds 250 categories), holds at
// most 100 foods, and no other food of it bears the name. The food gets a fresh key, as every
// stored food does; a recipe moved to another group takes its food along.
RecipeSaveResult saveRecipe(FoodCatalogue& catalogue, RecipeBook& book, Recipe recipe,
                            RecipeSaveMode mode, std::string_view editedName = {});

// Removes the recipe and, while it is in the catalogue, its food. Nothing when there is no such
// recipe.
Notices deleteRecipe(FoodCatalogue& catalogue, RecipeBook& book, std::string_view name);

// How a recipe stands against the catalogue: where its food is, and what stops it from being
// made again (a missing ingredient named, or one its unit cannot measure). A recipe with problems
// keeps its food's last values until it is edited.
struct RecipeStatus {
    std::optional<FoodPlace> food;
    std::vector<RecipeProblem> problems;
};
[[nodiscard]] RecipeStatus recipeStatus(const FoodCatalogue& catalogue, const Recipe& recipe);

// "Save Meal as Recipe": logged entries (selected rows or a meal, see foods/DayCopy.h) become the
// ingredients of a new recipe, each the catalogue food of its name (looked for in the entry's
// group first, then in the others) in the entry's serving. Entries that cannot be ingredients are
// left out, each with the reason. The draft takes the group of the first entry and one serving;
// its name is for the person to give.
struct RecipeDraft {
    Recipe recipe;
    std::vector<std::string> leftOut;  // "'Tea': no food of that name is in the catalogue"
};
[[nodiscard]] RecipeDraft recipeFromEntries(const FoodCatalogue& catalogue,
                                            std::span<const FoodItem> entries);

}  // namespace nutrovex
