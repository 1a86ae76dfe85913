#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Csv.h"
#include "core/FoodCatalogue.h"
#include "foods/CatalogueOps.h"

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
    // Set when the whole file was refused (no header, a column missing or named twice): nothing
    // was imported. The reason belongs to `fileLine`.
    std::string fileRefusal;
    std::size_t fileLine = 0;
    std::vector<ImportRefusal> notes;  // columns that are not used
    std::size_t foodsAdded = 0;
    std::size_t categoriesAdded = 0;
    std::vector<ImportRefusal> refused;

    // The catalogue changed when anything was added.
    [[nodiscard]] Notices notices() const {
        return foodsAdded + categoriesAdded > 0 ? kCatalogueChanged : Notices{};
    }
};

// Adds the foods of a CSV text (UTF-8) as the new-item form would. The header row names the
// columns, in any order and case; unknown ones are noted and ignored, a missing one refuses the
// file. Each line is one row, added or refused with its reason: names stripped of blanks, 1 to
// 20 characters without control characters, a missing category created (up to 250 per group),
// no duplicate names, at most 100 foods per category, the serving made the reference, values
// within the form's ranges ("-0" read as 0), calories rounded to whole ones as the form shows
// them. The group is its number 0..7, its name or the unique start of one; the unit its name or
// code.
ImportReport importFoodsCsv(FoodCatalogue& catalogue, std::string_view csv);

}  // namespace nutrovex
