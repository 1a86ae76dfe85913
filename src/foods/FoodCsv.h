#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
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
// An optional last column: the weight in grams of a serving in a volume unit or in items, so that
// the food also takes weights ("1 cup" of it weighs 227 g, and 150 g of it can be logged).
inline constexpr const char* kFoodCsvGramsColumn = "grams";

// Groups are written by their shown names, units by theirs, numbers in their shortest exact form;
// each food's values are those of its serving (nutrient × ratio). The grams column is written only
// when a food knows its serving's weight (both reference servings), and is empty for the others.
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
};

// Adds the foods of a CSV text (UTF-8) as the new-item form would. The header row names the
// columns, in any order and case; unknown ones are noted and ignored, a missing one refuses the
// file. Each line is one row, added or refused with its reason: names stripped of blanks, 1 to
// 20 characters without control characters, a missing category created (up to 250 per group),
// no duplicate names, at most 100 foods per category, the serving made the reference, values
// within the form's ranges ("-0" read as 0), calories rounded to whole ones as the form shows
// them. The group is its number 0..7, its name or the unique start of one; the unit its name or
// code. A grams value, where given, becomes the weight reference beside the serving.
ImportReport importFoodsCsv(FoodCatalogue& catalogue, std::string_view csv);

// The same import a few rows at a time, so a screen can show its progress and stop it.
class FoodCsvImport {
public:
    explicit FoodCsvImport(std::string_view csv);
    // The lines point into the import's own copy of the text.
    FoodCsvImport(const FoodCsvImport&) = delete;
    FoodCsvImport& operator=(const FoodCsvImport&) = delete;

    [[nodiscard]] std::size_t rowCount() const;  // the lines after the header
    [[nodiscard]] std::size_t rowsDone() const;
    [[nodiscard]] bool finished() const { return m_next >= m_lines.size(); }
    [[nodiscard]] const ImportReport& report() const { return m_report; }
    // Imports up to `rows` more rows.
    void step(FoodCatalogue& catalogue, std::size_t rows);

private:
    void importRow(FoodCatalogue& catalogue, const CsvLine& row);

    std::string m_text;
    std::vector<CsvLine> m_lines;
    std::array<std::size_t, kFoodCsvColumns> m_columns{};
    std::size_t m_gramsColumn = SIZE_MAX;  // none
    std::size_t m_headerWidth = 0;
    std::size_t m_next = 1;
    ImportReport m_report;
};

// A food CSV as an import reads it: the file's text, or why the file could not be read.
struct FoodCsvText {
    std::string name;     // the file as messages name it: its path as given, or "stdin"
    std::string text;     // UTF-8
    std::string failure;  // empty when the text was read
};

// Told the rows done of all rows after every few hundred; false abandons the import.
using ImportProgress = std::function<bool(std::size_t done, std::size_t total)>;

// What an import of a food CSV did, in the words both the catalogue screen and the tool use.
struct FoodCsvImportResult {
    ImportReport report;
    // One line per problem, "FILE:LINE: reason": each column ignored ("FILE:LINE: note: ..."),
    // then each refused row; the file's own refusal alone when nothing could be imported, and
    // "FILE: reason" when it could not be read.
    std::vector<std::string> lines;
    // "added 2 food items and 1 category; refused 1 row"; empty when nothing could be imported.
    std::string summary;
    Notices notices;         // what to apply: the catalogue changed when anything was added
    bool unread = false;     // the file could not be read
    bool abandoned = false;  // progress said stop: the catalogue holds again what it held

    // Nothing could be imported: the file could not be read, or its header refused it.
    [[nodiscard]] bool refusedWhole() const { return unread || !report.fileRefusal.empty(); }
    // Every row was added.
    [[nodiscard]] bool allAdded() const { return !refusedWhole() && report.refused.empty(); }
};

// Imports a food CSV into the catalogue as importFoodsCsv does, and says what happened. With a
// progress, an abandoned import leaves the catalogue as it was.
[[nodiscard]] FoodCsvImportResult importFoodCsv(FoodCatalogue& catalogue, const FoodCsvText& csv,
                                                const ImportProgress& progress = {});

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
