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

// A field as a message shows it: in quotes, control characters written as \xNN so that a
// hostile file cannot reach the terminal through a message.
std::string quoted(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out = "'";
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x20 || u == 0x7F) {
            out += "\\x";
            out += kHex[u >> 4];
            out += kHex[u & 0xF];
        } else {
            out += c;
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

std::optional<uint8_t> unitOf(std::string_view text) {
    if (allDigits(text)) {
        const int u = std::stoi(std::string(text));
        return u < kUnitCount ? std::optional<uint8_t>(static_cast<uint8_t>(u)) : std::nullopt;
    }
    for (int u = 0; u < kUnitCount; ++u) {
        if (compareIgnoringCase(text, kUnitNames[static_cast<std::size_t>(u)]) == 0) {
            return static_cast<uint8_t>(u);
        }
    }
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
    const std::optional<uint8_t> unit = unitOf(stripBlanks(f[kUnit]));
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

// Where each column is in the file's rows; sets the report's refusal or notes.
std::optional<std::array<std::size_t, kFoodCsvColumns>> columnsOf(const CsvLine& header,
                                                                  ImportReport& report) {
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
        if (known == kFoodCsvColumns) {
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
    std::string out = kFoodCsvHeader;
    out += '\n';
    for (int g = 0; g < kFoodGroupCount; ++g) {
        const std::string group = csvField(kFoodGroupNames[g]);
        for (const FoodCategory& c : catalogue.groups[static_cast<std::size_t>(g)]) {
            const std::string category = csvField(cp1252ToUtf8(c.name.view()));
            for (const FoodItem& food : c.foods) {
                out += group + ',' + category + ',' + csvField(cp1252ToUtf8(food.name.view()));
                out += ',' + shortestText(food.serving.amount) + ',';
                out += food.serving.unit < kUnitCount ? kUnitNames[food.serving.unit]
                                                      : std::to_string(food.serving.unit);
                for (int n = 0; n < kNutrientCount; ++n) {
                    out += ',' + shortestText(food.shownNutrient(n));
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
    const auto columns = columnsOf(m_lines[0], m_report);
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
    const std::optional<FoodItem> food = foodOf(f, *name, reason);
    if (!food) {
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
