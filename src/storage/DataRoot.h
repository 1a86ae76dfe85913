#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace nutrovex {

// Where the data lives below the data root: <root>/Users/ with the list Users.udb and one folder
// per user, and the template catalogue <root>/FoodDB.ddb.
[[nodiscard]] std::filesystem::path usersFolder(const std::filesystem::path& root);
[[nodiscard]] std::filesystem::path userListPath(const std::filesystem::path& root);
[[nodiscard]] std::filesystem::path templateCataloguePath(const std::filesystem::path& root);
// A user's folder; the stored (Windows-1252) name becomes a UTF-8 file name. nullopt for a name
// that is not safe, wherever it came from: no user name leads out of the users folder.
[[nodiscard]] std::optional<std::filesystem::path> userFolderPath(const std::filesystem::path& root,
                                                                  std::string_view name);

// Removes what saves killed part-way left behind in a folder of the data root (the root, the
// users folder or a user's folder): temporary files of our three files and the side files,
// nothing else. Only for
// the holder of the root's lock. Returns how many were removed.
std::size_t removeStaleSaves(const std::filesystem::path& folder);

// The per-user application data folder: $XDG_DATA_HOME (else ~/.local/share) + Zerbu/Nutrovex.
[[nodiscard]] std::filesystem::path defaultDataRoot();

inline constexpr std::size_t kMaxFolderNameBytes = 255;

// A name that would not stay inside the users folder as one folder of its own: empty, "." or
// "..", the list file's name, holding "/", "\", a control character or NUL, or too long for a
// folder name.
[[nodiscard]] bool isSafeUserName(std::string_view name);
// Why such a name is refused.
[[nodiscard]] std::string unsafeUserNameReason();
// A name as a message can show it whatever it holds: printable ASCII as it is, any other byte
// as \xNN, in single quotes.
[[nodiscard]] std::string quotedName(std::string_view name);

}  // namespace nutrovex
