#include <gtest/gtest.h>

#include <algorithm>
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
    for (std::size_t r = 1; r < source.size(); ++r) {
        std::vector<std::string> expected = source[r].fields;
        ASSERT_EQ(expected.size(), kFoodCsvColumns) << "line " << source[r].line;
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

// A person logs 150 g of the tables' milled raw rice (per 100 g: 356 kcal, 81.05 g carbohydrate,
// 2.81 fibre, 7.94 protein, 0.52 fat, 0.184 saturated fat): the form and the day show the
// values of 150 g.
TEST(ShippedFoodsCsv, RiceLoggedAt150GramsCountsItsValuesTimesOneAndAHalf) {
    FoodCatalogue catalogue;
    ASSERT_TRUE(importFoodsCsv(catalogue, readFile(NUTROVEX_FOODS_CSV)).refused.empty());
    const FixedClock clock{CalendarDate::fromDmy(21, 11, 2026)};
    UserStore store(clock);
    DayCursor days(store);

    LogFoodForm form(catalogue, days, {}, 5, -1, -1);
    const std::vector<std::string_view> categories = form.categoryNames();
    const auto cereals = std::find(categories.begin(), categories.end(), "Cereals and Millets");
    ASSERT_NE(cereals, categories.end());
    form.selectCategory(static_cast<int>(cereals - categories.begin()));
    const std::vector<std::string_view> foods = form.foodNames();
    const auto rice = std::find(foods.begin(), foods.end(), "Rice, raw, milled");
    ASSERT_NE(rice, foods.end());
    form.selectItem(static_cast<int>(rice - foods.begin()));
    EXPECT_EQ(form.fields.amount, 100.0);
    EXPECT_EQ(form.fields.calories, 356u);

    form.amountChanged(150.0);
    EXPECT_EQ(form.fields.calories, 534u);
    const double shown[] = {0, 121.575, 4.215, 11.91, 0.78, 0.276};
    for (int n = 1; n < kNutrientCount; ++n) {
        EXPECT_NEAR(*form.fields.grams[n], shown[n], 1e-4) << n;
    }
    ASSERT_TRUE(form.log().done());

    const DayRecord* day = days.currentDay();
    ASSERT_NE(day, nullptr);
    const Nutrients totals = computeDayTotals(*day);
    EXPECT_EQ(wholeCalories(totals[kCalories]), 534u);
    for (int n = 1; n < kNutrientCount; ++n) {
        EXPECT_NEAR(totals[n], shown[n], 1e-4) << n;
    }
}

}  // namespace
}  // namespace nutrovex
