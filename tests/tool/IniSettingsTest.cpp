#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/Cp1252.h"
#include "tool/IniSettings.h"

namespace nutrovex::tool {
namespace {

TEST(IniSettings, SetsTheKeyAndKeepsEveryOtherLine) {
    const struct {
        const char* before;
        const char* after;
    } rows[] = {
        {"", "[CurrentUser]\nName=Ann\n"},
        {"[CurrentUser]\nName=Bob\n", "[CurrentUser]\nName=Ann\n"},
        {"[CurrentUser]\r\nName = Bob\r\n[Charts]\r\nSpan=2\r\n",
         "[CurrentUser]\r\nName=Ann\n[Charts]\r\nSpan=2\r\n"},
        // Added after the section's last line, before the blank line that ends it.
        {"[CurrentUser]\nOther=1\n\n[Charts]\nName=Bob\n",
         "[CurrentUser]\nOther=1\nName=Ann\n\n[Charts]\nName=Bob\n"},
        {"[Charts]\nName=Bob", "[Charts]\nName=Bob\n\n[CurrentUser]\nName=Ann\n"},
        {"[CurrentUser]\n; Name=Old\nNames=2\n", "[CurrentUser]\n; Name=Old\nNames=2\nName=Ann\n"},
        {"[CurrentUser]", "[CurrentUser]\nName=Ann\n"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(withIniValue(r.before, "CurrentUser", "Name", "Ann"), r.after) << r.before;
        EXPECT_EQ(iniValue(r.after, "CurrentUser", "Name"), "Ann") << r.after;
    }
    EXPECT_EQ(iniValue("[Charts]\nName=Bob\n", "CurrentUser", "Name"), "");
}

TEST(IniSettings, EscapesWhatWouldChangeTheValue) {
    const struct {
        const char* value;
        const char* written;
    } rows[] = {
        {"Ann", "Ann"},
        {"a,b", "\"a,b\""},
        {" lead", "\" lead\""},
        {"quote\"d", "quote\\\"d"},
        {"back\\slash", "back\\\\slash"},
        {"@home", "@@home"},
        {"a@b", "a@b"},
        {"tab\there", "tab\\x9here"},
        // Hex digits after the escape would be read as part of it.
        {"tab\tafter", "tab\\x9\\x61\\x66ter"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(iniEscapedValue(r.value), r.written) << r.value;
        EXPECT_EQ(iniUnescapedValue(r.written), r.value) << r.written;
    }
}

TEST(IniSettings, EveryNameReadsBackAsWritten) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string name;
        const int length = static_cast<int>(random() % 24);
        for (int i = 0; i < length; ++i) {
            name += static_cast<char>(1 + random() % 255);  // any Windows-1252 byte but NUL
        }
        const std::string utf8 = cp1252ToUtf8(name);
        const std::string text = withIniValue("[Other]\nName=x\n", "CurrentUser", "Name", utf8);
        ASSERT_EQ(iniValue(text, "CurrentUser", "Name"), utf8) << text;
        ASSERT_EQ(iniValue(text, "Other", "Name"), "x");
    }
}

}  // namespace
}  // namespace nutrovex::tool
