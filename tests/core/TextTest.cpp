#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "core/Cp1252.h"
#include "core/Names.h"
#include "core/Text.h"

namespace nutrovex {
namespace {

TEST(Text, NullDiffersFromEmpty) {
    const Text none;
    const Text empty("");
    EXPECT_TRUE(none.isNull());
    EXPECT_FALSE(empty.isNull());
    EXPECT_TRUE(none.empty());
    EXPECT_TRUE(empty.empty());
    EXPECT_FALSE(none == empty);
    EXPECT_FALSE(none == std::string_view(""));
    EXPECT_TRUE(empty == std::string_view(""));
}

TEST(Text, ShortAndLongTextsCopyMoveAndReassign) {
    const std::string shortText = "Bagel, plain";
    const std::string longText(600, 'n');
    for (const std::string& s :
         {shortText, longText, std::string(23, 'x'), std::string(24, 'y'), std::string(29, 'x')}) {
        Text a(s);
        Text b = a;
        EXPECT_EQ(b.view(), s);
        Text c = std::move(a);
        EXPECT_EQ(c.view(), s);
        EXPECT_TRUE(a.isNull());  // NOLINT: moved-from texts are null
        c = c;                    // self-assignment keeps the text
        EXPECT_EQ(c.view(), s);
        c = c.view().substr(1);  // assigning a view of itself
        EXPECT_EQ(c.view(), s.substr(1));
        EXPECT_EQ(c.data()[c.size()], '\0');
        c.clear();
        EXPECT_TRUE(c.isNull());
    }
}

TEST(Names, CaseInsensitiveFirstThenCaseSensitiveReversed) {
    const struct {
        const char* a;
        const char* b;
        int order;
    } cases[] = {
        {"bob", "Bob", -1},                              // equal ignoring case: lower case first
        {"Bob", "bob", 1},          {"Ann", "bob", -1},  // case ignored first
        {"apple", "Apple Pie", -1}, {"", "a", -1},         {"", "", 0}, {"rice", "Rice", -1},
        {"Same", "Same", 0},        {"a\xE9", "a\xC9", 1},  // only ASCII letters fold: the byte
                                                            // order decides
    };
    for (const auto& c : cases) {
        const int r = compareNames(c.a, c.b);
        EXPECT_EQ((r > 0) - (r < 0), c.order) << c.a << " vs " << c.b;
    }
}

TEST(Names, UniqueNamesAreNumberedAndCut) {
    std::set<std::string, std::less<>> taken = {"Bagel"};
    auto isTaken = [&](std::string_view n) { return taken.count(n) > 0; };
    EXPECT_EQ(uniqueName("Muffin", isTaken), "Muffin");
    EXPECT_EQ(uniqueName("Bagel", isTaken), "Bagel1");
    taken.insert("Bagel1");
    EXPECT_EQ(uniqueName("Bagel", isTaken), "Bagel2");

    const std::string twenty = "ABCDEFGHIJKLMNOPQRST";
    taken.insert(twenty);
    EXPECT_EQ(uniqueName(twenty, isTaken), "ABCDEFGHIJKLMNOPQRS1");  // 20 characters: cut at 19
    const std::string long25(25, 'z');
    taken.insert(long25);
    EXPECT_EQ(uniqueName(long25, isTaken), std::string(20, 'z') + "1");
    for (int n = 1; n <= 9; ++n) {
        taken.insert("Bagel" + std::to_string(n));
    }
    EXPECT_EQ(uniqueName("Bagel", isTaken), "Bagel10");
    // Everything taken: the last candidate tried.
    EXPECT_EQ(uniqueName("Bagel", [](std::string_view) { return true; }), "Bagel9999");
}

TEST(Cp1252, EveryByteRoundTripsThroughUtf8) {
    std::string all;
    for (int b = 1; b < 256; ++b) {
        all += static_cast<char>(b);
    }
    const std::string utf8 = cp1252ToUtf8(all);
    EXPECT_NE(utf8.find("\xE2\x82\xAC"), std::string::npos);  // 0x80 is the euro sign
    const auto back = utf8ToCp1252(utf8);
    ASSERT_TRUE(back.has_value());
    EXPECT_EQ(*back, all);
    EXPECT_FALSE(utf8ToCp1252("\xE4\xB8\xAD").has_value());  // a character it cannot hold
    EXPECT_FALSE(utf8ToCp1252("\xC3").has_value());          // cut short
    EXPECT_FALSE(utf8ToCp1252("\xC0\xAF").has_value());      // overlong
}

}  // namespace
}  // namespace nutrovex
