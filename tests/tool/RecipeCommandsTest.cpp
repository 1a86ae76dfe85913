#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "foods/CatalogueOps.h"
#include "session/Session.h"
#include "storage/CatalogueStorage.h"
#include "tool/FoodCommands.h"
#include "tool/JsonValues.h"
#include "tool/RecipeCommands.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

const char* const kFoodsCsv =
    "group,category,name,amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat\n"
    "Bread,Flour,Wheat flour,100,g,364,76.3,2.7,10.3,1,0.2\n"
    "Milk,Milk,Milk whole,1,cup,103,12.2,0,8,2.4,1.5\n"
    "Meat,Eggs,Egg,1,item,72,0.4,0,6.3,4.8,1.6\n";

// Flour 250 g (2.5 servings of 100 g), milk 2 cups, 2 eggs, in 4 servings: 1260 cal, 215.95 g
// carbohydrate, 6.75 g fibre, 54.35 g protein, 16.9 g fat, 6.7 g saturated fat in all.
const char* const kPancakes =
    R"({"name": "Pancakes", "group": 5, "servings": 4, "ingredients": [
        {"group": 5, "category": "Flour", "food": "Wheat flour", "amount": 250, "unit": "g"},
        {"group": 1, "category": "Milk", "food": "Milk whole", "amount": 2, "unit": "CUP"},
        {"group": 2, "category": "Eggs", "food": "Egg", "amount": 2, "unit": "item"}]})";

class RecipeCommandsTest : public ::testing::Test {
protected:
    RecipeCommandsTest() : clock(CalendarDate::fromDmy(5, 5, 2002)) {
        {
            Session session(root, clock, settings, {});
            std::string reason;
            EXPECT_EQ(session.start(reason), Session::Start::Running) << reason;
            (void)session.initialLoad();
        }
        options.root = root.string();
        write("foods.csv", kFoodsCsv);
        const std::vector<std::string> args = {"--user", "Zerbu",
                                               (dir.path() / "foods.csv").string()};
        EXPECT_EQ(importFoods(options, args, out, err), kExitOk) << err.str();
    }

    void write(const char* name, const std::string& text) {
        std::ofstream(dir.path() / name, std::ios::binary | std::ios::trunc) << text;
    }

    int recipe(const std::string& json, std::istream& in = std::cin) {
        write("recipe.json", json);
        out.str("");
        err.str("");
        const std::vector<std::string> args = {"--user", "Zerbu",
                                               (dir.path() / "recipe.json").string()};
        return makeRecipe(options, args, in, out, err);
    }

    int recipes() {
        out.str("");
        err.str("");
        const std::vector<std::string> args = {"--user", "Zerbu"};
        return listRecipes(options, args, out, err);
    }

    FixedClock clock;
    MemorySettings settings;
    test::TempDir dir;
    fs::path root = dir.path() / "root";
    fs::path folder = root / "Users" / "Zerbu";
    GlobalOptions options;
    std::ostringstream out;
    std::ostringstream err;
};

TEST_F(RecipeCommandsTest, ARecipeIsMadeAndItsFoodPrintedOnOneLine) {
    ASSERT_EQ(recipe(kPancakes), kExitOk) << err.str();
    EXPECT_EQ(err.str(), "");
    const std::string line = out.str();
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_NE(line.find(R"("name": "Pancakes", "text2": "Pancakes", "serving": {"amount": 1.0, )"
                        R"("unit": 14, "sub": 0})"),
              std::string::npos)
        << line;
    EXPECT_NE(line.find(R"("nutrients": [315.0, 54.0, 1.7, 13.6, 4.2, 1.7], "meal": 0, )"
                        R"("ratio": 1.0, "group": 5})"),
              std::string::npos)
        << line;
    EXPECT_TRUE(fs::exists(folder / "Recipes.json"));

    // Made again with other servings: the same recipe, its food made again.
    std::string twice = kPancakes;
    twice.replace(twice.find("\"servings\": 4"), 13, "\"servings\": 2");
    ASSERT_EQ(recipe(twice), kExitOk) << err.str();
    EXPECT_NE(out.str().find(R"("nutrients": [630.0, 108.0, 3.4, 27.2, 8.5, 3.4])"),
              std::string::npos)
        << out.str();

    ASSERT_EQ(recipes(), kExitOk) << err.str();
    const Json listed = parseJson(out.str());
    ASSERT_EQ(listed.at("recipes").size(), 1u) << out.str();
    const Json& pancakes = listed.at("recipes")[0];
    EXPECT_EQ(pancakes.at("name"), "Pancakes");
    EXPECT_EQ(pancakes.at("group"), 5);
    EXPECT_EQ(pancakes.at("servings"), 2);
    ASSERT_EQ(pancakes.at("ingredients").size(), 3u);
    EXPECT_EQ(compactJson(pancakes.at("ingredients")[1]),
              R"({"group":1,"category":"Milk","food":"Milk whole","amount":2.0,"unit":"cup"})");
    EXPECT_EQ(pancakes.at("food").at("nutrients")[0], 630.0);
    EXPECT_EQ(pancakes.at("missing"), Json::array());
}

TEST_F(RecipeCommandsTest, AMissingIngredientIsListedAndTheFoodKept) {
    ASSERT_EQ(recipe(kPancakes), kExitOk) << err.str();
    FoodCatalogue catalogue;
    catalogue.filePath = folder / "FoodDB.ddb";
    catalogue.folderPath = folder;
    ASSERT_EQ(loadCatalogue(catalogue, {}).outcome, CatalogueLoad::Read);
    ASSERT_TRUE(deleteFoodItem(catalogue, 2, findCategory(catalogue, 2, "Eggs"), 0));
    ASSERT_TRUE(saveCatalogue(catalogue).ok());

    ASSERT_EQ(recipes(), kExitOk) << err.str();
    const Json pancakes = parseJson(out.str()).at("recipes").at(0);
    EXPECT_EQ(compactJson(pancakes.at("missing")),
              R"([{"ingredient":2,"reason":"ingredient 3 ('Egg'): the category 'Eggs' of 'Meat, )"
              R"(Poultry, Fish, Eggs' has no food 'Egg'"}])");
    EXPECT_EQ(pancakes.at("food").at("nutrients")[0], 315.0);  // as it was
    // Making it again names the ingredient and changes nothing.
    const std::string before = readText(folder / "Recipes.json");
    EXPECT_EQ(recipe(kPancakes), kExitDataError);
    EXPECT_EQ(err.str(), "nutrovex-tool recipe: " + (dir.path() / "recipe.json").string() +
                             ": ingredient 3 ('Egg'): the category 'Eggs' of 'Meat, Poultry, Fish, "
                             "Eggs' has no food 'Egg'\n");
    EXPECT_EQ(readText(folder / "Recipes.json"), before);
}

TEST_F(RecipeCommandsTest, EachRefusalIsOneLineNamingTheFieldAndChangesNothing) {
    const std::string path = (dir.path() / "recipe.json").string();
    const struct {
        const char* what;
        std::string json;
        std::string line;
    } table[] = {
        {"an unknown unit",
         R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [{"group": 2,
            "category": "Eggs", "food": "Egg", "amount": 1, "unit": "dozen"}]})",
         path + ": ingredients[0].unit: 'dozen' is not a serving unit (pinch, tsp, tbsp, cup, "
                "pint, qrt, gal, fl oz, l, ml, oz, lbs, g, kg, item)"},
        {"zero servings", R"({"name": "Soup", "group": 3, "servings": 0, "ingredients": []})",
         path + ": servings: must be a whole number from 1 to 1000"},
        {"a missing ingredient",
         R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [{"group": 3,
            "category": "Roots", "food": "Carrot", "amount": 1, "unit": "g"}]})",
         "nutrovex-tool recipe: " + path +
             ": ingredient 1 ('Carrot'): the group 'Vegetables' has no category 'Roots'"},
        {"a name the catalogue refuses",
         R"({"name": "Soup for a big family", "group": 3, "servings": 2, "ingredients": [
            {"group": 2, "category": "Eggs", "food": "Egg", "amount": 1, "unit": "item"}]})",
         "nutrovex-tool recipe: " + path +
             ": the name 'Soup for a big family' is longer than 20 characters"},
        {"a unit the food cannot be measured in",
         R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [{"group": 1,
            "category": "Milk", "food": "Milk whole", "amount": 200, "unit": "g"}]})",
         "nutrovex-tool recipe: " + path +
             ": ingredient 1 ('Milk whole'): 'Milk whole' cannot be measured in g, only in pinch, "
             "tsp, tbsp, cup, pint, qrt, gal, fl oz, l, ml"},
        {"an unknown field", R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [],
            "notes": "hot"})",
         path + ": notes: is not a field of this file"},
        {"not JSON", "{\"name\": ", path + ": not valid JSON: "},
    };
    const std::string catalogueBefore = readText(folder / "FoodDB.ddb");
    for (const auto& c : table) {
        EXPECT_EQ(recipe(c.json), kExitDataError) << c.what;
        EXPECT_EQ(out.str(), "") << c.what;
        EXPECT_EQ(err.str().rfind(c.line, 0), 0u) << c.what << ": " << err.str();
        EXPECT_EQ(err.str().find('\n'), err.str().size() - 1) << c.what;
        EXPECT_EQ(readText(folder / "FoodDB.ddb"), catalogueBefore) << c.what;
        EXPECT_FALSE(fs::exists(folder / "Recipes.json")) << c.what;
    }
}

TEST_F(RecipeCommandsTest, ARecipesFileThatCannotBeReadIsLeftAlone) {
    write("broken", "{\"version\": 1, \"recipes\": [}");
    fs::copy_file(dir.path() / "broken", folder / "Recipes.json");
    const std::string catalogueBefore = readText(folder / "FoodDB.ddb");
    EXPECT_EQ(recipe(kPancakes), kExitDataError);
    EXPECT_EQ(
        err.str().rfind((folder / "Recipes.json").string() + ": Recipes.json: not valid JSON", 0),
        0u)
        << err.str();
    EXPECT_EQ(readText(folder / "Recipes.json"), "{\"version\": 1, \"recipes\": [}");
    EXPECT_EQ(readText(folder / "FoodDB.ddb"), catalogueBefore);
    EXPECT_EQ(recipes(), kExitDataError);
}

// Through the real program: the line printed is the food's line in dump-catalogue, and the
// command waits for the program to close the root.
TEST_F(RecipeCommandsTest, TheProgramPrintsTheFoodAsTheCatalogueDumpDoesAndTakesTheLock) {
    write("recipe.json", kPancakes);
    const auto tool = [&](const std::string& args, std::string& output) {
        const std::string command = std::string(NUTROVEX_TOOL_PATH) + " --root '" + root.string() +
                                    "' " + args + " >" + (dir.path() / "out").string() + " 2>" +
                                    (dir.path() / "err").string();
        const int status = std::system(command.c_str());
        output = readText(dir.path() / "out");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    const std::string make = "recipe --user Zerbu '" + (dir.path() / "recipe.json").string() + "'";
    std::string printed;
    {
        Session program(root, clock, settings, {});
        std::string reason;
        ASSERT_EQ(program.start(reason), Session::Start::Running) << reason;
        EXPECT_EQ(tool(make, printed), 1);
        EXPECT_EQ(readText(dir.path() / "err"),
                  "nutrovex-tool recipe: " + root.string() +
                      ": Nutrovex has this data root open; close it first\n");
        EXPECT_FALSE(fs::exists(folder / "Recipes.json"));
    }
    ASSERT_EQ(tool(make, printed), 0) << readText(dir.path() / "err");
    std::string dump;
    ASSERT_EQ(tool("dump-catalogue '" + (folder / "FoodDB.ddb").string() + "'", dump), 0);
    ASSERT_FALSE(printed.empty());
    EXPECT_NE(dump.find(" " + printed.substr(0, printed.size() - 1)), std::string::npos)
        << printed << "\n"
        << dump;
    EXPECT_NE(dump.find(R"("name": "Recipes")"), std::string::npos);
}

}  // namespace
}  // namespace nutrovex::tool
