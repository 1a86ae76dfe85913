#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nutrovex {

// A number converted with a fixed count of decimals the way the C runtime's fcvt reports it: the
// rounded digits without point or sign, where the point goes (0 or less: before the first digit,
// as for every value below 1, whose leading zeros are dropped), and the sign bit. Zero gives
// `decimals` zeros at point 0; a value that rounds to zero gives no digits and the point where
// its first significant digit would be.
struct FixedDigits {
    std::string digits;
    int32_t point = 0;
    bool negative = false;
    friend bool operator==(const FixedDigits&, const FixedDigits&) = default;
};
[[nodiscard]] FixedDigits fixedDigits(double value, uint16_t decimals);

// The single-line field that holds one decimal number: it filters keystrokes, shows the bare
// number while focused and the rounded, clamped, decorated number otherwise. Text is 8-bit.
class NumericField {
public:
    // Keystroke filter: digits and control characters always pass, "-" only at position 0 (even
    // when a minus is already there), "." only while the text holds none.
    [[nodiscard]] static bool acceptsCharacter(char c, std::string_view text,
                                               std::size_t selectionStart);
    // Half away from zero to `decimals` places; a value whose scaled form leaves the 32-bit
    // whole-number range comes back unchanged.
    [[nodiscard]] static double round(double value, uint16_t decimals);
    // The number at the start of an 8-bit text as the C library's strtod reads it in the "C"
    // locale (blanks, sign, digits, exponent, hexadecimal, inf and nan); trailing junk ends it
    // and a text without a number is 0.
    [[nodiscard]] static double parse(std::string_view text);

    [[nodiscard]] double value() const { return m_value; }
    [[nodiscard]] bool hasValue() const { return m_hasValue; }
    [[nodiscard]] uint16_t decimals() const { return m_decimals; }
    [[nodiscard]] bool grouping() const { return m_grouping; }
    [[nodiscard]] double minimum() const { return m_minimum; }
    [[nodiscard]] double maximum() const { return m_maximum; }
    [[nodiscard]] const std::string& prefix() const { return m_prefix; }
    [[nodiscard]] const std::string& suffix() const { return m_suffix; }
    // What the field shows.
    [[nodiscard]] const std::string& text() const { return m_text; }

    // value := v, has value, show decorated.
    void setValue(double v);
    // Store both, show decorated.
    void setFormat(uint16_t decimals, bool grouping);
    // Set by the owner before the field is shown; they take effect at the next show.
    void setRange(double minimum, double maximum) {
        m_minimum = minimum;
        m_maximum = maximum;
    }
    void setPrefix(std::string_view p) { m_prefix = p; }
    void setSuffix(std::string_view s) { m_suffix = s; }

    // The person edited the text.
    void setText(std::string_view text) { m_text = text; }
    // Focus gained: with a value, the bare number is shown (the widget then selects it all).
    void enter();
    // Focus lost: the text is read, rounded and shown decorated; an empty text leaves no value.
    void leave();

    // Up and Down: the typed number moves by steps whole units, within the range, and shows bare.
    // An empty field starts at the starting value instead (the range's minimum unless set), so
    // a person who cannot type still reaches a number.
    void step(int32_t steps);
    void setStartValue(double value) { m_start = value; }
    [[nodiscard]] double startValue() const;

    // Clamps (storing the clamped value), then returns and shows the text.
    const std::string& show(bool decorated);
    // The text for a value under this field's format, without touching the field.
    [[nodiscard]] std::string format(double value, bool decorated) const;

private:
    double m_value = 1.0;
    bool m_hasValue = true;
    uint16_t m_decimals = 2;
    bool m_grouping = false;
    double m_minimum = 0.0;
    double m_maximum = 999.99;
    std::string m_prefix;
    std::string m_suffix;
    std::string m_text;
    std::optional<double> m_start;
};

}  // namespace nutrovex
