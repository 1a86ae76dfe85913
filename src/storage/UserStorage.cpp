#include "storage/UserStorage.h"

#include <algorithm>

#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"

namespace nutrovex {

namespace {

StorageError noUserOpen() {
    return fileError(kUserFileName, "no user is open");
}

// False, the paths left empty, for a name that is not safe as a folder name.
[[nodiscard]] bool setPaths(UserStore& store, const UserList& users, std::string_view name) {
    const std::optional<std::filesystem::path> folder = users.userFolder(name);
    if (!folder) {
        store.userFolderPath.clear();
        store.dataFilePath.clear();
        return false;
    }
    store.userFolderPath = *folder;
    store.dataFilePath = store.userFolderPath / kUserFileName;
    return true;
}

StorageError unsafeName(std::string_view name) {
    return fileError(kUserListFileName,
                     quotedName(name) + " is not a usable user name: " + unsafeUserNameReason());
}

}  // namespace

StorageStatus openUser(UserStore& store, UserList& users, std::string_view name,
                       Unlisted unlisted) {
    if (!isSafeUserName(name)) {
        return unsafeName(name);
    }
    if (unlisted == Unlisted::Add && users.find(name) == kNoPosition) {
        if (StorageStatus s = users.add(name); !s) {
            return s;
        }
    }
    store.reset();
    if (!setPaths(store, users, name)) {
        return unsafeName(name);
    }
    StorageStatus status = loadUser(store);
    // Open even when not read whole: the session refuses to save over it, and says whose it is.
    store.profile.setUserName(name);
    return status;
}

StorageStatus loadUser(UserStore& store) {
    if (store.dataFilePath.empty()) {
        return noUserOpen();
    }
    FileSource source;
    StorageError error;
    switch (source.open(store.dataFilePath, error)) {
        case ReadFile::Missing:
            store.modified = false;
            return {};  // a new user starts empty
        case ReadFile::Failed:
            return error;
        case ReadFile::Read:
            break;
    }
    // A logbook's records take about 1.3 times its file.
    const HeapReserve reserve(source.size() + source.size() / 3);
    UserFile file;
    file.header = store.header;
    file.profile = store.profile;  // a stored date keeps its holder's clock parts
    file.firstDayChunk = store.firstDayChunk;
    StorageStatus status = readUserFile(source, file, store.today(), {kUserFileName});
    // What was read before a failure stays, as it always has.
    store.header = file.header;
    store.profile = std::move(file.profile);
    store.firstDayChunk = file.firstDayChunk;
    store.removeAllDays();
    for (auto& day : file.days) {
        store.insertDay(std::move(day));
    }
    store.modified = false;
    return status;
}

StorageStatus saveUser(UserStore& store) {
    if (store.dataFilePath.empty()) {
        return noUserOpen();
    }
    AtomicFile file(store.dataFilePath);
    StorageStatus status = file.open(true);
    if (status) {
        status = writeUserFile(store.header, store.profile.fields(), store.firstDayChunk,
                               store.dayCount, store.days(), file);
    }
    if (status) {
        status = file.commit();
    }
    if (status) {
        store.modified = false;
    }
    return status;
}

StorageStatus deleteUser(UserStore& store, UserList& users, std::string_view nameView) {
    const std::string name(nameView);  // the view may point into the list we change
    const Position pos = users.find(name);
    if (pos == kNoPosition) {
        return fileError(kUserListFileName, "the user is not listed");
    }
    StorageStatus status = users.remove(pos);
    if (status && store.profile.userName() == name) {
        store.reset();
        // Nothing may write the deleted user's files back.
        store.dataFilePath.clear();
        store.userFolderPath.clear();
    }
    return status;
}

StorageStatus renameUser(UserStore& store, UserList& users, std::string_view nameView,
                         std::string_view newNameView) {
    const std::string name(nameView);  // the views may point into the list we change
    const std::string newName(newNameView);
    const Position pos = users.find(name);
    if (pos == kNoPosition) {
        return fileError(kUserListFileName, "the user is not listed");
    }
    StorageStatus status = users.rename(pos, newName);
    if (status && store.profile.userName() == name) {
        store.profile.setUserName(newName);
        (void)setPaths(store, users, newName);  // the list took the name, so it is safe
    }
    return status;
}

}  // namespace nutrovex
