#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "core/Position.h"

namespace nutrovex {

inline constexpr std::size_t kMaxFindResults = 100;
inline constexpr std::size_t kFindHistorySize = 10;
inline constexpr std::size_t kFindHistoryTextLimit = 20;  // a 21-byte buffer each

inline constexpr const char* kNoMatchMessage = "No matching food items found.";
inline constexpr const char* kEmptyFindMessage = "Please enter a find string.";
inline constexpr const char* kFindCaption = "Find";

// A copy of a matching food with where it stands in the catalogue.
struct FindResult {
    FoodItem item;
    Position group = 0;
    Position category = 0;
    Position food = 0;
};

// The second names of every catalogue food, lower-cased once, in one buffer, so that a search is
// one scan of contiguous bytes instead of lower-casing 200,000 names each time.
class FoodSearchIndex {
public:
    struct Place {
        Position group;
        Position category;
        Position food;
    };

    void build(const FoodCatalogue& catalogue);
    [[nodiscard]] bool matches(const FoodCatalogue& catalogue) const {
        return m_built && m_revision == catalogue.revision;
    }
    [[nodiscard]] std::size_t size() const { return m_places.size(); }

    // Calls visit(place) for every food of an included group whose lower-cased second name
    // contains needle (already lower case), in catalogue order, until visit returns false.
    template <typename Visit>
    void forEachMatch(std::string_view needle, const std::array<bool, kFoodGroupCount>& include,
                      Visit&& visit) const;

private:
    // The first food at or after offset whose name holds a match of needle; size() if none.
    [[nodiscard]] std::size_t nextMatch(std::string_view needle, std::size_t from,
                                        std::size_t end) const;

    std::string m_text;              // each name followed by a zero byte
    std::vector<uint32_t> m_starts;  // where each food's name begins; one extra at the end
    std::vector<Place> m_places;     // the food of each name
    std::array<std::size_t, kFoodGroupCount + 1> m_groupStart{};  // first food of each group
    uint64_t m_revision = 0;
    bool m_built = false;
};

// The find of the catalogue screens: include-in-search flags per group, the last ten find texts,
// and at most 100 results in name order.
class FoodFinder {
public:
    enum class Outcome { NothingToFind, NoMatch, Found };

    // All groups are searched unless a flag is cleared.
    std::array<bool, kFoodGroupCount> includeInSearch{true, true, true, true,
                                                      true, true, true, true};

    // Strips blanks from text; an empty text does nothing. Otherwise pushes the text on the
    // history and replaces the results with the foods whose second name contains it, ignoring
    // ASCII case.
    Outcome find(const FoodCatalogue& catalogue, std::string_view text);

    [[nodiscard]] const std::vector<FindResult>& results() const { return m_results; }
    // Newest first.
    [[nodiscard]] const std::deque<std::string>& history() const { return m_history; }
    void pushHistory(std::string_view text);

private:
    FoodSearchIndex m_index;
    std::vector<FindResult> m_results;
    std::deque<std::string> m_history;
};

// Blanks (space, tab, line breaks) removed at both ends.
[[nodiscard]] std::string_view stripBlanks(std::string_view text);

template <typename Visit>
void FoodSearchIndex::forEachMatch(std::string_view needle,
                                   const std::array<bool, kFoodGroupCount>& include,
                                   Visit&& visit) const {
    if (needle.empty()) {
        return;
    }
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        if (!include[g]) {
            continue;
        }
        const std::size_t end = m_groupStart[g + 1];
        std::size_t i = m_groupStart[g];
        while ((i = nextMatch(needle, i, end)) < end) {
            if (!visit(m_places[i])) {
                return;
            }
            ++i;
        }
    }
}

}  // namespace nutrovex
