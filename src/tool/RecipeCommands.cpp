#include "tool/RecipeCommands.h"

#include <iostream>
#include <iterator>
#include <optional>
#include <string>

#include "core/Cp1252.h"
#include "core/FoodCatalogue.h"
#include "core/Recipe.h"
#include "core/ServingUnits.h"
#include "foods/Recipes.h"
#include "session/UserCatalogue.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/RecipeFile.h"
#include "tool/JsonPrint.h"
#include "tool/JsonValues.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

struct RecipeArgs {
    std::string user;  // Windows-1252
    std::optional<std::string> file;
};

int usage(std::ostream& err, const char* command, const std::string& problem) {
    err << "nutrovex-tool " << command << ": " << problem << "\n"
        << "usage: nutrovex-tool [--root DIR] recipe --user NAME RECIPE.json\n"
        << "       nutrovex-tool [--root DIR] recipes --user NAME\n";
    return kExitUsage;
}

std::optional<RecipeArgs> parseArgs(Args args, bool withFile, std::ostream& err, int& status) {
    const char* command = withFile ? "recipe" : "recipes";
    RecipeArgs parsed;
    bool haveUser = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--user") {
            if (i + 1 >= args.size()) {
                status = usage(err, command, "'--user' needs a value");
                return std::nullopt;
            }
            const std::optional<std::string> name = utf8ToCp1252(args[++i]);
            if (!name) {
                status = usage(err, command, "the user name cannot be written in Windows-1252");
                return std::nullopt;
            }
            parsed.user = *name;
            haveUser = true;
        } else if (withFile && !parsed.file && (arg == "-" || !arg.starts_with("--"))) {
            parsed.file = arg;
        } else {
            status = usage(err, command, "unexpected argument '" + arg + "'");
            return std::nullopt;
        }
    }
    if (!haveUser) {
        status = usage(err, command, "--user NAME is required");
        return std::nullopt;
    }
    if (withFile && !parsed.file) {
        status = usage(err, command, "the recipe's JSON file is required");
        return std::nullopt;
    }
    return parsed;
}

// The user's catalogue as the program finds it, or the template's foods for a user who has none
// yet, read without writing anything.
bool readCatalogue(const UserFiles& files, FoodCatalogue& catalogue, std::ostream& err) {
    const UserCatalogueLoad loaded =
        loadUserCatalogue(catalogue, files.users, files.userFile, templateCataloguePath(files.root),
                          MissingCatalogue::UseTemplate);
    if (loaded.outcome == CatalogueLoad::Failed) {
        err << (loaded.failed.empty() ? std::string() : loaded.failed.string() + ": ")
            << loaded.status.message() << "\n";
        return false;
    }
    return true;
}

bool readRecipes(const UserFiles& files, RecipeBook& book, std::ostream& err) {
    const SideFileResult loaded = loadRecipes(files.folder, book);
    if (!loaded.usable()) {
        err << (files.folder / kRecipesFileName).string() << ": " << loaded.status.message()
            << "\n";
        return false;
    }
    return true;
}

Json recipeJson(const Recipe& recipe, const FoodCatalogue& catalogue) {
    Json ingredients = Json::array();
    for (const RecipeIngredient& in : recipe.ingredients) {
        ingredients.push_back({{"group", in.group},
                               {"category", cp1252ToUtf8(in.category)},
                               {"food", cp1252ToUtf8(in.food)},
                               {"amount", floatJson(in.amount)},
                               {"unit", isKnownUnit(in.unit) ? unitName(in.unit) : "?"}});
    }
    const RecipeStatus status = recipeStatus(catalogue, recipe);
    Json missing = Json::array();
    for (const RecipeProblem& p : status.problems) {
        missing.push_back({{"ingredient", p.ingredient}, {"reason", cp1252ToUtf8(p.text)}});
    }
    return {
        {"name", cp1252ToUtf8(recipe.name)},
        {"group", recipe.group},
        {"servings", recipe.servings},
        {"ingredients", std::move(ingredients)},
        {"food",
         status.food
             ? foodJson(
                   catalogue
                       .groups[static_cast<std::size_t>(status.food->group)][status.food->category]
                       .foods[status.food->item])
             : Json(nullptr)},
        {"missing", std::move(missing)}};
}

}  // namespace

int makeRecipe(const GlobalOptions& options, Args args, std::istream& in, std::ostream& out,
               std::ostream& err) {
    int status = kExitOk;
    const std::optional<RecipeArgs> parsed = parseArgs(args, true, err, status);
    if (!parsed) {
        return status;
    }
    const std::optional<UserFiles> files =
        openUserFiles(options, parsed->user, Access::Write, "recipe", err);
    if (!files) {
        return kExitDataError;
    }
    removeStaleSaves(files->folder);

    std::string text;
    const std::string source = *parsed->file == "-" ? "stdin" : *parsed->file;
    if (*parsed->file == "-") {
        text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    } else {
        ByteBuffer bytes;
        StorageError error;
        const ReadFile read = readWholeFile(*parsed->file, bytes, error);
        if (read != ReadFile::Read) {
            err << source << ": "
                << (read == ReadFile::Missing ? "there is no such file" : error.message()) << "\n";
            return kExitDataError;
        }
        text.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    Recipe recipe;
    if (const StorageStatus read = parseRecipeObject(text, recipe, source); !read) {
        err << read.message() << "\n";
        return kExitDataError;
    }

    FoodCatalogue catalogue;
    RecipeBook book;
    if (!readCatalogue(*files, catalogue, err) || !readRecipes(*files, book, err)) {
        return kExitDataError;
    }
    const RecipeSaveResult saved =
        saveRecipe(catalogue, book, std::move(recipe), RecipeSaveMode::MakeOrUpdate);
    if (!saved.ok()) {
        err << "nutrovex-tool recipe: " << source << ": " << cp1252ToUtf8(saved.problem->text)
            << "\n";
        return kExitDataError;
    }
    // The catalogue first: a recipe is only ever listed once its food could be kept.
    if (const StorageStatus s = saveCatalogue(catalogue); !s) {
        err << s.message() << "\n";
        return kExitDataError;
    }
    if (const StorageStatus s = saveRecipes(files->folder, book); !s) {
        err << s.message() << "\n";
        return kExitDataError;
    }
    std::string line;
    appendFoodJson(line, saved.food);
    out << line << "\n";
    out.flush();
    return out ? kExitOk : kExitDataError;
}

int listRecipes(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err) {
    int status = kExitOk;
    const std::optional<RecipeArgs> parsed = parseArgs(args, false, err, status);
    if (!parsed) {
        return status;
    }
    const std::optional<UserFiles> files =
        openUserFiles(options, parsed->user, Access::Read, "recipes", err);
    if (!files) {
        return kExitDataError;
    }
    FoodCatalogue catalogue;
    RecipeBook book;
    if (!readCatalogue(*files, catalogue, err) || !readRecipes(*files, book, err)) {
        return kExitDataError;
    }
    Json recipes = Json::array();
    for (const Recipe& r : book) {
        recipes.push_back(recipeJson(r, catalogue));
    }
    std::string text;
    appendPretty(text, Json{{"recipes", std::move(recipes)}}, 0);
    out << text << "\n";
    out.flush();
    return out ? kExitOk : kExitDataError;
}

int runRecipe(const GlobalOptions& options, Args args) {
    return makeRecipe(options, args, std::cin, std::cout, std::cerr);
}

int runRecipes(const GlobalOptions& options, Args args) {
    return listRecipes(options, args, std::cout, std::cerr);
}

}  // namespace nutrovex::tool
