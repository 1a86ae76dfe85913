#include <gtest/gtest.h>

#include <string>

#include "core/Format.h"

namespace nutrovex {
namespace {

TEST(FormatText, ShortAndLongTextsComeOutWhole) {
    EXPECT_EQ(formatText("Record: %d of %d", 2, 3), "Record: 2 of 3");
    EXPECT_EQ(formatText("%1.1fg  Carb", 12.25), "12.2g  Carb");
    EXPECT_EQ(formatText("no arguments"), "no arguments");
    EXPECT_EQ(formatText("%s", ""), "");

    // Around and past the inline buffer: nothing is cut off or read beyond what was written.
    for (const std::size_t length : {126u, 127u, 128u, 129u, 600u}) {
        const std::string name(length, 'x');
        const std::string text = formatText("[%s] %d", name.c_str(), 7);
        EXPECT_EQ(text, "[" + name + "] 7") << length;
    }
}

}  // namespace
}  // namespace nutrovex
