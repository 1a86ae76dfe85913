#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Csv.h"
#include "core/FoodCatalogue.h"

namespace nutrovex {

// The catalogue as CSV (UTF-8): a header row, then one row per food in catalogue order.
inline constexpr const char* kFoodCsvHeader =
    "group,category,name,amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat";
inline constexpr std::size_t kFoodCsvColumns = 11;

// Groups are written by their shown names, units by theirs, numbers in their shortest exact form;
// each food's values are those of its serving (nutrient × ratio).
[[nodiscard]] std::string foodsCsv(const FoodCatalogue& catalogue);

struct ImportRefusal {
    std::size_t line = 0;
    std::string reason;
};

struct ImportReport {
    bool headerMissing = false;  // nothing was imported
    std::size_t foodsAdded = 0;
    std::size_t categoriesAdded = 0;
    std::vector<ImportRefusal> refused;
};

// Adds the foods of a CSV text (UTF-8) as the new-item form would: names stripped of blanks and
// at most 20 characters, a missing category created (up to 250 per group), no duplicate names,
// at most 100 foods per category, the serving made the reference, values clamped. The group is
// its number 0..7 or its name; the unit its name or code. Each refused row is reported.
ImportReport importFoodsCsv(FoodCatalogue& catalogue, std::string_view csv);

}  // namespace nutrovex
