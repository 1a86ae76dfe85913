#include "tool/UserLookup.h"

#include "core/Cp1252.h"
#include "session/SessionSettings.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"

namespace nutrovex::tool {

std::optional<std::filesystem::path> listedUserFolder(const std::filesystem::path& root,
                                                      std::string_view user, std::ostream& err,
                                                      std::vector<Text>* names) {
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
            << " is not a usable user name: " << unsafeUserNameReason(user) << "\n";
        return std::nullopt;
    }
    for (const Text& name : list.names) {
        if (name.view() == user) {
            if (names != nullptr) {
                *names = list.names;
            }
            return userFolderPath(root, user);
        }
    }
    err << kUserListFileName << ": there is no user named " << cp1252ToUtf8(quotedText(user))
        << "\n";
    return std::nullopt;
}

std::optional<UserFiles> openUserFiles(const GlobalOptions& options, std::string_view user,
                                       Access access, std::string_view command, std::ostream& err) {
    UserFiles files;
    files.root = chooseDataRoot(options.root).path;
    std::vector<Text> names;
    const std::optional<std::filesystem::path> folder =
        listedUserFolder(files.root, user, err, &names);
    if (!folder) {
        return std::nullopt;
    }
    files.users = UserList(files.root);
    files.users.setNames(std::move(names));
    files.folder = *folder;
    files.userFile = files.folder / kUserFileName;
    files.catalogue = files.folder / kCatalogueFileName;
    if (access == Access::Write) {
        // The user is listed, so the root exists: taking the lock makes nothing new.
        files.lock = std::make_unique<InstanceLock>();
        if (!lockDataRoot(files.root, *files.lock, command, err)) {
            return std::nullopt;
        }
    }
    return files;
}

std::optional<std::filesystem::path> dataRootHolding(const std::filesystem::path& file) {
    std::error_code ec;
    std::filesystem::path folder =
        std::filesystem::weakly_canonical(std::filesystem::absolute(file, ec), ec).parent_path();
    if (ec) {
        return std::nullopt;
    }
    for (int up = 0; up < 3 && !folder.empty(); ++up) {
        if (std::filesystem::exists(folder / kLockFileName, ec) ||
            std::filesystem::is_regular_file(userListPath(folder), ec)) {
            return folder;
        }
        if (folder == folder.root_path()) {
            break;
        }
        folder = folder.parent_path();
    }
    return std::nullopt;
}

bool lockDataRoot(const std::filesystem::path& root, InstanceLock& lock, std::string_view command,
                  std::ostream& err) {
    std::string reason;
    switch (lock.acquire(root, reason)) {
        case InstanceLock::Result::Acquired:
            return true;
        case InstanceLock::Result::HeldElsewhere:
            err << "nutrovex-tool " << command << ": " << root.string()
                << ": Nutrovex has this data root open; close it first\n";
            return false;
        case InstanceLock::Result::Failed:
            break;
    }
    err << "nutrovex-tool " << command << ": " << reason << "\n";
    return false;
}

}  // namespace nutrovex::tool
