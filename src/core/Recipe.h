#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ServingUnits.h"

namespace nutrovex {

// A recipe: catalogue foods, each in an amount and unit, making a number of servings. Its values
// per serving become an ordinary catalogue food of the same name in the category "Recipes" of
// its group; the composition itself is kept in the person's Recipes.json.

inline constexpr const char* kRecipesCategoryName = "Recipes";
inline constexpr std::size_t kMaxRecipeNameLength = 20;  // the food editors' limit
inline constexpr uint32_t kMaxRecipeServings = 1000;
inline constexpr std::size_t kMaxRecipeIngredients = 100;
inline constexpr std::size_t kMaxRecipes = 1000;
// A catalogue name an ingredient refers to; the catalogue's own screens write at most 21.
inline constexpr std::size_t kMaxIngredientNameLength = 255;
// The food editors' range of a serving amount.
inline constexpr double kMinIngredientAmount = 0.005;
inline constexpr double kMaxIngredientAmount = 10000.0;

// A catalogue food by its place and name (Windows-1252, byte for byte as the catalogue holds
// them), with the amount of it in one of the serving units.
struct RecipeIngredient {
    uint8_t group = 0;
    std::string category;
    std::string food;
    float amount = 0.0f;
    ServingUnit unit = ServingUnit::Pinch;

    friend bool operator==(const RecipeIngredient&, const RecipeIngredient&) = default;
};

struct Recipe {
    std::string name;  // also the name of its food
    uint8_t group = 0;
    uint32_t servings = 1;
    std::vector<RecipeIngredient> ingredients;

    friend bool operator==(const Recipe&, const Recipe&) = default;
};

// A person's recipes, in the order they were first made.
using RecipeBook = std::vector<Recipe>;

[[nodiscard]] const Recipe* findRecipe(const RecipeBook& book, std::string_view name);
[[nodiscard]] Recipe* findRecipe(RecipeBook& book, std::string_view name);

// The part of a recipe a refusal is about, so a screen can put the focus there.
enum class RecipeField : uint8_t { None, Name, Group, Servings, Ingredients, Ingredient };

struct RecipeProblem {
    RecipeField field = RecipeField::None;
    std::size_t ingredient = 0;  // the ingredient's index, for RecipeField::Ingredient
    std::string text;            // a sentence naming the field or ingredient (Windows-1252)

    friend bool operator==(const RecipeProblem&, const RecipeProblem&) = default;
};

// Why a name cannot be a recipe's (and so a catalogue food's) name: empty, longer than 20
// characters, blanks at either end, or a control character. nullopt when it can.
[[nodiscard]] std::optional<std::string> recipeNameProblem(std::string_view name);
// Why a name cannot be an ingredient's category or food: empty, longer than 255 characters, or a
// control character.
[[nodiscard]] std::optional<std::string> ingredientNameProblem(std::string_view name);

// The first rule of the recipe itself that it breaks (its name, group, servings, the count of
// ingredients, each ingredient's group, names, amount and unit), the catalogue left aside.
[[nodiscard]] std::optional<RecipeProblem> recipeProblem(const Recipe& recipe);

// A name in single quotes as a message shows it, a control character written as \xNN.
[[nodiscard]] std::string quotedForMessage(std::string_view name);

// "ingredient 2 ('Milk')": how a message names an ingredient (1-based, as a list shows them).
[[nodiscard]] std::string ingredientLabel(const Recipe& recipe, std::size_t index);

}  // namespace nutrovex
