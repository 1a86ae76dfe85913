#include "core/Cp1252.h"

#include <cstdint>

namespace nutrovex {

namespace {

// Code points of bytes 0x80..0x9F; the undefined ones stay the C1 control of their own value.
constexpr char32_t kHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t decodeByte(unsigned char b) {
    return (b >= 0x80 && b < 0xA0) ? kHigh[b - 0x80] : char32_t{b};
}

std::optional<unsigned char> encodeChar(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<unsigned char>(c);
    }
    for (int i = 0; i < 32; ++i) {
        if (kHigh[i] == c) {
            return static_cast<unsigned char>(0x80 + i);
        }
    }
    return std::nullopt;
}

}  // namespace

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | ((c >> 12) & 0x0F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

int hexDigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

bool isControlByte(unsigned char c) {
    return c < 0x20 || c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D;
}

std::string quotedText(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out = "'";
    out.reserve(text.size() + 2);
    for (const char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        if (isControlByte(c)) {
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        } else {
            out += ch;
        }
    }
    out += '\'';
    return out;
}

std::string cp1252ToUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char ch : text) {
        appendUtf8(out, decodeByte(static_cast<unsigned char>(ch)));
    }
    return out;
}

std::optional<std::string> utf8ToCp1252(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const auto b0 = static_cast<unsigned char>(text[i]);
        char32_t c = 0;
        std::size_t len = 0;
        if (b0 < 0x80) {
            c = b0;
            len = 1;
        } else if ((b0 & 0xE0) == 0xC0) {
            c = b0 & 0x1F;
            len = 2;
        } else if ((b0 & 0xF0) == 0xE0) {
            c = b0 & 0x0F;
            len = 3;
        } else if ((b0 & 0xF8) == 0xF0) {
            c = b0 & 0x07;
            len = 4;
        } else {
            return std::nullopt;
        }
        if (i + len > text.size()) {
            return std::nullopt;
        }
        for (std::size_t k = 1; k < len; ++k) {
            const auto b = static_cast<unsigned char>(text[i + k]);
            if ((b & 0xC0) != 0x80) {
                return std::nullopt;
            }
            c = (c << 6) | (b & 0x3F);
        }
        // Overlong forms are malformed.
        if ((len == 2 && c < 0x80) || (len == 3 && c < 0x800) || (len == 4 && c < 0x10000)) {
            return std::nullopt;
        }
        const auto byte = encodeChar(c);
        if (!byte) {
            return std::nullopt;
        }
        out += static_cast<char>(*byte);
        i += len;
    }
    return out;
}

}  // namespace nutrovex
