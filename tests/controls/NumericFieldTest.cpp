#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "controls/NumericField.h"

namespace nutrovex {
namespace {

TEST(FixedDigits, BehavesLikeTheRuntimesFixedPointConversion) {
    const struct {
        double value;
        uint16_t decimals;
        const char* digits;
        int32_t point;
        bool negative;
    } cases[] = {
        {1234.567, 2, "123457", 4, false},
        {3.1415926535, 7, "31415927", 1, false},
        {-111.0001, 5, "11100010", 3, true},
        {99.99, 1, "1000", 3, false},  // rounding adds a digit
        {123.0, 0, "123", 3, false},
        {0.5, 2, "50", 0, false},  // below 1: no leading zero
        {0.05, 2, "5", -1, false},
        {0.0063, 2, "1", -1, false},  // rounds up into the shown places
        {0.0063, 3, "6", -2, false},
        {0.51, 0, "1", 1, false},
        {0.0, 2, "00", 0, false},  // zero: the decimals' zeros, point 0
        {0.0, 0, "", 0, false},
        {-0.0, 2, "00", 0, true},   // negative zero keeps its sign
        {0.004, 2, "", -2, false},  // rounds to nothing: the point stays where the value is
        {0.0001, 2, "", -3, false},
        {0.4, 0, "", 0, false},
        {-0.5, 2, "50", 0, true},
        {1e20, 1, "1000000000000000000000", 21, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fixedDigits(c.value, c.decimals), (FixedDigits{c.digits, c.point, c.negative}))
            << c.value << " " << c.decimals;
    }
}

struct ShowCase {
    double value;
    uint16_t decimals;
    bool grouping;
    double minimum;
    double maximum;
    const char* prefix;
    const char* suffix;
    const char* decorated;
    const char* bare;
};

TEST(NumericField, ShowsDecoratedOrBare) {
    const ShowCase cases[] = {
        {1234567.891, 2, true, 0, 1e9, "", "", "1,234,567.89", "1234567.89"},
        {123456, 2, true, 0, 1e9, "", "", "123,456.00", "123456.00"},
        {999, 0, true, 0, 1e9, "", "", "999", "999"},
        {1000, 1, true, 0, 1e9, "", "", "1,000.0", "1000.0"},
        {-1234, 2, true, -1e9, 1e9, "", "", "-1,234.00", "-1234.00"},
        {0.5, 2, false, 0, 999.99, "", "", "0.50", "0.50"},
        {-0.5, 2, false, -10, 10, "", "", "-.50", "-.50"},  // no zero after the sign
        {0.05, 2, false, 0, 10, "", "", "0.05", "0.05"},
        {0.0, 2, false, 0, 10, "", "", "0.00", "0.00"},
        {-0.0, 2, false, -1, 10, "", "", "-.00", "-.00"},
        // Exactly the field's decimals, also for values that round to zero.
        {0.0001, 2, false, 0, 10, "", "", "0.00", "0.00"},
        {5.35e-06, 2, false, 0, 10, "", "", "0.00", "0.00"},
        {-6e-05, 2, false, -1, 10, "", "", "-.00", "-.00"},
        {0.0004, 3, false, 0, 10, "", "", "0.000", "0.000"},
        {0.049, 0, false, 0, 10, "", "", "0", "0"},
        {0.4, 0, false, 0, 10, "", " Cal", "0 Cal", "0"},
        {0.0, 0, false, 0, 10, "", "", "0", "0"},
        {-0.4, 0, false, -10, 10, "", "", "-0", "-0"},
        {0.6, 0, false, 0, 10, "", "", "1", "1"},
        {0.5, 2, false, 0, 10, "$", "", "$.50", "0.50"},  // a prefix hides the zero rule
        {12.5, 1, false, 0, 100, "", " g", "12.5 g", "12.5"},
        {5000, 2, true, 0, 10000, "$", " each", "$5,000.00 each", "5000.00"},
        {1234.567, 2, false, 0, 999.99, "", "", "999.99", "999.99"},  // clamped
        {-5, 2, false, 0, 999.99, "", "", "0.00", "0.00"},
    };
    for (const auto& c : cases) {
        NumericField f;
        f.setRange(c.minimum, c.maximum);
        f.setPrefix(c.prefix);
        f.setSuffix(c.suffix);
        f.setFormat(c.decimals, c.grouping);
        f.setValue(c.value);
        EXPECT_EQ(f.text(), c.decorated) << c.value;
        f.enter();
        EXPECT_EQ(f.text(), c.bare) << c.value;
        // The clamped value is what the field holds afterwards.
        EXPECT_EQ(f.value(), std::fmin(std::fmax(c.value, c.minimum), c.maximum)) << c.value;
    }
}

struct LeaveCase {
    const char* typed;
    uint16_t decimals;
    double minimum;
    double maximum;
    bool hasValue;
    double value;
    const char* text;
};

TEST(NumericField, LeavingTheFieldRoundsClampsAndRedisplays) {
    const LeaveCase cases[] = {
        {"1234.567", 2, 0, 999.99, true, 999.99, "999.99"},
        {"1234.567", 2, 0, 1e6, true, 1234.57, "1234.57"},
        {"-5", 2, 0, 999.99, true, 0.0, "0.00"},
        {"-.5", 2, -10, 10, true, -0.5, "-.50"},
        {"-0.125", 2, -10, 10, true, -0.13, "-.13"},  // half away from zero
        {"0.125", 2, -10, 10, true, 0.13, "0.13"},
        {"2.5", 0, 0, 10, true, 3.0, "3"},
        {"-0.001", 2, -10, 10, true, 0.0, "0.00"},  // rounds to plain zero, no sign
        {"", 2, 0, 999.99, false, 0.0, "0.00"},
        {"", 1, 5, 10, false, 5.0, "5.0"},  // the clamp still stores its value
        {"12abc", 2, 0, 100, true, 12.0, "12.00"},
        {"  7.25", 1, 0, 100, true, 7.3, "7.3"},
        {"1,5", 2, 0, 100, true, 1.0, "1.00"},
        {"-", 2, -10, 10, true, 0.0, "0.00"},
        {"abc", 2, 0, 10, true, 0.0, "0.00"},
        {"1e2", 2, 0, 1000, true, 100.0, "100.00"},
        {"5..5", 2, 0, 10, true, 5.0, "5.00"},
    };
    for (const auto& c : cases) {
        NumericField f;
        f.setRange(c.minimum, c.maximum);
        f.setFormat(c.decimals, false);
        f.enter();
        f.setText(c.typed);
        f.leave();
        EXPECT_EQ(f.hasValue(), c.hasValue) << c.typed;
        EXPECT_DOUBLE_EQ(f.value(), c.value) << c.typed;
        EXPECT_EQ(f.text(), c.text) << c.typed;
    }
}

TEST(NumericField, EnteringAnEmptiedFieldKeepsItsText) {
    NumericField f;
    f.setText("");
    f.leave();
    ASSERT_FALSE(f.hasValue());
    f.setText("");
    f.enter();
    EXPECT_EQ(f.text(), "");
    f.setText("3");
    f.leave();
    f.enter();
    EXPECT_EQ(f.text(), "3.00");
}

TEST(NumericField, RoundingLeavesValuesBeyondTheWholeNumberRangeAlone) {
    EXPECT_DOUBLE_EQ(NumericField::round(21474836.4449, 2), 21474836.44);
    EXPECT_EQ(NumericField::round(30000000.123, 2), 30000000.123);
    EXPECT_EQ(NumericField::round(-30000000.123, 2), -30000000.123);
    EXPECT_DOUBLE_EQ(NumericField::round(-2.5, 0), -3.0);
    EXPECT_EQ(NumericField::round(1e300, 0), 1e300);
    EXPECT_TRUE(std::isinf(NumericField::round(std::numeric_limits<double>::infinity(), 2)));
    EXPECT_TRUE(std::isnan(NumericField::round(std::nan(""), 2)));
}

TEST(NumericField, ParsingReadsTheLeadingNumberOnly) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"42", 42.0},
        {"-.25x", -0.25},
        {"+3", 3.0},
        {"\t 8", 8.0},
        {".", 0.0},
        {"--1", 0.0},
        {"1e", 1.0},
        {"2e-1", 0.2},
        {"0x10", 0.0},  // only decimal numbers: what could not be typed reads as far as it is one
        {"nan", 0.0},
        {"-inf", 0.0},
        {"7e+2z", 700.0},
        {"1.2.3", 1.2},
        {"\x80"
         "5",
         0.0},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(NumericField::parse(c.text), c.value) << c.text;
    }
    EXPECT_TRUE(std::isinf(NumericField::parse("1e999")));
}

TEST(NumericField, KeystrokeFilter) {
    const struct {
        char c;
        const char* text;
        std::size_t selectionStart;
        bool accepted;
    } cases[] = {
        {'7', "12", 1, true},  {'\b', "12", 2, true},  {'\x7F', "", 0, true},
        {'-', "12", 0, true},  {'-', "-12", 0, true},  // a second minus is not checked
        {'-', "12", 1, false}, {'.', "12", 2, true},   {'.', "1.2", 1, false},
        {',', "12", 2, false}, {'a', "", 0, false},    {'+', "", 0, false},
        {' ', "", 0, false},   {'\xE9', "", 0, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NumericField::acceptsCharacter(c.c, c.text, c.selectionStart), c.accepted)
            << "'" << c.c << "' in \"" << c.text << "\" at " << c.selectionStart;
    }
}

// Up and Down reach a number without typing: an empty field starts at its starting value, a
// number moves by whole units and stops at the range's ends.
TEST(NumericField, StepsFromEmptyStartAtTheStartingValueAndStayInRange) {
    NumericField f;
    f.setFormat(2, false);
    f.setRange(0.0, 10.0);
    f.setText("");
    f.step(1);
    EXPECT_EQ(f.text(), "0.00");  // the minimum unless told otherwise
    EXPECT_TRUE(f.hasValue());

    f.setStartValue(1.0);
    for (const int steps : {1, -1}) {
        f.setText("  ");
        f.step(steps);
        EXPECT_EQ(f.text(), "1.00") << steps;  // either key starts there
    }
    f.setText("2.5");
    f.step(1);
    EXPECT_EQ(f.text(), "3.50");
    EXPECT_DOUBLE_EQ(f.value(), 3.5);
    f.setText("9.75");
    f.step(1);
    EXPECT_EQ(f.text(), "10.00");
    f.setText("0.5");
    f.step(-1);
    EXPECT_EQ(f.text(), "0.00");
    // A starting value outside the range starts at the nearer end.
    f.setStartValue(50.0);
    f.setText("");
    f.step(-1);
    EXPECT_EQ(f.text(), "10.00");
}

}  // namespace
}  // namespace nutrovex
