#pragma once

#include <string_view>

#include "core/UserStore.h"
#include "storage/StorageError.h"
#include "storage/UserList.h"

namespace nutrovex {

// The user store's file operations.

// Opens a user: adds the name to the list when it is not there (which makes the folder; with
// Unlisted::Leave an unlisted user is opened without being added), resets the store, sets its
// paths and loads the user's file. The profile takes the name, read whole or not.
enum class Unlisted : bool { Add, Leave };
[[nodiscard]] StorageStatus openUser(UserStore& store, UserList& users, std::string_view name,
                                     Unlisted unlisted = Unlisted::Add);

// Reads the store's data file. A missing file is no failure: the user starts empty. On a failure
// the store keeps what was read before the failing chunk. Days are placed by date.
[[nodiscard]] StorageStatus loadUser(UserStore& store);

// Replaces the data file atomically, totals as they stand; on failure the previous file stays
// whole.
[[nodiscard]] StorageStatus saveUser(UserStore& store);

// Deletes a user's files, folder and name; the store is reset when that user was open.
[[nodiscard]] StorageStatus deleteUser(UserStore& store, UserList& users, std::string_view name);

// Renames a user in the list. The folder keeps the old name, so an open user's paths move to
// the new name's folder, which its next save creates.
[[nodiscard]] StorageStatus renameUser(UserStore& store, UserList& users, std::string_view name,
                                       std::string_view newName);

}  // namespace nutrovex
