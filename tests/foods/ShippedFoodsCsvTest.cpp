#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "calc/Totals.h"
#include "core/FoodCatalogue.h"
#include "core/UserStore.h"
#include "data/ShippedCatalogue.h"
#include "foods/FoodCsv.h"
#include "foods/LogFoodForm.h"
#include "logbook/DayCursor.h"
#include "storage/CatalogueFile.h"
#include "storage/FileIo.h"

namespace nutrovex {
namespace {

std::string readFile(const char* path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The shipped foods.csv is what a person would import: every row passes the import rules, and
// exporting the catalogue gives the same rows back (groups by their names, as exports write them).
TEST(ShippedFoodsCsv, ImportsWithoutARefusalAndExportsTheSameRows) {
    const std::string csv = readFile(NUTROVEX_FOODS_CSV);
    const std::vector<CsvRecord> source = parseCsv(csv);
    ASSERT_GT(source.size(), 500u);

    FoodCatalogue catalogue;
    const ImportReport report = importFoodsCsv(catalogue, csv);
    ASSERT_EQ(report.fileRefusal, "");
    for (const ImportRefusal& r : report.refused) {
        ADD_FAILURE() << "line " << r.line << ": " << r.reason;
    }
    EXPECT_EQ(report.foodsAdded, source.size() - 1);

    const std::vector<CsvRecord> exported = parseCsv(foodsCsv(catalogue));
    ASSERT_EQ(exported.size(), source.size());
    EXPECT_EQ(exported[0].fields, source[0].fields);
    ASSERT_EQ(source[0].fields.back(), kFoodCsvGramsColumn);
    for (std::size_t r = 1; r < source.size(); ++r) {
        std::vector<std::string> expected = source[r].fields;
        ASSERT_EQ(expected.size(), kFoodCsvColumns + 1) << "line " << source[r].line;
        expected[0] = kFoodGroupNames[std::stoi(expected[0])];
        EXPECT_EQ(exported[r].fields, expected) << "line " << source[r].line;
    }
}

// The build turns foods.csv into the shipped FoodDB.ddb on its own; importing the same file into
// an empty catalogue must give that file byte for byte, keys included.
TEST(ShippedFoodsCsv, ImportedIntoAnEmptyCatalogueIsTheShippedCatalogueByteForByte) {
    FoodCatalogue catalogue;
    ASSERT_TRUE(importFoodsCsv(catalogue, readFile(NUTROVEX_FOODS_CSV)).refused.empty());
    ByteBuffer written;
    ASSERT_TRUE(writeCatalogueFile(catalogue, written).ok());
    const std::span<const uint8_t> shipped = shippedCatalogue();
    ASSERT_EQ(written.size(), shipped.size());
    EXPECT_TRUE(std::equal(shipped.begin(), shipped.end(), written.data()));
}

// Foods of the source with a household measure log as that measure and as any weight, or another
// unit of the measure's kind, each by the food's own weight of its measure. The expected values
// are the source's figures per 100 g times the grams eaten; calories may differ by the rounding
// of the serving's whole calories, scaled to the grams eaten, and the shown whole calories.
TEST(ShippedFoodsCsv, HouseholdMeasuresAndWeightsLogTheSourcesValues) {
    FoodCatalogue catalogue;
    ASSERT_TRUE(importFoodsCsv(catalogue, readFile(NUTROVEX_FOODS_CSV)).refused.empty());
    const FixedClock clock{CalendarDate::fromDmy(21, 11, 2026)};

    using enum ServingUnit;
    const struct {
        int group;
        const char* category;
        const char* food;
        ServingQuantity shown;  // the household serving it opens with
        double shownGrams;      // what that serving weighs
        ServingQuantity logged;
        double grams;                               // what the logged serving weighs
        std::array<double, kNutrientCount> per100;  // the source's values per 100 g
    } cases[] = {
        // A cup of whole milk weighs 244 g.
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {1, Cup, 0},
         244,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {150, Gram, 0},
         150,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        {1,
         "Milk",
         "Milk, whole",
         {1, Cup, 0},
         244,
         {1, Pint, 0},
         488,
         {61, 4.8, 0, 3.15, 3.25, 1.865}},
        // A medium banana weighs 118 g.
        {4,
         "Fruit A-F",
         "Bananas, raw",
         {1, Item, 0},
         118,
         {2, Item, 0},
         236,
         {89, 22.84, 2.6, 1.09, 0.33, 0.112}},
        {4,
         "Fruit A-F",
         "Bananas, raw",
         {1, Item, 0},
         118,
         {150, Gram, 0},
         150,
         {89, 22.84, 2.6, 1.09, 0.33, 0.112}},
        // A tablespoon of olive oil weighs 13.5 g; a teaspoon is a third of it.
        {0,
         "Oils",
         "Olive oil",
         {1, Tablespoon, 0},
         13.5,
         {1, Teaspoon, 0},
         4.5,
         {884, 0, 0, 0, 100, 13.808}},
        {0,
         "Oils",
         "Olive oil",
         {1, Tablespoon, 0},
         13.5,
         {100, Gram, 0},
         100,
         {884, 0, 0, 0, 100, 13.808}},
        // A cup of cooked rice weighs 158 g; an ounce is 28.34952 g.
        {5,
         "Rice and Pasta",
         "Rice, cooked",
         {1, Cup, 0},
         158,
         {3, Ounce, 0},
         85.04856,
         {130, 28.17, 0.4, 2.69, 0.28, 0.077}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.food) + " " + std::to_string(c.logged.amount) + " " +
                     std::to_string(unitByte(c.logged.unit)));
        UserStore store(clock);
        DayCursor days(store);
        LogFoodForm form(catalogue, days, {}, c.group, -1, -1);
        const std::vector<std::string_view> categories = form.categoryNames();
        const auto category = std::find(categories.begin(), categories.end(), c.category);
        ASSERT_NE(category, categories.end());
        form.selectCategory(static_cast<int>(category - categories.begin()));
        const std::vector<std::string_view> foods = form.foodNames();
        const auto food = std::find(foods.begin(), foods.end(), c.food);
        ASSERT_NE(food, foods.end());
        form.selectItem(static_cast<int>(food - foods.begin()));
        EXPECT_EQ(form.fields.amount, c.shown.amount);
        EXPECT_EQ(form.fields.unit(), c.shown.unit);

        ASSERT_TRUE(form.fields.selectUnit(c.logged.unit)) << "the unit is offered";
        form.unitChosen(form.fields.unitIndex);
        form.amountChanged(c.logged.amount);
        const double eaten = c.grams / 100.0;
        EXPECT_NEAR(*form.fields.calories, c.per100[kCalories] * eaten,
                    0.5 + 0.5 * c.grams / c.shownGrams);
        for (int n = 1; n < kNutrientCount; ++n) {
            EXPECT_NEAR(*form.fields.grams[n], c.per100[n] * eaten,
                        1e-3 + 2e-3 * c.per100[n] * eaten)
                << n;
        }
        ASSERT_TRUE(form.log().done());
        const DayRecord* day = days.currentDay();
        ASSERT_NE(day, nullptr);
        const Nutrients totals = computeDayTotals(*day);
        EXPECT_EQ(wholeCalories(totals[kCalories]), *form.fields.calories);
        for (int n = 1; n < kNutrientCount; ++n) {
            EXPECT_NEAR(totals[n], *form.fields.grams[n], 1e-4) << n;
        }
    }
}

}  // namespace
}  // namespace nutrovex
