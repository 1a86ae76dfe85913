#include <gtest/gtest.h>

#include <cmath>
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

TEST(FoodCsv, EachLineIsOneRecordAndABrokenQuoteEndsWithItsLine) {
    const std::vector<CsvLine> lines = csvLines(
        "\xEF\xBB\xBF"
        "a\r\n\nb\rc\n");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0].text, "a");
    EXPECT_EQ(lines[1].line, 2u);
    EXPECT_EQ(lines[1].text, "");
    EXPECT_EQ(lines[2].line, 3u);
    EXPECT_EQ(lines[3].text, "c");
    const struct {
        const char* line;
        std::vector<std::string> fields;
        const char* error;
    } cases[] = {
        {"a,\"b,c\",\"say \"\"hi\"\"\"", {"a", "b,c", "say \"hi\""}, ""},
        {"6\" sub,,x,", {"6\" sub", "", "x", ""}, ""},
        {"\"\"", {""}, ""},
        {"5,Bagels,\"Broken,1,item", {}, "the quote that opens column 3 is not closed on its line"},
        {"\"a\"b,c", {}, "column 1 has text after its closing quote"},
    };
    for (const auto& c : cases) {
        std::string error;
        EXPECT_EQ(parseCsvLine(c.line, error), c.fields) << c.line;
        EXPECT_EQ(error, c.error) << c.line;
    }
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
        "5,Bagels,plain,1,item,10000,0,1,1,1,1000\n"               // case differs: allowed
        "5,Bagels,Sesame,0.004,item,1,1,1,1,1,1\n"                 // amount too small
        "5,Bagels,Poppy,1,spoon,1,1,1,1,1,1\n"                     // no such unit
        "5,Bagels,Salt,1,14,1,,1,1,1,1\n"                          // a value missing
        "5,Bagels,A name that is far too long,1,14,1,1,1,1,1,1\n"  // 27 characters
        "5,  ,Blank,1,14,1,1,1,1,1,1\n"                            // no category
        "Juice,Apples,Fuji,1,item,1,1,1,1,1,1\n"                   // unknown group name
        "\"Fruit, Fruit Juice\",Apples,Caf\xC3\xA9 pear,1,cup,1,1,1,1,1,1\n"
        "4,Apples,\xE2\x82\xAC\xE4\xB8\xAD,1,cup,1,1,1,1,1,1\n";  // a character 1252 lacks
    const ImportReport report = importFoodsCsv(c, csv);
    EXPECT_EQ(report.fileRefusal, "");
    EXPECT_EQ(report.foodsAdded, 4u);
    EXPECT_EQ(report.categoriesAdded, 2u);
    std::vector<std::size_t> lines;
    for (const ImportRefusal& r : report.refused) {
        lines.push_back(r.line);
    }
    EXPECT_EQ(lines, (std::vector<std::size_t>{4, 5, 6, 8, 9, 10, 11, 12, 13, 15}));
    EXPECT_EQ(report.refused[0].reason, "expected 11 columns, found 12");
    EXPECT_EQ(report.refused[2].reason, "'Plain' is already in the category 'Bagels'");
    EXPECT_EQ(report.refused[3].reason, "amount '0.004' is not between 0.005 and 10000");
    EXPECT_EQ(report.refused[5].reason, "carbohydrate '' is not a number");
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
    EXPECT_EQ(report.notices(), (Notices{.catalogue = true}));
    EXPECT_FALSE(c.modified);  // the session marks it, or the tool saves
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
    EXPECT_EQ(report.fileRefusal.substr(0, 71),
              "the header has no columns 'group', 'category', 'name', 'amount', 'unit'");
    EXPECT_EQ(report.fileLine, 1u);
    EXPECT_TRUE(c.groups[5].empty());
    EXPECT_EQ(importFoodsCsv(c, "\n\n").fileRefusal.substr(0, 17), "the file is empty");
}

TEST(FoodCsv, ColumnsAreFoundByTheirHeaderNames) {
    FoodCatalogue c;
    const ImportReport report = importFoodsCsv(
        c,
        "\n Fat ,CALORIES,brand,carbohydrate,fiber,protein,saturated fat,unit,amount,name,"
        "Category,Group\n"
        "1.5,245,Acme,48,2,10,0.2,item,1,Plain,Bagels,5\n"
        "1.5,245,Acme,48,2,10,0.2,item,1,Rye,Bagels\n");
    EXPECT_EQ(report.fileRefusal, "");
    ASSERT_EQ(report.notes.size(), 1u);
    EXPECT_EQ(report.notes[0].line, 2u);
    EXPECT_EQ(report.notes[0].reason, "the column 'brand' is not a food column and is ignored");
    ASSERT_EQ(report.refused.size(), 1u);
    EXPECT_EQ(report.refused[0].line, 4u);
    EXPECT_EQ(report.refused[0].reason, "expected 12 columns, found 11");
    ASSERT_EQ(c.groups[5].size(), 1u);
    const FoodItem& bagel = c.groups[5][0].foods.at(0);
    EXPECT_EQ(bagel.name.str(), "Plain");
    EXPECT_EQ(bagel.nutrients, (Nutrients{245.0f, 48.0f, 2.0f, 10.0f, 1.5f, 0.2f}));

    // A column missing or named twice refuses the whole file, naming it.
    std::string header = kFoodCsvHeader;
    header.replace(header.find(",fiber"), 6, "");
    FoodCatalogue untouched;
    ImportReport missing = importFoodsCsv(untouched, header + "\n5,Bagels,Oat,1,item,1,1,1,1,1\n");
    EXPECT_EQ(missing.fileRefusal.substr(0, 33), "the header has no column 'fiber' ");
    missing = importFoodsCsv(untouched, std::string(kFoodCsvHeader) + ",FAT\n");
    EXPECT_EQ(missing.fileRefusal, "the column 'fat' is named twice in the header");
    EXPECT_TRUE(untouched.groups[5].empty());
}

TEST(FoodCsv, AnUnterminatedQuoteRefusesOnlyItsOwnLine) {
    FoodCatalogue c;
    const ImportReport report = importFoodsCsv(c, kHeader +
                                                      "5,Bagels,\"Broken,1,item,1,1,1,1,1,1\n"
                                                      "5,Bagels,Plain,1,item,1,1,1,1,1,1\n"
                                                      "5,Bagels,\"Rye\",1,item,1,1,1,1,1,1\n");
    ASSERT_EQ(report.refused.size(), 1u);
    EXPECT_EQ(report.refused[0].line, 2u);
    EXPECT_EQ(report.refused[0].reason, "the quote that opens column 3 is not closed on its line");
    EXPECT_EQ(report.foodsAdded, 2u);
}

TEST(FoodCsv, NamesWithControlCharactersAreRefused) {
    FoodCatalogue c;
    std::string csv = kHeader;
    const char nul[] = "5,Bagels,Nul\0Byte,1,item,1,1,1,1,1,1\n";
    csv.append(nul, sizeof nul - 1);
    csv += "5,Bagels,Tab\there,1,item,1,1,1,1,1,1\n";
    csv += "5,\"Two\nlines\",Oat,1,item,1,1,1,1,1,1\n";  // now two broken lines
    csv += "5,Bagels,Odd\xC2\x81one,1,item,1,1,1,1,1,1\n";
    csv += "5,Bagels,Caf\xC3\xA9,1,item,1,1,1,1,1,1\n";
    const ImportReport report = importFoodsCsv(c, csv);
    ASSERT_EQ(report.refused.size(), 5u);
    EXPECT_EQ(report.refused[0].reason,
              "the name 'Nul\\x00Byte' holds a control character (U+0000)");
    EXPECT_EQ(report.refused[1].reason,
              "the name 'Tab\\x09here' holds a control character (U+0009)");
    EXPECT_EQ(report.refused[2].line, 4u);
    EXPECT_EQ(report.refused[3].line, 5u);
    // A C1 control is shown escaped like the others, never sent to a terminal.
    EXPECT_EQ(report.refused[4].reason,
              "the name 'Odd\\x81one' holds a control character (U+0081)");
    EXPECT_EQ(report.foodsAdded, 1u);
}

TEST(FoodCsv, ValuesOutsideTheFormsRangesAreRefused) {
    const struct {
        const char* values;  // amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat
        const char* reason;  // empty: added
    } cases[] = {
        {"20000,g,100,1,1,1,1,1", "amount '20000' is not between 0.005 and 10000"},
        {"10000,g,100,1,1,1,1,1", ""},
        {"0.005,g,100,1,1,1,1,1", ""},
        {"0.0049,g,100,1,1,1,1,1", "amount '0.0049' is not between 0.005 and 10000"},
        {"-0,g,100,1,1,1,1,1", "amount '-0' is not between 0.005 and 10000"},
        {"1,g,1e30,1,1,1,1,1", "calories '1e30' is not between 0 and 10000"},
        {"1,g,10000.5,1,1,1,1,1", "calories '10000.5' is not between 0 and 10000"},
        {"1,g,-1,1,1,1,1,1", "calories '-1' is not between 0 and 10000"},
        {"1,g,1,1,1,1,1001,1", "fat '1001' is not between 0 and 1000"},
        {"1,g,1,-0.1,1,1,1,1", "carbohydrate '-0.1' is not between 0 and 1000"},
        {"1,g,1,1,1,1,1,nan", "saturated fat 'nan' is not a number"},
        {"1,g,1,1,1,1,1,1e999", "saturated fat '1e999' is not a number"},
    };
    for (const auto& c : cases) {
        FoodCatalogue catalogue;
        const ImportReport report =
            importFoodsCsv(catalogue, kHeader + "5,Bagels,Plain," + c.values + "\n");
        if (*c.reason == 0) {
            EXPECT_TRUE(report.refused.empty()) << c.values;
            EXPECT_EQ(report.foodsAdded, 1u) << c.values;
        } else {
            ASSERT_EQ(report.refused.size(), 1u) << c.values;
            EXPECT_EQ(report.refused[0].reason, c.reason);
            EXPECT_TRUE(catalogue.groups[5].empty()) << c.values;
        }
    }
}

TEST(FoodCsv, NegativeZeroIsZeroAndCaloriesAreWhole) {
    FoodCatalogue c;
    const ImportReport report = importFoodsCsv(c, kHeader +
                                                      "5,Bagels,Plain,1,item,12.7,-0,0,0,0,0\n"
                                                      "5,Bagels,Rye,1,item,12.5,0,0,0,0,0\n"
                                                      "5,Bagels,Oat,1,item,12.49,0,0,0,0,0\n");
    ASSERT_TRUE(report.refused.empty());
    const FoodList& foods = c.groups[5][0].foods;
    ASSERT_EQ(foods.size(), 3u);
    EXPECT_EQ(foods[0].name.str(), "Oat");
    EXPECT_EQ(foods[0].nutrients[kCalories], 12.0f);
    EXPECT_EQ(foods[1].nutrients[kCalories], 13.0f);
    EXPECT_EQ(foods[2].nutrients[kCalories], 13.0f);
    EXPECT_FALSE(std::signbit(foods[1].nutrients[kCarbohydrate]));
}

TEST(FoodCsv, GroupsByNumberNameOrTheUniqueStartOfAName) {
    const struct {
        const char* group;
        int expected;  // -1: refused
        const char* reason;
    } cases[] = {
        {"3", 3, ""},
        {"Vegetables", 3, ""},
        {"fruits", 4, ""},
        {"Fruit", 4, ""},  // the start of both spellings of one group
        {"Meat", 2, ""},
        {"\"Drinks, Beer, Soda\"", 6, ""},
        {"Bread", 5, ""},
        {"M", -1,
         "'M' is the start of more than one food group: 'Milk, Yogurt, Cheese' and "
         "'Meat, Poultry, Fish, Eggs'"},
        {"8", -1, "'8' is not a food group (0 to 7, a group's name or its start)"},
        {"Fish", -1, "'Fish' is not a food group (0 to 7, a group's name or its start)"},
        {"", -1, "'' is not a food group (0 to 7, a group's name or its start)"},
    };
    for (const auto& c : cases) {
        FoodCatalogue catalogue;
        const ImportReport report =
            importFoodsCsv(catalogue, kHeader + c.group + ",Things,Thing,1,item,1,1,1,1,1,1\n");
        if (c.expected < 0) {
            ASSERT_EQ(report.refused.size(), 1u) << c.group;
            EXPECT_EQ(report.refused[0].reason, c.reason);
        } else {
            EXPECT_TRUE(report.refused.empty()) << c.group;
            EXPECT_EQ(catalogue.groups[static_cast<std::size_t>(c.expected)].size(), 1u) << c.group;
        }
    }
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
    // Calories come back whole, as the form takes them; the gram values exactly.
    EXPECT_EQ(back.shownNutrient(kCalories), std::floor(cal + 0.5f));
    for (int n = 1; n < kNutrientCount; ++n) {
        EXPECT_EQ(back.shownNutrient(n), c.groups[0][0].foods[0].shownNutrient(n)) << n;
    }
    FoodCatalogue again;
    ASSERT_TRUE(importFoodsCsv(again, foodsCsv(copy)).refused.empty());
    EXPECT_EQ(foodsCsv(again), foodsCsv(copy));
}

}  // namespace
}  // namespace nutrovex
