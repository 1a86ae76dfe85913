#include "tool/JsonPrint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "tool/FileCommands.h"
#include "tool/RandomRecords.h"

namespace nutrovex::tool {
namespace {

// The records printed straight must give exactly the text of their JSON values laid out by
// appendPretty: the dumps print the one, and the documents were always the other.

std::string prettyOf(const Json& value, std::size_t indent) {
    std::string out;
    appendPretty(out, value, indent);
    return out;
}

float fromBits(uint32_t bits) {
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

TEST(JsonPrint, FloatsPrintAsTheirJsonValues) {
    const float table[] = {0.0f,
                           -0.0f,
                           1.0f,
                           100.0f,
                           1e7f,
                           16777216.0f,
                           16777217.0f,
                           0.1f,
                           -2.5e-5f,
                           1e38f,
                           std::numeric_limits<float>::max(),
                           std::numeric_limits<float>::lowest(),
                           std::numeric_limits<float>::min(),
                           std::numeric_limits<float>::denorm_min(),
                           fromBits(0x007FFFFF),
                           std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(),
                           std::numeric_limits<float>::quiet_NaN(),
                           fromBits(0x7FA00001),
                           fromBits(0xFFC00000)};
    RandomRecords random(7);
    for (const bool exact : {false, true}) {
        std::optional<ExactNanBits> nanBits;
        if (exact) {
            nanBits.emplace();
        }
        for (const float f : table) {
            std::string text;
            appendFloatText(text, f);
            EXPECT_EQ(text, scalarJsonText(floatJson(f))) << f;
        }
        for (int i = 0; i < 20000; ++i) {
            const float f = random.anyFloat();
            std::string text;
            appendFloatText(text, f);
            ASSERT_EQ(text, scalarJsonText(floatJson(f))) << std::hex << std::bit_cast<uint32_t>(f);
        }
    }
}

TEST(JsonPrint, TextsPrintAsTheirJsonValues) {
    const Text table[] = {Text::null(),
                          Text(""),
                          Text("Bagel"),
                          Text("say \"hi\"\\"),
                          Text("Caf\xE9 \x80 \x81 \x9D"),
                          Text("tab\tnew\nline\x01\x7F")};
    for (const Text& t : table) {
        std::string text;
        appendTextJson(text, t);
        EXPECT_EQ(text, scalarJsonText(textJson(t))) << t.view();
    }
    RandomRecords random(8);
    for (int i = 0; i < 2000; ++i) {
        const Text t = random.anyText();
        std::string text;
        appendTextJson(text, t);
        ASSERT_EQ(text, scalarJsonText(textJson(t)));
    }
}

// Every indent from the left margin past the line's end, so that each list that may or may not
// fit a line (a day's date, totals and empty groups) is tried on both sides of the edge.
TEST(JsonPrint, DaysPrintAsTheirJsonValuesAtEveryIndent) {
    const ExactNanBits exact;
    RandomRecords random(20261123);
    std::vector<std::unique_ptr<DayRecord>> days;
    for (int i = 0; i < 40; ++i) {
        days.push_back(random.day());
    }
    // Totals whose one-line text is long: NaNs with their bits print 17 characters each.
    days.push_back(std::make_unique<DayRecord>(CalendarDate()));
    days.back()->rawFields().totals.fill(fromBits(0x7FA00001));
    days.push_back(std::make_unique<DayRecord>(CalendarDate::fromDmy(29, 2, 2000)));
    for (const auto& day : days) {
        const Json json = dayJson(*day);
        for (std::size_t indent = 0; indent <= kJsonLineWidth + 2; ++indent) {
            std::string text;
            appendDayJson(text, *day, indent);
            ASSERT_EQ(text, prettyOf(json, indent)) << "indent " << indent;
        }
        std::string food;
        for (const FoodList& list : day->fields().groups) {
            for (const FoodItem& f : list) {
                food.clear();
                appendFoodJson(food, f);
                ASSERT_EQ(food, prettyOf(foodJson(f), 10));
            }
        }
    }
}

std::string groupsText(const FoodCatalogue& catalogue, std::size_t indent) {
    std::string text;
    appendCatalogueGroupsJson(text, catalogue, indent, [] {});
    return text;
}

TEST(JsonPrint, CataloguesPrintAsTheirJsonValuesAtEveryIndent) {
    const ExactNanBits exact;
    std::vector<FoodCatalogue> catalogues(30);
    RandomRecords random(20260301);
    for (FoodCatalogue& c : catalogues) {
        random.catalogue(c);
    }
    // Catalogues without foods, whose lists may fit a line: empty, one short category, a
    // category with a long name, and several short ones spread over the groups.
    catalogues.emplace_back();
    catalogues.emplace_back().groups[2].push_back({PackedKey{1}, 0, "X", {}});
    catalogues.emplace_back().groups[7].push_back(
        {PackedKey{4294967295u}, 255, Text(std::string(120, 'n')), {}});
    FoodCatalogue& spread = catalogues.emplace_back();
    for (std::size_t g = 0; g < kFoodGroupCount; g += 3) {
        spread.groups[g].push_back({PackedKey{static_cast<uint32_t>(g)}, 0, Text::null(), {}});
        spread.groups[g].push_back({PackedKey{9}, 1, "", {}});
    }
    // Foods in one group only: the other groups keep their own layout.
    FoodCatalogue& one = catalogues.emplace_back();
    one.groups[1].push_back({PackedKey{2}, 0, "Fruit", {random.food(), random.food()}});
    one.groups[1].push_back({PackedKey{3}, 0, "Empty", {}});
    one.groups[4].push_back({PackedKey{4}, 0, "Short", {}});

    for (const FoodCatalogue& c : catalogues) {
        const Json groups = catalogueJson(c)["groups"];
        for (std::size_t indent = 0; indent <= kJsonLineWidth + 2; ++indent) {
            ASSERT_EQ(groupsText(c, indent), prettyOf(groups, indent)) << "indent " << indent;
        }
        for (const CategoryList& list : c.groups) {
            for (const FoodCategory& category : list) {
                std::string text;
                appendCategoryJson(text, category, 6);
                ASSERT_EQ(text, prettyOf(categoryJson(category), 6));
            }
        }
    }
}

}  // namespace
}  // namespace nutrovex::tool
