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
    StorageStatus status = readUserListFile(bytes.bytes(), list, {kUserListFileName});
    if (status) {
        status = checkUserNames(list.names);
    }
    if (!status) {
        StorageError where = status.error();
        where.file = userListPath(root).string();
        err << where.message() << "\n";
        return std::nullopt;
    }
    if (const std::optional<std::filesystem::path> folder = userFolderPath(root, user); !folder) {
        err << "nutrovex-tool: " << quotedName(user)
            << " is not a usable user name: " << unsafeUserNameReason() << "\n";
        return std::nullopt;
    }
    for (const Text& name : list.names) {
        if (name.view() == user) {
            return userFolderPath(root, user);
        }
    }
    err << kUserListFileName << ": there is no user named '" << cp1252ToUtf8(user) << "'\n";
    return std::nullopt;
}

}  // namespace nutrovex::tool
