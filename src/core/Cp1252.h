#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nutrovex {

// Stored texts are Windows-1252. The five bytes it leaves undefined map to the C1 control of the
// same value, so every byte string converts to UTF-8 and back unchanged.
[[nodiscard]] std::string cp1252ToUtf8(std::string_view text);

// nullopt when the UTF-8 text is malformed or holds a character Windows-1252 cannot store.
[[nodiscard]] std::optional<std::string> utf8ToCp1252(std::string_view text);

// Appends a character of the Basic Multilingual Plane (below 0x10000) as UTF-8.
void appendUtf8(std::string& out, char32_t c);

// 0 to 15 for a hexadecimal digit of either case, -1 for any other character.
[[nodiscard]] int hexDigitValue(char c);

// A control character as Windows-1252 holds one: C0, DEL, and the five bytes it leaves undefined,
// which stand for C1 controls.
[[nodiscard]] bool isControlByte(unsigned char c);

// A name as a message quotes it: in single quotes, every control character written as \xNN, so
// that a name from a hostile file or command line can neither reach a terminal nor break a
// message into lines. Windows-1252 in and out; every other character is kept as it is.
[[nodiscard]] std::string quotedText(std::string_view text);

}  // namespace nutrovex
