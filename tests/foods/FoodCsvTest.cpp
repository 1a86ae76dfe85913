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
    EXPECT_EQ(bagels[2].ref2, (ServingQuantity{1.0f, ServingUnit::Item, 0}));
    EXPECT_FLOAT_EQ(bagels[2].nutrients[kFat], 1.5f);
    EXPECT_EQ(bagels[1].nutrients, (Nutrients{10000.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1000.0f}));
    EXPECT_EQ(c.groups[4][0].foods[0].name.str(), "Caf\xE9 pear");
    EXPECT_EQ(c.header.groupChunks, c.expectedGroupChunks());
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
    butter.setReference({100.0f, ServingUnit::Gram, 0});
    butter.setServing({14.2f, ServingUnit::Gram, 0});
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

TEST(FoodCsvImportFlow, LinesSummaryAndNoticesSayWhatHappened) {
    const Notices changed{.catalogue = true, .dataChanged = true};
    const struct {
        const char* name;
        FoodCsvText csv;
        std::vector<std::string> lines;
        const char* summary;
        Notices notices;
        bool refusedWhole;
        bool allAdded;
    } cases[] = {
        {"unreadable",
         {"in.csv", "", "there is no such file"},
         {"in.csv: there is no such file"},
         "",
         {},
         true,
         false},
        {"header refused",
         {"in.csv", "group,category,name\n5,Bagels,Plain\n", ""},
         {"in.csv:1: the header has no columns 'amount', 'unit', 'calories', 'carbohydrate', "
          "'fiber', 'protein', 'fat' and 'saturated fat' (the header names the columns " +
          std::string(kFoodCsvHeader) + ")"},
         "",
         {},
         true,
         false},
        {"a note and a refusal",
         {"stdin",
          kHeader.substr(0, kHeader.size() - 1) + ",brand\n5,Bagels,Plain,1,item,1,1,1,1,1,1,x\n"
                                                  "5,Bagels,Oat,1,spoon,1,1,1,1,1,1,x\n",
          ""},
         {"stdin:1: note: the column 'brand' is not a food column and is ignored",
          "stdin:3: the unit 'spoon' is not a serving unit"},
         "added 1 food item and 1 category; refused 1 row",
         changed,
         false,
         false},
        {"all added",
         {"in.csv",
          kHeader + "5,Bagels,Plain,1,item,1,1,1,1,1,1\n"
                    "5,Rolls,Kaiser,1,item,1,1,1,1,1,1\n",
          ""},
         {},
         "added 2 food items and 2 categories; refused 0 rows",
         changed,
         false,
         true},
        {"nothing but the header",
         {"in.csv", kHeader, ""},
         {},
         "added 0 food items and 0 categories; refused 0 rows",
         {},
         false,
         true},
    };
    for (const auto& c : cases) {
        FoodCatalogue catalogue;
        const FoodCsvImportResult result = importFoodCsv(catalogue, c.csv);
        EXPECT_EQ(result.lines, c.lines) << c.name;
        EXPECT_EQ(result.summary, c.summary) << c.name;
        EXPECT_EQ(result.notices, c.notices) << c.name;
        EXPECT_EQ(result.refusedWhole(), c.refusedWhole) << c.name;
        EXPECT_EQ(result.allAdded(), c.allAdded) << c.name;
        EXPECT_EQ(catalogue.foodCount(), result.report.foodsAdded) << c.name;
        EXPECT_FALSE(catalogue.modified) << c.name;  // the session marks it, or the tool saves
    }
}

TEST(FoodCsvImportFlow, ProgressIsToldAsRowsGoAndCanAbandonTheImport) {
    std::string text = kHeader;
    for (int i = 0; i < 600; ++i) {
        text += "6,Brew " + std::to_string(i / 100) + ",Drink " + std::to_string(i) +
                ",12,fl oz,150,13,0,1.6,0,0\n";
    }
    const FoodCsvText csv{"in.csv", text, ""};

    FoodCatalogue catalogue;
    std::vector<std::pair<std::size_t, std::size_t>> told;
    FoodCsvImportResult result =
        importFoodCsv(catalogue, csv, [&](std::size_t done, std::size_t all) {
            told.emplace_back(done, all);
            return true;
        });
    EXPECT_EQ(told, (std::vector<std::pair<std::size_t, std::size_t>>{
                        {250, 600}, {500, 600}, {600, 600}}));
    EXPECT_FALSE(result.abandoned);
    EXPECT_EQ(result.summary, "added 600 food items and 6 categories; refused 0 rows");

    // Stopped after the second step: the catalogue holds again what it held, key counter too.
    const std::string before = foodsCsv(catalogue);
    const PackedKey counter = catalogue.header.keyCounter;
    told.clear();
    const FoodCsvText more{
        "in.csv", kHeader + "3,Roots,Beet,1,cup,10,1,1,1,1,1\n" + text.substr(kHeader.size()), ""};
    result = importFoodCsv(catalogue, more, [&](std::size_t done, std::size_t all) {
        told.emplace_back(done, all);
        return told.size() < 2;
    });
    EXPECT_EQ(told.size(), 2u);
    EXPECT_TRUE(result.abandoned);
    EXPECT_EQ(result.notices, Notices{});
    EXPECT_TRUE(result.lines.empty());
    EXPECT_EQ(foodsCsv(catalogue), before);
    EXPECT_EQ(catalogue.header.keyCounter, counter);
    EXPECT_EQ(catalogue.header.groupChunks, catalogue.expectedGroupChunks());
}

TEST(FoodCsv, AGramsColumnGivesAVolumeOrItemServingItsWeight) {
    const std::string header = std::string(kFoodCsvHeader) + ",Grams\n";
    const struct {
        const char* row;
        const char* reason;      // empty: added
        ServingQuantity weight;  // the weight reference it gets
    } cases[] = {
        {"1,Milk,Whole,1,cup,149,11.7,0,7.7,7.9,4.6,244", "", {244.0f, ServingUnit::Gram, 0}},
        {"4,Fruit,Banana,1,item,105,27,3.1,1.3,0.4,0.1, 118 ", "", {118.0f, ServingUnit::Gram, 0}},
        {"5,Bagels,Plain,1,item,245,48,2,10,1.5,0.2,", "", {}},
        {"5,Bagels,Big,100,g,245,48,2,10,1.5,0.2,100",
         "grams '100' is given for a serving that is itself a weight",
         {}},
        {"5,Bagels,Tiny,1,item,245,48,2,10,1.5,0.2,0",
         "grams '0' is not between 0.005 and 10000",
         {}},
        {"5,Bagels,Huge,1,item,245,48,2,10,1.5,0.2,heavy", "grams 'heavy' is not a number", {}},
    };
    for (const auto& c : cases) {
        FoodCatalogue catalogue;
        const ImportReport report = importFoodsCsv(catalogue, header + c.row + "\n");
        EXPECT_TRUE(report.notes.empty()) << c.row;  // the column is known
        if (*c.reason != 0) {
            ASSERT_EQ(report.refused.size(), 1u) << c.row;
            EXPECT_EQ(report.refused[0].reason, c.reason);
            continue;
        }
        ASSERT_TRUE(report.refused.empty()) << c.row << ": " << report.refused[0].reason;
        const FoodItem& food = catalogue.groups[std::stoul(c.row)][0].foods.at(0);
        EXPECT_EQ(food.ref1, c.weight) << c.row;
        EXPECT_EQ(food.ref2, food.serving) << c.row;
        EXPECT_EQ(food.ratio, 1.0f) << c.row;
    }

    // 150 g of the milk is 150/244 of its cup; two cups are twice it.
    FoodCatalogue milk;
    ASSERT_TRUE(importFoodsCsv(milk, header + cases[0].row + "\n").refused.empty());
    FoodItem logged = milk.groups[1][0].foods.at(0);
    logged.setServing({150.0f, ServingUnit::Gram, 0});
    EXPECT_FLOAT_EQ(logged.shownNutrient(kCalories), 149.0f * 150.0f / 244.0f);
    logged.setServing({2.0f, ServingUnit::Cup, 0});
    EXPECT_FLOAT_EQ(logged.shownNutrient(kProtein), 15.4f);

    FoodCatalogue twice;
    EXPECT_EQ(importFoodsCsv(twice, std::string(kFoodCsvHeader) + ",grams,GRAMS\n").fileRefusal,
              "the column 'grams' is named twice in the header");
}

TEST(FoodCsv, ExportWritesGramsOnlyForFoodsThatKnowTheirServingsWeight) {
    const std::string header = std::string(kFoodCsvHeader) + ",grams\n";
    const std::string weighed = header +
                                "1,Milk,Whole,1,cup,149,11.7,0,7.7,7.9,4.6,244\n"
                                "1,Milk,Skim,1,cup,83,12.2,0,8.3,0.2,0.1,\n"
                                "1,Milk,Cream,2,tbsp,104,0.8,0,0.6,11,6.9,30.5\n";
    FoodCatalogue c;
    ASSERT_TRUE(importFoodsCsv(c, weighed).refused.empty());
    // In the catalogue's name order; the grams of the others empty.
    EXPECT_EQ(foodsCsv(c),
              header +
                  "\"Milk, Yogurt, Cheese\",Milk,Cream,2,tbsp,104,0.8,0,0.6,11,6.9,30.5\n"
                  "\"Milk, Yogurt, Cheese\",Milk,Skim,1,cup,83,12.2,0,8.3,0.2,0.1,\n"
                  "\"Milk, Yogurt, Cheese\",Milk,Whole,1,cup,149,11.7,0,7.7,7.9,4.6,244\n");
    FoodCatalogue again;
    ASSERT_TRUE(importFoodsCsv(again, foodsCsv(c)).refused.empty());
    EXPECT_EQ(foodsCsv(again), foodsCsv(c));

    // A serving changed from the volume reference still knows its weight: half a cup weighs half.
    c.groups[1][0].foods[2].setServing({0.5f, ServingUnit::Cup, 0});
    EXPECT_NE(foodsCsv(c).find("Whole,0.5,cup,74.5,5.85,0,3.85,3.95,2.3,122\n"), std::string::npos)
        << foodsCsv(c);
    // A food measured by weight, or with one reference, gives no weight: the column goes.
    c.groups[1][0].foods[2].setReference({244.0f, ServingUnit::Gram, 0});
    c.groups[1][0].foods[0].setReference({2.0f, ServingUnit::Tablespoon, 0});
    EXPECT_EQ(foodsCsv(c).substr(0, kHeader.size()), kHeader);
}

}  // namespace
}  // namespace nutrovex
