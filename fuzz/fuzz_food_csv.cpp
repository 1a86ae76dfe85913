// Feeds arbitrary text to the food CSV import. Whatever the text, the catalogue must keep its
// limits (250 categories a group, 100 foods a category, names of at most 20 characters without
// control characters, no name twice in a category), count what it added, and still save and
// read back to the same foods.
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "foods/FoodCsv.h"
#include "storage/CatalogueFile.h"

namespace {

using namespace nutrovex;

bool safeName(const Text& name) {
    if (name.size() > 20) {
        return false;
    }
    for (const char c : name.view()) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            return false;
        }
    }
    return true;
}

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FoodCatalogue catalogue;
    const std::string_view csv(reinterpret_cast<const char*>(data), size);
    const ImportReport report = importFoodsCsv(catalogue, csv);

    std::size_t foods = 0;
    std::size_t categories = 0;
    for (const CategoryList& group : catalogue.groups) {
        require(group.size() <= 250);
        categories += group.size();
        for (const FoodCategory& category : group) {
            require(safeName(category.name) && !category.name.empty());
            require(category.foods.size() <= 100);
            std::set<std::string_view> names;
            for (const FoodItem& f : category.foods) {
                require(safeName(f.name) && !f.name.empty());
                require(names.insert(f.name.view()).second);
            }
            foods += category.foods.size();
        }
    }
    require(foods == report.foodsAdded && categories == report.categoriesAdded);
    require(!report.headerMissing || foods == 0);
    for (const ImportRefusal& r : report.refused) {
        require(!r.reason.empty() && r.line >= 2);
    }
    require(catalogue.header.groupChunks == catalogue.expectedGroupChunks());

    ByteBuffer bytes;
    require(writeCatalogueFile(catalogue, bytes).ok());
    FoodCatalogue back;
    require(readCatalogueFile(bytes.bytes(), back, {"FoodDB.ddb", true}).ok());
    require(foodsCsv(back) == foodsCsv(catalogue));
    return 0;
}
