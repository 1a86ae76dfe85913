#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "foods/CatalogueOps.h"
#include "storage/RecipeFile.h"
#include "ui/ScreenSession.h"
#include "ui/TextConvert.h"
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

}  // namespace
}  // namespace nutrovex
