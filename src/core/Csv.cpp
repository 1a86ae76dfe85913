#include "core/Csv.h"

#include <charconv>

namespace nutrovex {

std::vector<CsvRecord> parseCsv(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    std::vector<CsvRecord> records;
    CsvRecord record;
    std::string field;
    bool quoted = false;
    bool fieldStarted = false;
    std::size_t line = 1;
    record.line = line;
    const auto endField = [&] {
        record.fields.push_back(std::move(field));
        field.clear();
        fieldStarted = false;
    };
    const auto endRecord = [&] {
        endField();
        if (!(record.fields.size() == 1 && record.fields[0].empty())) {
            records.push_back(std::move(record));
        }
        record = CsvRecord{};
        record.line = line;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c == '"') {
                if (i + 1 < text.size() && text[i + 1] == '"') {
                    field += '"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == '\n') {
                    ++line;
                }
                field += c;
            }
            continue;
        }
        if (c == '"' && !fieldStarted) {
            quoted = true;
            fieldStarted = true;
        } else if (c == ',') {
            endField();
        } else if (c == '\n' || c == '\r') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            ++line;
            endRecord();
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (fieldStarted || !field.empty() || !record.fields.empty()) {
        endRecord();
    }
    return records;
}

std::string csvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') {
            quoted += '"';
        }
        quoted += c;
    }
    quoted += '"';
    return quoted;
}

std::string shortestText(float value) {
    char buffer[48];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return ec == std::errc() ? std::string(buffer, end) : std::string();
}

}  // namespace nutrovex
