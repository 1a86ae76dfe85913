#include "foods/FoodCsv.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "core/Cp1252.h"
#include "core/Csv.h"
#include "core/Names.h"
#include "core/ServingUnits.h"
#include "foods/CatalogueOps.h"
#include "foods/FoodFinder.h"
#include "foods/FoodForms.h"

namespace nutrovex {

namespace {

constexpr const char* kValueColumns[kNutrientCount] = {"calories", "carbohydrate", "fiber",
                                                       "protein",  "fat",          "saturated fat"};

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

std::optional<int> groupOf(std::string_view text) {
    if (allDigits(text)) {
        const int g = std::stoi(std::string(text));
        return g < kFoodGroupCount ? std::optional<int>(g) : std::nullopt;
    }
    for (int g = 0; g < kFoodGroupCount; ++g) {
        if (compareIgnoringCase(text, kFoodGroupNames[g]) == 0 ||
            compareIgnoringCase(text, kStoredGroupNames[g]) == 0) {
            return g;
        }
    }
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
    return value;
}

// A category or food name: UTF-8 that Windows-1252 can hold, 1 to 20 characters after the
// blanks are stripped. Sets reason when refused.
std::optional<std::string> nameOf(std::string_view field, const char* what, std::string& reason) {
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
        reason = std::string("the ") + what + " '" + std::string(stripBlanks(field)) +
                 "' is longer than " + std::to_string(kNameFieldLimit) + " characters";
        return std::nullopt;
    }
    return std::string(name);
}

// Builds the food of one row, or sets reason.
std::optional<FoodItem> foodOf(const std::vector<std::string>& f, const std::string& name,
                               std::string& reason) {
    const std::optional<double> amount = numberOf(stripBlanks(f[3]));
    if (!amount || *amount < kMinServingAmount) {
        reason = "the amount '" + f[3] + "' is not a number of at least 0.005";
        return std::nullopt;
    }
    const std::optional<uint8_t> unit = unitOf(stripBlanks(f[4]));
    if (!unit) {
        reason = "the unit '" + f[4] + "' is not a serving unit";
        return std::nullopt;
    }
    FoodItem food;
    food.name = name;
    food.text2 = name;
    // The amount field holds at most 10000; the setters clamp the values.
    food.serving = {static_cast<float>(std::min(*amount, kMaxServingAmount)), *unit, 0};
    food.setReference(food.serving);
    for (int n = 0; n < kNutrientCount; ++n) {
        const std::string& text = f[static_cast<std::size_t>(5 + n)];
        const std::optional<double> value = numberOf(stripBlanks(text));
        if (!value) {
            reason = std::string("the ") + kValueColumns[n] + " '" + text + "' is not a number";
            return std::nullopt;
        }
        food.setNutrient(n, static_cast<float>(*value));
    }
    return food;
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

FoodCsvImport::FoodCsvImport(std::string_view csv) : m_records(parseCsv(csv)) {
    if (m_records.empty() || m_records[0].fields.empty() ||
        compareIgnoringCase(stripBlanks(m_records[0].fields[0]), "group") != 0) {
        m_report.headerMissing = true;
        m_next = m_records.size();
    }
}

std::size_t FoodCsvImport::rowCount() const {
    return m_records.empty() ? 0 : m_records.size() - 1;
}

std::size_t FoodCsvImport::rowsDone() const {
    return m_next == 0 ? 0 : m_next - 1;
}

void FoodCsvImport::step(FoodCatalogue& catalogue, std::size_t rows) {
    for (; rows > 0 && m_next < m_records.size(); --rows) {
        importRow(catalogue, m_records[m_next++]);
    }
}

void FoodCsvImport::importRow(FoodCatalogue& catalogue, const CsvRecord& rec) {
    ImportReport& report = m_report;
    const std::vector<std::string>& f = rec.fields;
    std::string reason;
    const auto refuse = [&](std::string why) {
        report.refused.push_back({rec.line, std::move(why)});
    };
    if (f.size() != kFoodCsvColumns) {
        refuse("expected 11 columns, found " + std::to_string(f.size()));
        return;
    }
    const std::optional<int> group = groupOf(stripBlanks(f[0]));
    if (!group) {
        refuse("'" + f[0] + "' is not a food group (0 to 7, or a group's name)");
        return;
    }
    const std::optional<std::string> categoryName = nameOf(f[1], "category", reason);
    if (!categoryName) {
        refuse(reason);
        return;
    }
    const std::optional<std::string> name = nameOf(f[2], "name", reason);
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
            refuse("the category '" + f[1] + "' cannot be added");
            return;
        }
        ++report.categoriesAdded;
    }
    const FoodCategory& holder = catalogue.groups[static_cast<std::size_t>(*group)][category];
    if (findFoodItem(holder, *name) != kNoPosition) {
        refuse("'" + std::string(stripBlanks(f[2])) + "' is already in the category '" +
               std::string(stripBlanks(f[1])) + "'");
        return;
    }
    if (categoryIsFull(holder)) {
        refuse("the category '" + std::string(stripBlanks(f[1])) +
               "' already holds 100 food items");
        return;
    }
    if (addFoodItem(catalogue, *group, category, *food) == kNoPosition) {
        refuse("the food '" + f[2] + "' cannot be added");
        return;
    }
    ++report.foodsAdded;
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
    catalogue.markChanged();
    catalogue.modified = m_modified;
}

}  // namespace nutrovex
