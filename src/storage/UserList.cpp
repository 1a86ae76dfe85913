#include "storage/UserList.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "core/Names.h"
#include "core/StoredSize.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"
#include "storage/UserFile.h"

namespace nutrovex {

namespace {

constexpr std::size_t kFormatSize = 2;

StorageError listError(std::string reason) {
    return fileError(kUserListFileName, std::move(reason));
}

// Inserts into a sorted list of names; kNoPosition when an equal name is there.
Position insertSorted(std::vector<Text>& names, std::string_view name) {
    if (names.size() >= kNoPosition) {
        return kNoPosition;
    }
    std::size_t pos = 0;
    while (pos < names.size() && compareNames(names[pos].view(), name) < 0) {
        ++pos;
    }
    if (pos < names.size() && names[pos].view() == name) {
        return kNoPosition;
    }
    names.insert(names.begin() + static_cast<std::ptrdiff_t>(pos), Text(name));
    return static_cast<Position>(pos);
}

}  // namespace

StorageStatus readUserListFile(ChunkSource& source, UserListFile& list,
                               const ReadOptions& options) {
    ChunkReader chunks(source, options);
    ByteReader f = chunks.nextFixed("the list format", kFormatSize);
    const uint16_t format = f.u16be();
    if (!chunks.finish(f)) {
        return chunks.status();
    }
    list.format = format;

    ByteReader r = chunks.next("the names");
    list.names.clear();
    const uint16_t count = r.u16be();
    if (r.ok() && static_cast<std::size_t>(count) * 2 > r.remaining()) {
        r.fail("a list of " + std::to_string(count) + " names needs at least " +
               std::to_string(count * 2) + " bytes but only " + std::to_string(r.remaining()) +
               " are left");
    }
    if (r.ok()) {
        list.names.reserve(count);
    }
    for (uint16_t i = 0; i < count && r.ok(); ++i) {
        Text name = r.text();
        if (r.ok()) {
            list.names.push_back(std::move(name));
        }
    }
    chunks.finish(r);
    chunks.end();
    return chunks.status();
}

StorageStatus writeUserListFile(const UserListFile& list, ChunkSink& sink, FormatOnWrite format) {
    if (list.names.size() > 0xFFFF) {
        return listError("the list holds more than 65,535 names");
    }
    std::size_t namesBytes = 2;
    for (const Text& name : list.names) {
        namesBytes += textSize(name);
    }
    if (namesBytes > kMaxPayloadSize) {
        return payloadTooLarge(kUserListFileName, 1, "the names", namesBytes);
    }
    ByteWriter f = beginChunk(sink, 0, kFormatSize);
    if (format == FormatOnWrite::Current) {
        f.u8(1);  // the value 1 in the machine's little-endian order
        f.u8(0);
    } else {
        f.u16be(list.format);
    }
    ByteWriter w = beginChunk(sink, 1, namesBytes);
    w.u16be(static_cast<uint16_t>(list.names.size()));
    for (const Text& name : list.names) {
        w.text(name);
    }
    return {};
}

StorageStatus writeUserListFile(const UserListFile& list, ByteBuffer& out, FormatOnWrite format) {
    BufferSink sink;
    StorageStatus status = writeUserListFile(list, sink, format);
    if (status) {
        out = ByteBuffer(sink.bytes());
    }
    return status;
}

std::filesystem::path UserList::usersFolder() const {
    return nutrovex::usersFolder(m_root);
}

std::filesystem::path UserList::listPath() const {
    return userListPath(m_root);
}

StorageStatus checkUserNames(std::span<const Text> names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!isSafeUserName(names[i].view())) {
            return listError("entry " + std::to_string(i + 1) + ", " + quotedName(names[i].view()) +
                             ", is not a usable user name: " + unsafeUserNameReason());
        }
    }
    return {};
}

std::optional<std::filesystem::path> UserList::userFolder(std::string_view name) const {
    return userFolderPath(m_root, name);
}

StorageStatus UserList::read(Missing missing) {
    FileSource source;
    StorageError error;
    StorageStatus status;
    switch (source.open(listPath(), error)) {
        case ReadFile::Missing:
            m_names.clear();
            m_readFailure.clear();
            return missing == Missing::Make ? write() : StorageStatus();
        case ReadFile::Failed:
            status = error;
            break;
        case ReadFile::Read: {
            UserListFile file;
            status = readUserListFile(source, file, {kUserListFileName});
            if (status) {
                status = checkUserNames(file.names);
            }
            m_names = std::move(file.names);
            break;
        }
    }
    m_readFailure = status.message();
    if (!status) {
        // A list not read whole, or holding a name that is not safe, does not load at all: no
        // user of it is opened, so nothing is saved on its word.
        m_names.clear();
    }
    return status;
}

StorageStatus UserList::write() const {
    return writeNames(m_names);
}

StorageStatus UserList::writeNames(const std::vector<Text>& names) const {
    if (!m_readFailure.empty()) {
        return listError(
            "not changed, so that the file on disk is kept; it could not be read "
            "whole (" +
            m_readFailure + ")");
    }
    UserListFile file;
    file.names = names;
    ByteBuffer bytes;
    if (StorageStatus s = writeUserListFile(file, bytes); !s) {
        return s;
    }
    std::error_code ec;
    std::filesystem::create_directories(usersFolder(), ec);
    if (ec) {
        return listError("the users folder cannot be made: " + systemReason(ec.value()));
    }
    return writeFileAtomically(listPath(), bytes.bytes());
}

Position UserList::find(std::string_view name) const {
    for (std::size_t i = 0; i < m_names.size(); ++i) {
        if (m_names[i].view() == name) {
            return static_cast<Position>(i);
        }
    }
    return kNoPosition;
}

Position UserList::insert(std::string_view name) {
    return insertSorted(m_names, name);
}

StorageStatus UserList::add(std::string_view name) {
    const std::optional<std::filesystem::path> maybeFolder = userFolder(name);
    if (!maybeFolder) {
        return listError(unsafeUserNameReason());
    }
    if (!m_readFailure.empty()) {
        return writeNames(m_names);  // refused, with the reason
    }
    if (find(name) != kNoPosition) {
        return listError("the user is already listed");
    }
    std::error_code ec;
    std::filesystem::create_directories(usersFolder(), ec);
    const std::filesystem::path& folder = *maybeFolder;
    if (ec || !std::filesystem::create_directory(folder, ec)) {
        // A folder left over from an earlier user of that name also ends up here.
        return listError(ec ? "the user's folder cannot be made: " + systemReason(ec.value())
                            : "a folder of that name is already there");
    }
    std::vector<Text> names = m_names;
    if (insertSorted(names, name) == kNoPosition) {
        std::filesystem::remove(folder, ec);
        return listError("the list is full");
    }
    StorageStatus status = writeNames(names);
    if (!status) {
        std::filesystem::remove(folder, ec);
        return status;
    }
    m_names = std::move(names);
    return {};
}

StorageStatus UserList::addWithFiles(std::string_view name, const FolderWriter& write) {
    const std::optional<std::filesystem::path> maybeFolder = userFolder(name);
    if (!maybeFolder) {
        return listError(unsafeUserNameReason(name));
    }
    if (!m_readFailure.empty()) {
        return writeNames(m_names);  // refused, with the reason
    }
    if (find(name) != kNoPosition) {
        return listError("the user is already listed");
    }
    const std::filesystem::path& folder = *maybeFolder;
    std::error_code ec;
    if (std::filesystem::exists(std::filesystem::symlink_status(folder, ec))) {
        return listError("a folder of that name is already there");
    }
    std::vector<Text> names = m_names;
    if (insertSorted(names, name) == kNoPosition) {
        return listError("the list is full");
    }
    std::filesystem::create_directories(usersFolder(), ec);
    if (ec) {
        return listError("the users folder cannot be made: " + systemReason(ec.value()));
    }
    std::filesystem::path made;
    int error = 0;
    if (!makeNewUserFolder(m_root, made, error)) {
        return listError("the new user's folder cannot be made: " + systemReason(error));
    }
    // The mark stays until the name is listed: a folder found with it at the next start was not
    // finished, unless its name is listed.
    StorageStatus status = writeFileAtomically(made / kNewUserMark, {}, false);
    if (status) {
        status = write(made);
    }
    if (status) {
        status = moveFolder(made, folder);
        if (status) {
            made = folder;
        }
    }
    if (status) {
        status = writeNames(names);
    }
    if (!status) {
        (void)removeNewUserFolder(made);
        return status;
    }
    m_names = std::move(names);
    std::filesystem::remove(folder / kNewUserMark, ec);
    syncFolder(folder);
    return {};
}

StorageStatus UserList::remove(Position pos) {
    if (pos >= m_names.size()) {
        return listError("no user at that position");
    }
    const std::optional<std::filesystem::path> maybeFolder = userFolder(m_names[pos].view());
    if (!maybeFolder) {
        return listError(quotedName(m_names[pos].view()) +
                         " is not a usable user name: " + unsafeUserNameReason());
    }
    if (!m_readFailure.empty()) {
        return writeNames(m_names);  // refused before anything is deleted
    }
    const std::filesystem::path& folder = *maybeFolder;
    std::error_code ec;
    std::filesystem::remove(folder / kUserFileName, ec);
    std::filesystem::remove(folder / kCatalogueFileName, ec);
    std::filesystem::remove(folder / kRecipesFileName, ec);
    std::filesystem::remove(folder / kTargetsFileName, ec);
    std::filesystem::remove(folder / kRenameMark, ec);
    std::filesystem::remove(folder, ec);  // stays when something else is in it
    std::vector<Text> names = m_names;
    names.erase(names.begin() + pos);
    StorageStatus status = writeNames(names);
    if (status) {
        m_names = std::move(names);
    }
    return status;
}

StorageStatus UserList::rename(Position pos, std::string_view newName) {
    if (pos >= m_names.size()) {
        return listError("no user at that position");
    }
    const std::optional<std::filesystem::path> from = userFolder(m_names[pos].view());
    const std::optional<std::filesystem::path> to = userFolder(newName);
    if (!from || !to) {
        return listError(unsafeUserNameReason());
    }
    if (!m_readFailure.empty()) {
        return writeNames(m_names);  // refused, with the reason
    }
    if (find(newName) != kNoPosition) {
        return listError("the new name is already listed");
    }
    std::error_code ec;
    if (std::filesystem::exists(std::filesystem::symlink_status(*to, ec))) {
        return listError("a folder of that name is already there");
    }
    std::vector<Text> names = m_names;
    names.erase(names.begin() + pos);
    insertSorted(names, newName);
    if (!std::filesystem::exists(std::filesystem::symlink_status(*from, ec))) {
        StorageStatus status = writeNames(names);  // a user without a folder yet
        if (status) {
            m_names = std::move(names);
        }
        return status;
    }
    // The folder carries its old name while it moves and the list changes: a start after a
    // process stopped between the two moves it back (sweepDataRoot).
    const std::string_view old = m_names[pos].view();
    StorageStatus status = writeFileAtomically(
        *from / kRenameMark, std::span(reinterpret_cast<const uint8_t*>(old.data()), old.size()),
        false);
    if (!status) {
        return status;
    }
    if (::rename(from->c_str(), to->c_str()) != 0) {
        status = listError("the user's folder cannot be renamed: " + systemReason(errno));
        std::filesystem::remove(*from / kRenameMark, ec);
        return status;
    }
    syncFolder(usersFolder());
    status = writeNames(names);
    if (!status) {
        // The list still names the old folder; should the move back fail, the next start makes it.
        if (moveFolder(*to, *from)) {
            std::filesystem::remove(*from / kRenameMark, ec);
        }
        return status;
    }
    m_names = std::move(names);
    std::filesystem::remove(*to / kRenameMark, ec);
    return {};
}

}  // namespace nutrovex
