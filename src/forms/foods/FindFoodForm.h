#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/ScreenMessage.h"
#include "foods/FoodFinder.h"

namespace nutrovex {

struct FindFoodView {
    std::string text;                  // the find field
    std::vector<std::string> history;  // the last find texts, newest first
    std::vector<std::string> results;  // the names found
    int selected = -1;                 // the result chosen, or -1
};

// Find: searches the catalogue's foods by part of their name and returns the one chosen. Opened
// with a text, it searches for it at once, without a message when nothing matches.
class FindFoodForm {
public:
    FindFoodForm(const FoodCatalogue& catalogue, FoodFinder& finder, std::string_view text = {});

    enum class Field : uint8_t { Text };
    enum class Command : uint8_t {
        // Finds the text; nothing to find changes nothing, no match says so.
        Find,
    };

    [[nodiscard]] FindFoodView view() const;
    Outcome edit(Field field, std::string_view text);
    Outcome command(Command id);
    // A row of the results is chosen (OK or a double click takes it).
    void select(int row);
    // The result chosen; none without results.
    [[nodiscard]] std::optional<FindResult> chosen() const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    const FoodCatalogue* m_catalogue;
    FoodFinder* m_finder;
    std::string m_text;
    bool m_searched = false;
    int m_selected = -1;
};

}  // namespace nutrovex
