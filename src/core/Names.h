#pragma once

#include <string_view>

namespace nutrovex {

// Name order of every sorted list: ignoring ASCII case first; names equal so are ordered by the
// case-sensitive byte comparison reversed, so "bob" comes before "Bob". Negative when a comes
// first. Duplicates are only names equal byte for byte.
[[nodiscard]] int compareNames(std::string_view a, std::string_view b);

// Byte comparison ignoring ASCII case, like the C runtime's case-insensitive compare.
[[nodiscard]] int compareIgnoringCase(std::string_view a, std::string_view b);

// ASCII lower case, the only case the C locale knows.
[[nodiscard]] inline char asciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace nutrovex
