#include "core/Recipe.h"

#include "core/FoodItem.h"
#include "core/ServingUnits.h"

namespace nutrovex {

namespace {

// C0 controls, DEL, and the five bytes Windows-1252 leaves undefined (C1 controls in UTF-8).
bool isControl(char ch) {
    const auto c = static_cast<unsigned char>(ch);
    return c < 0x20 || c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D;
}

}  // namespace

std::string quotedForMessage(std::string_view name) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out = "'";
    for (const char ch : name) {
        if (isControl(ch)) {
            const auto c = static_cast<unsigned char>(ch);
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        } else {
            out += ch;
        }
    }
    out += '\'';
    return out;
}

namespace {

std::optional<std::string> nameProblem(std::string_view name, std::size_t limit) {
    if (name.empty()) {
        return "is empty";
    }
    for (const char ch : name) {
        if (isControl(ch)) {
            return quotedForMessage(name) + " holds a control character";
        }
    }
    if (name.size() > limit) {
        return quotedForMessage(name) + " is longer than " + std::to_string(limit) + " characters";
    }
    return std::nullopt;
}

}  // namespace

const Recipe* findRecipe(const RecipeBook& book, std::string_view name) {
    for (const Recipe& r : book) {
        if (r.name == name) {
            return &r;
        }
    }
    return nullptr;
}

Recipe* findRecipe(RecipeBook& book, std::string_view name) {
    return const_cast<Recipe*>(findRecipe(static_cast<const RecipeBook&>(book), name));
}

std::optional<std::string> recipeNameProblem(std::string_view name) {
    if (std::optional<std::string> p = nameProblem(name, kMaxRecipeNameLength)) {
        return "the name " + *p;
    }
    if (name.front() == ' ' || name.back() == ' ') {
        return "the name " + quotedForMessage(name) + " begins or ends with a blank";
    }
    return std::nullopt;
}

std::optional<std::string> ingredientNameProblem(std::string_view name) {
    return nameProblem(name, kMaxIngredientNameLength);
}

std::string ingredientLabel(const Recipe& recipe, std::size_t index) {
    std::string label = "ingredient " + std::to_string(index + 1);
    if (index < recipe.ingredients.size() && !recipe.ingredients[index].food.empty()) {
        label += " (" + quotedForMessage(recipe.ingredients[index].food) + ")";
    }
    return label;
}

std::optional<RecipeProblem> recipeProblem(const Recipe& recipe) {
    if (std::optional<std::string> p = recipeNameProblem(recipe.name)) {
        return RecipeProblem{RecipeField::Name, 0, std::move(*p)};
    }
    if (recipe.group >= kFoodGroupCount) {
        return RecipeProblem{RecipeField::Group, 0, "the group must be from 0 to 7"};
    }
    if (recipe.servings < 1 || recipe.servings > kMaxRecipeServings) {
        return RecipeProblem{
            RecipeField::Servings, 0,
            "the servings must be a whole number from 1 to " + std::to_string(kMaxRecipeServings)};
    }
    if (recipe.ingredients.empty()) {
        return RecipeProblem{RecipeField::Ingredients, 0, "the recipe has no ingredients"};
    }
    if (recipe.ingredients.size() > kMaxRecipeIngredients) {
        return RecipeProblem{
            RecipeField::Ingredients, 0,
            "a recipe holds at most " + std::to_string(kMaxRecipeIngredients) + " ingredients"};
    }
    for (std::size_t i = 0; i < recipe.ingredients.size(); ++i) {
        const RecipeIngredient& in = recipe.ingredients[i];
        const auto refuse = [&](std::string why) {
            return RecipeProblem{RecipeField::Ingredient, i,
                                 ingredientLabel(recipe, i) + ": " + std::move(why)};
        };
        if (in.group >= kFoodGroupCount) {
            return refuse("the group must be from 0 to 7");
        }
        if (std::optional<std::string> p = ingredientNameProblem(in.category)) {
            return refuse("the category " + *p);
        }
        if (std::optional<std::string> p = ingredientNameProblem(in.food)) {
            return refuse("the food " + *p);
        }
        // Compared as the float it is kept as, like the food editors' amount.
        if (!(in.amount >= static_cast<float>(kMinIngredientAmount) &&
              in.amount <= static_cast<float>(kMaxIngredientAmount))) {
            return refuse("the amount must be from 0.005 to 10000");
        }
        if (!isKnownUnit(in.unit)) {
            return refuse("the unit is not a serving unit");
        }
    }
    return std::nullopt;
}

}  // namespace nutrovex
