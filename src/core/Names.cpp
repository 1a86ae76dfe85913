#include "core/Names.h"

#include <algorithm>

namespace nutrovex {

int compareIgnoringCase(std::string_view a, std::string_view b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<unsigned char>(asciiLower(a[i]));
        const auto cb = static_cast<unsigned char>(asciiLower(b[i]));
        if (ca != cb) {
            return ca < cb ? -1 : 1;
        }
    }
    if (a.size() == b.size()) {
        return 0;
    }
    return a.size() < b.size() ? -1 : 1;
}

int compareNames(std::string_view a, std::string_view b) {
    if (const int c = compareIgnoringCase(a, b); c != 0) {
        return c;
    }
    const int c = a.compare(b);  // char_traits<char>::compare orders bytes as unsigned
    return c == 0 ? 0 : (c < 0 ? 1 : -1);
}

}  // namespace nutrovex
