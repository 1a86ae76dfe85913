// Feeds arbitrary bytes to the food CSV import. Whatever the bytes, every line after the header
// is either added or refused with a reason, and nothing added holds a control character.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/Csv.h"
#include "foods/FoodCsv.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace nutrovex;
    const std::string_view csv(reinterpret_cast<const char*>(data), size);
    FoodCatalogue catalogue;
    const ImportReport report = importFoodsCsv(catalogue, csv);
    std::size_t rows = 0;
    for (const CsvLine& line : csvLines(csv)) {
        rows += line.text.empty() ? 0 : 1;
    }
    if (!report.fileRefusal.empty()) {
        if (report.foodsAdded != 0 || !report.refused.empty()) {
            std::abort();
        }
        return 0;
    }
    if (rows == 0 || report.foodsAdded + report.refused.size() != rows - 1) {
        std::abort();
    }
    for (const ImportRefusal& r : report.refused) {
        if (r.reason.empty() || r.line == 0) {
            std::abort();
        }
    }
    for (const auto& group : catalogue.groups) {
        for (const FoodCategory& category : group) {
            for (const FoodItem& food : category.foods) {
                for (const char c : food.name.view()) {
                    if (static_cast<unsigned char>(c) < 0x20) {
                        std::abort();
                    }
                }
            }
        }
    }
    return 0;
}
