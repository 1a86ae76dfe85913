#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/UserStore.h"
#include "foods/FoodCsv.h"
#include "forms/catalogue/CatalogueForm.h"

namespace nutrovex {
namespace {

FoodItem food(const char* name, float calories = 100.0f) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setNutrient(kCalories, calories);
    return f;
}

using Command = CatalogueForm::Command;

// Group 5 holds "Bagels" (Plain, Sesame) and "Cereal" (Oats); group 3 holds "Greens" (Kale).
class CatalogueScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        const Position bagels = addCategory(catalogue, 5, "Bagels");
        for (const char* n : {"Plain", "Sesame"}) {
            ASSERT_NE(addFoodItem(catalogue, 5, bagels, food(n)), kNoPosition);
        }
        const Position cereal = addCategory(catalogue, 5, "Cereal");
        ASSERT_NE(addFoodItem(catalogue, 5, cereal, food("Oats")), kNoPosition);
        const Position greens = addCategory(catalogue, 3, "Greens");
        ASSERT_NE(addFoodItem(catalogue, 3, greens, food("Kale")), kNoPosition);
        catalogue.modified = false;
    }

    // The command run on a node, and what the screen then shows.
    Outcome on(const TreePlace& place, Command command) {
        form.select(place);
        return form.command(command);
    }
    Outcome rename(const TreePlace& place, std::string_view text) {
        form.select(place);
        return form.edit(CatalogueForm::Field::Label, text);
    }
    TreePlace selected() const { return form.view().selected; }
    TreeMenuState menu(const TreePlace& place) {
        form.select(place);
        return form.view().menu;
    }
    std::optional<Confirmation> asked(const TreePlace& place, Command command) {
        form.select(place);
        return form.confirmation(command);
    }

    FoodCatalogue catalogue;
    FixedClock clock{CalendarDate::fromDmy(1, 3, 2026)};
    UserStore store{clock};
    DayCursor days{store};
    FoodRunState state;
    CatalogueForm form{catalogue, days, state};
};

TEST_F(CatalogueScreenTest, RenamingMovesTheNodeOrRefusesAndReopensTheEditor) {
    // "Plain" becomes "Zesty": it moves after "Sesame" and is the node to select. The catalogue
    // is saved at once.
    const Outcome moved = rename(TreePlace::ofFood(5, 0, 0), "Zesty");
    EXPECT_FALSE(moved.message);
    EXPECT_EQ(selected(), TreePlace::ofFood(5, 0, 1));
    EXPECT_EQ(form.view().changedGroup, 5);
    EXPECT_TRUE(moved.notices.catalogue && moved.notices.dataChanged);
    EXPECT_EQ(moved.save, SavePoint::Catalogue);
    EXPECT_EQ(form.label(TreePlace::ofFood(5, 0, 1)), "Zesty");

    // A name the category already holds, or the node's own name, is refused; the same node is
    // selected again and its editor reopened; nothing changed.
    for (const char* taken : {"Sesame", "Zesty"}) {
        const Outcome refused = rename(TreePlace::ofFood(5, 0, 1), taken);
        ASSERT_TRUE(refused.message) << taken;
        EXPECT_EQ(refused.message->text, "You entered a duplicate or invalid name.");
        EXPECT_EQ(refused.message->caption, "Rename Food");
        EXPECT_TRUE(form.view().reopenEditor);
        EXPECT_EQ(selected(), TreePlace::ofFood(5, 0, 1));
        EXPECT_FALSE(refused.notices.any());
        EXPECT_EQ(refused.save, SavePoint::Nothing);
    }
    const Outcome category = rename(TreePlace::ofCategory(5, 1), "Bagels");
    ASSERT_TRUE(category.message);
    EXPECT_EQ(category.message->caption, "Rename Category");

    // Letter case alone makes another name; groups are never renamed; an empty text is no edit.
    (void)rename(TreePlace::ofCategory(5, 0), "bagels");
    EXPECT_EQ(selected(), TreePlace::ofCategory(5, 0));
    EXPECT_FALSE(rename(TreePlace::ofGroup(5), "Bread").notices.any());
    EXPECT_FALSE(rename(TreePlace::ofFood(5, 0, 0), "").message);

    // The label editor holds 21 characters, one more than the dialogs.
    ASSERT_TRUE(rename(TreePlace::ofFood(3, 0, 0), "abcdefghijklmnopqrstuvwxyz").notices.any());
    EXPECT_EQ(form.label(selected()), "abcdefghijklmnopqrstu");
}

TEST_F(CatalogueScreenTest, PastingACategoryIntoAGroupThatHasItsNameMakesName1) {
    EXPECT_FALSE(menu(TreePlace::ofGroup(3)).paste);
    EXPECT_FALSE(on(TreePlace::ofCategory(5, 0), Command::Copy).notices.any());
    EXPECT_TRUE(menu(TreePlace::ofGroup(3)).paste);
    EXPECT_FALSE(catalogue.modified);  // copying changes nothing

    // A held category goes into the group of a group or category node, never from a food node.
    EXPECT_FALSE(on(TreePlace::ofFood(5, 1, 0), Command::Paste).notices.any());
    ASSERT_TRUE(on(TreePlace::ofCategory(5, 1), Command::Paste).notices.any());
    EXPECT_EQ(form.label(selected()), "Bagels1");
    EXPECT_EQ(form.view().changedGroup, 5);
    EXPECT_EQ(catalogue.groups[5][selected().category].foods.size(), 2u);
    (void)on(TreePlace::ofGroup(5), Command::Paste);
    EXPECT_EQ(form.label(selected()), "Bagels2");
    (void)on(TreePlace::ofGroup(3), Command::Paste);
    EXPECT_EQ(form.label(selected()), "Bagels");

    // Cutting a food holds it alone: a group no longer takes a paste; its category does.
    (void)on(TreePlace::ofFood(3, 1, 0), Command::Cut);  // "Kale" under "Greens"
    EXPECT_EQ(selected(), TreePlace::ofCategory(3, 1));
    EXPECT_TRUE(catalogue.groups[3][1].foods.empty());
    EXPECT_FALSE(on(TreePlace::ofGroup(5), Command::Paste).notices.any());
    (void)on(TreePlace::ofFood(5, 0, 0), Command::Paste);
    EXPECT_EQ(selected(), TreePlace::ofFood(5, 0, 0));
    EXPECT_EQ(form.label(selected()), "Kale");
    EXPECT_EQ(catalogue.groups[5][0].foods[0].group, 5);

    // A full category says why the food was not pasted.
    for (int i = 0; catalogue.groups[5][0].foods.size() < kMaxFoodsPerCategory; ++i) {
        ASSERT_NE(addFoodItem(catalogue, 5, 0, food(("Roll " + std::to_string(i)).c_str())),
                  kNoPosition);
    }
    const Outcome full = on(TreePlace::ofCategory(5, 0), Command::Paste);
    ASSERT_TRUE(full.message);
    EXPECT_EQ(full.message->text, "You can enter a maximum of 100 food items per category.");
    EXPECT_FALSE(full.notices.any());
}

TEST_F(CatalogueScreenTest, EachDeleteAsksAboutItsOwnNodeAndOnlyWhereTheMenuOffersIt) {
    const TreePlace group = TreePlace::ofGroup(5);
    const TreePlace category = TreePlace::ofCategory(5, 0);
    const TreePlace sesame = TreePlace::ofFood(5, 0, 1);

    form.select(group);
    EXPECT_EQ(form.deleteForKey(), std::nullopt);
    form.select(category);
    EXPECT_EQ(form.deleteForKey(), Command::DeleteCategory);
    form.select(sesame);
    EXPECT_EQ(form.deleteForKey(), Command::DeleteFood);
    EXPECT_FALSE(asked(category, Command::DeleteAllCategories));
    EXPECT_FALSE(asked(group, Command::DeleteCategory));
    EXPECT_FALSE(asked(category, Command::DeleteFood));

    // On a food node "Delete Category" is about the food's category.
    const std::optional<Confirmation> ofCategory = asked(sesame, Command::DeleteCategory);
    ASSERT_TRUE(ofCategory);
    EXPECT_EQ(ofCategory->message.text,
              "Are you sure you want to delete the category 'Bagels' and all food items?");
    const std::optional<Confirmation> ofFood = asked(sesame, Command::DeleteFood);
    ASSERT_TRUE(ofFood);
    EXPECT_EQ(ofFood->message.text, "Are you sure you want to delete the food item 'Sesame'?");
    EXPECT_TRUE(ofFood->noIsDefault);

    EXPECT_EQ(on(sesame, Command::DeleteFood).save, SavePoint::Catalogue);
    EXPECT_EQ(selected(), category);
    EXPECT_EQ(catalogue.groups[5][0].foods.size(), 1u);
    (void)on(TreePlace::ofFood(5, 0, 0), Command::DeleteCategory);
    EXPECT_EQ(selected(), group);
    EXPECT_EQ(catalogue.groups[5].size(), 1u);
    (void)on(group, Command::DeleteAllCategories);
    EXPECT_EQ(form.view().changedGroup, 5);
    EXPECT_TRUE(catalogue.groups[5].empty());
    EXPECT_EQ(catalogue.groups[3].size(), 1u);
}

TEST_F(CatalogueScreenTest, TheFindFieldRefusesBlanksAndSaysWhenNothingMatches) {
    const Outcome blanks = form.find("   ");
    ASSERT_TRUE(blanks.message);
    EXPECT_EQ(blanks.message->text, "Please enter a find string.");
    EXPECT_EQ(blanks.message->caption, "Find");

    const Outcome none = form.find("pizza");
    ASSERT_TRUE(none.message);
    EXPECT_EQ(none.message->text, "No matching food items found.");

    // Found: the find screen opens on the text, its results listed and the first chosen.
    EXPECT_FALSE(form.find("  SES ").message);
    const FindFoodForm find = form.findForm();
    EXPECT_EQ(find.view().text, "SES");
    ASSERT_EQ(find.view().results, std::vector<std::string>{"Sesame"});
    ASSERT_TRUE(find.chosen());
    form.select(*find.chosen());
    EXPECT_EQ(selected(), TreePlace::ofFood(5, 0, 1));
}

TEST_F(CatalogueScreenTest, ImportAndExportGoThroughFilesAndAStoppedImportLeavesNoTrace) {
    const test::TempDir dir;
    const std::string csvPath = (dir.path() / "foods.csv").string();
    std::string csv = std::string(kFoodCsvHeader) + "\n";
    csv += "5,Loaves,Bad,x,item,1,1,1,1,1,1\n";  // refused: the amount is no number
    for (int i = 0; i < 260; ++i) {
        csv += "\"Bread, Cereal, Rice, Pasta\",Loaves " + std::to_string(i % 3) + ",Loaf " +
               std::to_string(i) + ",1,item,80,1,1,1,1,1\n";
    }
    std::ofstream(csvPath, std::ios::binary) << csv;

    // Stopped part way: the catalogue holds again what it held, and nothing is said or saved.
    const std::string before = foodsCsv(catalogue);
    std::size_t heard = 0;
    const Outcome stopped = form.importFile(csvPath, [&](std::size_t done, std::size_t total) {
        EXPECT_EQ(total, 261u);
        heard = done;
        return false;
    });
    EXPECT_GT(heard, 0u);
    EXPECT_EQ(stopped, Outcome{});
    EXPECT_EQ(foodsCsv(catalogue), before);

    const Outcome imported = form.importFile(csvPath);
    ASSERT_TRUE(imported.message);
    EXPECT_EQ(imported.message->text.rfind("260 food items and 3 categories imported. 1 row was "
                                           "refused:\nline 2: ",
                                           0),
              0u);
    EXPECT_TRUE(imported.notices.catalogue && imported.notices.dataChanged);
    EXPECT_EQ(imported.save, SavePoint::Catalogue);
    EXPECT_EQ(catalogue.groups[5].size(), 5u);  // Bagels, Cereal and the three Loaves

    // Export writes the list the import reads; a file that cannot be read or written says so.
    const std::string exported = (dir.path() / "out.csv").string();
    EXPECT_EQ(form.exportFile(exported), Outcome{});
    std::ifstream in(exported, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), foodsCsv(catalogue));
    const std::string missing = (dir.path() / "none.csv").string();
    const Outcome unread = form.importFile(missing);
    ASSERT_TRUE(unread.message);
    EXPECT_EQ(unread.message->text,
              "The file " + missing + " cannot be read: there is no such file");
    EXPECT_EQ(unread.message->caption, "Import");
    EXPECT_FALSE(unread.notices.any());
    const Outcome unwritten = form.exportFile((dir.path() / "none" / "out.csv").string());
    ASSERT_TRUE(unwritten.message);
    EXPECT_EQ(unwritten.message->caption, "Export");
    EXPECT_EQ(unwritten.message->text.rfind("The file " + dir.path().string(), 0), 0u);
}

TEST(CatalogueScreenImport, TheSummaryCountsAndQuotesTheFirstRefusals) {
    ImportReport report;
    report.foodsAdded = 1;
    report.categoriesAdded = 2;
    EXPECT_EQ(importMessage(report).text, "1 food item and 2 categories imported.");
    for (std::size_t line = 2; line < 9; ++line) {
        report.refused.push_back({line, "the unit 'x' is not a serving unit"});
    }
    const std::string text = importMessage(report).text;
    EXPECT_EQ(
        text.rfind("1 food item and 2 categories imported. 7 rows were refused:\nline 2: ", 0), 0u);
    EXPECT_NE(text.find("line 6:"), std::string::npos);
    EXPECT_EQ(text.find("line 7:"), std::string::npos);
    EXPECT_EQ(text.substr(text.size() - 4), "\n...");

    FoodCatalogue catalogue;
    const ImportReport refused = importFoodsCsv(catalogue, "group,category,name\n");
    EXPECT_EQ(importMessage(refused).text.rfind(
                  "Nothing was imported: line 1: the header has no columns 'amount', ", 0),
              0u);
}

}  // namespace
}  // namespace nutrovex
