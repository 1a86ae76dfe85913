#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace nutrovex {

// printf-style formatting of the program's texts, whole however long the result; an encoding
// error gives an empty text.
template <typename... Args>
[[nodiscard]] std::string formatText(const char* pattern, Args... args) {
    char buffer[128];
    const int n = std::snprintf(buffer, sizeof buffer, pattern, args...);
    if (n < 0) {
        return {};
    }
    const auto length = static_cast<std::size_t>(n);
    if (length < sizeof buffer) {
        return std::string(buffer, length);
    }
    std::string big(length + 1, '\0');
    std::snprintf(big.data(), big.size(), pattern, args...);
    big.resize(length);
    return big;
}

}  // namespace nutrovex
