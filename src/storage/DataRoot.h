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
// users folder or a user's folder): temporary files of our three files, the side files and the
// settings file, nothing else. Only for the holder of the root's lock. Returns how many were
// removed.
std::size_t removeStaleSaves(const std::filesystem::path& folder);

// A new user's folder is made in the root as ".new-user.tmp<process>-<n>" and carries this mark
// until its name is listed (see UserList::addWithFiles).
inline constexpr std::string_view kNewUserMark = ".Nutrovex-new-user";
// Makes such a folder; its path goes to `folder`.
[[nodiscard]] bool makeNewUserFolder(const std::filesystem::path& root,
                                     std::filesystem::path& folder, int& errorNumber);
// Removes what a new user's folder can hold (our files, their temporary files, the mark), then
// the folder itself unless something else is in it. False when the folder stays.
bool removeNewUserFolder(const std::filesystem::path& folder);

// A user's folder carries this mark, holding the old name as stored, while it is renamed (see
// UserList::rename).
inline constexpr std::string_view kRenameMark = ".Nutrovex-renamed-from";

// What a holder of the root's lock clears at start: the temporary files of killed saves in the
// root, the users folder and every user's folder, folders of new users a killed process did not
// finish, and the mark of a new user who was listed just before the process was killed. A
// rename a killed process did not finish is undone: a folder marked as renamed whose name is not
// listed moves back to its old name when that is listed and free; the mark goes once the
// folder's name is listed. A marked folder is judged by the list only when the list reads whole.
// Returns how many files and folders were removed.
std::size_t sweepDataRoot(const std::filesystem::path& root);

// The per-user application data folder: $XDG_DATA_HOME (else ~/.local/share) + Zerbu/Nutrovex.
[[nodiscard]] std::filesystem::path defaultDataRoot();

inline constexpr std::size_t kMaxFolderNameBytes = 255;

// A name that would not stay inside the users folder as one folder of its own: empty, "." or
// "..", the list file's name, holding "/", "\", a control character or NUL, or too long for a
// folder name.
[[nodiscard]] bool isSafeUserName(std::string_view name);
// Why such names are refused, in general and for one name ("a user name cannot hold a control
// character"); lower case, without a full stop.
[[nodiscard]] std::string unsafeUserNameReason();
[[nodiscard]] std::string unsafeUserNameReason(std::string_view name);
// A name as a message can show it whatever it holds: printable ASCII as it is, any other byte
// as \xNN, in single quotes.
[[nodiscard]] std::string quotedName(std::string_view name);

}  // namespace nutrovex
