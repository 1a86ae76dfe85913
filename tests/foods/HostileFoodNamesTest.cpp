// Crafted names through the CSV import: each is refused with its reason or stored so that the
// catalogue still saves and reads back with the very same names.
#include <gtest/gtest.h>

#include "HostileNames.h"
#include "core/Cp1252.h"
#include "core/Csv.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodCsv.h"
#include "foods/FoodFinder.h"
#include "storage/CatalogueFile.h"

namespace nutrovex {
namespace {

using test::hostileNames;
using test::shown;

// The catalogue writes, reads back whole and holds the same names in the same places.
void expectSavesAndReadsBack(const FoodCatalogue& c) {
    ByteBuffer bytes;
    const StorageStatus written = writeCatalogueFile(c, bytes);
    ASSERT_TRUE(written.ok()) << written.message();
    FoodCatalogue back;
    const StorageStatus read = readCatalogueFile(bytes.bytes(), back, {"FoodDB.ddb"});
    ASSERT_TRUE(read.ok()) << read.message();
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        ASSERT_EQ(back.groups[g].size(), c.groups[g].size());
        for (std::size_t k = 0; k < c.groups[g].size(); ++k) {
            EXPECT_EQ(back.groups[g][k].name.view(), c.groups[g][k].name.view());
            ASSERT_EQ(back.groups[g][k].foods.size(), c.groups[g][k].foods.size());
            for (std::size_t f = 0; f < c.groups[g][k].foods.size(); ++f) {
                EXPECT_EQ(back.groups[g][k].foods[f].name.view(),
                          c.groups[g][k].foods[f].name.view());
            }
        }
    }
}

TEST(HostileFoodNames, TheCsvImportRefusesOrStoresThem) {
    std::vector<std::string> names = hostileNames();
    // As UTF-8 text a file can also hold what Windows-1252 cannot.
    std::vector<std::string> utf8;
    for (const std::string& n : names) {
        utf8.push_back(cp1252ToUtf8(n));
    }
    utf8.insert(utf8.end(), {"\xE4\xB8\xAD\xE6\x96\x87", "\xF0\x9F\x98\x80", "\xC3", "\xED\xA0\x80",
                             "\xEF\xBB\xBF"
                             "bom",
                             "\xE2\x80\x8B"
                             "zero width"});
    std::string csv = std::string(kFoodCsvHeader) + "\n";
    for (const std::string& n : utf8) {
        csv += "5," + csvField(n) + ",Food,1,item,1,1,1,1,1,1\n";
        csv += "5,Bagels," + csvField(n) + ",1,item,1,1,1,1,1,1\n";
    }
    FoodCatalogue c;
    const ImportReport report = importFoodsCsv(c, csv);
    // Every line after the header is added or refused (a name may itself break a line).
    std::size_t rows = 0;
    for (const CsvLine& line : csvLines(csv)) {
        rows += line.text.empty() ? 0 : 1;
    }
    EXPECT_TRUE(report.fileRefusal.empty()) << report.fileRefusal;
    EXPECT_EQ(report.foodsAdded + report.refused.size(), rows - 1);
    EXPECT_GE(rows - 1, 2 * utf8.size());
    for (const ImportRefusal& r : report.refused) {
        EXPECT_FALSE(r.reason.empty()) << "line " << r.line;
    }
    for (const FoodCategory& category : c.groups[5]) {
        for (const Text* t : {&category.name}) {
            EXPECT_LE(t->size(), std::size_t{20}) << shown(t->str());
        }
        for (const FoodItem& f : category.foods) {
            EXPECT_LE(f.name.size(), std::size_t{20}) << shown(f.name.str());
            for (const char ch : f.name.view()) {
                EXPECT_GE(static_cast<unsigned char>(ch), 0x20) << shown(f.name.str());
            }
        }
    }
    expectSavesAndReadsBack(c);
}

}  // namespace
}  // namespace nutrovex
