#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "core/FoodCatalogue.h"
#include "data/ShippedCatalogue.h"
#include "foods/FoodCsv.h"
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

}  // namespace
}  // namespace nutrovex
