#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

#include "core/Text.h"
#include "session/InstanceLock.h"
#include "storage/UserList.h"
#include "tool/Commands.h"

namespace nutrovex::tool {

// The folder of a user listed in the data root's user list, read without side effects (a
// missing list is not written). nullopt, with the reason on err, when there is no such user.
// names, when given, receives the list's names.
[[nodiscard]] std::optional<std::filesystem::path> listedUserFolder(
    const std::filesystem::path& root, std::string_view user, std::ostream& err,
    std::vector<Text>* names = nullptr);

// Where a command over one listed user's files works: the data root (--root, else its defaults),
// the user's folder and the two files in it, and for a command that writes, the root's lock.
struct UserFiles {
    std::filesystem::path root;
    std::filesystem::path folder;
    std::filesystem::path userFile;   // UserDB.ddb
    std::filesystem::path catalogue;  // FoodDB.ddb
    UserList users{{}};               // the root's list, as read
    std::unique_ptr<InstanceLock> lock;
};

enum class Access : bool { Read, Write };

// The data root a file lies in: its own folder, or the one or two above it (the root, the users
// folder, a user's folder), when that holds the root's lock file or a users list; nullopt for a
// file outside any root.
[[nodiscard]] std::optional<std::filesystem::path> dataRootHolding(
    const std::filesystem::path& file);

// Takes the root's lock for a command that writes into it, as the program does. False, with one
// line on err, while the program has the root open or the lock cannot be taken.
[[nodiscard]] bool lockDataRoot(const std::filesystem::path& root, InstanceLock& lock,
                                std::string_view command, std::ostream& err);

// Finds the listed user; a command that writes also takes the root's lock, and is refused while
// the program has the root open. nullopt, with one line on err, when the command cannot go on.
[[nodiscard]] std::optional<UserFiles> openUserFiles(const GlobalOptions& options,
                                                     std::string_view user, Access access,
                                                     std::string_view command, std::ostream& err);

}  // namespace nutrovex::tool
