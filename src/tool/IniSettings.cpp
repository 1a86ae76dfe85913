#include "tool/IniSettings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <span>
#include <vector>

#include "core/Cp1252.h"
#include "storage/FileIo.h"

namespace nutrovex::tool {

namespace {

constexpr std::string_view kSection = "CurrentUser";
constexpr std::string_view kKey = "Name";

std::string_view trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) {
        s.remove_prefix(1);
    }
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) {
        s.remove_suffix(1);
    }
    return s;
}

// The file's lines, each with its line end, so that unchanged lines are written back as read.
std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::size_t n = end == std::string_view::npos ? text.size() : end + 1;
        lines.push_back(text.substr(0, n));
        text.remove_prefix(n);
    }
    return lines;
}

// "[name]" gives name; nullopt for any other line.
std::optional<std::string_view> sectionOf(std::string_view line) {
    const std::string_view t = trimmed(line.substr(0, line.find('\n')));
    if (t.size() >= 2 && t.front() == '[' && t.back() == ']') {
        return t.substr(1, t.size() - 2);
    }
    return std::nullopt;
}

// The key of a "key=value" line, trimmed; nullopt for a line without one.
std::optional<std::string_view> keyOf(std::string_view line) {
    const std::string_view t = trimmed(line.substr(0, line.find('\n')));
    if (t.empty() || t.front() == ';' || t.front() == '#') {
        return std::nullopt;
    }
    const std::size_t eq = t.find('=');
    if (eq == std::string_view::npos) {
        return std::nullopt;
    }
    return trimmed(t.substr(0, eq));
}

std::string_view rawValueOf(std::string_view line) {
    const std::string_view t = trimmed(line.substr(0, line.find('\n')));
    return trimmed(t.substr(t.find('=') + 1));
}

}  // namespace

std::filesystem::path settingsFilePath(const DataRootChoice& root) {
    if (root.given) {
        return root.path / "Nutrovex.ini";
    }
    std::filesystem::path config;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg == '/') {
        config = xdg;
    } else if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        config = std::filesystem::path(home) / ".config";
    } else {
        config = ".config";
    }
    return config / "Zerbu" / "Nutrovex.conf";
}

std::string iniEscapedValue(std::string_view utf8) {
    std::string body;
    bool quote = !utf8.empty() && (utf8.front() == ' ' || utf8.back() == ' ');
    // After a \x escape a hex digit would be read as part of it, so it is escaped too.
    bool afterHexEscape = false;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        const bool hexEscape =
            c < 0x20 || c == 0x7F || (afterHexEscape && hexDigitValue(utf8[i]) >= 0);
        afterHexEscape = hexEscape;
        if (hexEscape) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%x", c);
            body += hex;
        } else if (i == 0 && c == '@') {
            body += "@@";
        } else if (c == '\\' || c == '"') {
            body += '\\';
            body += static_cast<char>(c);
        } else {
            quote = quote || c == ',' || c == ';' || c == '=' || c == '#';
            body += static_cast<char>(c);
        }
    }
    return quote ? '"' + body + '"' : body;
}

std::string iniUnescapedValue(std::string_view raw) {
    std::string out;
    bool quoted = false;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (c == '"') {
            quoted = !quoted;
        } else if (c == '\\' && i + 1 < raw.size()) {
            const char e = raw[++i];
            if (e == 'x') {
                unsigned code = 0;
                while (i + 1 < raw.size() && hexDigitValue(raw[i + 1]) >= 0 && code < 0x1000) {
                    code = code * 16 + static_cast<unsigned>(hexDigitValue(raw[++i]));
                }
                appendUtf8(out, code);
            } else {
                const char* const from = "abfnrtv";
                const char* const to = "\a\b\f\n\r\t\v";
                const char* hit = std::strchr(from, e);
                out += hit != nullptr && e != '\0' ? to[hit - from] : e;
            }
        } else if (!quoted && (c == ';' || c == ',')) {
            break;  // the tool only ever writes single values
        } else {
            out += c;
        }
    }
    if (out.starts_with("@@")) {
        out.erase(0, 1);
    }
    return out;
}

std::string withIniValue(std::string_view text, std::string_view section, std::string_view key,
                         std::string_view utf8Value) {
    const std::string line = std::string(key) + '=' + iniEscapedValue(utf8Value) + '\n';
    std::string source(text);
    if (!source.empty() && source.back() != '\n') {
        source += '\n';
    }
    std::string out;
    bool inSection = false;
    // Where the key goes when the section lacks it: after the section's last non-blank line.
    std::size_t insertAt = std::string::npos;
    for (const std::string_view l : splitLines(source)) {
        if (const auto s = sectionOf(l)) {
            inSection = *s == section;
        } else if (inSection && keyOf(l) == key) {
            const std::size_t rest = out.size() + l.size();  // copied as read so far
            return out + line + source.substr(rest);
        }
        out += l;
        if (inSection && !trimmed(l.substr(0, l.find('\n'))).empty()) {
            insertAt = out.size();
        }
    }
    if (insertAt != std::string::npos) {
        out.insert(insertAt, line);
        return out;
    }
    if (!out.empty()) {
        out += '\n';
    }
    return out + '[' + std::string(section) + "]\n" + line;
}

std::string iniValue(std::string_view text, std::string_view section, std::string_view key) {
    bool inSection = false;
    for (const std::string_view l : splitLines(text)) {
        if (const auto s = sectionOf(l)) {
            inSection = *s == section;
        } else if (inSection && keyOf(l) == key) {
            return iniUnescapedValue(rawValueOf(l));
        }
    }
    return {};
}

std::string IniSessionSettings::currentUserName() const {
    ByteBuffer bytes;
    StorageError error;
    if (readWholeFile(m_file, bytes, error) != ReadFile::Read) {
        return {};
    }
    const std::span<const uint8_t> b = bytes.bytes();
    const std::string text(reinterpret_cast<const char*>(b.data()), b.size());
    return utf8ToCp1252(iniValue(text, kSection, kKey)).value_or(std::string());
}

void IniSessionSettings::setCurrentUserName(std::string_view name) {
    ByteBuffer bytes;
    StorageError error;
    std::string text;
    switch (readWholeFile(m_file, bytes, error)) {
        case ReadFile::Read: {
            const std::span<const uint8_t> b = bytes.bytes();
            text.assign(reinterpret_cast<const char*>(b.data()), b.size());
            break;
        }
        case ReadFile::Missing:
            break;
        case ReadFile::Failed:
            // What could not be read is not written over.
            m_failure = error.message();
            return;
    }
    const std::string updated = withIniValue(text, kSection, kKey, cp1252ToUtf8(name));
    const auto* data = reinterpret_cast<const uint8_t*>(updated.data());
    const StorageStatus written =
        writeFileAtomically(m_file, std::span<const uint8_t>(data, updated.size()));
    m_failure = written ? std::string() : written.message();
}

}  // namespace nutrovex::tool
