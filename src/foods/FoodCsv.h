#pragma once

#include <array>
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

// The same import a few rows at a time, so a screen can show its progress and stop it.
class FoodCsvImport {
public:
    explicit FoodCsvImport(std::string_view csv);

    [[nodiscard]] std::size_t rowCount() const;  // the rows after the header
    [[nodiscard]] std::size_t rowsDone() const;
    [[nodiscard]] bool finished() const { return m_next >= m_records.size(); }
    [[nodiscard]] const ImportReport& report() const { return m_report; }
    // Imports up to `rows` more rows.
    void step(FoodCatalogue& catalogue, std::size_t rows);

private:
    void importRow(FoodCatalogue& catalogue, const CsvRecord& record);

    std::vector<CsvRecord> m_records;
    std::size_t m_next = 1;
    ImportReport m_report;
};

// A whole copy of a catalogue's contents, to put back when a long change is abandoned.
class CatalogueSnapshot {
public:
    explicit CatalogueSnapshot(const FoodCatalogue& catalogue);
    // The catalogue holds again what it held, modified or not as it was then. Once only.
    void restore(FoodCatalogue& catalogue);

private:
    CatalogueHeader m_header;
    std::array<CategoryList, kFoodGroupCount> m_groups;
    bool m_modified;
};

}  // namespace nutrovex
