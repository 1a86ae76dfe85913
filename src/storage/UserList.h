#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Position.h"
#include "core/Text.h"
#include "storage/Chunks.h"
#include "storage/FileIo.h"

namespace nutrovex {

inline constexpr const char* kUserListFileName = "Users.udb";
// The list's format value is written little-endian (01 00) but read big-endian, so it reads
// back as 256. Nothing depends on it; the mismatch is kept.
inline constexpr uint16_t kUserListFormatAsRead = 256;

// Users.udb as stored: chunk 0 the format value, chunk 1 the names in file order.
struct UserListFile {
    uint16_t format = kUserListFormatAsRead;
    std::vector<Text> names;
};

// Chunk 0 holds exactly the two bytes of the format value, whatever it is.
[[nodiscard]] StorageStatus readUserListFile(ChunkSource& source, UserListFile& list,
                                             const ReadOptions& options);
[[nodiscard]] inline StorageStatus readUserListFile(std::span<const uint8_t> bytes,
                                                    UserListFile& list,
                                                    const ReadOptions& options) {
    MemorySource source(bytes);
    return readUserListFile(source, list, options);
}

enum class FormatOnWrite {
    Current,   // the program writes the value 1 little-endian
    AsStored,  // the tool writes back the value as the reader read it
};
[[nodiscard]] StorageStatus writeUserListFile(const UserListFile& list, ChunkSink& sink,
                                              FormatOnWrite format = FormatOnWrite::Current);
[[nodiscard]] StorageStatus writeUserListFile(const UserListFile& list, ByteBuffer& out,
                                              FormatOnWrite format = FormatOnWrite::Current);

// Every name of a data root's list must be safe as a folder name; the first that is not fails
// the list, naming the entry. The raw reader above takes any name, for the tool's dumps.
[[nodiscard]] StorageStatus checkUserNames(std::span<const Text> names);

// The users of a data root: the sorted list of names kept in <root>/Users/Users.udb, each name
// owning the folder <root>/Users/<name>/. Every change rewrites the list file.
class UserList {
public:
    explicit UserList(std::filesystem::path root) : m_root(std::move(root)) {}

    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }
    [[nodiscard]] std::filesystem::path usersFolder() const;
    [[nodiscard]] std::filesystem::path listPath() const;
    // nullopt for a name that could leave the users folder.
    [[nodiscard]] std::optional<std::filesystem::path> userFolder(std::string_view name) const;

    // Reads the list file; a missing one is an empty list, written at once unless told to leave
    // it. A list that does not
    // read whole, or holds a name that would be refused when typed, does not load at all (no
    // names). After a failed read every change is refused, so nothing writes over names that
    // could not be read, until a read succeeds.
    enum class Missing : bool { Make, Leave };
    [[nodiscard]] StorageStatus read(Missing missing = Missing::Make);
    [[nodiscard]] StorageStatus write() const;
    [[nodiscard]] bool readWhole() const { return m_readFailure.empty(); }

    [[nodiscard]] std::size_t count() const { return m_names.size(); }
    [[nodiscard]] std::string_view nameAt(Position pos) const { return m_names[pos].view(); }
    [[nodiscard]] const std::vector<Text>& names() const { return m_names; }
    // The position of the first name equal byte for byte, or kNoPosition.
    [[nodiscard]] Position find(std::string_view name) const;
    // Inserts in name order; kNoPosition when an equal name is listed.
    Position insert(std::string_view name);

    // Adds a user: refused for a listed name, a name that could leave the users folder, or a
    // folder of that name already on disk. Makes the folder, then writes the list.
    [[nodiscard]] StorageStatus add(std::string_view name);
    // Adds a user whose files are made before the name is listed, all or nothing: `write` puts
    // them into a new folder beside the users folder, which is then moved in under the user's
    // name, and only then is the name listed. Refused as add() refuses; a failure anywhere leaves
    // no trace, and what a killed process left is swept by the next start (sweepDataRoot).
    using FolderWriter = std::function<StorageStatus(const std::filesystem::path& folder)>;
    [[nodiscard]] StorageStatus addWithFiles(std::string_view name, const FolderWriter& write);
    // Deletes the user's files (the two data files and the side files) and folder (failures there
    // ignored), then the name.
    [[nodiscard]] StorageStatus remove(Position pos);
    // Renames the user: the folder with everything in it moves to the new name (one rename),
    // then the list is written; refused when a folder of the new name is already there. While
    // it moves, the folder holds a mark naming the old name (kRenameMark), so that a process
    // stopped at any step leaves the user listed under the old name or the new one once the next
    // start has swept (sweepDataRoot).
    [[nodiscard]] StorageStatus rename(Position pos, std::string_view newName);

    void setNames(std::vector<Text> names) { m_names = std::move(names); }

private:
    [[nodiscard]] StorageStatus writeNames(const std::vector<Text>& names) const;

    std::filesystem::path m_root;
    std::vector<Text> m_names;
    std::string m_readFailure;  // why the last read failed; empty after a good one
};

}  // namespace nutrovex
