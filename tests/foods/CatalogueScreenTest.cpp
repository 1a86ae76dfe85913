#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foods/CatalogueScreen.h"
#include "foods/FoodCsv.h"

namespace nutrovex {
namespace {

FoodItem food(const char* name, float calories = 100.0f) {
    FoodItem f;
    f.name = name;
    f.text2 = name;
    f.setNutrient(kCalories, calories);
    return f;
}

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

    FoodCatalogue catalogue;
    CatalogueClipboard clipboard;
    CatalogueScreenForm form{catalogue, clipboard};
};

TEST_F(CatalogueScreenTest, RenamingMovesTheNodeOrRefusesAndReopensTheEditor) {
    // "Plain" becomes "Zesty": it moves after "Sesame" and is the node to select.
    const TreeChange moved = form.rename(TreePlace::ofFood(5, 0, 0), "Zesty");
    EXPECT_FALSE(moved.message);
    EXPECT_EQ(moved.select, TreePlace::ofFood(5, 0, 1));
    EXPECT_EQ(moved.changedGroup, 5);
    EXPECT_TRUE(moved.notices.catalogue && moved.notices.dataChanged);
    EXPECT_EQ(form.label(TreePlace::ofFood(5, 0, 1)), "Zesty");

    // A name the category already holds, or the node's own name, is refused; the same node is
    // selected again and its editor reopened; nothing changed.
    for (const char* taken : {"Sesame", "Zesty"}) {
        const TreeChange refused = form.rename(TreePlace::ofFood(5, 0, 1), taken);
        ASSERT_TRUE(refused.message) << taken;
        EXPECT_EQ(refused.message->text, "You entered a duplicate or invalid name.");
        EXPECT_EQ(refused.message->caption, "Rename Food");
        EXPECT_TRUE(refused.reopenEditor);
        EXPECT_EQ(refused.select, TreePlace::ofFood(5, 0, 1));
        EXPECT_FALSE(refused.notices.any());
    }
    const TreeChange category = form.rename(TreePlace::ofCategory(5, 1), "Bagels");
    ASSERT_TRUE(category.message);
    EXPECT_EQ(category.message->caption, "Rename Category");

    // Letter case alone makes another name; groups are never renamed; an empty text is no edit.
    EXPECT_EQ(form.rename(TreePlace::ofCategory(5, 0), "bagels").select,
              TreePlace::ofCategory(5, 0));
    EXPECT_FALSE(form.rename(TreePlace::ofGroup(5), "Bread").notices.any());
    EXPECT_FALSE(form.rename(TreePlace::ofFood(5, 0, 0), "").message);

    // The label editor holds 21 characters, one more than the dialogs.
    const TreeChange longName =
        form.rename(TreePlace::ofFood(3, 0, 0), "abcdefghijklmnopqrstuvwxyz");
    ASSERT_TRUE(longName.select);
    EXPECT_EQ(form.label(*longName.select), "abcdefghijklmnopqrstu");
}

TEST_F(CatalogueScreenTest, PastingACategoryIntoAGroupThatHasItsNameMakesName1) {
    EXPECT_FALSE(form.menu(TreePlace::ofGroup(3)).paste);
    (void)form.copy(TreePlace::ofCategory(5, 0));
    EXPECT_TRUE(form.menu(TreePlace::ofGroup(3)).paste);
    EXPECT_FALSE(catalogue.modified);  // copying changes nothing

    // A held category goes into the group of a group or category node, never from a food node.
    EXPECT_FALSE(form.paste(TreePlace::ofFood(5, 1, 0)).notices.any());
    const TreeChange same = form.paste(TreePlace::ofCategory(5, 1));
    ASSERT_TRUE(same.select);
    EXPECT_EQ(form.label(*same.select), "Bagels1");
    EXPECT_EQ(same.changedGroup, 5);
    EXPECT_EQ(catalogue.groups[5][same.select->category].foods.size(), 2u);
    EXPECT_EQ(form.label(*form.paste(TreePlace::ofGroup(5)).select), "Bagels2");
    EXPECT_EQ(form.label(*form.paste(TreePlace::ofGroup(3)).select), "Bagels");

    // Cutting a food holds it alone: a group no longer takes a paste; its category does.
    const TreeChange cut = form.cut(TreePlace::ofFood(3, 1, 0));  // "Kale" under "Greens"
    EXPECT_EQ(cut.select, TreePlace::ofCategory(3, 1));
    EXPECT_TRUE(catalogue.groups[3][1].foods.empty());
    EXPECT_FALSE(form.paste(TreePlace::ofGroup(5)).notices.any());
    const TreeChange kale = form.paste(TreePlace::ofFood(5, 0, 0));
    EXPECT_EQ(kale.select, TreePlace::ofFood(5, 0, 0));
    EXPECT_EQ(form.label(*kale.select), "Kale");
    EXPECT_EQ(catalogue.groups[5][0].foods[0].group, 5);

    // A full category says why the food was not pasted.
    for (int i = 0; catalogue.groups[5][0].foods.size() < kMaxFoodsPerCategory; ++i) {
        ASSERT_NE(addFoodItem(catalogue, 5, 0, food(("Roll " + std::to_string(i)).c_str())),
                  kNoPosition);
    }
    const TreeChange full = form.paste(TreePlace::ofCategory(5, 0));
    ASSERT_TRUE(full.message);
    EXPECT_EQ(full.message->text, "You can enter a maximum of 100 food items per category.");
    EXPECT_FALSE(full.notices.any());
}

TEST_F(CatalogueScreenTest, EachDeleteAsksAboutItsOwnNodeAndOnlyWhereTheMenuOffersIt) {
    const TreePlace group = TreePlace::ofGroup(5);
    const TreePlace category = TreePlace::ofCategory(5, 0);
    const TreePlace sesame = TreePlace::ofFood(5, 0, 1);

    EXPECT_EQ(CatalogueScreenForm::deleteForKey(group), std::nullopt);
    EXPECT_EQ(CatalogueScreenForm::deleteForKey(category), TreeDelete::Category);
    EXPECT_EQ(CatalogueScreenForm::deleteForKey(sesame), TreeDelete::Food);
    EXPECT_FALSE(form.confirmDelete(category, TreeDelete::AllCategories));
    EXPECT_FALSE(form.confirmDelete(group, TreeDelete::Category));
    EXPECT_FALSE(form.confirmDelete(category, TreeDelete::Food));

    // On a food node "Delete Category" is about the food's category.
    const std::optional<Confirmation> ofCategory = form.confirmDelete(sesame, TreeDelete::Category);
    ASSERT_TRUE(ofCategory);
    EXPECT_EQ(ofCategory->message.text,
              "Are you sure you want to delete the category 'Bagels' and all food items?");
    const std::optional<Confirmation> ofFood = form.confirmDelete(sesame, TreeDelete::Food);
    ASSERT_TRUE(ofFood);
    EXPECT_EQ(ofFood->message.text, "Are you sure you want to delete the food item 'Sesame'?");
    EXPECT_TRUE(ofFood->noIsDefault);

    EXPECT_EQ(form.remove(sesame, TreeDelete::Food).select, category);
    EXPECT_EQ(catalogue.groups[5][0].foods.size(), 1u);
    EXPECT_EQ(form.remove(TreePlace::ofFood(5, 0, 0), TreeDelete::Category).select, group);
    EXPECT_EQ(catalogue.groups[5].size(), 1u);
    EXPECT_EQ(form.remove(group, TreeDelete::AllCategories).changedGroup, 5);
    EXPECT_TRUE(catalogue.groups[5].empty());
    EXPECT_EQ(catalogue.groups[3].size(), 1u);
}

TEST_F(CatalogueScreenTest, TheFindFieldRefusesBlanksAndSaysWhenNothingMatches) {
    const auto blanks = form.find("   ");
    ASSERT_TRUE(blanks.message);
    EXPECT_EQ(blanks.message->text, "Please enter a find string.");
    EXPECT_EQ(blanks.message->caption, "Find");

    const auto none = form.find("pizza");
    ASSERT_TRUE(none.message);
    EXPECT_EQ(none.message->text, "No matching food items found.");

    const auto found = form.find("  SES ");
    EXPECT_FALSE(found.message);
    EXPECT_EQ(found.text, "SES");
    ASSERT_EQ(form.finder().results().size(), 1u);
    EXPECT_EQ(CatalogueScreenForm::placeOf(form.finder().results()[0]), TreePlace::ofFood(5, 0, 1));
}

TEST_F(CatalogueScreenTest, AnImportInStepsAddsWhatOneGoAddsAndACancelledOneLeavesNoTrace) {
    std::string csv = std::string(kFoodCsvHeader) + "\n";
    csv += "5,Loaves,Bad,x,item,1,1,1,1,1,1\n";  // refused: the amount is no number
    for (int i = 0; i < 30; ++i) {
        csv += "\"Bread, Cereal, Rice, Pasta\",Loaves,Loaf " + std::to_string(i) +
               ",1,item,80,1,1,1,1,1\n";
    }

    FoodCatalogue oneGo;
    oneGo.header = catalogue.header;
    for (std::size_t g = 0; g < catalogue.groups.size(); ++g) {
        for (const FoodCategory& c : catalogue.groups[g]) {
            oneGo.groups[g].emplace_back().copyFrom(c);
        }
    }
    const ImportReport whole = importFoodsCsv(oneGo, csv);

    FoodCsvImport steps(csv);
    EXPECT_EQ(steps.rowCount(), 31u);
    while (!steps.finished()) {
        const std::size_t before = steps.rowsDone();
        steps.step(catalogue, 7);
        EXPECT_EQ(steps.rowsDone(), std::min<std::size_t>(before + 7, 31));
    }
    EXPECT_EQ(steps.report().foodsAdded, 30u);
    EXPECT_EQ(steps.report().foodsAdded, whole.foodsAdded);
    ASSERT_EQ(steps.report().refused.size(), 1u);
    EXPECT_EQ(steps.report().refused[0].line, whole.refused[0].line);
    EXPECT_EQ(foodsCsv(catalogue), foodsCsv(oneGo));

    const std::string saved = foodsCsv(catalogue);
    const PackedKey counter = catalogue.header.keyCounter;
    catalogue.modified = false;
    CatalogueSnapshot snapshot(catalogue);
    FoodCsvImport cancelled(std::string(kFoodCsvHeader) + "\n3,Roots,Beet,1,cup,10,1,1,1,1,1\n" +
                            "6,Juice,Lime,1,cup,10,1,1,1,1,1\n");
    cancelled.step(catalogue, 1);
    EXPECT_NE(foodsCsv(catalogue), saved);
    const uint64_t revision = catalogue.revision;
    snapshot.restore(catalogue);
    EXPECT_EQ(foodsCsv(catalogue), saved);
    EXPECT_EQ(catalogue.header.keyCounter, counter);
    EXPECT_EQ(catalogue.header.groupChunks, catalogue.expectedGroupChunks());
    EXPECT_FALSE(catalogue.modified);
    EXPECT_NE(catalogue.revision, revision);
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
