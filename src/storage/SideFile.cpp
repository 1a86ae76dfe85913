#include "storage/SideFile.h"

#include <charconv>
#include <cmath>
#include <system_error>
#include <vector>

#include "core/Cp1252.h"
#include "core/Csv.h"
#include "storage/FileIo.h"
#include "storage/SideFileJson.h"

namespace nutrovex {

SideFileResult readSideFileText(const std::filesystem::path& path, std::string& text) {
    const std::string name = path.filename().string();
    std::error_code ec;
    const auto size = std::filesystem::file_size(path, ec);
    if (!ec && size > kMaxSideFileSize) {
        return {SideFileLoad::Failed,
                fileError(name, "is " + std::to_string(size) +
                                    " bytes long, more than a file of its kind can be (" +
                                    std::to_string(kMaxSideFileSize) + ")")};
    }
    ByteBuffer bytes;
    StorageError error;
    switch (readWholeFile(path, bytes, error)) {
        case ReadFile::Missing:
            return {SideFileLoad::Missing, {}};
        case ReadFile::Failed:
            return {SideFileLoad::Failed, error};
        case ReadFile::Read:
            break;
    }
    if (bytes.size() > kMaxSideFileSize) {  // it grew since it was measured
        return {SideFileLoad::Failed, fileError(name, "is larger than a file of its kind can be")};
    }
    text.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return {SideFileLoad::Read, {}};
}

StorageStatus writeSideFile(const std::filesystem::path& path, std::string_view text) {
    return writeFileAtomically(
        path, std::span<const uint8_t>(reinterpret_cast<const uint8_t*>(text.data()), text.size()),
        true);
}

namespace sidejson {

namespace {

constexpr std::size_t kMaxDepth = 8;
constexpr std::size_t kMaxItems = 1000;
// Far above the largest file the program writes (a thousand recipes of a hundred ingredients),
// and a bound on what a hostile file can make us hold.
constexpr std::size_t kMaxValues = 1'000'000;

}  // namespace

std::string printable(std::string_view text) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (const char ch : text) {
        const auto c = static_cast<unsigned char>(ch);
        if (c >= 0x20 && c < 0x7F) {
            out += ch;
        } else {
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        }
    }
    return out;
}

namespace {

// The parser's own words without its tag and without the text it last read, which is the file's.
std::string parseFailure(const std::string& what) {
    std::string m = what;
    if (m.starts_with("[json.exception")) {
        if (const std::size_t end = m.find("] "); end != std::string::npos) {
            m.erase(0, end + 2);
        }
    }
    if (m.starts_with("parse error ")) {
        m.erase(0, 12);
    }
    if (const std::size_t read = m.find("; last read: "); read != std::string::npos) {
        const std::size_t expected = m.find("; expected ", read);
        m.erase(read, expected == std::string::npos ? std::string::npos : expected - read);
    }
    return "not valid JSON: " + printable(m);
}

// Builds the document from the parser's events, refusing what the side files never hold.
class StrictBuilder final : public nlohmann::json_sax<Json> {
public:
    Json root;
    std::string failure;
    std::string failurePath;

    bool null() override { return add(Json(nullptr)) != nullptr; }
    bool boolean(bool v) override { return add(Json(v)) != nullptr; }
    bool number_integer(number_integer_t v) override { return add(Json(v)) != nullptr; }
    bool number_unsigned(number_unsigned_t v) override { return add(Json(v)) != nullptr; }
    bool number_float(number_float_t v, const string_t&) override {
        if (!std::isfinite(v)) {
            return fail(currentPath(), "a number is too large");
        }
        return add(Json(v)) != nullptr;
    }
    bool string(string_t& v) override { return add(Json(std::move(v))) != nullptr; }
    bool binary(binary_t&) override { return fail(currentPath(), "binary data is not JSON"); }
    bool start_object(std::size_t) override { return open(Json::object()); }
    bool key(string_t& k) override {
        Frame& top = m_frames.back();
        if (top.value->contains(k)) {
            return fail(member(top.path, k), "the field is given twice");
        }
        m_key = std::move(k);
        return true;
    }
    bool end_object() override {
        m_frames.pop_back();
        return true;
    }
    bool start_array(std::size_t) override { return open(Json::array()); }
    bool end_array() override {
        m_frames.pop_back();
        return true;
    }
    bool parse_error(std::size_t, const std::string&,
                     const nlohmann::detail::exception& e) override {
        failure = parseFailure(e.what());
        failurePath.clear();
        return false;
    }

private:
    struct Frame {
        Json* value;
        std::string path;
    };

    bool fail(std::string path, std::string reason) {
        failurePath = std::move(path);
        failure = std::move(reason);
        return false;
    }

    // The path of the next value to come.
    std::string currentPath() const {
        if (m_frames.empty()) {
            return {};
        }
        const Frame& top = m_frames.back();
        return top.value->is_array() ? item(top.path, top.value->size()) : member(top.path, m_key);
    }

    bool open(Json container) {
        if (m_frames.size() >= kMaxDepth) {
            return fail(currentPath(), "the document is nested too deeply");
        }
        std::string path = currentPath();
        Json* added = add(std::move(container));
        if (added == nullptr) {
            return false;
        }
        m_frames.push_back({added, std::move(path)});
        return true;
    }

    // Puts a value in its place; null when a limit refuses it.
    Json* add(Json v) {
        if (++m_values > kMaxValues) {
            fail(currentPath(), "the document holds too many values");
            return nullptr;
        }
        if (m_frames.empty()) {
            root = std::move(v);
            return &root;
        }
        Json& top = *m_frames.back().value;
        if (top.is_array()) {
            if (top.size() >= kMaxItems) {
                fail(m_frames.back().path, "the list holds more than 1000 items");
                return nullptr;
            }
            top.push_back(std::move(v));
            return &top.back();
        }
        Json& slot = top[m_key];
        slot = std::move(v);
        return &slot;
    }

    std::vector<Frame> m_frames;
    std::string m_key;
    std::size_t m_values = 0;
};

const char* kindOf(const Json& v) {
    if (v.is_object()) {
        return "an object";
    }
    if (v.is_array()) {
        return "a list";
    }
    if (v.is_string()) {
        return "a string";
    }
    if (v.is_boolean()) {
        return "true or false";
    }
    if (v.is_null()) {
        return "null";
    }
    return "a number";
}

[[noreturn]] void refuse(const std::string& path, std::string reason) {
    throw Refusal{path, std::move(reason)};
}

}  // namespace

std::optional<Json> parse(std::string_view text, StorageError& error) {
    StrictBuilder builder;
    if (!Json::sax_parse(text.begin(), text.end(), &builder, nlohmann::json::input_format_t::json,
                         true)) {
        error.reason = builder.failurePath.empty() ? builder.failure
                                                   : builder.failurePath + ": " + builder.failure;
        return std::nullopt;
    }
    return std::move(builder.root);
}

std::string member(const std::string& path, std::string_view key) {
    return path.empty() ? printable(key) : path + "." + printable(key);
}

std::string item(const std::string& path, std::size_t index) {
    return path + "[" + std::to_string(index) + "]";
}

void expectObject(const Json& value, const std::string& path,
                  std::initializer_list<const char*> required,
                  std::initializer_list<const char*> optional) {
    if (!value.is_object()) {
        refuse(path.empty() ? "the document" : path,
               std::string("must be an object, not ") + kindOf(value));
    }
    for (const char* key : required) {
        if (!value.contains(key)) {
            refuse(path.empty() ? "the document" : path,
                   std::string("the field '") + key + "' is missing");
        }
    }
    for (const auto& [key, v] : value.items()) {
        bool known = false;
        for (const auto* list : {&required, &optional}) {
            for (const char* k : *list) {
                known = known || key == k;
            }
        }
        if (!known) {
            refuse(member(path, key), "is not a field of this file");
        }
    }
}

const Json& field(const Json& object, const std::string& path, const char* key) {
    const auto it = object.find(key);
    if (it == object.end()) {
        refuse(path.empty() ? "the document" : path,
               std::string("the field '") + key + "' is missing");
    }
    return *it;
}

const Json& list(const Json& value, const std::string& path, std::size_t most) {
    if (!value.is_array()) {
        refuse(path, std::string("must be a list, not ") + kindOf(value));
    }
    if (value.size() > most) {
        refuse(path, "holds more than " + std::to_string(most) + " items");
    }
    return value;
}

uint64_t wholeNumber(const Json& value, const std::string& path, uint64_t low, uint64_t high) {
    const std::string range =
        "a whole number from " + std::to_string(low) + " to " + std::to_string(high);
    if (!value.is_number_integer()) {
        refuse(path, "must be " + range);
    }
    if (value.is_number_unsigned()) {
        const auto v = value.get<uint64_t>();
        if (v >= low && v <= high) {
            return v;
        }
    } else if (const auto v = value.get<int64_t>();
               v >= 0 && static_cast<uint64_t>(v) >= low && static_cast<uint64_t>(v) <= high) {
        return static_cast<uint64_t>(v);
    }
    refuse(path, "must be " + range);
}

double number(const Json& value, const std::string& path) {
    if (!value.is_number()) {
        refuse(path, std::string("must be a number, not ") + kindOf(value));
    }
    return value.get<double>();
}

std::string text(const Json& value, const std::string& path) {
    if (!value.is_string()) {
        refuse(path, std::string("must be a string, not ") + kindOf(value));
    }
    std::optional<std::string> converted = utf8ToCp1252(value.get_ref<const std::string&>());
    if (!converted) {
        refuse(path, "holds a character that Windows-1252 cannot store");
    }
    return std::move(*converted);
}

StorageError refusalError(std::string_view file, const Refusal& refusal) {
    return fileError(std::string(file),
                     refusal.path.empty() ? refusal.reason : refusal.path + ": " + refusal.reason);
}

void appendString(std::string& out, std::string_view cp1252) {
    static constexpr char kHex[] = "0123456789abcdef";
    out += '"';
    for (const char ch : cp1252ToUtf8(cp1252)) {
        const auto c = static_cast<unsigned char>(ch);
        if (ch == '"' || ch == '\\') {
            out += '\\';
            out += ch;
        } else if (c < 0x20 || c == 0x7F) {
            out += "\\u00";
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        } else {
            out += ch;
        }
    }
    out += '"';
}

void appendFloat(std::string& out, float value) {
    out += shortestText(value);
}

void appendDouble(std::string& out, double value) {
    char buffer[32];
    const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, ec == std::errc() ? end : buffer);
}

}  // namespace sidejson

}  // namespace nutrovex
