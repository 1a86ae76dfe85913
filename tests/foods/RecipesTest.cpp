#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "FoodTestUtil.h"
#include "core/FoodCatalogue.h"
#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "foods/FoodFields.h"
#include "foods/Recipes.h"

namespace nutrovex {
namespace {

constexpr ServingUnit kCup = ServingUnit::Cup;
constexpr ServingUnit kTbsp = ServingUnit::Tablespoon;
constexpr ServingUnit kGram = ServingUnit::Gram;
constexpr ServingUnit kItem = ServingUnit::Item;

FoodItem catalogueFood(const char* name, ServingQuantity serving, Nutrients values) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setReference(serving);
    f.setServing(serving);
    for (int n = 0; n < kNutrientCount; ++n) {
        f.setNutrient(n, values[static_cast<std::size_t>(n)]);
    }
    return f;
}

void addFood(FoodCatalogue& c, int group, const char* category, FoodItem food) {
    Position pos = findCategory(c, group, category);
    if (pos == kNoPosition) {
        pos = addCategory(c, group, category);
    }
    ASSERT_NE(addFoodItem(c, group, pos, food), kNoPosition);
}

// Values per reference serving: calories, carbohydrate, fiber, protein, fat, saturated fat.
FoodCatalogue kitchen() {
    FoodCatalogue c;
    addFood(c, 5, "Flour",
            catalogueFood("Wheat flour", {100, kGram, 0}, {364, 76.3f, 2.7f, 10.3f, 1.0f, 0.2f}));
    // Served by the cup, and weighed too: a cup is 244 g.
    FoodItem milk = catalogueFood("Milk, whole", {1, kCup, 0}, {103, 12.2f, 0, 8.0f, 2.4f, 1.5f});
    milk.setReference({244, kGram, 0}, true);
    addFood(c, 1, "Milk", milk);
    addFood(c, 2, "Eggs", catalogueFood("Egg", {1, kItem, 0}, {72, 0.4f, 0, 6.3f, 4.8f, 1.6f}));
    // Per 100 g, and 100 g fill half a cup.
    FoodItem sugar = catalogueFood("Sugar", {100, kGram, 0}, {387, 100, 0, 0, 0, 0});
    sugar.setReference({0.5f, kCup, 0}, true);
    addFood(c, 0, "Sugars", sugar);
    return c;
}

Recipe pancakes() {
    Recipe r;
    r.name = "Pancakes";
    r.group = 5;
    r.servings = 4;
    r.ingredients = {{5, "Flour", "Wheat flour", 250, kGram},
                     {1, "Milk", "Milk, whole", 366, kGram},  // a cup food weighed
                     {2, "Eggs", "Egg", 2, kItem},
                     {0, "Sugars", "Sugar", 1, kTbsp}};  // a weighed food by the spoon
    return r;
}

const FoodItem& foodAtPlace(const FoodCatalogue& c, const FoodPlace& p) {
    return c.groups[static_cast<std::size_t>(p.group)][p.category].foods[p.item];
}

void expectValues(const Nutrients& actual, const Nutrients& expected, const char* what) {
    for (int n = 0; n < kNutrientCount; ++n) {
        EXPECT_FLOAT_EQ(actual[static_cast<std::size_t>(n)], expected[static_cast<std::size_t>(n)])
            << what << ", nutrient " << n;
    }
}

// By hand: flour 250 g of a 100 g serving is 2.5 servings; milk 366 g of a cup of 244 g is 1.5
// cups; 2 eggs; a tablespoon of sugar is 1/8 of its half cup (4 fl oz, 8 tbsp) of 100 g.
TEST(Recipes, ADishIsItsIngredientsAsLoggedDividedByItsServings) {
    const FoodCatalogue c = kitchen();
    const RecipeDish dish = measureRecipe(c, pancakes());
    ASSERT_TRUE(dish.complete());
    ASSERT_EQ(dish.ingredients.size(), 4u);
    expectValues(dish.ingredients[0].values, {910, 190.75f, 6.75f, 25.75f, 2.5f, 0.5f}, "flour");
    expectValues(dish.ingredients[1].values, {154.5f, 18.3f, 0, 12, 3.6f, 2.25f}, "milk");
    expectValues(dish.ingredients[2].values, {144, 0.8f, 0, 12.6f, 9.6f, 3.2f}, "eggs");
    expectValues(dish.ingredients[3].values, {48.375f, 12.5f, 0, 0, 0, 0}, "sugar");
    expectValues(dish.whole, {1256.875f, 222.35f, 6.75f, 50.35f, 15.7f, 5.95f}, "the dish");
    // 314.2 cal, 55.59 g, 1.69 g, 12.59 g, 3.93 g, 1.49 g: whole calories, tenths of grams.
    expectValues(dish.perServing, {314, 55.6f, 1.7f, 12.6f, 3.9f, 1.5f}, "a serving");
}

TEST(Recipes, ARecipeBecomesAFoodOfTheCategoryRecipes) {
    FoodCatalogue c = kitchen();
    RecipeBook book;
    const uint32_t counter = c.header.keyCounter.value;
    const RecipeSaveResult saved = saveRecipe(c, book, pancakes(), RecipeSaveMode::New);
    ASSERT_TRUE(saved.ok()) << saved.problem->text;
    EXPECT_TRUE(saved.notices.catalogue);
    EXPECT_TRUE(saved.notices.recipes);
    ASSERT_EQ(book.size(), 1u);
    EXPECT_EQ(book[0], pancakes());

    const Position recipes = findCategory(c, 5, "Recipes");
    ASSERT_NE(recipes, kNoPosition);
    EXPECT_EQ(saved.place, (FoodPlace{5, recipes, 0}));
    const FoodItem& food = foodAtPlace(c, saved.place);
    EXPECT_EQ(food.name, "Pancakes");
    EXPECT_EQ(food.text2, "Pancakes");
    EXPECT_EQ(food.group, 5);
    EXPECT_EQ(food.loggedFlag, 1);
    EXPECT_EQ(food.serving, (ServingQuantity{1, kItem, 0}));
    EXPECT_EQ(food.ref2, (ServingQuantity{1, kItem, 0}));
    EXPECT_EQ(food.ref1, ServingQuantity{});
    EXPECT_FLOAT_EQ(food.ratio, 1.0f);
    expectValues(food.nutrients, {314, 55.6f, 1.7f, 12.6f, 3.9f, 1.5f}, "the food");
    // The category and the food took the catalogue's next two keys.
    EXPECT_EQ(c.header.keyCounter.value, counter + 2);
    EXPECT_EQ(food.key.value, counter + 2);
    EXPECT_EQ(saved.food.key, food.key);
    // It is logged like any food: one serving is one item.
    EXPECT_EQ(loggingUnits(food), std::vector<ServingUnit>{kItem});
}

TEST(Recipes, EditingMakesTheFoodAgainUnderAFreshKey) {
    FoodCatalogue c = kitchen();
    RecipeBook book;
    ASSERT_TRUE(saveRecipe(c, book, pancakes(), RecipeSaveMode::New).ok());
    Recipe halved = pancakes();
    halved.servings = 2;
    halved.name = "  Pancakes ";  // the editors strip blanks
    const RecipeSaveResult edited = saveRecipe(c, book, halved, RecipeSaveMode::Edit, "Pancakes");
    ASSERT_TRUE(edited.ok()) << edited.problem->text;
    ASSERT_EQ(c.groups[5][edited.place.category].foods.size(), 1u);
    const FoodItem& food = foodAtPlace(c, edited.place);
    // 628.4 cal, 111.2 g, 3.4 g, 25.2 g, 7.85 g, 2.98 g.
    expectValues(food.nutrients, {628, 111.2f, 3.4f, 25.2f, 7.9f, 3.0f}, "two servings");
    EXPECT_EQ(food.key.value, c.header.keyCounter.value);
    ASSERT_EQ(book.size(), 1u);
    EXPECT_EQ(book[0].servings, 2u);
    EXPECT_EQ(book[0].name, "Pancakes");

    // The tool's make-or-update finds it by its name.
    Recipe more = pancakes();
    more.ingredients.pop_back();
    ASSERT_TRUE(saveRecipe(c, book, more, RecipeSaveMode::MakeOrUpdate).ok());
    EXPECT_EQ(book.size(), 1u);
    EXPECT_EQ(book[0].ingredients.size(), 3u);
}

TEST(Recipes, ARenamedOrMovedRecipeTakesItsFoodAlong) {
    FoodCatalogue c = kitchen();
    RecipeBook book;
    ASSERT_TRUE(saveRecipe(c, book, pancakes(), RecipeSaveMode::New).ok());

    Recipe renamed = pancakes();
    renamed.name = "Hotcakes";
    const RecipeSaveResult r = saveRecipe(c, book, renamed, RecipeSaveMode::Edit, "Pancakes");
    ASSERT_TRUE(r.ok()) << r.problem->text;
    const Position recipes5 = findCategory(c, 5, "Recipes");
    ASSERT_EQ(c.groups[5][recipes5].foods.size(), 1u);
    EXPECT_EQ(c.groups[5][recipes5].foods[0].name, "Hotcakes");
    EXPECT_EQ(findRecipe(book, "Pancakes"), nullptr);

    Recipe moved = renamed;
    moved.group = 7;
    const RecipeSaveResult m = saveRecipe(c, book, moved, RecipeSaveMode::Edit, "Hotcakes");
    ASSERT_TRUE(m.ok()) << m.problem->text;
    EXPECT_TRUE(c.groups[5][recipes5].foods.empty());
    EXPECT_EQ(m.place.group, 7);
    EXPECT_EQ(foodAtPlace(c, m.place).name, "Hotcakes");
    EXPECT_EQ(foodAtPlace(c, m.place).group, 7);
    EXPECT_EQ(recipeFoodPlace(c, book[0]), m.place);

    const Notices gone = deleteRecipe(c, book, "Hotcakes");
    EXPECT_TRUE(gone.recipes && gone.catalogue);
    EXPECT_TRUE(book.empty());
    EXPECT_TRUE(c.groups[7][m.place.category].foods.empty());
    EXPECT_FALSE(deleteRecipe(c, book, "Hotcakes").any());
}

TEST(Recipes, AMissingIngredientLeavesTheFoodAsItWasAndIsNamed) {
    FoodCatalogue c = kitchen();
    RecipeBook book;
    const RecipeSaveResult saved = saveRecipe(c, book, pancakes(), RecipeSaveMode::New);
    ASSERT_TRUE(saved.ok());
    const FoodItem before = foodAtPlace(c, saved.place);

    // The egg is deleted and the milk renamed in the catalogue.
    const Position eggs = findCategory(c, 2, "Eggs");
    ASSERT_TRUE(deleteFoodItem(c, 2, eggs, 0));
    const Position milk = findCategory(c, 1, "Milk");
    ASSERT_NE(renameFoodItem(c, 1, milk, 0, "Whole milk"), kNoPosition);

    const RecipeStatus status = recipeStatus(c, book[0]);
    ASSERT_TRUE(status.food.has_value());
    ASSERT_EQ(status.problems.size(), 2u);
    EXPECT_EQ(status.problems[0].field, RecipeField::Ingredient);
    EXPECT_EQ(status.problems[0].ingredient, 1u);
    EXPECT_EQ(status.problems[0].text,
              "ingredient 2 ('Milk, whole'): the category 'Milk' of 'Milk, Yogurt, Cheese' has no "
              "food 'Milk, whole'");
    EXPECT_EQ(status.problems[1].text,
              "ingredient 3 ('Egg'): the category 'Eggs' of 'Meat, Poultry, Fish, Eggs' has no "
              "food 'Egg'");
    EXPECT_TRUE(sameFood(foodAtPlace(c, *status.food), before));

    // Making it again is refused with the first of them, and changes nothing.
    const uint64_t revision = c.revision;
    Recipe again = pancakes();
    again.servings = 3;
    const RecipeSaveResult refused = saveRecipe(c, book, again, RecipeSaveMode::Edit, "Pancakes");
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.problem->text, status.problems[0].text);
    EXPECT_EQ(c.revision, revision);
    EXPECT_EQ(book[0], pancakes());

    // A missing category is named as such.
    Recipe noCategory = pancakes();
    noCategory.ingredients[0].category = "Flours";
    EXPECT_EQ(measureRecipe(c, noCategory).firstProblem()->text,
              "ingredient 1 ('Wheat flour'): the group 'Bread, Cereal, Rice, Pasta' has no "
              "category 'Flours'");
}

TEST(Recipes, RefusalsNameTheFieldAndChangeNothing) {
    const auto with = [](auto change) {
        Recipe r = pancakes();
        change(r);
        return r;
    };
    const struct {
        const char* what;
        Recipe recipe;
        RecipeSaveMode mode;
        RecipeField field;
        const char* text;
    } table[] = {
        {"an empty name", with([](Recipe& r) { r.name = "   "; }), RecipeSaveMode::New,
         RecipeField::Name, "the name is empty"},
        {"a long name", with([](Recipe& r) {
             r.name = "Pancakes with syrup!";
             r.name += "!";
         }),
         RecipeSaveMode::New, RecipeField::Name,
         "the name 'Pancakes with syrup!!' is longer than 20 characters"},
        {"no servings", with([](Recipe& r) { r.servings = 0; }), RecipeSaveMode::New,
         RecipeField::Servings, "the servings must be a whole number from 1 to 1000"},
        {"no ingredients", with([](Recipe& r) { r.ingredients.clear(); }), RecipeSaveMode::New,
         RecipeField::Ingredients, "the recipe has no ingredients"},
        {"an amount of nothing", with([](Recipe& r) { r.ingredients[2].amount = 0.004f; }),
         RecipeSaveMode::New, RecipeField::Ingredient,
         "ingredient 3 ('Egg'): the amount must be from 0.005 to 10000"},
        {"a unit the food has no reference for",
         with([](Recipe& r) { r.ingredients[0].unit = kCup; }), RecipeSaveMode::New,
         RecipeField::Ingredient,
         "ingredient 1 ('Wheat flour'): 'Wheat flour' cannot be measured in cup, only in oz, lbs, "
         "g, kg"},
        {"one serving too rich", with([](Recipe& r) {
             r.servings = 1;
             r.ingredients[0].amount = 3000;
         }),
         RecipeSaveMode::New, RecipeField::Servings,
         "one serving holds 11267 calories, more than a food can (10000); make more servings"},
        {"its own food", with([](Recipe& r) {
             r.ingredients.push_back({5, "Recipes", "Pancakes", 1, kItem});
         }),
         RecipeSaveMode::New, RecipeField::Ingredient,
         "ingredient 5 ('Pancakes'): a recipe cannot hold its own food"},
        {"a food of the name in Recipes", with([](Recipe& r) { r.name = "Waffles"; }),
         RecipeSaveMode::New, RecipeField::Name,
         "'Waffles' is already a food of the category 'Recipes' of 'Bread, Cereal, Rice, Pasta'"},
        {"a recipe of the name", with([](Recipe& r) { r.name = "Toast"; }), RecipeSaveMode::New,
         RecipeField::Name, "there is already a recipe named 'Toast'"},
        {"editing what is not there", pancakes(), RecipeSaveMode::Edit, RecipeField::Name,
         "there is no recipe named 'Crumpets'"},
    };
    for (const auto& c : table) {
        FoodCatalogue catalogue = kitchen();
        RecipeBook book;
        Recipe toast = pancakes();
        toast.name = "Toast";
        ASSERT_TRUE(saveRecipe(catalogue, book, toast, RecipeSaveMode::New).ok());
        // A food typed into the category by hand, not a recipe.
        addFood(catalogue, 5, "Recipes", catalogueFood("Waffles", {1, kItem, 0}, {}));
        const uint64_t revision = catalogue.revision;
        const uint32_t counter = catalogue.header.keyCounter.value;
        const RecipeBook bookBefore = book;

        const RecipeSaveResult r = saveRecipe(catalogue, book, c.recipe, c.mode, "Crumpets");
        ASSERT_FALSE(r.ok()) << c.what;
        EXPECT_EQ(r.problem->field, c.field) << c.what;
        EXPECT_EQ(r.problem->text, c.text) << c.what;
        EXPECT_FALSE(r.notices.any()) << c.what;
        EXPECT_EQ(catalogue.revision, revision) << c.what;
        EXPECT_EQ(catalogue.header.keyCounter.value, counter) << c.what;
        EXPECT_EQ(book, bookBefore) << c.what;
    }
}

TEST(Recipes, TheCatalogueLimitsHoldForRecipesToo) {
    FoodCatalogue full = kitchen();
    RecipeBook book;
    for (int i = 0; i < 100; ++i) {
        addFood(full, 5, "Recipes",
                catalogueFood(("Dish " + std::to_string(i)).c_str(), {1, kItem, 0}, {}));
    }
    const RecipeSaveResult noRoom = saveRecipe(full, book, pancakes(), RecipeSaveMode::New);
    ASSERT_FALSE(noRoom.ok());
    EXPECT_EQ(noRoom.problem->field, RecipeField::Group);
    EXPECT_EQ(noRoom.problem->text,
              "the category 'Recipes' of 'Bread, Cereal, Rice, Pasta' already holds 100 food "
              "items");

    FoodCatalogue crowded = kitchen();
    while (crowded.groups[3].size() < kMaxCategoriesPerGroup) {
        ASSERT_NE(addCategory(crowded, 3, "Category " + std::to_string(crowded.groups[3].size())),
                  kNoPosition);
    }
    Recipe soup = pancakes();
    soup.group = 3;
    const RecipeSaveResult noCategory = saveRecipe(crowded, book, soup, RecipeSaveMode::New);
    ASSERT_FALSE(noCategory.ok());
    EXPECT_EQ(noCategory.problem->text,
              "the group 'Vegetables' already holds 250 categories, none of them 'Recipes'");
    EXPECT_TRUE(book.empty());
}

TEST(Recipes, AMealBecomesTheIngredientsOfADraft) {
    const FoodCatalogue c = kitchen();
    FoodItem milk = test::loggedFood("Milk, whole", 0, 1, 7, 154.5f);
    milk.setServing({366, kGram, 0});
    FoodItem eggs = test::loggedFood("Egg", 0, 2, 8, 144, 2);
    FoodItem tea = test::loggedFood("Tea", 0, 6, 9, 2);
    FoodItem flourByCup = test::loggedFood("Wheat flour", 0, 5, 10, 455);
    flourByCup.setServing({1, kCup, 0});
    // Logged in another group than the catalogue keeps it in.
    FoodItem sugar = test::loggedFood("Sugar", 0, 7, 11, 48);
    sugar.setServing({1, kTbsp, 0});

    const std::vector<FoodItem> entries = {milk, eggs, tea, flourByCup, sugar};
    const RecipeDraft draft = recipeFromEntries(c, entries);
    EXPECT_EQ(draft.recipe.group, 1);
    EXPECT_EQ(draft.recipe.servings, 1u);
    EXPECT_TRUE(draft.recipe.name.empty());
    EXPECT_EQ(draft.recipe.ingredients,
              (std::vector<RecipeIngredient>{{1, "Milk", "Milk, whole", 366, kGram},
                                             {2, "Eggs", "Egg", 2, kItem},
                                             {0, "Sugars", "Sugar", 1, kTbsp}}));
    EXPECT_EQ(draft.leftOut,
              (std::vector<std::string>{
                  "'Tea': no food of that name is in the catalogue",
                  "'Wheat flour': 'Wheat flour' cannot be measured in cup, only in oz, lbs, g, "
                  "kg"}));

    // Named, it is saved as any recipe.
    FoodCatalogue catalogue = kitchen();
    RecipeBook book;
    Recipe named = draft.recipe;
    named.name = "Breakfast";
    const RecipeSaveResult saved = saveRecipe(catalogue, book, named, RecipeSaveMode::New);
    ASSERT_TRUE(saved.ok()) << saved.problem->text;
    // 154.5 + 144 + 48.375 calories.
    EXPECT_FLOAT_EQ(foodAtPlace(catalogue, saved.place).nutrients[kCalories], 347.0f);
}

}  // namespace
}  // namespace nutrovex
