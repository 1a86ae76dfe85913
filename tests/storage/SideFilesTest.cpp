#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "StorageTestUtil.h"
#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"

namespace nutrovex {
namespace {

using namespace test;
namespace fs = std::filesystem;

Recipe pancakes() {
    Recipe r;
    r.name = "Pancakes";
    r.group = 5;
    r.servings = 4;
    r.ingredients = {{5, "Flour", "Wheat flour", 250.0f, ServingUnit::Gram},
                     {1, "Milk", "Milk, whole", 1.5f, ServingUnit::Cup},
                     {2, "Eggs", "Egg", 2.0f, ServingUnit::Item}};
    return r;
}

RecipeBook sampleBook() {
    Recipe creme;
    creme.name =
        "Cr\xE8me br\xFBl\xE9"
        "e";  // Windows-1252
    creme.group = 0;
    creme.servings = 1000;
    creme.ingredients = {{0, "Sweets \"best\"", "Sugar\\brown", 0.1f, ServingUnit::Pinch}};
    return {pancakes(), creme};
}

TEST(RecipesFile, TheProgramsTextReadsBackAsTheSameBook) {
    const RecipeBook book = sampleBook();
    const std::string text = recipesJson(book);
    EXPECT_EQ(text,
              "{\"version\": 1, \"recipes\": [\n"
              "    {\"name\": \"Pancakes\", \"group\": 5, \"servings\": 4, \"ingredients\": [\n"
              "      {\"group\": 5, \"category\": \"Flour\", \"food\": \"Wheat flour\", "
              "\"amount\": 250, \"unit\": \"g\"},\n"
              "      {\"group\": 1, \"category\": \"Milk\", \"food\": \"Milk, whole\", "
              "\"amount\": 1.5, \"unit\": \"cup\"},\n"
              "      {\"group\": 2, \"category\": \"Eggs\", \"food\": \"Egg\", \"amount\": 2, "
              "\"unit\": \"item\"}]},\n"
              "    {\"name\": \"Cr\xC3\xA8me br\xC3\xBBl\xC3\xA9"
              "e\", \"group\": 0, "
              "\"servings\": 1000, \"ingredients\": [\n"
              "      {\"group\": 0, \"category\": \"Sweets \\\"best\\\"\", \"food\": "
              "\"Sugar\\\\brown\", \"amount\": 0.1, \"unit\": \"pinch\"}]}\n"
              "]}\n");
    RecipeBook read;
    ASSERT_TRUE(parseRecipes(text, read).ok());
    EXPECT_EQ(read, book);
    EXPECT_EQ(recipesJson(RecipeBook{}), "{\"version\": 1, \"recipes\": []}\n");
}

TEST(RecipesFile, UnitsAreReadByNameInAnyCaseOrByCode) {
    RecipeBook read;
    ASSERT_TRUE(parseRecipes(R"({"version": 1, "recipes": [{"name": "Tea", "group": 6,
        "servings": 2, "ingredients": [
        {"group": 6, "category": "Tea", "food": "Leaves", "amount": 1, "unit": "TSP"},
        {"group": 1, "category": "Milk", "food": "Milk", "amount": 100, "unit": "9"}]}]})",
                             read)
                    .ok());
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].ingredients[0].unit, ServingUnit::Teaspoon);
    EXPECT_EQ(read[0].ingredients[1].unit, ServingUnit::Millilitre);
}

const std::string kValidRecipe =
    R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [)"
    R"({"group": 3, "category": "Roots", "food": "Carrot", "amount": 100, "unit": "g"}]})";

std::string withRecipes(const std::string& recipes) {
    return R"({"version": 1, "recipes": [)" + recipes + "]}";
}

std::string ingredients(int count) {
    std::string out;
    for (int i = 0; i < count; ++i) {
        out += i == 0 ? "" : ",";
        out += R"({"group": 3, "category": "Roots", "food": "Carrot", "amount": 1, "unit": "g"})";
    }
    return out;
}

std::string zeros(int count) {
    std::string out = "0";
    for (int i = 1; i < count; ++i) {
        out += ",0";
    }
    return out;
}

// Every one of these is refused whole, naming the file and where it stopped.
TEST(RecipesFile, BrokenAndHostileFilesAreRefusedWithWhereAndWhy) {
    const struct {
        const char* what;
        std::string text;
        const char* says;
    } table[] = {
        {"empty", "", "Recipes.json: not valid JSON: "},
        {"cut short", withRecipes(kValidRecipe).substr(0, 40), "Recipes.json: not valid JSON: "},
        {"bytes after the document", withRecipes(kValidRecipe) + " x",
         "Recipes.json: not valid JSON: "},
        {"a second document", withRecipes("") + withRecipes(""), "Recipes.json: not valid JSON: "},
        {"a list, not an object", "[]",
         "Recipes.json: the document: must be an object, not a list"},
        {"no version", R"({"recipes": []})",
         "Recipes.json: the document: the field 'version' is missing"},
        {"a newer version", R"({"version": 2, "recipes": []})",
         "Recipes.json: version: must be a whole number from 1 to 1"},
        {"an unknown field", R"({"version": 1, "recipes": [], "notes": ""})",
         "Recipes.json: notes: is not a field of this file"},
        {"a field given twice", R"({"version": 1, "version": 1, "recipes": []})",
         "Recipes.json: version: the field is given twice"},
        {"a recipe's unknown field",
         withRecipes(kValidRecipe.substr(0, kValidRecipe.size() - 1) + R"(, "photo": null})"),
         "Recipes.json: recipes[0].photo: is not a field of this file"},
        {"servings as text", withRecipes(R"({"name": "Soup", "group": 3, "servings": "2",
          "ingredients": []})"),
         "Recipes.json: recipes[0].servings: must be a whole number from 1 to 1000"},
        {"no servings", withRecipes(R"({"name": "Soup", "group": 3, "servings": 0,
          "ingredients": []})"),
         "Recipes.json: recipes[0].servings: must be a whole number from 1 to 1000"},
        {"a fraction of a group", withRecipes(R"({"name": "Soup", "group": 3.5, "servings": 2,
          "ingredients": []})"),
         "Recipes.json: recipes[0].group: must be a whole number from 0 to 7"},
        {"group 8", withRecipes(R"({"name": "Soup", "group": 8, "servings": 2,
          "ingredients": []})"),
         "Recipes.json: recipes[0].group: must be a whole number from 0 to 7"},
        {"no ingredients", withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": []})"),
         "Recipes.json: recipes[0]: the recipe has no ingredients"},
        {"a name too long",
         withRecipes(R"({"name": "Soup of the day, thick!", "group": 3,
          "servings": 2, "ingredients": [)" +
                     ingredients(1) + "]}"),
         "Recipes.json: recipes[0]: the name 'Soup of the day, thick!' is longer than 20 "
         "characters"},
        {"a control character",
         withRecipes(R"({"name": "So\u0007up", "group": 3,
          "servings": 2, "ingredients": [)" +
                     ingredients(1) + "]}"),
         "Recipes.json: recipes[0]: the name 'So\\x07up' holds a control character"},
        {"a name Windows-1252 cannot hold",
         withRecipes(R"({"name": "\u4e2d", "group": 3,
          "servings": 2, "ingredients": [)" +
                     ingredients(1) + "]}"),
         "Recipes.json: recipes[0].name: holds a character that Windows-1252 cannot store"},
        {"blanks around a name",
         withRecipes(R"({"name": " Soup", "group": 3,
          "servings": 2, "ingredients": [)" +
                     ingredients(1) + "]}"),
         "Recipes.json: recipes[0]: the name ' Soup' begins or ends with a blank"},
        {"a name twice", withRecipes(kValidRecipe + "," + kValidRecipe),
         "Recipes.json: recipes[1]: the name 'Soup' is the name of an earlier recipe"},
        {"an unknown unit", withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": [{"group": 3, "category": "Roots", "food": "Carrot", "amount": 1,
          "unit": "handful"}]})"),
         "Recipes.json: recipes[0].ingredients[0].unit: 'handful' is not a serving unit (pinch, "
         "tsp, tbsp, cup, pint, qrt, gal, fl oz, l, ml, oz, lbs, g, kg, item)"},
        {"no amount", withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": [{"group": 3, "category": "Roots", "food": "Carrot", "amount": 0,
          "unit": "g"}]})"),
         "Recipes.json: recipes[0]: ingredient 1 ('Carrot'): the amount must be from 0.005 to "
         "10000"},
        {"an empty food name", withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": [{"group": 3, "category": "Roots", "food": "", "amount": 1,
          "unit": "g"}]})"),
         "Recipes.json: recipes[0]: ingredient 1: the food is empty"},
        {"a category name of 256 characters",
         withRecipes(R"({"name": "Soup", "group": 3, "servings": 2, "ingredients": [{"group": 3,
          "category": ")" +
                     std::string(256, 'c') + R"(", "food": "Carrot", "amount": 1,
          "unit": "g"}]})"),
         "is longer than 255 characters"},
        {"101 ingredients",
         withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": [)" +
                     ingredients(101) + "]}"),
         "Recipes.json: recipes[0].ingredients: holds more than 100 items"},
        {"a number beyond any", withRecipes(R"({"name": "Soup", "group": 3, "servings": 2,
          "ingredients": [{"group": 3, "category": "Roots", "food": "Carrot", "amount": 1e999,
          "unit": "g"}]})"),
         "Recipes.json: not valid JSON: number overflow"},
        {"nested deeper than the file ever is",
         R"({"version": 1, "recipes": [[[[[[[[[[]]]]]]]]]]})", "the document is nested too deeply"},
        {"a list longer than any the file holds", withRecipes(zeros(1001)),
         "Recipes.json: recipes: the list holds more than 1000 items"},
        {"a byte that is not UTF-8",
         withRecipes(R"({"name": "Cr)"
                     "\xE8"
                     R"(me"})"),
         "Recipes.json: not valid JSON: "},
        {"a zero byte", std::string("{\"version\": 1,\0 \"recipes\": []}", 30),
         "Recipes.json: not valid JSON: "},
    };
    for (const auto& c : table) {
        RecipeBook book = {pancakes()};
        const StorageStatus status = parseRecipes(c.text, book);
        ASSERT_FALSE(status.ok()) << c.what;
        EXPECT_NE(status.message().find(c.says), std::string::npos)
            << c.what << ": " << status.message();
        EXPECT_EQ(book, RecipeBook{pancakes()}) << c.what;  // left as it was
        // No message carries the file's raw bytes to a screen or terminal.
        for (const char ch : status.message()) {
            const auto u = static_cast<unsigned char>(ch);
            EXPECT_TRUE(u >= 0x20 && u < 0x7F) << c.what << ": " << status.message();
        }
    }
}

TEST(RecipesFile, OneRecipeObjectIsReadWithoutTheBooksRules) {
    Recipe r;
    // Blanks around the name are for the recipe's save to strip, as the food editors do.
    ASSERT_TRUE(parseRecipeObject(R"({"name": " Soup ", "group": 3, "servings": 2,
        "ingredients": [{"group": 3, "category": "Roots", "food": "Carrot", "amount": 100,
        "unit": "g"}]})",
                                  r, "soup.json")
                    .ok());
    EXPECT_EQ(r.name, " Soup ");
    EXPECT_EQ(r.ingredients.size(), 1u);
    const StorageStatus refused = parseRecipeObject(R"({"name": "Soup", "group": 3,
        "ingredients": []})",
                                                    r, "soup.json");
    EXPECT_EQ(refused.message(), "soup.json: the document: the field 'servings' is missing");
}

TEST(RecipesFile, AMissingFileIsNoRecipesAndAnOverlargeOneIsNotRead) {
    TempDir dir;
    RecipeBook book = {pancakes()};
    EXPECT_EQ(loadRecipes(dir.path(), book).outcome, SideFileLoad::Missing);
    EXPECT_TRUE(book.empty());

    ASSERT_TRUE(saveRecipes(dir.path(), sampleBook()).ok());
    EXPECT_EQ(loadRecipes(dir.path(), book).outcome, SideFileLoad::Read);
    EXPECT_EQ(book, sampleBook());

    fs::resize_file(dir.path() / kRecipesFileName, kMaxSideFileSize + 1);  // sparse, not written
    const SideFileResult big = loadRecipes(dir.path(), book);
    EXPECT_EQ(big.outcome, SideFileLoad::Failed);
    EXPECT_EQ(big.status.message(),
              "Recipes.json: is 16777217 bytes long, more than a file of its kind can be "
              "(16777216)");
    EXPECT_EQ(book, sampleBook());
}

MacroTargets someTargets() {
    MacroTargets t;
    t.of(TargetNutrient::Protein) = MacroTarget{MacroTarget::Kind::Percent, 30.5};
    t.of(TargetNutrient::Carbohydrate) = MacroTarget{MacroTarget::Kind::Percent, 49.5};
    t.of(TargetNutrient::Fat) = MacroTarget{MacroTarget::Kind::Percent, 20};
    t.of(TargetNutrient::SaturatedFat) = MacroTarget{MacroTarget::Kind::Grams, 22.5};
    return t;
}

TEST(TargetsFile, TheProgramsTextReadsBackAsTheSameTargets) {
    const std::string text = targetsJson(someTargets());
    EXPECT_EQ(text,
              "{\"version\": 1,\n"
              "  \"protein\": {\"percent\": 30.5},\n"
              "  \"carbohydrate\": {\"percent\": 49.5},\n"
              "  \"fat\": {\"percent\": 20},\n"
              "  \"saturatedFat\": {\"grams\": 22.5}}\n");
    MacroTargets read;
    ASSERT_TRUE(parseTargets(text, read).ok());
    EXPECT_EQ(read, someTargets());
    EXPECT_EQ(targetsJson(MacroTargets{}), "{\"version\": 1}\n");

    TempDir dir;
    EXPECT_EQ(loadTargets(dir.path(), read).outcome, SideFileLoad::Missing);
    EXPECT_FALSE(read.any());
}

TEST(TargetsFile, BrokenFilesAndRefusedSetsAreNotRead) {
    const struct {
        const char* what;
        const char* text;
        const char* says;
    } table[] = {
        {"not JSON", "{\"version\": 1", "Targets.json: not valid JSON: "},
        {"an unknown nutrient", R"({"version": 1, "sugar": {"grams": 20}})",
         "Targets.json: sugar: is not a field of this file"},
        {"both kinds", R"({"version": 1, "fat": {"grams": 20, "percent": 30}})",
         "Targets.json: fat: must hold either 'grams' or 'percent'"},
        {"neither kind", R"({"version": 1, "fat": {}})",
         "Targets.json: fat: must hold either 'grams' or 'percent'"},
        {"a kind unknown", R"({"version": 1, "fat": {"ounces": 2}})",
         "Targets.json: fat.ounces: is not a field of this file"},
        {"grams as text", R"({"version": 1, "fat": {"grams": "20"}})",
         "Targets.json: fat.grams: must be a number, not a string"},
        {"negative grams", R"({"version": 1, "protein": {"grams": -1}})",
         "Targets.json: Protein cannot be a negative number of grams."},
        {"shares short of the whole",
         R"({"version": 1, "protein": {"percent": 30}, "carbohydrate": {"percent": 30},
            "fat": {"percent": 30}})",
         "Targets.json: Protein, carbohydrate and fat add up to 90.0% of the food budget; as "
         "percentages they must add up to 100%."},
        {"fibre as a share", R"({"version": 1, "fiber": {"percent": 3}})",
         "Targets.json: Fiber is set in grams only"},
        {"a target twice", R"({"version": 1, "fat": {"grams": 1}, "fat": {"grams": 2}})",
         "Targets.json: fat: the field is given twice"},
    };
    for (const auto& c : table) {
        MacroTargets targets = someTargets();
        const StorageStatus status = parseTargets(c.text, targets);
        ASSERT_FALSE(status.ok()) << c.what;
        EXPECT_NE(status.message().find(c.says), std::string::npos)
            << c.what << ": " << status.message();
        EXPECT_EQ(targets, someTargets()) << c.what;
    }
}

}  // namespace
}  // namespace nutrovex
