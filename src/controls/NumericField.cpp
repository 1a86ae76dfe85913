#include "controls/NumericField.h"

#include <locale.h>
#include <stdlib.h>
#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace nutrovex {

namespace {

// strtod follows the process locale, which the desktop program sets from the environment; the
// field always reads "." as the decimal point.
locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

// The decimal exponent of a positive finite value as 17 significant digits give it.
int32_t decimalExponent(double a) {
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, a, std::chars_format::scientific, 16);
    const char* e = buf;
    while (e < r.ptr && *e != 'e') {
        ++e;
    }
    int32_t exponent = 0;
    if (e < r.ptr) {
        const char* p = e + 1;
        if (p < r.ptr && *p == '+') {
            ++p;
        }
        std::from_chars(p, r.ptr, exponent);
    }
    return exponent;
}

}  // namespace

FixedDigits fixedDigits(double value, uint16_t decimals) {
    FixedDigits out;
    out.negative = std::signbit(value);
    if (!std::isfinite(value)) {
        out.digits = std::isnan(value) ? "nan" : "inf";
        out.point = static_cast<int32_t>(out.digits.size());
        return out;
    }
    const double a = std::fabs(value);
    // At most 309 integer digits, the point and the decimals.
    std::vector<char> buf(static_cast<std::size_t>(decimals) + 320);
    const auto r =
        std::to_chars(buf.data(), buf.data() + buf.size(), a, std::chars_format::fixed, decimals);
    const std::string_view text(buf.data(), static_cast<std::size_t>(r.ptr - buf.data()));
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    const std::string_view fraction =
        dot == std::string_view::npos ? std::string_view() : text.substr(dot + 1);
    if (whole != "0") {
        out.digits.reserve(whole.size() + fraction.size());
        out.digits.append(whole).append(fraction);
        out.point = static_cast<int32_t>(whole.size());
        return out;
    }
    // Below 1: no leading zeros, the point moves left instead.
    const std::size_t firstDigit = fraction.find_first_not_of('0');
    if (firstDigit != std::string_view::npos) {
        out.digits.assign(fraction.substr(firstDigit));
        out.point = -static_cast<int32_t>(firstDigit);
    } else if (a == 0.0) {
        out.digits.assign(decimals, '0');
        out.point = 0;
    } else {
        out.point = decimalExponent(a) + 1;
    }
    return out;
}

bool NumericField::acceptsCharacter(char c, std::string_view text, std::size_t selectionStart) {
    const auto u = static_cast<unsigned char>(c);
    if (u >= '0' && u <= '9') {
        return true;
    }
    if (u < 0x20 || u == 0x7F) {
        return true;
    }
    if (c == '-') {
        return selectionStart == 0;
    }
    if (c == '.') {
        return text.find('.') == std::string_view::npos;
    }
    return false;
}

double NumericField::round(double value, uint16_t decimals) {
    const double p = std::pow(10.0, static_cast<double>(decimals));
    const double e = 1.0 / p;
    const double scaled = value >= 0.0 ? (value + e / 2) * p : (value - e / 2) * p;
    // The whole part must fit a 32-bit whole number; otherwise the value stays as it is.
    if (!(scaled > -2147483649.0 && scaled < 2147483648.0)) {
        return value;
    }
    const auto n = static_cast<int32_t>(scaled);
    const double r = static_cast<double>(n) * e;
    const double d = value - r;
    return d >= -e && d <= e ? r : value;
}

double NumericField::parse(std::string_view text) {
    // Only a plain decimal number is read (blanks, sign, digits, point, exponent); whatever
    // follows ends it, so hexadecimal, "inf" and "nan" read as far as their leading digits.
    std::size_t i = 0;
    const auto digitsFrom = [&](std::size_t from) {
        std::size_t k = from;
        while (k < text.size() && text[k] >= '0' && text[k] <= '9') {
            ++k;
        }
        return k;
    };
    while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) {
        ++i;
    }
    const std::size_t start = i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        ++i;
    }
    const std::size_t intEnd = digitsFrom(i);
    std::size_t end = intEnd;
    bool anyDigit = intEnd > i;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fracEnd = digitsFrom(end + 1);
        anyDigit = anyDigit || fracEnd > end + 1;
        end = fracEnd;
    }
    if (!anyDigit) {
        return 0.0;
    }
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t k = end + 1;
        if (k < text.size() && (text[k] == '-' || text[k] == '+')) {
            ++k;
        }
        if (const std::size_t expEnd = digitsFrom(k); expEnd > k) {
            end = expEnd;
        }
    }
    const std::string number(text.substr(start, end - start));
    return strtod_l(number.c_str(), nullptr, cLocale());
}

void NumericField::setValue(double v) {
    m_value = v;
    m_hasValue = true;
    show(true);
}

void NumericField::setFormat(uint16_t decimals, bool grouping) {
    m_decimals = decimals;
    m_grouping = grouping;
    show(true);
}

void NumericField::enter() {
    if (m_hasValue) {
        show(false);
    }
}

void NumericField::leave() {
    if (m_text.empty()) {
        m_value = 0.0;
        m_hasValue = false;
    } else {
        m_hasValue = true;
        m_value = round(parse(m_text), m_decimals);
    }
    show(true);
}

double NumericField::startValue() const {
    return std::clamp(m_start.value_or(m_minimum), m_minimum, m_maximum);
}

void NumericField::step(int32_t steps) {
    const bool blank = m_text.find_first_not_of(" \t") == std::string::npos;
    const double from = blank ? startValue() : parse(m_text) + static_cast<double>(steps);
    m_value = round(std::clamp(from, m_minimum, m_maximum), m_decimals);
    m_hasValue = true;
    show(false);
}

const std::string& NumericField::show(bool decorated) {
    if (m_value < m_minimum) {
        m_value = m_minimum;
    }
    if (m_value > m_maximum) {
        m_value = m_maximum;
    }
    m_text = format(m_value, decorated);
    return m_text;
}

std::string NumericField::format(double value, bool decorated) const {
    FixedDigits fd = fixedDigits(value, m_decimals);
    // A value that rounds to nothing shows as zero with exactly the field's decimals, and a
    // field without decimals shows at least one digit.
    if (fd.digits.empty() && std::isfinite(value)) {
        fd.digits.assign(m_decimals, '0');
        fd.point = 0;
    }
    if (fd.point == 0 && m_decimals == 0 && std::isfinite(value)) {
        fd.digits = "0";
        fd.point = 1;
    }
    if (fd.point < 0) {
        fd.digits.insert(0, static_cast<std::size_t>(-fd.point), '0');
        fd.point = 0;
    }
    std::string text;
    text.reserve(fd.digits.size() + fd.digits.size() / 3 + m_prefix.size() + m_suffix.size() + 3);
    if (decorated) {
        text += m_prefix;
    }
    if (fd.negative) {
        text += '-';
    }
    const bool group = decorated && m_grouping;
    for (std::size_t i = 0; i < fd.digits.size(); ++i) {
        const int64_t integerDigitsLeft = static_cast<int64_t>(fd.point) - static_cast<int64_t>(i);
        if (group && i >= 1 && integerDigitsLeft >= 3 && integerDigitsLeft % 3 == 0) {
            text += ',';
        }
        if (static_cast<int64_t>(i) == fd.point) {
            text += '.';
        }
        text += fd.digits[i];
    }
    if (decorated) {
        text += m_suffix;
    }
    // Only a text that begins with the point gets a zero: "-.50" keeps its form.
    if (!text.empty() && text.front() == '.') {
        text.insert(text.begin(), '0');
    }
    return text;
}

}  // namespace nutrovex
