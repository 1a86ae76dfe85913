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

// The physical lines of a CSV text (after a byte-order mark), each with its number, split at
// "\r\n", "\n" or "\r". Every line is one record here, so a quote left open ends with its line
// and never swallows the rows after it.
struct CsvLine {
    std::size_t line = 0;
    std::string_view text;
};
[[nodiscard]] std::vector<CsvLine> csvLines(std::string_view text);
// The fields of one line: a field that starts with a quote is quoted (doubled quotes inside) and
// must be closed on the line and followed by a comma or the end of the line. On a broken line
// error says why and no fields are returned.
[[nodiscard]] std::vector<std::string> parseCsvLine(std::string_view line, std::string& error);

// A field, quoted (with doubled quotes) when it holds a comma, a quote or a line break.
[[nodiscard]] std::string csvField(std::string_view text);

// The shortest text that reads back as the same float.
[[nodiscard]] std::string shortestText(float value);

}  // namespace nutrovex
