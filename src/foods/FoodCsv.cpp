#include "foods/FoodCsv.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>

#include "core/Cp1252.h"
#include "core/Csv.h"
#include "core/Names.h"
#include "core/ServingUnits.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFields.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

namespace {

// The columns by their header names; kColumnNames[i] is column i of kFoodCsvHeader.
enum Column { kGroup, kCategory, kName, kAmount, kUnit, kFirstValue };
constexpr const char* kColumnNames[kFoodCsvColumns] = {
    "group",        "category", "name",    "amount", "unit",         "calories",
    "carbohydrate", "fiber",    "protein", "fat",    "saturated fat"};

bool allDigits(std::string_view s) {
    if (s.empty() || s.size() > 4) {
        return false;
    }
    for (const char c : s) {
        if (c < '0' || c > '9') {
            return false;
        }
    }
    return true;
}

// A field as a message shows it: in quotes, control characters (C0, DEL, and C1, which UTF-8
// writes as C2 80 to C2 9F) written as \xNN so that a hostile file cannot reach the terminal
// through a message.
std::string quoted(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out = "'";
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto u = static_cast<unsigned char>(text[i]);
        const bool c1 = u == 0xC2 && i + 1 < text.size() &&
                        static_cast<unsigned char>(text[i + 1]) >= 0x80 &&
                        static_cast<unsigned char>(text[i + 1]) <= 0x9F;
        if (c1) {
            u = static_cast<unsigned char>(text[++i]);
        }
        if (c1 || u < 0x20 || u == 0x7F) {
            out += "\\x";
            out += kHex[u >> 4];
            out += kHex[u & 0xF];
        } else {
            out += text[i];
        }
    }
    out += '\'';
    return out;
}

bool startsIgnoringCase(std::string_view name, std::string_view start) {
    return start.size() <= name.size() &&
           compareIgnoringCase(name.substr(0, start.size()), start) == 0;
}

// The group of a field: its number, its name (as shown or as stored), or the start of exactly
// one group's name. Sets reason when there is none or more than one.
std::optional<int> groupOf(std::string_view text, std::string& reason) {
    if (allDigits(text)) {
        const int g = std::stoi(std::string(text));
        if (g < kFoodGroupCount) {
            return g;
        }
    } else if (!text.empty()) {
        std::vector<int> matches;
        for (int g = 0; g < kFoodGroupCount; ++g) {
            if (compareIgnoringCase(text, kFoodGroupNames[g]) == 0 ||
                compareIgnoringCase(text, kStoredGroupNames[g]) == 0) {
                return g;
            }
            if (startsIgnoringCase(kFoodGroupNames[g], text) ||
                startsIgnoringCase(kStoredGroupNames[g], text)) {
                matches.push_back(g);
            }
        }
        if (matches.size() == 1) {
            return matches[0];
        }
        if (matches.size() > 1) {
            reason = quoted(text) + " is the start of more than one food group: ";
            for (std::size_t i = 0; i < matches.size(); ++i) {
                reason += (i == 0 ? "" : i + 1 == matches.size() ? " and " : ", ");
                reason += quoted(kFoodGroupNames[matches[i]]);
            }
            return std::nullopt;
        }
    }
    reason = quoted(text) + " is not a food group (0 to 7, a group's name or its start)";
    return std::nullopt;
}

// A plain decimal number; "-0" is 0.
std::optional<double> numberOf(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() ||
        !std::isfinite(value)) {
        return std::nullopt;
    }
    return value == 0.0 ? 0.0 : value;
}

// The first control character of a UTF-8 text (C0, DEL or C1), if any.
std::optional<unsigned> controlCharacter(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto u = static_cast<unsigned char>(text[i]);
        if (u < 0x20 || u == 0x7F) {
            return u;
        }
        if (u == 0xC2 && i + 1 < text.size()) {
            const auto next = static_cast<unsigned char>(text[i + 1]);
            if (next >= 0x80 && next <= 0x9F) {
                return next;
            }
        }
    }
    return std::nullopt;
}

// A category or food name: UTF-8 that Windows-1252 can hold, 1 to 20 characters after the
// blanks are stripped, no control characters. Sets reason when refused.
std::optional<std::string> nameOf(std::string_view field, const char* what, std::string& reason) {
    if (const std::optional<unsigned> c = controlCharacter(field)) {
        char code[8];
        std::snprintf(code, sizeof code, "U+%04X", *c);
        reason = std::string("the ") + what + " " + quoted(field) + " holds a control character (" +
                 code + ")";
        return std::nullopt;
    }
    const std::optional<std::string> converted = utf8ToCp1252(field);
    if (!converted) {
        reason = std::string("the ") + what + " cannot be written in Windows-1252";
        return std::nullopt;
    }
    const std::string_view name = stripBlanks(*converted);
    if (name.empty()) {
        reason = std::string("the ") + what + " is empty";
        return std::nullopt;
    }
    if (name.size() > kNameFieldLimit) {
        reason = std::string("the ") + what + " " + quoted(stripBlanks(field)) +
                 " is longer than " + std::to_string(kNameFieldLimit) + " characters";
        return std::nullopt;
    }
    return std::string(name);
}

// A number of a column within [low, high], compared as the float it is stored as.
std::optional<double> valueOf(std::string_view text, const char* column, double low, double high,
                              const char* lowText, const char* highText, std::string& reason) {
    const std::optional<double> value = numberOf(stripBlanks(text));
    if (!value) {
        reason = std::string(column) + " " + quoted(text) + " is not a number";
        return std::nullopt;
    }
    const auto stored = static_cast<float>(*value);
    if (!(stored >= static_cast<float>(low) && stored <= static_cast<float>(high))) {
        reason = std::string(column) + " " + quoted(text) + " is not between " + lowText + " and " +
                 highText;
        return std::nullopt;
    }
    return value;
}

// Builds the food of one row (fields already in header order), or sets reason.
std::optional<FoodItem> foodOf(const std::array<std::string_view, kFoodCsvColumns>& f,
                               const std::string& name, std::string& reason) {
    const std::optional<double> amount = valueOf(f[kAmount], "amount", kMinServingAmount,
                                                 kMaxServingAmount, "0.005", "10000", reason);
    if (!amount) {
        return std::nullopt;
    }
    const std::optional<ServingUnit> unit = unitNamed(stripBlanks(f[kUnit]));
    if (!unit) {
        reason = "the unit " + quoted(f[kUnit]) + " is not a serving unit";
        return std::nullopt;
    }
    FoodItem food;
    food.name = name;
    food.text2 = name;
    food.serving = {static_cast<float>(*amount), *unit, 0};
    food.setReference(food.serving);
    for (int n = 0; n < kNutrientCount; ++n) {
        const bool calories = n == kCalories;
        const std::optional<double> value = valueOf(
            f[static_cast<std::size_t>(kFirstValue + n)], kColumnNames[kFirstValue + n], 0.0,
            calories ? kMaxCaloriesField : kMaxGramField, "0", calories ? "10000" : "1000", reason);
        if (!value) {
            return std::nullopt;
        }
        // The calories field holds whole calories, shown with halves rounded up.
        food.setNutrient(n, static_cast<float>(calories ? std::floor(*value + 0.5) : *value));
    }
    return food;
}

// The grams column of a row: the serving's weight becomes the weight reference beside the
// serving, which stays the volume-or-item reference. Empty leaves the food as it is.
bool addServingWeight(FoodItem& food, std::string_view field, std::string& reason) {
    if (stripBlanks(field).empty()) {
        return true;
    }
    if (food.serving.isWeight()) {
        reason = "grams " + quoted(field) + " is given for a serving that is itself a weight";
        return false;
    }
    const std::optional<double> grams = valueOf(field, kFoodCsvGramsColumn, kMinServingAmount,
                                                kMaxServingAmount, "0.005", "10000", reason);
    if (!grams) {
        return false;
    }
    food.setReference({static_cast<float>(*grams), ServingUnit::Gram, 0}, /*keepOther=*/true);
    return true;
}

// The weight in grams of a food's serving, when the food has both reference servings and its
// serving is measured against the volume-or-item one.
std::optional<float> servingGrams(const FoodItem& food) {
    const ServingQuantity& s = food.serving;
    if (s.isWeight() || !isKnownUnit(s.unit) || !food.ref1.isWeight() || food.ref1.amount == 0.0f ||
        food.ref2.amount == 0.0f || !isKnownUnit(food.ref2.unit) ||
        !unitsCompatible(food.ref2.unit, s.unit)) {
        return std::nullopt;
    }
    float grams = 0.0f;
    if (convertServing(food.ref1.amount, food.ref1.unit, ServingUnit::Gram, grams) !=
        ConvertResult::Converted) {
        return std::nullopt;
    }
    return grams * servingFactor(food.ref2, s);
}

// Where each column is in the file's rows; sets the report's refusal or notes. The optional
// grams column's place goes to gramsColumn (SIZE_MAX without one).
std::optional<std::array<std::size_t, kFoodCsvColumns>> columnsOf(const CsvLine& header,
                                                                  ImportReport& report,
                                                                  std::size_t& gramsColumn) {
    report.fileLine = header.line;
    std::string error;
    const std::vector<std::string> names = parseCsvLine(header.text, error);
    if (!error.empty()) {
        report.fileRefusal = "the header row is broken: " + error;
        return std::nullopt;
    }
    constexpr std::size_t kMissing = SIZE_MAX;
    std::array<std::size_t, kFoodCsvColumns> at;
    at.fill(kMissing);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string_view name = stripBlanks(names[i]);
        std::size_t known = 0;
        while (known < kFoodCsvColumns && compareIgnoringCase(name, kColumnNames[known]) != 0) {
            ++known;
        }
        if (known == kFoodCsvColumns && compareIgnoringCase(name, kFoodCsvGramsColumn) == 0) {
            if (gramsColumn != kMissing) {
                report.fileRefusal = std::string("the column '") + kFoodCsvGramsColumn +
                                     "' is named twice in the header";
                return std::nullopt;
            }
            gramsColumn = i;
        } else if (known == kFoodCsvColumns) {
            report.notes.push_back({header.line, "the column " + quoted(name) +
                                                     " is not a food column and is ignored"});
        } else if (at[known] != kMissing) {
            report.fileRefusal = std::string("the column '") + kColumnNames[known] +
                                 "' is named twice in the header";
            return std::nullopt;
        } else {
            at[known] = i;
        }
    }
    std::vector<const char*> missing;
    for (std::size_t c = 0; c < kFoodCsvColumns; ++c) {
        if (at[c] == kMissing) {
            missing.push_back(kColumnNames[c]);
        }
    }
    if (!missing.empty()) {
        report.fileRefusal =
            missing.size() == 1 ? "the header has no column " : "the header has no columns ";
        for (std::size_t i = 0; i < missing.size(); ++i) {
            report.fileRefusal += (i == 0 ? "" : i + 1 == missing.size() ? " and " : ", ");
            report.fileRefusal += std::string("'") + missing[i] + "'";
        }
        report.fileRefusal += std::string(" (the header names the columns ") + kFoodCsvHeader + ")";
        return std::nullopt;
    }
    return at;
}

}  // namespace

std::string foodsCsv(const FoodCatalogue& catalogue) {
    bool weighed = false;
    for (const CategoryList& group : catalogue.groups) {
        for (const FoodCategory& c : group) {
            for (const FoodItem& food : c.foods) {
                weighed = weighed || servingGrams(food).has_value();
            }
        }
    }
    std::string out = kFoodCsvHeader;
    if (weighed) {
        out += std::string(",") + kFoodCsvGramsColumn;
    }
    out += '\n';
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const std::string group = csvField(kFoodGroupNames[g]);
        for (const FoodCategory& c : catalogue.groups[static_cast<std::size_t>(g)]) {
            const std::string category = csvField(cp1252ToUtf8(c.name.view()));
            for (const FoodItem& food : c.foods) {
                out += group + ',' + category + ',' + csvField(cp1252ToUtf8(food.name.view()));
                out += ',' + shortestText(food.serving.amount) + ',';
                const char* unit = unitName(food.serving.unit);
                out += unit != nullptr ? unit : std::to_string(unitByte(food.serving.unit));
                for (int n = 0; n < kNutrientCount; ++n) {
                    out += ',' + shortestText(food.shownNutrient(n));
                }
                if (weighed) {
                    const std::optional<float> grams = servingGrams(food);
                    out += ',' + (grams ? shortestText(*grams) : std::string());
                }
                out += '\n';
            }
        }
    }
    return out;
}

FoodCsvImport::FoodCsvImport(std::string_view csv) : m_text(csv), m_lines(csvLines(m_text)) {
    std::erase_if(m_lines, [](const CsvLine& l) { return l.text.empty(); });
    if (m_lines.empty()) {
        m_report.fileLine = 1;
        m_report.fileRefusal =
            std::string("the file is empty; the first row must be the header: ") + kFoodCsvHeader;
        return;
    }
    const auto columns = columnsOf(m_lines[0], m_report, m_gramsColumn);
    if (!columns) {
        m_lines.resize(1);  // nothing more is read
        return;
    }
    m_columns = *columns;
    std::string error;
    m_headerWidth = parseCsvLine(m_lines[0].text, error).size();
}

std::size_t FoodCsvImport::rowCount() const {
    return m_lines.empty() ? 0 : m_lines.size() - 1;
}

std::size_t FoodCsvImport::rowsDone() const {
    return m_next - 1;
}

void FoodCsvImport::step(FoodCatalogue& catalogue, std::size_t rows) {
    for (; rows > 0 && !finished(); --rows) {
        importRow(catalogue, m_lines[m_next++]);
    }
}

void FoodCsvImport::importRow(FoodCatalogue& catalogue, const CsvLine& row) {
    const std::size_t line = row.line;
    const auto refuse = [&](std::string why) {
        m_report.refused.push_back({line, std::move(why)});
    };
    std::string reason;
    const std::vector<std::string> fields = parseCsvLine(row.text, reason);
    if (!reason.empty()) {
        refuse(reason);
        return;
    }
    if (fields.size() != m_headerWidth) {
        refuse("expected " + std::to_string(m_headerWidth) + " columns, found " +
               std::to_string(fields.size()));
        return;
    }
    std::array<std::string_view, kFoodCsvColumns> f;
    for (std::size_t c = 0; c < kFoodCsvColumns; ++c) {
        f[c] = fields[m_columns[c]];
    }
    const std::optional<int> group = groupOf(stripBlanks(f[kGroup]), reason);
    if (!group) {
        refuse(reason);
        return;
    }
    const std::optional<std::string> categoryName = nameOf(f[kCategory], "category", reason);
    if (!categoryName) {
        refuse(reason);
        return;
    }
    const std::optional<std::string> name = nameOf(f[kName], "name", reason);
    if (!name) {
        refuse(reason);
        return;
    }
    std::optional<FoodItem> food = foodOf(f, *name, reason);
    if (!food ||
        (m_gramsColumn != SIZE_MAX && !addServingWeight(*food, fields[m_gramsColumn], reason))) {
        refuse(reason);
        return;
    }
    Position category = findCategory(catalogue, *group, *categoryName);
    if (category == kNoPosition) {
        if (groupIsFull(catalogue, *group)) {
            refuse(std::string("the food group '") + kFoodGroupNames[*group] +
                   "' already holds 250 categories");
            return;
        }
        category = addCategory(catalogue, *group, *categoryName);
        if (category == kNoPosition) {
            refuse("the category " + quoted(f[kCategory]) + " cannot be added");
            return;
        }
        ++m_report.categoriesAdded;
    }
    const FoodCategory& holder = catalogue.groups[static_cast<std::size_t>(*group)][category];
    if (findFoodItem(holder, *name) != kNoPosition) {
        refuse(quoted(stripBlanks(f[kName])) + " is already in the category " +
               quoted(stripBlanks(f[kCategory])));
        return;
    }
    if (categoryIsFull(holder)) {
        refuse("the category " + quoted(stripBlanks(f[kCategory])) +
               " already holds 100 food items");
        return;
    }
    if (addFoodItem(catalogue, *group, category, *food) == kNoPosition) {
        refuse("the food " + quoted(f[kName]) + " cannot be added");
        return;
    }
    ++m_report.foodsAdded;
}

ImportReport importFoodsCsv(FoodCatalogue& catalogue, std::string_view csv) {
    FoodCsvImport import(csv);
    import.step(catalogue, import.rowCount());
    return import.report();
}

namespace {

constexpr std::size_t kRowsBetweenProgress = 250;

std::string counted(std::size_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

}  // namespace

FoodCsvImportResult importFoodCsv(FoodCatalogue& catalogue, const FoodCsvText& csv,
                                  const ImportProgress& progress) {
    FoodCsvImportResult result;
    const auto line = [&csv](std::size_t at, const std::string& what) {
        return csv.name + ":" + std::to_string(at) + ": " + what;
    };
    if (!csv.failure.empty()) {
        result.unread = true;
        result.lines.push_back(csv.name + ": " + csv.failure);
        return result;
    }
    FoodCsvImport import(csv.text);
    if (progress && !import.finished()) {
        CatalogueSnapshot before(catalogue);
        while (!import.finished()) {
            import.step(catalogue, kRowsBetweenProgress);
            if (!progress(import.rowsDone(), import.rowCount())) {
                before.restore(catalogue);
                result.abandoned = true;
                return result;
            }
        }
    } else {
        import.step(catalogue, import.rowCount());
    }
    result.report = import.report();
    const ImportReport& report = result.report;
    if (!report.fileRefusal.empty()) {
        result.lines.push_back(line(report.fileLine, report.fileRefusal));
        return result;
    }
    for (const ImportRefusal& n : report.notes) {
        result.lines.push_back(line(n.line, "note: " + n.reason));
    }
    for (const ImportRefusal& r : report.refused) {
        result.lines.push_back(line(r.line, r.reason));
    }
    result.summary = "added " + counted(report.foodsAdded, "food item", "food items") + " and " +
                     counted(report.categoriesAdded, "category", "categories") + "; refused " +
                     counted(report.refused.size(), "row", "rows");
    if (report.foodsAdded + report.categoriesAdded > 0) {
        result.notices = Notices{.catalogue = true, .dataChanged = true};
    }
    return result;
}

CatalogueSnapshot::CatalogueSnapshot(const FoodCatalogue& catalogue)
    : m_header(catalogue.header), m_modified(catalogue.modified) {
    for (std::size_t g = 0; g < catalogue.groups.size(); ++g) {
        m_groups[g].resize(catalogue.groups[g].size());
        for (std::size_t c = 0; c < catalogue.groups[g].size(); ++c) {
            m_groups[g][c].copyFrom(catalogue.groups[g][c]);
        }
    }
}

void CatalogueSnapshot::restore(FoodCatalogue& catalogue) {
    catalogue.header = m_header;
    catalogue.groups = std::move(m_groups);
    // A fresh revision, so nothing built from the abandoned state is taken for current.
    catalogue.newRevision();
    catalogue.modified = m_modified;
}

}  // namespace nutrovex
