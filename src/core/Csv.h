#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace nutrovex {

// The fields of each record of a CSV text, with the line each record starts on. Quoted fields
// may hold commas, doubled quotes and line breaks; empty lines are skipped.
struct CsvRecord {
    std::size_t line = 0;
    std::vector<std::string> fields;
};
[[nodiscard]] std::vector<CsvRecord> parseCsv(std::string_view text);

// A field, quoted (with doubled quotes) when it holds a comma, a quote or a line break.
[[nodiscard]] std::string csvField(std::string_view text);

// The shortest text that reads back as the same float.
[[nodiscard]] std::string shortestText(float value);

}  // namespace nutrovex
