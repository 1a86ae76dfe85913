#include "storage/DataRoot.h"

#include <cstdlib>

#include <array>

#include "core/Cp1252.h"
#include "storage/CatalogueFile.h"
#include "storage/FileIo.h"
#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"
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
    static constexpr std::array<std::string_view, 5> kOurFiles = {
        kUserFileName, kCatalogueFileName, kUserListFileName, kRecipesFileName, kTargetsFileName};
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
        // 0x81, 0x8D, 0x8F, 0x90 and 0x9D are the C1 controls Windows-1252 leaves undefined.
        const bool undefined = c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D;
        if (c < 0x20 || c == 0x7F || undefined || c == '/' || c == '\\') {
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
