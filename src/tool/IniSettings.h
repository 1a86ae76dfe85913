#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "session/SessionSettings.h"

namespace nutrovex::tool {

// The program keeps the remembered current user through Qt's settings: in <root>/Nutrovex.ini
// for a root given by option or environment, else in the per-user configuration folder
// ($XDG_CONFIG_HOME, else ~/.config) as Zerbu/Nutrovex.conf. Both are INI files, UTF-8, with the
// key "Name" in the section [CurrentUser]. The tool writes them without Qt.
[[nodiscard]] std::filesystem::path settingsFilePath(const DataRootChoice& root);

// A value as the INI format writes it: backslashes and double quotes escaped, a leading "@"
// doubled (it would otherwise announce a typed value), control characters as \xhh (and hex digits
// right after one too), and the whole value quoted when blanks at its ends, ",", ";", "=" or "#"
// would otherwise change what is read.
[[nodiscard]] std::string iniEscapedValue(std::string_view utf8);
// The value of an INI line, unescaped; the reverse of iniEscapedValue for what it writes.
[[nodiscard]] std::string iniUnescapedValue(std::string_view raw);

// The file's text with key set to value in [section]: an existing key's line is replaced, else
// the key is added at the end of its section, else the section is appended. Every other line is
// kept as it stands.
[[nodiscard]] std::string withIniValue(std::string_view text, std::string_view section,
                                       std::string_view key, std::string_view utf8Value);
// The unescaped value of key in [section], or "" when absent.
[[nodiscard]] std::string iniValue(std::string_view text, std::string_view section,
                                   std::string_view key);

// The remembered current user in that file, for the tool's commands. Names are Windows-1252 in
// the engine and UTF-8 in the file.
class IniSessionSettings final : public SessionSettings {
public:
    explicit IniSessionSettings(std::filesystem::path file) : m_file(std::move(file)) {}

    [[nodiscard]] std::string currentUserName() const override;
    // Rewrites the file atomically, keeping whatever else it holds. A failure is kept for
    // failure(): the session's interface has no way to report it.
    void setCurrentUserName(std::string_view name) override;

    [[nodiscard]] const std::string& failure() const { return m_failure; }
    [[nodiscard]] const std::filesystem::path& file() const { return m_file; }

private:
    std::filesystem::path m_file;
    std::string m_failure;
};

}  // namespace nutrovex::tool
