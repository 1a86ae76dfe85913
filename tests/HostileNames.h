#pragma once

#include <string>
#include <vector>

namespace nutrovex::test {

// Names crafted to escape a folder, break a file name or confuse a list, as Windows-1252 bytes:
// path separators, "." and "..", control characters and NUL, overlong names, bytes that
// Windows-1252 leaves undefined, names equal but for case, trailing dots and blanks, reserved
// device names, and the names of the program's own files.
inline std::vector<std::string> hostileNames() {
    using namespace std::string_literals;
    return {"a/b",
            "/abs",
            "../escape",
            "..",
            ".",
            "...",
            "x/..",
            "./x",
            "a\\b",
            "..\\..\\x",
            "\\\\server\\share",
            "C:\\Windows",
            "a\x01"
            "b",
            "\t",
            "line\nbreak",
            "cr\r",
            "nu\0l"s,
            "\0"s,
            "\x1B[31m",
            "del\x7F",
            std::string(300, 'a'),
            std::string(256, 'b'),
            std::string(255, 'c'),
            std::string(21, 'd'),
            std::string(20, 'e'),
            "\x81",
            "\x8D\x8F",
            "\x90\x9D",
            "caf\xE9",
            "\x80uro",
            "\xFF\xFE",
            "bob",
            "Bob",
            "BOB",
            "trail.",
            "trail..",
            "trail ",
            " lead",
            "   ",
            "",
            "CON",
            "con",
            "NUL",
            "nul.txt",
            "COM1",
            "LPT9",
            "AUX",
            "PRN",
            "a:b",
            "a*b?",
            "<>|\"",
            "%2e%2e",
            "~",
            "$HOME",
            "-rf",
            "--root",
            ".hidden",
            "Users",
            "Users.udb",
            "UserDB.ddb",
            "FoodDB.ddb",
            "Nutrovex.lock"};
}

// Printable for a test's failure message.
inline std::string shown(const std::string& name) {
    std::string s;
    for (const char c : name) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x20 || u >= 0x7F) {
            static const char kHex[] = "0123456789abcdef";
            s += "\\x";
            s += kHex[u >> 4];
            s += kHex[u & 15];
        } else {
            s += c;
        }
    }
    return s.size() > 40 ? s.substr(0, 40) + "... (" + std::to_string(name.size()) + ")" : s;
}

}  // namespace nutrovex::test
