#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "foods/DayFoods.h"
#include "foods/FoodCsv.h"
#include "ui/ScreenSession.h"
#include "ui/catalogue/CFoodTreeCtrl.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/catalogue/CatalogueTreeModel.h"
#include "ui/foods/CFoodGridCtrl.h"
#include "ui/foods/FindFoodDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/FoodItemDialog.h"

namespace nutrovex {
namespace {

// Group 5 holds "Bagels" (Plain, Sesame) and "Cereal" (Oats).
class CatalogueDialogTest : public test::ScreenSession {
protected:
    void SetUp() override {
        ScreenSession::SetUp();
        FoodCatalogue& c = session.catalogue();
        const Position bagels = addCategory(c, 5, "Bagels");
        for (const char* n : {"Plain", "Sesame"}) {
            FoodItem f;
            f.name = n;
            f.text2 = n;
            f.serving = {1.0f, ServingUnit::Pinch, 0};
            f.setReference(f.serving);
            f.setNutrient(kCalories, 250.0f);
            ASSERT_NE(addFoodItem(c, 5, bagels, f), kNoPosition);
        }
        FoodItem oats;
        oats.name = "Oats";
        oats.text2 = "Oats";
        ASSERT_NE(addFoodItem(c, 5, addCategory(c, 5, "Cereal"), oats), kNoPosition);
        ASSERT_TRUE(session.saveCatalogue().ok());
    }

    std::unique_ptr<CatalogueDialog> open(QWidget* over = nullptr) {
        auto dialog = std::make_unique<CatalogueDialog>(
            CatalogueForm(session.catalogue(), session.days(), session.foodRunState()), notifier,
            over);
        dialog->setMessagePresenter(presenter());
        dialog->show();
        QApplication::setActiveWindow(dialog.get());
        QApplication::processEvents();
        return dialog;
    }

    static QAction* action(QWidget& dialog, const char* text) {
        for (QAction* a : dialog.findChildren<QAction*>()) {
            if (a->text() == QString::fromLatin1(text) && a->isVisible()) {
                return a;
            }
        }
        return nullptr;
    }

    static QLineEdit* labelEditor() {
        return qobject_cast<QLineEdit*>(QApplication::focusWidget());
    }

    // The catalogue file as it is on disk now.
    std::string savedBytes() {
        std::ifstream saved(session.catalogue().filePath, std::ios::binary);
        return {std::istreambuf_iterator<char>(saved), std::istreambuf_iterator<char>()};
    }

    int categoryRows(CFoodTreeCtrl& tree, int group) {
        auto* model = static_cast<CatalogueTreeModel*>(tree.model());
        return model->rowCount(model->indexOf(TreePlace::ofGroup(group)));
    }
};

TEST_F(CatalogueDialogTest, ADuplicateNameIsRefusedTheEditorReopensAndTheRenameIsSavedAtOnce) {
    auto dialog = open();
    CFoodTreeCtrl& tree = *dialog->tree();
    tree.selectPlace(TreePlace::ofFood(5, 0, 0));  // "Plain"
    QTest::keyClick(&tree, Qt::Key_F2);
    QLineEdit* editor = labelEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->maxLength(), 21);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Sesame"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();

    ASSERT_EQ(messageTexts(), std::vector<std::string>{"You entered a duplicate or invalid name."});
    EXPECT_EQ(messages.back().caption, "Rename Food");
    EXPECT_TRUE(tree.editing());
    EXPECT_EQ(tree.currentPlace(), TreePlace::ofFood(5, 0, 0));
    EXPECT_FALSE(session.catalogueModified());

    // The reopened editor takes a free name: the food moves to its place and stays selected.
    editor = labelEditor();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Zesty"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(tree.currentPlace(), TreePlace::ofFood(5, 0, 1));
    EXPECT_EQ(tree.currentIndex().data().toString(), QStringLiteral("Zesty"));
    EXPECT_EQ(tree.model()->index(0, 0, tree.currentIndex().parent()).data().toString(),
              QStringLiteral("Sesame"));

    // The rename is on disk while the screen is still open, as every other screen's changes are.
    EXPECT_FALSE(session.catalogueModified());
    const std::string bytes = savedBytes();
    EXPECT_NE(bytes.find("Zesty"), std::string::npos);
    EXPECT_EQ(bytes.find("Plain"), std::string::npos);

    // OK closes the screen and has nothing left to write.
    for (QPushButton* b : dialog->findChildren<QPushButton*>()) {
        if (b->text() == QStringLiteral("OK")) {
            QTest::mouseClick(b, Qt::LeftButton);
        }
    }
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(savedBytes(), bytes);
}

TEST_F(CatalogueDialogTest, APastedCategoryInAGroupThatHasItsNameBecomesName1) {
    auto dialog = open();
    CFoodTreeCtrl& tree = *dialog->tree();
    tree.selectPlace(TreePlace::ofGroup(5));
    // A group's menu: nothing held to paste, no "Food Item", "All Categories" to delete.
    ASSERT_NE(action(*dialog, "&Paste"), nullptr);
    EXPECT_FALSE(action(*dialog, "&Paste")->isEnabled());
    EXPECT_FALSE(action(*dialog, "Cu&t")->isEnabled());
    EXPECT_EQ(action(*dialog, "&Food Item"), nullptr);
    ASSERT_NE(action(*dialog, "&All Categories"), nullptr);

    tree.selectPlace(TreePlace::ofCategory(5, 0));
    EXPECT_NE(action(*dialog, "&Food Item"), nullptr);
    EXPECT_EQ(action(*dialog, "&All Categories"), nullptr);
    QTest::keyClick(&tree, Qt::Key_C, Qt::ControlModifier);
    tree.selectPlace(TreePlace::ofGroup(5));
    EXPECT_TRUE(action(*dialog, "&Paste")->isEnabled());
    QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);

    EXPECT_EQ(tree.currentIndex().data().toString(), QStringLiteral("Bagels1"));
    EXPECT_EQ(categoryRows(tree, 5), 3);
    tree.expand(tree.currentIndex());
    EXPECT_EQ(tree.model()->rowCount(tree.currentIndex()), 2);  // its foods came along
    EXPECT_FALSE(session.catalogueModified());                  // saved at once
    EXPECT_NE(savedBytes().find("Bagels1"), std::string::npos);

    // Cut from the menu removes the node; the group's node is selected in its place.
    tree.selectPlace(TreePlace::ofCategory(5, 1));
    action(*dialog, "Cu&t")->trigger();
    EXPECT_EQ(categoryRows(tree, 5), 2);
    EXPECT_EQ(tree.currentPlace(), TreePlace::ofGroup(5));
}

TEST_F(CatalogueDialogTest, EnterOnAFoodLogsItIntoTodayAndTheFoodGridBeneathSelectsIt) {
    // The catalogue opened from the day's bread grid, as Log Food's Options do.
    FoodGridDialog grid(
        FoodGridForm(session.catalogue(), session.days(), session.foodRunState(), 5), notifier,
        nullptr);
    grid.show();
    auto dialog = open(&grid);
    CFoodTreeCtrl& tree = *dialog->tree();

    // Enter on a category only opens or closes it.
    tree.selectPlace(TreePlace::ofCategory(5, 0));
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_EQ(session.days().currentRecord(), nullptr);

    // On a food it opens the food's screen; OK there logs one serving into today.
    bool asked = false;
    test::whenModal<FoodItemDialog>([&asked](FoodItemDialog* food) {
        asked = true;
        QTest::mouseClick(food->okButton(), Qt::LeftButton);
    });
    tree.selectPlace(TreePlace::ofFood(5, 0, 1));
    QTest::keyClick(&tree, Qt::Key_Return);
    EXPECT_TRUE(asked);
    const DayRecord* today = session.days().currentRecord();
    ASSERT_NE(today, nullptr);
    // No second grid opens: the one beneath shows the new entry, selected.
    int grids = 0;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        grids += qobject_cast<FoodGridDialog*>(w) != nullptr && w->isVisible() ? 1 : 0;
    }
    EXPECT_EQ(grids, 1);
    const RowRange selected = grid.grid()->selectedRows();
    ASSERT_EQ(selected.first, selected.last);
    const FoodGridView v = grid.form().view();
    ASSERT_GE(selected.first, v.rows.firstFoodRow);
    EXPECT_EQ(v.rows.rows.at(static_cast<std::size_t>(selected.first)).text, "Sesame");
    EXPECT_EQ(today->group(5).size(), 1u);
    EXPECT_EQ(dialog->focusWidget(), &tree);

    // The day is saved when the screen closes.
    EXPECT_TRUE(session.userDataModified());
    QTest::keyClick(&tree, Qt::Key_Escape);
    EXPECT_FALSE(session.userDataModified());
}

TEST_F(CatalogueDialogTest, ImportingTenThousandFoodsShowsProgressAndACancelLeavesTheCatalogue) {
    const std::filesystem::path csvPath = dir.path() / "drinks.csv";
    {
        std::ofstream out(csvPath);
        out << kFoodCsvHeader << '\n';
        for (int i = 0; i < 10000; ++i) {
            out << "6,Brew " << i / 100 << ",Drink " << i << ",12,fl oz,150,13,0,1.6,0,0\n";
        }
    }
    auto dialog = open();
    dialog->setFileChooser([&](bool forSaving) {
        EXPECT_FALSE(forSaving);
        return QString::fromStdString(csvPath.string());
    });
    const std::string before = foodsCsv(session.catalogue());
    int shownMaximum = 0;
    bool cancel = true;
    QObject::connect(dialog.get(), &CatalogueDialog::importProgress, dialog.get(),
                     [&](int done, int total) {
                         auto* progress = dialog->findChild<QProgressDialog*>();
                         ASSERT_NE(progress, nullptr);
                         EXPECT_TRUE(progress->isVisible());
                         EXPECT_EQ(progress->value(), done);
                         shownMaximum = progress->maximum();
                         EXPECT_EQ(total, 10000);
                         if (cancel && done >= 1000) {
                             progress->cancel();
                         }
                     });

    action(*dialog, "&Import...")->trigger();
    EXPECT_EQ(shownMaximum, 10000);
    EXPECT_EQ(foodsCsv(session.catalogue()), before);
    EXPECT_FALSE(session.catalogueModified());
    EXPECT_EQ(categoryRows(*dialog->tree(), 6), 0);
    EXPECT_TRUE(messages.empty());

    cancel = false;
    action(*dialog, "&Import...")->trigger();
    EXPECT_EQ(messageTexts(),
              std::vector<std::string>{"10000 food items and 100 categories imported."});
    EXPECT_EQ(categoryRows(*dialog->tree(), 6), 100);
    EXPECT_EQ(session.catalogue().foodCount(), 10003u);
    EXPECT_FALSE(session.catalogueModified());  // saved at once
}

TEST_F(CatalogueDialogTest, TheScreenIsWorkedWithTheKeyboardAlone) {
    auto dialog = open();
    CFoodTreeCtrl& tree = *dialog->tree();
    EXPECT_TRUE(tree.hasFocus());
    for (QWidget* w : dialog->findChildren<QWidget*>()) {
        if (w->focusPolicy() & Qt::TabFocus) {
            EXPECT_FALSE(w->accessibleName().isEmpty()) << w->metaObject()->className();
        }
    }

    // From the tree, Tab goes round: OK, the find field, Find, the tree again.
    QStringList order;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order << QApplication::focusWidget()->accessibleName();
    }
    EXPECT_EQ(order, (QStringList{QStringLiteral("OK"), QStringLiteral("Find:"),
                                  QStringLiteral("Find"), QStringLiteral("Food catalogue")}));

    // An empty find asks for a text; a found food is selected in the tree.
    QTest::keyClick(dialog.get(), Qt::Key_F, Qt::AltModifier);
    QWidget* find = QApplication::focusWidget();
    ASSERT_EQ(find->accessibleName(), QStringLiteral("Find:"));
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(messageTexts(), std::vector<std::string>{"Please enter a find string."});
    QTest::keyClicks(find, QStringLiteral("pizza"));
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(messages.back().text, "No matching food items found.");
    static_cast<QLineEdit*>(find)->clear();
    QTest::keyClicks(find, QStringLiteral("SES"));
    // The found foods are listed in the find screen; OK there selects the chosen one.
    test::whenModal<FindFoodDialog>([](FindFoodDialog* found) {
        EXPECT_EQ(found->results()->count(), 1);
        found->results()->setCurrentRow(0);
        QTest::keyClick(found->results(), Qt::Key_Return);
    });
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(tree.currentPlace(), TreePlace::ofFood(5, 0, 1));
    EXPECT_EQ(dialog->focusWidget(), &tree);  // has it once the screen is active again

    // Delete asks about the food: No keeps it, Yes deletes it and selects its category.
    answer = false;
    QTest::keyClick(&tree, Qt::Key_Delete);
    EXPECT_EQ(messages.back().text, "Are you sure you want to delete the food item 'Sesame'?");
    EXPECT_EQ(session.catalogue().groups[5][0].foods.size(), 2u);
    answer = true;
    QTest::keyClick(&tree, Qt::Key_Delete);
    EXPECT_EQ(session.catalogue().groups[5][0].foods.size(), 1u);
    EXPECT_EQ(tree.currentPlace(), TreePlace::ofCategory(5, 0));

    EXPECT_FALSE(session.catalogueModified());  // saved at once
    QTest::keyClick(&tree, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

}  // namespace
}  // namespace nutrovex
