#include "tool/UserLookup.h"

#include "core/Cp1252.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserList.h"

namespace nutrovex::tool {

std::optional<std::filesystem::path> listedUserFolder(const std::filesystem::path& root,
                                                      std::string_view user, std::ostream& err) {
    ByteBuffer bytes;
    StorageError error;
    switch (readWholeFile(userListPath(root), bytes, error)) {
        case ReadFile::Missing:
            err << userListPath(root).string() << ": there is no user list in this data root\n";
            return std::nullopt;
        case ReadFile::Failed:
            err << error.message() << "\n";
            return std::nullopt;
        case ReadFile::Read:
            break;
    }
    UserListFile list;
    if (const StorageStatus s = readUserListFile(bytes.bytes(), list, {kUserListFileName}); !s) {
        err << s.message() << "\n";
        return std::nullopt;
    }
    // A list written by hand may hold any name; only a safe one names a folder.
    if (!isSafeUserName(user)) {
        err << kUserListFileName << ": the user name '" << cp1252ToUtf8(user)
            << "' cannot name a folder inside the users folder\n";
        return std::nullopt;
    }
    for (const Text& name : list.names) {
        if (name.view() == user) {
            return userFolderPath(root, std::string(user));
        }
    }
    err << kUserListFileName << ": there is no user named '" << cp1252ToUtf8(user) << "'\n";
    return std::nullopt;
}

}  // namespace nutrovex::tool
