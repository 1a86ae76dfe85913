#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foods/CatalogueOps.h"
#include "foods/FoodCsv.h"

namespace nutrovex {
namespace {

const std::string kHeader = std::string(kFoodCsvHeader) + "\n";

TEST(FoodCsv, ParsesQuotesLineBreaksAndCountsLines) {
    const std::vector<CsvRecord> records = parseCsv(
        "\xEF\xBB\xBF"
        "a,\"b,c\",\"say \"\"hi\"\"\"\r\n\n\"two\nlines\",x\rlast,");
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].line, 1u);
    EXPECT_EQ(records[0].fields, (std::vector<std::string>{"a", "b,c", "say \"hi\""}));
    EXPECT_EQ(records[1].line, 3u);
    EXPECT_EQ(records[1].fields, (std::vector<std::string>{"two\nlines", "x"}));
    EXPECT_EQ(records[2].line, 5u);
    EXPECT_EQ(records[2].fields, (std::vector<std::string>{"last", ""}));
    EXPECT_EQ(csvField("Sweets, Fats, Oils"), "\"Sweets, Fats, Oils\"");
    EXPECT_EQ(csvField("6\" sub"), "\"6\"\" sub\"");
    EXPECT_EQ(csvField("Bagel"), "Bagel");
}

TEST(FoodCsv, ImportsRowsByTheNewItemRules) {
    FoodCatalogue c;
    const std::string csv =
        kHeader +
        "5,Bagels,  Plain ,1,item,245,48,2,10,1.5,0.2\n"
        "\"Bread, Cereal, Rice, Pasta\",Bagels,Onion,2,ITEM,600,0,0,0,0,0\n"
        "Fruit, Fruit Juice,Apples,Fuji,1,item,1,1,1,1,1,1\n"      // 12 columns: the group unquoted
        "9,Bagels,Rye,1,item,1,1,1,1,1,1\n"                        // no such group
        "5,Bagels,Plain,1,item,1,1,1,1,1,1\n"                      // duplicate
        "5,Bagels,plain,1,item,12000,-3,1,1,1,1001\n"              // case differs: allowed
        "5,Bagels,Sesame,0.004,item,1,1,1,1,1,1\n"                 // amount too small
        "5,Bagels,Poppy,1,spoon,1,1,1,1,1,1\n"                     // no such unit
        "5,Bagels,Salt,1,14,1,,1,1,1,1\n"                          // a value missing
        "5,Bagels,A name that is far too long,1,14,1,1,1,1,1,1\n"  // 27 characters
        "5,  ,Blank,1,14,1,1,1,1,1,1\n"                            // no category
        "Fruit Juice,Apples,Fuji,1,item,1,1,1,1,1,1\n"             // unknown group name
        "\"Fruit, Fruit Juice\",Apples,Caf\xC3\xA9 pear,1,cup,1,1,1,1,1,1\n"
        "4,Apples,\xE2\x82\xAC\xE4\xB8\xAD,1,cup,1,1,1,1,1,1\n";  // a character 1252 lacks
    const ImportReport report = importFoodsCsv(c, csv);
    EXPECT_FALSE(report.headerMissing);
    EXPECT_EQ(report.foodsAdded, 4u);
    EXPECT_EQ(report.categoriesAdded, 2u);
    std::vector<std::size_t> lines;
    for (const ImportRefusal& r : report.refused) {
        lines.push_back(r.line);
    }
    EXPECT_EQ(lines, (std::vector<std::size_t>{4, 5, 6, 8, 9, 10, 11, 12, 13, 15}));
    EXPECT_EQ(report.refused[0].reason, "expected 11 columns, found 12");
    EXPECT_EQ(report.refused[2].reason, "'Plain' is already in the category 'Bagels'");
    EXPECT_EQ(report.refused[6].reason,
              "the name 'A name that is far too long' is longer than "
              "20 characters");
    EXPECT_EQ(report.refused[9].reason, "the name cannot be written in Windows-1252");

    ASSERT_EQ(c.groups[5].size(), 1u);
    const FoodList& bagels = c.groups[5][0].foods;
    ASSERT_EQ(bagels.size(), 3u);
    EXPECT_EQ(bagels[0].name.str(), "Onion");
    EXPECT_EQ(bagels[1].name.str(), "plain");
    EXPECT_EQ(bagels[2].name.str(), "Plain");
    EXPECT_EQ(bagels[2].text2.str(), "Plain");
    EXPECT_EQ(bagels[2].ref2, (ServingQuantity{1.0f, 14, 0}));
    EXPECT_FLOAT_EQ(bagels[2].nutrients[kFat], 1.5f);
    EXPECT_EQ(bagels[1].nutrients, (Nutrients{10000.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1000.0f}));
    EXPECT_EQ(c.groups[4][0].foods[0].name.str(), "Caf\xE9 pear");
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
    EXPECT_TRUE(c.modified);
}

TEST(FoodCsv, ImportKeepsTheCatalogueLimits) {
    FoodCatalogue c;
    for (int i = 0; i < 250; ++i) {
        ASSERT_NE(addCategory(c, 7, "Place " + std::to_string(100 + i)), kNoPosition);
    }
    std::string csv = kHeader + "7,Diner,Fries,1,item,1,1,1,1,1,1\n";
    for (int i = 0; i < 101; ++i) {
        csv += "7,Place 100,Dish " + std::to_string(100 + i) + ",1,item,1,1,1,1,1,1\n";
    }
    const ImportReport report = importFoodsCsv(c, csv);
    EXPECT_EQ(report.foodsAdded, 100u);
    ASSERT_EQ(report.refused.size(), 2u);
    EXPECT_EQ(report.refused[0].reason,
              "the food group 'Restaurants, Other' already holds 250 categories");
    EXPECT_EQ(report.refused[1].line, 103u);
    EXPECT_EQ(report.refused[1].reason, "the category 'Place 100' already holds 100 food items");
}

TEST(FoodCsv, WithoutAHeaderNothingIsImported) {
    FoodCatalogue c;
    const ImportReport report = importFoodsCsv(c, "5,Bagels,Plain,1,item,1,1,1,1,1,1\n");
    EXPECT_TRUE(report.headerMissing);
    EXPECT_TRUE(c.groups[5].empty());
    EXPECT_TRUE(importFoodsCsv(c, "").headerMissing);
}

TEST(FoodCsv, ExportWritesServingValuesAndReadsBackTheSame) {
    FoodCatalogue c;
    ASSERT_NE(addCategory(c, 0, "Oils, fats"), kNoPosition);
    FoodItem butter;
    butter.name = "Butter \"salted\"";
    butter.setReference({100.0f, 12, 0});
    butter.setServing({14.2f, 12, 0});
    butter.nutrients = {717.0f, 0.1f, 0.0f, 0.9f, 81.1f, 51.4f};
    ASSERT_NE(addFoodItem(c, 0, 0, butter), kNoPosition);
    const std::string csv = foodsCsv(c);
    const float cal = 717.0f * butter.ratio;
    EXPECT_EQ(csv.substr(0, kHeader.size()), kHeader);
    EXPECT_EQ(csv.substr(kHeader.size(), 60),
              std::string("\"Sweets, Fats, Oils\",\"Oils, fats\",\"Butter \"\"salted\"\"\",14.2,g,")
                  .substr(0, 60));
    EXPECT_NE(csv.find(",g," + std::to_string(cal).substr(0, 5)), std::string::npos) << csv;

    FoodCatalogue copy;
    const ImportReport report = importFoodsCsv(copy, csv);
    ASSERT_TRUE(report.refused.empty());
    const FoodItem& back = copy.groups[0][0].foods[0];
    EXPECT_EQ(back.name, butter.name);
    EXPECT_EQ(back.serving, butter.serving);
    for (int n = 0; n < kNutrientCount; ++n) {
        EXPECT_EQ(back.shownNutrient(n), c.groups[0][0].foods[0].shownNutrient(n)) << n;
    }
    EXPECT_EQ(foodsCsv(copy), csv);
}

}  // namespace
}  // namespace nutrovex
