#pragma once

// The side files' JSON, for the storage layer's own readers and writers only.

#include <cstdint>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "storage/StorageError.h"

namespace nutrovex::sidejson {

using Json = nlohmann::json;

// Parses a whole document: JSON and nothing after it but blanks, no field given twice, nested at
// most 8 deep, lists of at most 1000 items. On a refusal error holds the byte offset (for broken
// JSON) or the path of the offending field, and the reason.
[[nodiscard]] std::optional<Json> parse(std::string_view text, StorageError& error);

// What a reader refuses, thrown within a decode and caught at its top: the field's path
// ("recipes[2].ingredients[0].unit") and why.
struct Refusal {
    std::string path;
    std::string reason;
};

// A text as a message shows it: printable ASCII as it is, any other byte as \xNN.
[[nodiscard]] std::string printable(std::string_view text);

// "path.key" and "path[index]".
[[nodiscard]] std::string member(const std::string& path, std::string_view key);
[[nodiscard]] std::string item(const std::string& path, std::size_t index);

// The value must be an object holding every required field and no other than these.
void expectObject(const Json& value, const std::string& path,
                  std::initializer_list<const char*> required,
                  std::initializer_list<const char*> optional = {});
const Json& field(const Json& object, const std::string& path, const char* key);
[[nodiscard]] const Json& list(const Json& value, const std::string& path, std::size_t most);
[[nodiscard]] uint64_t wholeNumber(const Json& value, const std::string& path, uint64_t low,
                                   uint64_t high);
[[nodiscard]] double number(const Json& value, const std::string& path);
// A string in Windows-1252 (the file holds UTF-8).
[[nodiscard]] std::string text(const Json& value, const std::string& path);

// The refusal as a storage error of the file.
[[nodiscard]] StorageError refusalError(std::string_view file, const Refusal& refusal);

// Writing: a Windows-1252 text as a JSON string, and numbers in their shortest exact form.
void appendString(std::string& out, std::string_view cp1252);
void appendFloat(std::string& out, float value);
void appendDouble(std::string& out, double value);

}  // namespace nutrovex::sidejson
