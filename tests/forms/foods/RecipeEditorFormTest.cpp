#include <gtest/gtest.h>

#include "foods/CatalogueOps.h"
#include "forms/foods/RecipeEditorForm.h"

namespace nutrovex {
namespace {

using Command = RecipeEditorForm::Command;
using Field = RecipeEditorForm::Field;

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

// Toast by the slice (group 5, "Bread"), milk by the cup and weighed (a cup is 244 g; group 1,
// "Milk").
class RecipeEditorFormTest : public ::testing::Test {
protected:
    RecipeEditorFormTest() {
        const Position bread = addCategory(catalogue, 5, "Bread");
        (void)addFoodItem(
            catalogue, 5, bread,
            catalogueFood("Toast", {1, ServingUnit::Item, 0}, {70, 12, 1, 3, 1, 0.2f}));
        const Position milkCategory = addCategory(catalogue, 1, "Milk");
        FoodItem milk = catalogueFood("Milk", {1, ServingUnit::Cup, 0}, {150, 12, 0, 8, 8, 5});
        milk.setReference({244, ServingUnit::Gram, 0}, true);
        (void)addFoodItem(catalogue, 1, milkCategory, milk);
    }

    RecipeShelf shelf(std::string failure = {}) {
        return {&catalogue, &book, &finder, std::move(failure)};
    }

    // Picks a food in the catalogue lists and adds it in the amount and unit.
    static void add(RecipeEditorForm& f, const char* group, const char* category, const char* food,
                    const char* amount, const char* unit) {
        (void)f.edit(Field::PickGroup, group);
        (void)f.edit(Field::PickCategory, category);
        (void)f.edit(Field::PickFood, food);
        (void)f.command(Command::Add);
        (void)f.edit(Field::Amount, amount);
        (void)f.edit(Field::Unit, unit);
    }

    // Milk and toast for two: 2 slices (140 cal) and 122 g of milk, half a cup (75 cal).
    RecipeEditorForm milkToast() {
        RecipeEditorForm f = RecipeEditorForm::newRecipe(shelf());
        (void)f.edit(Field::Name, " Milk toast ");
        (void)f.edit(Field::Group, kFoodGroupNames[5]);
        (void)f.edit(Field::Servings, "2");
        add(f, kFoodGroupNames[5], "Bread", "Toast", "2", "item");
        add(f, kFoodGroupNames[1], "Milk", "Milk", "122", "g");
        return f;
    }

    FoodCatalogue catalogue;
    RecipeBook book;
    FoodFinder finder;
};

TEST_F(RecipeEditorFormTest, LiveTotalsPerServingAndWholeThenSaveMakesTheFood) {
    RecipeEditorForm f = milkToast();
    const RecipeEditorView v = f.view();
    EXPECT_EQ(v.caption, "New Recipe");
    EXPECT_EQ(v.lines, (std::vector<std::string>{"Toast, 2 item: 140 cal", "Milk, 122 g: 75 cal"}));
    EXPECT_EQ(v.selected, 1);
    EXPECT_EQ(v.amount, "122");
    // Whole: 215 cal, 30 g carbohydrate, 2 g fibre, 10 g protein, 6 g fat, 2.9 g saturated.
    EXPECT_EQ(v.whole, (std::array<std::string, kNutrientCount>{"215", "30.0", "2.0", "10.0", "6.0",
                                                                "2.9"}));
    // Per serving: 107.5 calories round up; grams to a tenth, halves away from zero.
    EXPECT_EQ(v.perServing,
              (std::array<std::string, kNutrientCount>{"108", "15.0", "1.0", "5.0", "3.0", "1.5"}));
    EXPECT_TRUE(v.problems.empty());

    const Outcome saved = f.command(Command::Save);
    ASSERT_FALSE(saved.message) << saved.message->text;
    EXPECT_TRUE(saved.notices.catalogue);
    EXPECT_TRUE(saved.notices.recipes);
    EXPECT_EQ(saved.save, SavePoint::Catalogue);
    ASSERT_EQ(book.size(), 1u);
    EXPECT_EQ(book[0].name, "Milk toast");
    ASSERT_TRUE(f.saved());
    const FoodItem& food = catalogue.groups[5][f.saved()->category].foods[f.saved()->item];
    EXPECT_EQ(catalogue.groups[5][f.saved()->category].name.view(), "Recipes");
    EXPECT_EQ(food.name.view(), "Milk toast");
    EXPECT_FLOAT_EQ(food.nutrients[kCalories], 108.0f);
    EXPECT_FLOAT_EQ(food.nutrients[kProtein], 5.0f);
    EXPECT_EQ(f.view().caption, "Edit Recipe");

    // Its food opens the same recipe again; another food of the catalogue is no recipe's.
    EXPECT_TRUE(RecipeEditorForm::isRecipeFood(shelf(), *f.saved()));
    EXPECT_FALSE(RecipeEditorForm::isRecipeFood(shelf(), {5, 0, 0}));
    const std::optional<RecipeEditorForm> again = RecipeEditorForm::editFood(shelf(), *f.saved());
    ASSERT_TRUE(again);
    EXPECT_EQ(again->view().servings, "2");
    EXPECT_EQ(again->view().lines.size(), 2u);
}

TEST_F(RecipeEditorFormTest, RefusalsNameTheFieldAndChangeNothing) {
    struct Case {
        Field field;
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {Field::Name, "", "The recipe cannot be saved: "},
        {Field::Servings, "0",
         "The recipe cannot be saved: the servings are a whole number from 1 to 1000."},
        {Field::Amount, "", "The recipe cannot be saved: ingredient 2 ('Milk'): type its amount."},
    };
    for (const Case& c : cases) {
        RecipeEditorForm f = milkToast();
        (void)f.edit(c.field, c.text);
        const Outcome refused = f.command(Command::Save);
        ASSERT_TRUE(refused.message) << c.message;
        EXPECT_EQ(refused.message->text.rfind(c.message, 0), 0u) << refused.message->text;
        EXPECT_EQ(refused.message->caption, "Recipe");
        EXPECT_TRUE(book.empty());
        EXPECT_EQ(findCategory(catalogue, 5, "Recipes"), kNoPosition);
    }
}

TEST_F(RecipeEditorFormTest, AMissingIngredientIsNamedAndRemovingItLetsTheRecipeSave) {
    RecipeEditorForm made = milkToast();
    ASSERT_FALSE(made.command(Command::Save).message);
    ASSERT_TRUE(deleteFoodItem(catalogue, 1, 0, 0));  // the milk goes

    std::optional<RecipeEditorForm> f = RecipeEditorForm::editFood(shelf(), *made.saved());
    ASSERT_TRUE(f);
    const RecipeEditorView v = f->view();
    EXPECT_EQ(v.lines[1], "Milk, 122 g: cannot be measured");
    ASSERT_EQ(v.problems.size(), 1u);
    EXPECT_EQ(v.problems[0],
              "ingredient 2 ('Milk'): the category 'Milk' of 'Milk, Yogurt, Cheese' has no food "
              "'Milk'");
    const Outcome refused = f->command(Command::Save);
    ASSERT_TRUE(refused.message);
    EXPECT_NE(refused.message->text.find("has no food 'Milk'"), std::string::npos);

    f->selectLine(1);
    (void)f->command(Command::Remove);
    EXPECT_EQ(f->view().lines.size(), 1u);
    EXPECT_FALSE(f->command(Command::Save).message);
    EXPECT_EQ(book[0].ingredients.size(), 1u);
}

TEST_F(RecipeEditorFormTest, AMealDraftShowsWhatWasLeftOut) {
    FoodItem toast = catalogue.groups[5][0].foods[0];
    toast.group = 5;
    toast.setServing({3, ServingUnit::Item, 0});
    FoodItem tea;
    tea.name = "Tea";
    tea.group = 6;
    const FoodItem entries[] = {toast, tea};
    RecipeEditorForm f =
        RecipeEditorForm::newRecipe(shelf(), recipeFromEntries(catalogue, entries));
    const RecipeEditorView v = f.view();
    EXPECT_EQ(v.lines, std::vector<std::string>{"Toast, 3 item: 210 cal"});
    EXPECT_EQ(v.group, 5);
    EXPECT_EQ(v.leftOut,
              std::vector<std::string>{"'Tea': no food of that name is in the catalogue"});
}

TEST_F(RecipeEditorFormTest, RecipesNotReadWholeAreNeverSaved) {
    RecipeEditorForm f = RecipeEditorForm::newRecipe(shelf("Recipes.json: byte 3: not JSON"));
    add(f, kFoodGroupNames[5], "Bread", "Toast", "2", "item");
    (void)f.edit(Field::Name, "Toast");
    const RecipeEditorView v = f.view();
    EXPECT_FALSE(v.canSave);
    EXPECT_NE(v.notice.find("Recipes.json: byte 3: not JSON"), std::string::npos);
    EXPECT_EQ(f.command(Command::Save), Outcome{});
    EXPECT_TRUE(book.empty());
    EXPECT_EQ(findCategory(catalogue, 5, "Recipes"), kNoPosition);
}

}  // namespace
}  // namespace nutrovex
