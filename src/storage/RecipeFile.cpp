#include "storage/RecipeFile.h"

#include "core/FoodItem.h"
#include "core/ServingUnits.h"
#include "storage/SideFileJson.h"

namespace nutrovex {

namespace {

using sidejson::Json;
using sidejson::Refusal;

RecipeIngredient decodeIngredient(const Json& value, const std::string& path) {
    using namespace sidejson;
    expectObject(value, path, {"group", "category", "food", "amount", "unit"});
    RecipeIngredient in;
    in.group = static_cast<uint8_t>(
        wholeNumber(value.at("group"), member(path, "group"), 0, kFoodGroupCount - 1));
    in.category = text(value.at("category"), member(path, "category"));
    in.food = text(value.at("food"), member(path, "food"));
    in.amount = static_cast<float>(number(value.at("amount"), member(path, "amount")));
    const std::string unitPath = member(path, "unit");
    const std::string unit = text(value.at("unit"), unitPath);
    const std::optional<ServingUnit> code = unitNamed(unit);
    if (!code) {
        std::string names;
        for (const ServingUnit u : kServingUnits) {
            names += names.empty() ? "" : ", ";
            names += unitName(u);
        }
        throw Refusal{unitPath,
                      "'" + sidejson::printable(unit) + "' is not a serving unit (" + names + ")"};
    }
    in.unit = *code;
    return in;
}

Recipe decodeRecipe(const Json& value, const std::string& path) {
    using namespace sidejson;
    expectObject(value, path, {"name", "group", "servings", "ingredients"});
    Recipe r;
    r.name = text(value.at("name"), member(path, "name"));
    r.group = static_cast<uint8_t>(
        wholeNumber(value.at("group"), member(path, "group"), 0, kFoodGroupCount - 1));
    r.servings = static_cast<uint32_t>(
        wholeNumber(value.at("servings"), member(path, "servings"), 1, kMaxRecipeServings));
    const std::string listPath = member(path, "ingredients");
    const Json& ingredients = list(value.at("ingredients"), listPath, kMaxRecipeIngredients);
    r.ingredients.reserve(ingredients.size());
    for (std::size_t i = 0; i < ingredients.size(); ++i) {
        r.ingredients.push_back(decodeIngredient(ingredients[i], item(listPath, i)));
    }
    return r;
}

void appendRecipe(std::string& out, const Recipe& r) {
    using namespace sidejson;
    out += "    {\"name\": ";
    appendString(out, r.name);
    out += ", \"group\": " + std::to_string(r.group);
    out += ", \"servings\": " + std::to_string(r.servings);
    out += ", \"ingredients\": [";
    for (std::size_t i = 0; i < r.ingredients.size(); ++i) {
        const RecipeIngredient& in = r.ingredients[i];
        out += i == 0 ? "\n" : ",\n";
        out += "      {\"group\": " + std::to_string(in.group) + ", \"category\": ";
        appendString(out, in.category);
        out += ", \"food\": ";
        appendString(out, in.food);
        out += ", \"amount\": ";
        appendFloat(out, in.amount);
        out += ", \"unit\": ";
        appendString(out,
                     isKnownUnit(in.unit) ? unitName(in.unit) : std::to_string(unitByte(in.unit)));
        out += "}";
    }
    out += "]}";
}

}  // namespace

std::string recipesJson(const RecipeBook& book) {
    std::string out = "{\"version\": " + std::to_string(kRecipesFormatVersion) + ", \"recipes\": [";
    for (std::size_t i = 0; i < book.size(); ++i) {
        out += i == 0 ? "\n" : ",\n";
        appendRecipe(out, book[i]);
    }
    out += book.empty() ? "]}\n" : "\n]}\n";
    return out;
}

StorageStatus parseRecipes(std::string_view text, RecipeBook& book, std::string_view fileName) {
    using namespace sidejson;
    StorageError error;
    const std::optional<Json> doc = parse(text, error);
    if (!doc) {
        error.file = fileName;
        return error;
    }
    try {
        expectObject(*doc, "", {"version", "recipes"});
        (void)wholeNumber(doc->at("version"), "version", kRecipesFormatVersion,
                          kRecipesFormatVersion);
        const Json& recipes = list(doc->at("recipes"), "recipes", kMaxRecipes);
        RecipeBook read;
        read.reserve(recipes.size());
        for (std::size_t i = 0; i < recipes.size(); ++i) {
            const std::string path = item("recipes", i);
            Recipe r = decodeRecipe(recipes[i], path);
            if (std::optional<RecipeProblem> p = recipeProblem(r)) {
                throw Refusal{path, sidejson::printable(p->text)};
            }
            if (findRecipe(read, r.name) != nullptr) {
                throw Refusal{path, "the name '" + sidejson::printable(r.name) +
                                        "' is the name of an earlier recipe"};
            }
            read.push_back(std::move(r));
        }
        book = std::move(read);
    } catch (const Refusal& refusal) {
        return refusalError(fileName, refusal);
    }
    return {};
}

StorageStatus parseRecipeObject(std::string_view text, Recipe& recipe, std::string_view fileName) {
    using namespace sidejson;
    StorageError error;
    const std::optional<Json> doc = parse(text, error);
    if (!doc) {
        error.file = fileName;
        return error;
    }
    try {
        recipe = decodeRecipe(*doc, "");
    } catch (const Refusal& refusal) {
        return refusalError(fileName, refusal);
    }
    return {};
}

SideFileResult loadRecipes(const std::filesystem::path& folder, RecipeBook& book) {
    return loadSideFile(folder / kRecipesFileName, book,
                        [](std::string_view text, RecipeBook& b) { return parseRecipes(text, b); });
}

StorageStatus saveRecipes(const std::filesystem::path& folder, const RecipeBook& book) {
    return writeSideFile(folder / kRecipesFileName, recipesJson(book));
}

}  // namespace nutrovex
