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

std::vector<CsvLine> csvLines(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    std::vector<CsvLine> lines;
    std::size_t number = 1;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != '\n' && text[i] != '\r') {
            continue;
        }
        if (i < text.size() || start < text.size()) {
            lines.push_back({number, text.substr(start, i - start)});
        }
        if (i + 1 < text.size() && text[i] == '\r' && text[i + 1] == '\n') {
            ++i;
        }
        ++number;
        start = i + 1;
    }
    return lines;
}

std::vector<std::string> parseCsvLine(std::string_view line, std::string& error) {
    std::vector<std::string> fields;
    std::size_t i = 0;
    while (true) {
        const std::size_t column = fields.size() + 1;
        std::string field;
        if (i < line.size() && line[i] == '"') {
            ++i;
            bool closed = false;
            while (i < line.size()) {
                if (line[i] == '"') {
                    if (i + 1 < line.size() && line[i + 1] == '"') {
                        field += '"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    closed = true;
                    break;
                }
                field += line[i++];
            }
            if (!closed) {
                error = "the quote that opens column " + std::to_string(column) +
                        " is not closed on its line";
                return {};
            }
            if (i < line.size() && line[i] != ',') {
                error = "column " + std::to_string(column) + " has text after its closing quote";
                return {};
            }
        } else {
            const std::size_t comma = line.find(',', i);
            const std::size_t end = comma == std::string_view::npos ? line.size() : comma;
            field.assign(line.substr(i, end - i));
            i = end;
        }
        fields.push_back(std::move(field));
        if (i >= line.size()) {
            return fields;
        }
        ++i;  // the comma
    }
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
