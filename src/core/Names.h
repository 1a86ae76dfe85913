#pragma once

#include <string>
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

// The name to give a pasted category or food: the wanted name if it is free, else the wanted
// name cut short and numbered ("Bagel1", "Bagel2", ...) up to 9999; when all are taken, the last
// candidate tried.
template <typename IsTaken>
[[nodiscard]] std::string uniqueName(std::string_view wanted, IsTaken&& isTaken) {
    if (!isTaken(wanted)) {
        return std::string(wanted);
    }
    std::string candidate;
    for (int n = 1; n <= 9999; ++n) {
        const std::size_t k = wanted.size() == 20 ? 2 : 1;
        const std::size_t d = n < 10 ? 0 : n < 100 ? 1 : n < 1000 ? 2 : 3;
        candidate.assign(wanted.substr(0, 21 - (k + d)));
        candidate += std::to_string(n);
        if (!isTaken(std::string_view(candidate))) {
            break;
        }
    }
    return candidate;
}

}  // namespace nutrovex
