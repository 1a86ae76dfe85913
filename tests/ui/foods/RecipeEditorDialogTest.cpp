#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "foods/CatalogueOps.h"
#include "foods/DayFoods.h"
#include "storage/RecipeFile.h"
#include "ui/ScreenSession.h"
#include "ui/TextConvert.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/RecipeEditorDialog.h"

namespace nutrovex {
namespace {

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

// A command of a screen by its text without the mnemonic.
QAction* commandOf(QWidget& screen, const QString& text) {
    for (QAction* a : screen.findChildren<QAction*>()) {
        if (QString(a->text()).remove(QLatin1Char('&')) == text) {
            return a;
        }
    }
    ADD_FAILURE() << "no command " << text.toStdString();
    return nullptr;
}

class RecipeEditorDialogTest : public test::ScreenSession {
protected:
    void SetUp() override {
        ScreenSession::SetUp();
        FoodCatalogue& c = session.catalogue();
        (void)addFoodItem(c, 5, addCategory(c, 5, "Bread"),
                          catalogueFood("Toast", {1, ServingUnit::Item, 0}, {70, 12, 1, 3, 1, 0}));
        FoodItem milk = catalogueFood("Milk", {1, ServingUnit::Cup, 0}, {150, 12, 0, 8, 8, 5});
        milk.setReference({244, ServingUnit::Gram, 0}, true);
        (void)addFoodItem(c, 1, addCategory(c, 1, "Milk"), milk);
    }

    // Chooses an entry by its text with the keyboard, as a person does.
    static void choose(QComboBox* combo, const QString& text) {
        const int index = combo->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(combo, Qt::Key_Down);
        }
        ASSERT_EQ(combo->currentText(), text);
    }
    static void typeInto(QLineEdit* edit, const QString& text) {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
};

// Milk toast for two, typed into the real editor: 2 slices of toast (140 cal, 6 g protein) and
// 122 g of milk, half a cup (75 cal, 4 g protein). Per serving 107.5 calories show as 108 and
// 5.0 g of protein; OK makes its food and writes Recipes.json.
TEST_F(RecipeEditorDialogTest, ADishTypedInShowsItsValuesAndIsSavedOnOk) {
    RecipeEditorDialog dialog(RecipeEditorForm::newRecipe(recipeShelf(session)), notifier, nullptr);
    dialog.show();
    QApplication::setActiveWindow(&dialog);

    typeInto(dialog.nameEdit(), QStringLiteral("Milk toast"));
    choose(dialog.groupList(), toQString(kFoodGroupNames[5]));
    typeInto(dialog.servingsEdit(), QStringLiteral("2"));

    choose(dialog.pickGroupList(), toQString(kFoodGroupNames[5]));
    EXPECT_EQ(dialog.pickFoodList()->currentText(), QStringLiteral("Toast"));
    QTest::mouseClick(dialog.addButton(), Qt::LeftButton);
    typeInto(dialog.amountEdit(), QStringLiteral("2"));

    choose(dialog.pickGroupList(), toQString(kFoodGroupNames[1]));
    QTest::mouseClick(dialog.addButton(), Qt::LeftButton);
    choose(dialog.unitList(), QStringLiteral("g"));
    typeInto(dialog.amountEdit(), QStringLiteral("122"));

    ASSERT_EQ(dialog.lineList()->count(), 2);
    EXPECT_EQ(dialog.lineList()->item(0)->text(), QStringLiteral("Toast, 2 item: 140 cal"));
    EXPECT_EQ(dialog.lineList()->item(1)->text(), QStringLiteral("Milk, 122 g: 75 cal"));
    EXPECT_EQ(dialog.valueLabel(0, kCalories)->text(), QStringLiteral("108"));
    EXPECT_EQ(dialog.valueLabel(0, kProtein)->text(), QStringLiteral("5.0"));
    EXPECT_EQ(dialog.valueLabel(1, kCalories)->text(), QStringLiteral("215"));
    EXPECT_EQ(dialog.valueLabel(1, kFat)->text(), QStringLiteral("6.0"));

    // A line removed and added back changes the totals live.
    dialog.lineList()->setCurrentRow(0);
    QTest::mouseClick(dialog.removeButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.valueLabel(1, kCalories)->text(), QStringLiteral("75"));
    choose(dialog.pickGroupList(), toQString(kFoodGroupNames[5]));
    QTest::mouseClick(dialog.addButton(), Qt::LeftButton);
    typeInto(dialog.amountEdit(), QStringLiteral("2"));
    EXPECT_EQ(dialog.valueLabel(0, kCalories)->text(), QStringLiteral("108"));

    QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    RecipeBook saved;
    ASSERT_TRUE(loadRecipes(session.store().userFolderPath, saved).status);
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(saved[0].name, "Milk toast");
    EXPECT_EQ(saved[0].servings, 2u);
    ASSERT_EQ(saved[0].ingredients.size(), 2u);
    EXPECT_EQ(saved[0].ingredients[0].food, "Milk");
    EXPECT_FLOAT_EQ(saved[0].ingredients[0].amount, 122.0f);
    EXPECT_EQ(saved[0].ingredients[0].unit, ServingUnit::Gram);
    ASSERT_TRUE(dialog.form().saved());
    EXPECT_FALSE(session.catalogueModified());  // the catalogue was written at once
}

// "Save as Recipe" of a day's list hands the meal's entries to the editor, and the catalogue's
// "Edit Recipe..." is offered on a recipe's food only and opens the real editor on it: four
// servings instead of two halve the food's values.
TEST_F(RecipeEditorDialogTest, AMealBecomesARecipeAndItsFoodIsEditedFromTheCatalogue) {
    DayRecord* day = session.days().ensureCurrentRecord();
    ASSERT_NE(day, nullptr);
    FoodItem toast = session.catalogue().groups[5][0].foods[0];
    toast.group = 5;
    toast.meal = 0;
    toast.setServing({2, ServingUnit::Item, 0});
    FoodItem milk = session.catalogue().groups[1][0].foods[0];
    milk.group = 1;
    milk.meal = 0;
    milk.setServing({122, ServingUnit::Gram, 0});
    FoodItem lunch = toast;
    lunch.meal = 1;
    for (const FoodItem& f : {toast, milk, lunch}) {
        ASSERT_NE(insertLoggedFood(*day, f, f.group, kSortByMeal), kNoPosition);
    }

    FoodOpeners openers;
    openers.newRecipe = [this](QWidget* parent, FoodList entries) -> std::optional<FoodPlace> {
        RecipeEditorDialog editor(
            RecipeEditorForm::newRecipe(recipeShelf(session),
                                        recipeFromEntries(session.catalogue(), entries)),
            notifier, parent);
        editor.show();
        typeInto(editor.nameEdit(), QStringLiteral("Milk toast"));
        typeInto(editor.servingsEdit(), QStringLiteral("2"));
        EXPECT_EQ(editor.lineList()->count(), 2);  // breakfast only
        QTest::mouseClick(editor.okButton(), Qt::LeftButton);
        return editor.form().saved();
    };
    FoodGridDialog grid(
        FoodGridForm(session.catalogue(), session.days(), session.foodRunState(), kAllFoodsGroup),
        notifier, nullptr, openers);
    grid.show();
    QAction* breakfast = nullptr;
    for (QAction* a : commandOf(grid, QStringLiteral("Save as Recipe"))->menu()->actions()) {
        if (a->text() == QStringLiteral("Breakfast...")) {
            breakfast = a;
        }
    }
    ASSERT_NE(breakfast, nullptr);
    breakfast->trigger();
    ASSERT_EQ(session.recipes().size(), 1u);
    const std::optional<FoodPlace> food =
        recipeFoodPlace(session.catalogue(), session.recipes()[0]);
    ASSERT_TRUE(food);
    const auto foodAt = [this, &food] {
        return session.catalogue()
            .groups[static_cast<std::size_t>(food->group)][food->category]
            .foods[food->item];
    };
    EXPECT_FLOAT_EQ(foodAt().nutrients[kCalories], 108.0f);

    CatalogueOpeners catalogueOpeners;
    catalogueOpeners.isRecipeFood = [this](const FoodPlace& place) {
        return RecipeEditorForm::isRecipeFood(recipeShelf(session), place);
    };
    catalogueOpeners.editRecipe = [this](QWidget* parent, const FoodPlace& place) {
        std::optional<RecipeEditorForm> form =
            RecipeEditorForm::editFood(recipeShelf(session), place);
        EXPECT_TRUE(form);
        RecipeEditorDialog editor(std::move(*form), notifier, parent);
        editor.show();
        EXPECT_EQ(editor.windowTitle(), QStringLiteral("Edit Recipe"));
        typeInto(editor.servingsEdit(), QStringLiteral("4"));
        EXPECT_EQ(editor.valueLabel(0, kCalories)->text(), QStringLiteral("54"));
        QTest::mouseClick(editor.okButton(), Qt::LeftButton);
        return editor.form().saved();
    };
    CatalogueDialog catalogue(
        CatalogueForm(session.catalogue(), session.days(), session.foodRunState()), notifier,
        nullptr, catalogueOpeners);
    catalogue.show();
    QAction* editRecipe = commandOf(catalogue, QStringLiteral("Edit Recipe..."));
    catalogue.selectPlace(TreePlace::ofFood(5, 0, 0));  // toast
    EXPECT_FALSE(editRecipe->isEnabled());
    catalogue.selectPlace(TreePlace::ofFood(food->group, food->category, food->item));
    ASSERT_TRUE(editRecipe->isEnabled());
    editRecipe->trigger();
    EXPECT_FLOAT_EQ(foodAt().nutrients[kCalories], 54.0f);  // 215 / 4 = 53.75
    EXPECT_EQ(session.recipes()[0].servings, 4u);
}

}  // namespace
}  // namespace nutrovex
