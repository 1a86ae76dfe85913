#include "foods/Recipes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/Format.h"
#include "core/ServingUnits.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFields.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

namespace {

const FoodItem* catalogueFood(const FoodCatalogue& catalogue, int group,
                              std::string_view categoryName, std::string_view foodName,
                              FoodPlace* place = nullptr) {
    const Position category = findCategory(catalogue, group, categoryName);
    const FoodCategory* c = categoryAt(catalogue, group, category);
    if (c == nullptr) {
        return nullptr;
    }
    const Position item = findFoodItem(*c, foodName);
    if (item == kNoPosition) {
        return nullptr;
    }
    if (place != nullptr) {
        *place = {group, category, item};
    }
    return &c->foods[item];
}

std::string unitList(const std::vector<ServingUnit>& units) {
    std::string names;
    for (const ServingUnit u : units) {
        names += names.empty() ? "" : ", ";
        names += isKnownUnit(u) ? unitName(u) : "?";
    }
    return names;
}

bool offers(const std::vector<ServingUnit>& units, ServingUnit unit) {
    return std::find(units.begin(), units.end(), unit) != units.end();
}

// Why the unit cannot measure the food as logging would, or nullopt when it can.
std::optional<std::string> unitProblem(const FoodItem& food, ServingUnit unit) {
    const std::vector<ServingUnit> units = loggingUnits(food);
    if (offers(units, unit)) {
        return std::nullopt;
    }
    return quotedForMessage(food.name.view()) + " cannot be measured in " +
           (isKnownUnit(unit) ? unitName(unit) : "that unit") + ", only in " + unitList(units);
}

// Calories to whole ones, halves up; grams to a tenth, halves away from zero: the fields of the
// food editor.
Nutrients roundedAsEntered(const std::array<double, kNutrientCount>& values) {
    Nutrients out{};
    for (int n = 0; n < kNutrientCount; ++n) {
        const double v = values[static_cast<std::size_t>(n)];
        out[static_cast<std::size_t>(n)] =
            static_cast<float>(n == kCalories ? std::floor(v + 0.5) : std::round(v * 10.0) / 10.0);
    }
    return out;
}

bool isOwnFood(const RecipeIngredient& in, int group, std::string_view name) {
    return in.group == group && in.category == kRecipesCategoryName && in.food == name;
}

RecipeProblem problemAt(RecipeField field, std::string text) {
    return {field, 0, std::move(text)};
}

constexpr const char* kValueNames[kNutrientCount] = {"calories", "carbohydrate", "fiber",
                                                     "protein",  "fat",          "saturated fat"};

const char* groupName(int group) {
    return group >= 0 && group < kFoodGroupCount ? kFoodGroupNames[group] : "?";
}

}  // namespace

std::optional<RecipeProblem> RecipeDish::firstProblem() const {
    for (const IngredientValues& in : ingredients) {
        if (in.problem) {
            return in.problem;
        }
    }
    return std::nullopt;
}

RecipeDish measureRecipe(const FoodCatalogue& catalogue, const Recipe& recipe) {
    RecipeDish dish;
    dish.ingredients.resize(recipe.ingredients.size());
    std::array<double, kNutrientCount> sum{};
    for (std::size_t i = 0; i < recipe.ingredients.size(); ++i) {
        const RecipeIngredient& in = recipe.ingredients[i];
        IngredientValues& out = dish.ingredients[i];
        const auto refuse = [&](std::string why) {
            out.problem =
                RecipeProblem{RecipeField::Ingredient, i, ingredientLabel(recipe, i) + ": " + why};
        };
        out.food = catalogueFood(catalogue, in.group, in.category, in.food);
        if (out.food == nullptr) {
            if (findCategory(catalogue, in.group, in.category) == kNoPosition) {
                refuse("the group '" + std::string(groupName(in.group)) + "' has no category " +
                       quotedForMessage(in.category));
            } else {
                refuse("the category " + quotedForMessage(in.category) + " of '" +
                       groupName(in.group) + "' has no food " + quotedForMessage(in.food));
            }
            continue;
        }
        if (std::optional<std::string> p = unitProblem(*out.food, in.unit)) {
            refuse(std::move(*p));
            continue;
        }
        // The serving as Log Food sets it: the food's reference for the unit gives the ratio.
        FoodItem measured = *out.food;
        measured.setServing({in.amount, in.unit, out.food->serving.sub});
        for (int n = 0; n < kNutrientCount; ++n) {
            const float v = measured.shownNutrient(n);
            out.values[static_cast<std::size_t>(n)] = v;
            sum[static_cast<std::size_t>(n)] += static_cast<double>(v);
        }
    }
    // Divided and rounded in double: a float in between would move values off their halves.
    std::array<double, kNutrientCount> perServing{};
    const double servings = recipe.servings > 0 ? static_cast<double>(recipe.servings) : 1.0;
    for (std::size_t n = 0; n < sum.size(); ++n) {
        dish.whole[n] = static_cast<float>(sum[n]);
        perServing[n] = sum[n] / servings;
    }
    dish.perServing = roundedAsEntered(perServing);
    return dish;
}

FoodItem recipeFood(const Recipe& recipe, const Nutrients& perServing) {
    FoodItem food;
    food.name = recipe.name;
    food.text2 = recipe.name;  // the find searches the second name
    food.group = recipe.group;
    food.serving = {1.0f, ServingUnit::Item, 0};
    food.setReference(food.serving);
    for (int n = 0; n < kNutrientCount; ++n) {
        food.setNutrient(n, perServing[static_cast<std::size_t>(n)]);
    }
    return food;
}

std::optional<FoodPlace> recipeFoodPlace(const FoodCatalogue& catalogue, const Recipe& recipe) {
    FoodPlace place;
    if (catalogueFood(catalogue, recipe.group, kRecipesCategoryName, recipe.name, &place) ==
        nullptr) {
        return std::nullopt;
    }
    return place;
}

RecipeSaveResult saveRecipe(FoodCatalogue& catalogue, RecipeBook& book, Recipe recipe,
                            RecipeSaveMode mode, std::string_view editedName) {
    RecipeSaveResult result;
    const auto refuse = [&](RecipeProblem p) {
        result.problem = std::move(p);
        return result;
    };
    recipe.name = std::string(stripBlanks(recipe.name));
    if (std::optional<RecipeProblem> p = recipeProblem(recipe)) {
        return refuse(std::move(*p));
    }

    // The recipe this one replaces, if any, and where its food still is.
    const std::string_view replacedName = mode == RecipeSaveMode::Edit ? editedName : recipe.name;
    Recipe* replaced = mode == RecipeSaveMode::New ? nullptr : findRecipe(book, replacedName);
    if (mode == RecipeSaveMode::Edit && replaced == nullptr) {
        return refuse(problemAt(RecipeField::Name,
                                "there is no recipe named " + quotedForMessage(editedName)));
    }
    if (const Recipe* holder = findRecipe(book, recipe.name);
        holder != nullptr && holder != replaced) {
        return refuse(problemAt(
            RecipeField::Name, "there is already a recipe named " + quotedForMessage(recipe.name)));
    }
    if (replaced == nullptr && book.size() >= kMaxRecipes) {
        return refuse(problemAt(RecipeField::Name, "a person keeps at most " +
                                                       std::to_string(kMaxRecipes) + " recipes"));
    }
    const std::optional<FoodPlace> oldFood =
        replaced != nullptr ? recipeFoodPlace(catalogue, *replaced) : std::nullopt;
    const bool hadFood = oldFood.has_value();
    const FoodPlace oldPlace = oldFood.value_or(FoodPlace{});

    for (std::size_t i = 0; i < recipe.ingredients.size(); ++i) {
        const RecipeIngredient& in = recipe.ingredients[i];
        if (isOwnFood(in, recipe.group, recipe.name) ||
            (replaced != nullptr && isOwnFood(in, replaced->group, replaced->name))) {
            return refuse({RecipeField::Ingredient, i,
                           ingredientLabel(recipe, i) + ": a recipe cannot hold its own food"});
        }
    }
    const RecipeDish dish = measureRecipe(catalogue, recipe);
    if (std::optional<RecipeProblem> p = dish.firstProblem()) {
        return refuse(std::move(*p));
    }
    for (int n = 0; n < kNutrientCount; ++n) {
        const float v = dish.perServing[static_cast<std::size_t>(n)];
        const float top = n == kCalories ? kMaxFoodCalories : kMaxNutrientGrams;
        if (v > top) {
            return refuse(problemAt(
                RecipeField::Servings,
                n == kCalories
                    ? formatText("one serving holds %.0f calories, more than a food can (10000); "
                                 "make more servings",
                                 static_cast<double>(v))
                    : formatText("one serving holds %.1f g of %s, more than a food can (1000 g); "
                                 "make more servings",
                                 static_cast<double>(v), kValueNames[n])));
        }
    }

    // Where the food goes; every refusal comes before the first change.
    const int group = recipe.group;
    const FoodItem food = recipeFood(recipe, dish.perServing);
    const bool inPlace = hadFood && oldPlace.group == group;
    Position category = findCategory(catalogue, group, kRecipesCategoryName);
    if (const FoodCategory* c = categoryAt(catalogue, group, category)) {
        const Position holder = findFoodItem(*c, recipe.name);
        if (holder != kNoPosition && !(inPlace && holder == oldPlace.item)) {
            return refuse(problemAt(RecipeField::Name,
                                    quotedForMessage(recipe.name) +
                                        " is already a food of the category 'Recipes' of '" +
                                        groupName(group) + "'"));
        }
        if (!inPlace && categoryIsFull(*c)) {
            return refuse(problemAt(RecipeField::Group, std::string("the category 'Recipes' of '") +
                                                            groupName(group) +
                                                            "' already holds 100 food items"));
        }
    } else if (groupIsFull(catalogue, group)) {
        return refuse(problemAt(RecipeField::Group,
                                std::string("the group '") + groupName(group) +
                                    "' already holds 250 categories, none of them 'Recipes'"));
    }

    Position item = kNoPosition;
    if (inPlace) {
        item = replaceFoodItem(catalogue, group, category, oldPlace.item, food);
    } else {
        if (category == kNoPosition) {
            category = addCategory(catalogue, group, kRecipesCategoryName);
        }
        item =
            category == kNoPosition ? kNoPosition : addFoodItem(catalogue, group, category, food);
        if (item != kNoPosition && hadFood) {
            (void)deleteFoodItem(catalogue, oldPlace.group, oldPlace.category, oldPlace.item);
        }
    }
    if (item == kNoPosition) {  // only when memory ran out
        return refuse(problemAt(RecipeField::None, "the food could not be added"));
    }
    if (replaced != nullptr) {
        *replaced = std::move(recipe);
    } else {
        book.push_back(std::move(recipe));
    }
    result.place = {group, category, item};
    result.food = catalogue.groups[static_cast<std::size_t>(group)][category].foods[item];
    result.notices = kCatalogueChanged;
    result.notices.recipes = true;
    result.notices.dataChanged = true;
    return result;
}

Notices deleteRecipe(FoodCatalogue& catalogue, RecipeBook& book, std::string_view name) {
    const auto it =
        std::find_if(book.begin(), book.end(), [&](const Recipe& r) { return r.name == name; });
    if (it == book.end()) {
        return {};
    }
    Notices notices{.dataChanged = true, .recipes = true};
    if (const std::optional<FoodPlace> place = recipeFoodPlace(catalogue, *it)) {
        (void)deleteFoodItem(catalogue, place->group, place->category, place->item);
        notices.catalogue = true;
    }
    book.erase(it);
    return notices;
}

RecipeStatus recipeStatus(const FoodCatalogue& catalogue, const Recipe& recipe) {
    RecipeStatus status;
    status.food = recipeFoodPlace(catalogue, recipe);
    for (IngredientValues& in : measureRecipe(catalogue, recipe).ingredients) {
        if (in.problem) {
            status.problems.push_back(std::move(*in.problem));
        }
    }
    return status;
}

RecipeDraft recipeFromEntries(const FoodCatalogue& catalogue, std::span<const FoodItem> entries) {
    RecipeDraft draft;
    draft.recipe.group = entries.empty() || entries.front().group >= kFoodGroupCount
                             ? 0
                             : static_cast<uint8_t>(entries.front().group);
    for (const FoodItem& entry : entries) {
        const std::string name = quotedForMessage(entry.name.view());
        if (draft.recipe.ingredients.size() >= kMaxRecipeIngredients) {
            draft.leftOut.push_back(name + ": a recipe holds at most " +
                                    std::to_string(kMaxRecipeIngredients) + " ingredients");
            continue;
        }
        // The entry's own group first, then the others in order.
        const FoodItem* food = nullptr;
        int foundGroup = 0;
        const FoodCategory* foundCategory = nullptr;
        for (int k = -1; k < kFoodGroupCount && food == nullptr; ++k) {
            const int g = k < 0 ? entry.group : k;
            if (g < 0 || g >= kFoodGroupCount || (k >= 0 && g == entry.group)) {
                continue;
            }
            for (const FoodCategory& c : catalogue.groups[static_cast<std::size_t>(g)]) {
                if (const Position item = findFoodItem(c, entry.name.view()); item != kNoPosition) {
                    food = &c.foods[item];
                    foundGroup = g;
                    foundCategory = &c;
                    break;
                }
            }
        }
        if (food == nullptr) {
            draft.leftOut.push_back(name + ": no food of that name is in the catalogue");
            continue;
        }
        if (!(entry.serving.amount >= static_cast<float>(kMinIngredientAmount) &&
              entry.serving.amount <= static_cast<float>(kMaxIngredientAmount))) {
            draft.leftOut.push_back(name + ": its amount is not from 0.005 to 10000");
            continue;
        }
        if (std::optional<std::string> p = unitProblem(*food, entry.serving.unit)) {
            draft.leftOut.push_back(name + ": " + *p);
            continue;
        }
        draft.recipe.ingredients.push_back({static_cast<uint8_t>(foundGroup),
                                            foundCategory->name.str(), food->name.str(),
                                            entry.serving.amount, entry.serving.unit});
    }
    return draft;
}

}  // namespace nutrovex
