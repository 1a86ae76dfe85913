#include "foods/FoodFinder.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/Names.h"

namespace nutrovex {

namespace {

// A C string ends at its first zero byte; the runtime's search sees no further.
std::string_view asCString(std::string_view s) {
    const std::size_t nul = s.find('\0');
    return nul == std::string_view::npos ? s : s.substr(0, nul);
}

// Bytes readable past the last name, so the block scan below may load whole blocks.
constexpr std::size_t kScanPadding = 32;

// The first occurrence of needle (at least one byte, no zero byte) in [first, last), or null.
// Blocks of 16 positions are tested at once for the needle's first and last byte; only where
// both agree are the bytes between compared.
const char* findBytes(const char* first, const char* last, std::string_view needle) {
    const std::size_t k = needle.size();
    if (static_cast<std::size_t>(last - first) < k) {
        return nullptr;
    }
    const char* stop = last - k + 1;  // candidates stand before stop
#if defined(__SSE2__)
    if (k >= 2) {
        const __m128i head = _mm_set1_epi8(needle.front());
        const __m128i tail = _mm_set1_epi8(needle.back());
        for (const char* p = first; p < stop; p += 16) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k - 1));
            auto mask = static_cast<unsigned>(
                _mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi8(a, head), _mm_cmpeq_epi8(b, tail))));
            while (mask != 0) {
                const char* candidate = p + __builtin_ctz(mask);
                if (candidate >= stop) {
                    return nullptr;
                }
                if (std::memcmp(candidate + 1, needle.data() + 1, k - 2) == 0) {
                    return candidate;
                }
                mask &= mask - 1;
            }
        }
        return nullptr;
    }
#endif
    return static_cast<const char*>(
        memmem(first, static_cast<std::size_t>(last - first), needle.data(), needle.size()));
}

// Whether needle (lower case) occurs in name at the start of a word: at its beginning, or after a
// character that is not a letter or digit ("oat" starts a word in "Rolled oats", not in "Goat").
bool startsAWord(std::string_view name, std::string_view needle) {
    const std::string_view text = asCString(name);
    for (std::size_t at = 0; at + needle.size() <= text.size(); ++at) {
        if (at > 0 && std::isalnum(static_cast<unsigned char>(text[at - 1]))) {
            continue;
        }
        std::size_t i = 0;
        while (i < needle.size() && asciiLower(text[at + i]) == needle[i]) {
            ++i;
        }
        if (i == needle.size()) {
            return true;
        }
    }
    return false;
}

// Adds a found food to its name-ordered list, once per name.
void insertByName(std::vector<FindResult>& list, FindResult found) {
    const auto at = std::lower_bound(list.begin(), list.end(), found.item.name.view(),
                                     [](const FindResult& r, std::string_view name) {
                                         return compareNames(r.item.name.view(), name) < 0;
                                     });
    list.insert(at, std::move(found));
}

bool holdsName(const std::vector<FindResult>& list, std::string_view name) {
    const auto at = std::lower_bound(list.begin(), list.end(), name,
                                     [](const FindResult& r, std::string_view n) {
                                         return compareNames(r.item.name.view(), n) < 0;
                                     });
    return at != list.end() && at->item.name.view() == name;
}

}  // namespace

std::string_view stripBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(kBlanks);
    return text.substr(first, last - first + 1);
}

void FoodSearchIndex::build(const FoodCatalogue& catalogue) {
    m_text.clear();
    m_starts.clear();
    m_places.clear();
    const std::size_t count = catalogue.foodCount();
    m_starts.reserve(count + 1);
    m_places.reserve(count);
    std::size_t bytes = 0;
    for (const CategoryList& list : catalogue.groups) {
        for (const FoodCategory& c : list) {
            for (const FoodItem& f : c.foods) {
                bytes += asCString(f.text2.view()).size() + 1;
            }
        }
    }
    m_text.reserve(bytes + kScanPadding);
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        m_groupStart[g] = m_places.size();
        const CategoryList& list = catalogue.groups[g];
        for (std::size_t c = 0; c < list.size(); ++c) {
            const FoodList& foods = list[c].foods;
            for (std::size_t i = 0; i < foods.size(); ++i) {
                m_starts.push_back(static_cast<uint32_t>(m_text.size()));
                for (const char ch : asCString(foods[i].text2.view())) {
                    m_text.push_back(asciiLower(ch));
                }
                m_text.push_back('\0');
                m_places.push_back(
                    {static_cast<Position>(g), static_cast<Position>(c), static_cast<Position>(i)});
            }
        }
    }
    m_groupStart[kFoodGroupCount] = m_places.size();
    m_starts.push_back(static_cast<uint32_t>(m_text.size()));
    m_text.append(kScanPadding, '\0');
    m_revision = catalogue.revision;
    m_built = true;
}

std::size_t FoodSearchIndex::nextMatch(std::string_view needle, std::size_t from,
                                       std::size_t end) const {
    if (from >= end) {
        return end;
    }
    if (needle.empty()) {
        return from;
    }
    const char* base = m_text.data();
    const char* first = base + m_starts[from];
    const char* last = base + m_starts[end];
    // The needle holds no zero byte, so a hit never spans two names.
    const char* hit = findBytes(first, last, needle);
    if (!hit) {
        return end;
    }
    const auto offset = static_cast<uint32_t>(hit - base);
    const auto it = std::upper_bound(m_starts.begin() + static_cast<std::ptrdiff_t>(from),
                                     m_starts.begin() + static_cast<std::ptrdiff_t>(end), offset);
    return static_cast<std::size_t>(it - m_starts.begin()) - 1;
}

void FoodFinder::pushHistory(std::string_view text) {
    m_history.emplace_front(text.substr(0, kFindHistoryTextLimit));
    if (m_history.size() > kFindHistorySize) {
        m_history.pop_back();
    }
}

FoodFinder::Outcome FoodFinder::find(const FoodCatalogue& catalogue, std::string_view text) {
    const std::string_view stripped = stripBlanks(text);
    if (stripped.empty()) {
        return Outcome::NothingToFind;
    }
    pushHistory(stripped);
    m_results.clear();
    if (!m_index.matches(catalogue)) {
        m_index.build(catalogue);
    }
    std::string needle(asCString(stripped));
    for (char& ch : needle) {
        ch = asciiLower(ch);
    }
    // Names where the text starts a word come first; each part in name order. The search ends
    // once a hundred of those are found, as nothing found later could be shown.
    std::vector<FindResult> others;
    m_index.forEachMatch(needle, includeInSearch, [&](const FoodSearchIndex::Place& p) {
        const FoodItem& f = catalogue.groups[p.group][p.category].foods[p.food];
        const std::string_view name = f.name.view();
        if (holdsName(m_results, name) || holdsName(others, name)) {
            return true;
        }
        if (startsAWord(f.text2.view(), needle)) {
            insertByName(m_results, FindResult{f, p.group, p.category, p.food});
        } else if (others.size() < kMaxFindResults) {
            insertByName(others, FindResult{f, p.group, p.category, p.food});
        }
        return m_results.size() < kMaxFindResults;
    });
    const std::size_t room = kMaxFindResults - m_results.size();
    m_results.insert(m_results.end(), others.begin(),
                     others.begin() + static_cast<std::ptrdiff_t>(std::min(room, others.size())));
    return m_results.empty() ? Outcome::NoMatch : Outcome::Found;
}

}  // namespace nutrovex
