#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/Recipe.h"
#include "storage/SideFile.h"
#include "storage/StorageError.h"

namespace nutrovex {

// Recipes.json in a person's folder:
//   {"version": 1, "recipes": [{"name": s, "group": 0-7, "servings": n, "ingredients":
//     [{"group": 0-7, "category": s, "food": s, "amount": d, "unit": s}, ...]}, ...]}
// Units by their names ("g", "cup"); on reading, a unit may also be its code in digits. Every
// recipe keeps the rules of core/Recipe.h and names are unique.
inline constexpr const char* kRecipesFileName = "Recipes.json";
inline constexpr unsigned kRecipesFormatVersion = 1;

// The text the program writes.
[[nodiscard]] std::string recipesJson(const RecipeBook& book);
// Reads a whole Recipes.json text; on a refusal the book is left as it was and the error names
// `fileName` and the field.
[[nodiscard]] StorageStatus parseRecipes(std::string_view text, RecipeBook& book,
                                         std::string_view fileName = kRecipesFileName);

// One recipe object as a recipes file holds it (what the tool's `recipe` command reads). Only its
// shape is checked (fields, kinds, the group, units, counts); the recipe's own rules are
// recipeProblem's. On a refusal the recipe is left as it was.
[[nodiscard]] StorageStatus parseRecipeObject(std::string_view text, Recipe& recipe,
                                              std::string_view fileName);

// The person's recipes from `folder`/Recipes.json. Missing leaves the book empty.
[[nodiscard]] SideFileResult loadRecipes(const std::filesystem::path& folder, RecipeBook& book);
[[nodiscard]] StorageStatus saveRecipes(const std::filesystem::path& folder,
                                        const RecipeBook& book);

}  // namespace nutrovex
