// Feeds arbitrary bytes to the food CSV import. Whatever the bytes, every line after the header
// is either added or refused with a reason; the catalogue keeps its limits (250 categories a
// group, 100 foods a category, no name twice in a category, no control character in a name),
// counts what it added, and still saves and reads back to the same foods.
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string_view>

#include "core/Csv.h"
#include "foods/FoodCsv.h"
#include "storage/CatalogueFile.h"

namespace {

using namespace nutrovex;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool hasControl(const Text& name) {
    for (const char c : name.view()) {
        if (static_cast<unsigned char>(c) < 0x20) {
            return true;
        }
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view csv(reinterpret_cast<const char*>(data), size);
    FoodCatalogue catalogue;
    const ImportReport report = importFoodsCsv(catalogue, csv);
    std::size_t rows = 0;
    for (const CsvLine& line : csvLines(csv)) {
        rows += line.text.empty() ? 0 : 1;
    }
    if (!report.fileRefusal.empty()) {
        require(report.foodsAdded == 0 && report.refused.empty());
        return 0;
    }
    require(rows != 0 && report.foodsAdded + report.refused.size() == rows - 1);
    for (const ImportRefusal& r : report.refused) {
        require(!r.reason.empty() && r.line != 0);
    }

    std::size_t foods = 0;
    std::size_t categories = 0;
    for (const CategoryList& group : catalogue.groups) {
        require(group.size() <= 250);
        categories += group.size();
        for (const FoodCategory& category : group) {
            require(!category.name.empty() && !hasControl(category.name));
            require(category.foods.size() <= 100);
            std::set<std::string_view> names;
            for (const FoodItem& f : category.foods) {
                require(!f.name.empty() && !hasControl(f.name));
                require(names.insert(f.name.view()).second);
            }
            foods += category.foods.size();
        }
    }
    require(foods == report.foodsAdded && categories == report.categoriesAdded);
    require(catalogue.header.groupChunks == catalogue.expectedGroupChunks());

    ByteBuffer bytes;
    require(writeCatalogueFile(catalogue, bytes).ok());
    FoodCatalogue back;
    require(readCatalogueFile(bytes.bytes(), back, {"FoodDB.ddb"}).ok());
    require(foodsCsv(back) == foodsCsv(catalogue));
    return 0;
}
