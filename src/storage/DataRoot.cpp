#include "storage/DataRoot.h"

#include <cstdlib>

#include <array>

#include "core/Cp1252.h"
#include "storage/CatalogueFile.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"

namespace nutrovex {

namespace {
constexpr std::string_view kListFileName = "Users.udb";
}  // namespace

std::filesystem::path usersFolder(const std::filesystem::path& root) {
    return root / "Users";
}

std::filesystem::path userListPath(const std::filesystem::path& root) {
    return usersFolder(root) / kListFileName;
}

std::filesystem::path templateCataloguePath(const std::filesystem::path& root) {
    return root / "FoodDB.ddb";
}

std::optional<std::filesystem::path> userFolderPath(const std::filesystem::path& root,
                                                    std::string_view name) {
    if (!isSafeUserName(name)) {
        return std::nullopt;
    }
    return usersFolder(root) / cp1252ToUtf8(name);
}

std::size_t removeStaleSaves(const std::filesystem::path& folder) {
    static constexpr std::array<std::string_view, 3> kOurFiles = {kUserFileName, kCatalogueFileName,
                                                                  kUserListFileName};
    return removeStaleTemporaries(folder, kOurFiles);
}

std::filesystem::path defaultDataRoot() {
    std::filesystem::path base;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && xdg[0] == '/') {
        base = xdg;
    } else if (const char* home = std::getenv("HOME"); home != nullptr && home[0] != 0) {
        base = std::filesystem::path(home) / ".local" / "share";
    } else {
        base = std::filesystem::current_path();
    }
    return base / "Zerbu" / "Nutrovex";
}

bool isSafeUserName(std::string_view name) {
    // The list file shares the users folder: a user folder cannot take its name.
    if (name.empty() || name == "." || name == ".." || name == kListFileName) {
        return false;
    }
    for (const char ch : name) {
        const auto c = static_cast<unsigned char>(ch);
        if (isControlByte(c) || c == '/' || c == '\\') {
            return false;
        }
    }
    // The folder's name is the name in UTF-8, and a file name holds at most 255 bytes.
    return cp1252ToUtf8(name).size() <= kMaxFolderNameBytes;
}

std::string unsafeUserNameReason() {
    return "a user name cannot be empty, \".\" or \"..\", nor hold \"/\", \"\\\" or a control "
           "character";
}

std::string unsafeUserNameReason(std::string_view name) {
    if (name.empty()) {
        return "a user name cannot be empty";
    }
    if (name == "." || name == "..") {
        return "a user name cannot be \".\" or \"..\"";
    }
    if (name == kListFileName) {
        return "a user name cannot be \"Users.udb\", the name of the list of users";
    }
    for (const char ch : name) {
        if (isControlByte(static_cast<unsigned char>(ch))) {
            return "a user name cannot hold a control character";
        }
        if (ch == '/' || ch == '\\') {
            return "a user name cannot hold \"/\" or \"\\\"";
        }
    }
    if (!isSafeUserName(name)) {
        return "a user name cannot be longer than a folder's name can be";
    }
    return {};
}

std::string quotedName(std::string_view name) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out = "'";
    for (const char ch : name) {
        const auto c = static_cast<unsigned char>(ch);
        if (c >= 0x20 && c < 0x7F && c != '\\') {
            out += ch;
        } else {
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 0xF];
        }
    }
    out += '\'';
    return out;
}

}  // namespace nutrovex
