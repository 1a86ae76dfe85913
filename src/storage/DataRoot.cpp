#include "storage/DataRoot.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include <algorithm>
#include <array>
#include <atomic>

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

namespace {

constexpr std::string_view kNewUserFolderLead = ".new-user.tmp";

bool allDigits(std::string_view s) {
    return !s.empty() &&
           std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The process that made a new user's folder of that name, or 0 for any other name.
long newUserFolderProcess(std::string_view name) {
    if (!name.starts_with(kNewUserFolderLead)) {
        return 0;
    }
    const std::string_view rest = name.substr(kNewUserFolderLead.size());
    const std::size_t dash = rest.find('-');
    if (dash == std::string_view::npos || dash > 9 || !allDigits(rest.substr(0, dash)) ||
        !allDigits(rest.substr(dash + 1))) {
        return 0;
    }
    return std::stol(std::string(rest.substr(0, dash)));
}

bool isRealFolder(const std::filesystem::directory_entry& entry) {
    std::error_code ec;
    return entry.symlink_status(ec).type() == std::filesystem::file_type::directory;
}

// The list's names when it reads whole; nullopt otherwise (a missing list lists nobody).
std::optional<std::vector<Text>> listedNames(const std::filesystem::path& root) {
    FileSource source;
    StorageError error;
    switch (source.open(userListPath(root), error)) {
        case ReadFile::Missing:
            return std::vector<Text>{};
        case ReadFile::Failed:
            return std::nullopt;
        case ReadFile::Read:
            break;
    }
    UserListFile list;
    if (!readUserListFile(source, list, {kUserListFileName})) {
        return std::nullopt;
    }
    return std::move(list.names);
}

}  // namespace

std::size_t removeStaleSaves(const std::filesystem::path& folder) {
    // The settings file is the tool's to save too, when it remembers a new user.
    static constexpr std::array<std::string_view, 7> kOurFiles = {
        kUserFileName,    kCatalogueFileName, kUserListFileName, kRecipesFileName,
        kTargetsFileName, "Nutrovex.ini",     kRenameMark};
    return removeStaleTemporaries(folder, kOurFiles);
}

bool makeNewUserFolder(const std::filesystem::path& root, std::filesystem::path& folder,
                       int& errorNumber) {
    static std::atomic<unsigned> counter{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        folder = root / (std::string(kNewUserFolderLead) + std::to_string(::getpid()) + "-" +
                         std::to_string(counter.fetch_add(1)));
        if (::mkdir(folder.c_str(), 0777) == 0) {
            return true;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    errorNumber = errno;
    return false;
}

bool removeNewUserFolder(const std::filesystem::path& folder) {
    static constexpr std::array<std::string_view, 3> kMade = {kUserFileName, kCatalogueFileName,
                                                              kNewUserMark};
    std::error_code ec;
    std::vector<std::filesystem::path> ours;
    for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end;
         it.increment(ec)) {
        const std::string name = it->path().filename().string();
        // The files and the temporary files of their saves, whichever process made them.
        const bool made = std::any_of(kMade.begin(), kMade.end(), [&](std::string_view file) {
            return name == file || name.starts_with("." + std::string(file) + ".tmp");
        });
        if (made) {
            ours.push_back(it->path());
        }
    }
    for (const std::filesystem::path& path : ours) {
        std::filesystem::remove(path, ec);
    }
    return ::rmdir(folder.c_str()) == 0;
}

namespace {

bool isListed(const std::vector<Text>& listed, std::string_view name) {
    return std::any_of(listed.begin(), listed.end(),
                       [&](const Text& n) { return n.view() == name; });
}

// A folder marked as being renamed: when its name is not listed, the rename did not finish and
// the folder moves back to the old name, if that is listed and has no folder; once the folder's
// name is listed the mark goes. Anything else is left as it is. Returns whether the mark went.
bool settleRename(const std::filesystem::path& root, std::filesystem::path& folder,
                  const std::vector<Text>& listed) {
    const std::optional<std::string> name = utf8ToCp1252(folder.filename().string());
    if (!name || !isListed(listed, *name)) {
        // A name longer than a folder's name can be was never stored: such a mark is not ours.
        std::error_code sizeError;
        const std::uintmax_t size = std::filesystem::file_size(folder / kRenameMark, sizeError);
        ByteBuffer mark;
        StorageError error;
        if (sizeError || size > kMaxFolderNameBytes ||
            readWholeFile(folder / kRenameMark, mark, error) != ReadFile::Read) {
            return false;
        }
        const std::string old(mark.data(), mark.data() + mark.size());
        const std::optional<std::filesystem::path> back = userFolderPath(root, old);
        std::error_code ec;
        if (!back || !isListed(listed, old) ||
            std::filesystem::exists(std::filesystem::symlink_status(*back, ec)) ||
            !moveFolder(folder, *back)) {
            return false;
        }
        folder = *back;
    }
    std::error_code ec;
    return std::filesystem::remove(folder / kRenameMark, ec);
}

}  // namespace

std::size_t sweepDataRoot(const std::filesystem::path& root) {
    std::size_t removed = removeStaleSaves(root) + removeStaleSaves(usersFolder(root));
    std::error_code ec;
    for (std::filesystem::directory_iterator it(root, ec), end; !ec && it != end;
         it.increment(ec)) {
        const long process = newUserFolderProcess(it->path().filename().string());
        if (process != 0 && process != ::getpid() && isRealFolder(*it) &&
            removeNewUserFolder(it->path())) {
            ++removed;
        }
    }
    std::optional<std::optional<std::vector<Text>>> listed;  // read when a mark is found
    // Collected first: a rename undone moves a folder within the one listed.
    std::vector<std::filesystem::path> folders;
    for (std::filesystem::directory_iterator it(usersFolder(root), ec), end; !ec && it != end;
         it.increment(ec)) {
        if (isRealFolder(*it)) {
            folders.push_back(it->path());
        }
    }
    for (std::filesystem::path& folder : folders) {
        removed += removeStaleSaves(folder);
        std::error_code markError;
        const bool renamed = std::filesystem::exists(folder / kRenameMark, markError);
        const bool made = std::filesystem::exists(folder / kNewUserMark, markError);
        if (!renamed && !made) {
            continue;
        }
        if (!listed) {
            listed = listedNames(root);
        }
        if (!*listed) {
            continue;  // who is listed is not known: the folder is left as it is
        }
        // A rename first: a new user's mark is judged under the name the folder ends with. A
        // folder still marked as renamed was a listed user's and is never removed.
        if (renamed) {
            if (!settleRename(root, folder, **listed)) {
                continue;
            }
            ++removed;
        }
        if (!made) {
            continue;
        }
        const std::optional<std::string> name = utf8ToCp1252(folder.filename().string());
        if (name && isListed(**listed, *name)) {
            // Listed just before its maker was stopped: the user is whole.
            removed += std::filesystem::remove(folder / kNewUserMark, markError) ? 1 : 0;
        } else if (removeNewUserFolder(folder)) {
            ++removed;
        }
    }
    return removed;
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
