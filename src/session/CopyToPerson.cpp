#include "session/CopyToPerson.h"

#include <string>

#include "core/UserStore.h"
#include "session/Session.h"
#include "storage/DataRoot.h"
#include "storage/UserFile.h"
#include "storage/UserStorage.h"

namespace nutrovex {

CopyToPersonResult copyToPerson(Session& session, std::string_view person, const CalendarDate& date,
                                std::span<const FoodItem> foods,
                                std::span<const ExerciseEntry> exercises) {
    CopyToPersonResult result;
    const std::string name(person);
    if (session.userOpen() && session.openUserName() == name) {
        result.report = copyIntoDay(session.store(), date, foods, exercises);
        session.apply(result.report.notices);
        return result;
    }
    const std::optional<std::filesystem::path> folder = session.users().userFolder(name);
    if (session.users().find(name) == kNoPosition || !folder) {
        result.status.add(std::string(kUserListFileName) + ": " + quotedName(name) +
                          " is not a listed user");
        return result;
    }
    UserStore store(session.clock());
    store.userFolderPath = *folder;
    store.dataFilePath = *folder / kUserFileName;
    if (const StorageStatus loaded = loadUser(store); !loaded) {
        result.status.add(loaded.error().file + ": nothing was copied to " + quotedName(name) +
                          ", whose logbook could not be read whole (" + loaded.message() + ")");
        return result;
    }
    result.report = copyIntoDay(store, date, foods, exercises);
    if (result.report.notices.userData) {
        if (const StorageStatus saved = saveUser(store); !saved) {
            result.status.add(saved);  // the file on disk stays as it was
        }
    }
    // Saved already, and nothing the open person's screens show changed.
    result.report.notices = {};
    return result;
}

}  // namespace nutrovex
