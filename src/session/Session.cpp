#include "session/Session.h"

#include <algorithm>
#include <system_error>

#include "calc/Totals.h"
#include "core/Cp1252.h"
#include "core/Names.h"
#include "session/UserCatalogue.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/RecipeFile.h"
#include "storage/TargetsFile.h"
#include "storage/UserStorage.h"

namespace nutrovex {

namespace {

std::string notWrittenOver(const std::filesystem::path& file, const std::string& why) {
    return file.filename().string() +
           ": not saved, so that the file on disk is kept; it could not be read whole (" + why +
           ")";
}

// The catalogue a look-only session shows when the user has none yet: the root's template, else
// the shipped one, read into memory only.
StorageStatus readTemplateInto(FoodCatalogue& catalogue, const std::filesystem::path& templatePath,
                               std::span<const uint8_t> shipped) {
    ByteBuffer bytes;
    StorageError error;
    switch (readWholeFile(templatePath, bytes, error)) {
        case ReadFile::Read:
            return readCatalogueFile(bytes.bytes(), catalogue, {templatePath.filename().string()});
        case ReadFile::Missing:
            return readCatalogueFile(shipped, catalogue, {kCatalogueFileName});
        case ReadFile::Failed:
            break;
    }
    return error;
}

bool fileExists(const std::filesystem::path& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::exists(path, ec);
}

}  // namespace

Session::Session(std::filesystem::path root, const Clock& clock, SessionSettings& settings,
                 std::span<const uint8_t> shippedCatalogue, Access access)
    : m_root(std::move(root)),
      m_access(access),
      m_clock(&clock),
      m_settings(&settings),
      m_shippedCatalogue(shippedCatalogue.begin(), shippedCatalogue.end()),
      m_store(clock),
      m_users(m_root),
      m_days(m_store) {}

Session::Start Session::start(std::string& reason) {
    switch (m_lock.acquire(m_root, reason, m_access)) {
        case InstanceLock::Result::Acquired:
            // A copy that was killed may have left temporary files and a half-made user.
            if (!lookOnly()) {
                sweepDataRoot(m_root);
            }
            return Start::Running;
        case InstanceLock::Result::HeldElsewhere:
            return Start::AlreadyRunning;
        case InstanceLock::Result::Failed:
            break;
    }
    return Start::Failed;
}

SessionStatus Session::initialLoad() {
    SessionStatus status;
    // A list that failed to load holds no names and refuses every change, so nothing below
    // writes over it, and no user is opened on its word.
    status.add(m_users.read(lookOnly() ? UserList::Missing::Leave : UserList::Missing::Make));
    if (m_users.readWhole()) {
        // A person returns to themselves: the remembered user whenever listed. A file of theirs
        // that cannot be read is said, and kept; it never makes or remembers another user.
        const std::string remembered = m_settings->currentUserName();
        const bool listed = !remembered.empty() && m_users.find(remembered) != kNoPosition;
        for (std::string& f : openUser(listed ? remembered : kDefaultUserName).failures) {
            status.add(std::move(f));
        }
    }
    if (!userOpen()) {
        closeUser();
    }
    return status;
}

std::string Session::ofOpenUser(const std::string& failure) const {
    return "User " + quotedText(m_store.profile.userName()) + ": " + failure;
}

SessionStatus Session::refusedWhileLooking() const {
    SessionStatus status;
    status.add(std::string(kUserListFileName) + ": not changed: the data is only being looked at");
    return status;
}

SessionStatus Session::openUser(std::string_view nameView) {
    const std::string name(nameView);
    SessionStatus status;
    const StorageStatus opened =
        ::nutrovex::openUser(m_store, m_users, name, lookOnly() ? Unlisted::Leave : Unlisted::Add);
    if (!opened && m_store.profile.userName() != name) {
        status.add(opened);  // not added: the open user stays as it was
        return status;
    }
    if (!opened) {
        status.add(ofOpenUser(opened.message()));
    }
    if (!m_store.userFolderPath.empty() && !lookOnly()) {
        removeStaleSaves(m_store.userFolderPath);
    }
    m_userReadWhole = opened.ok() || !fileExists(m_store.dataFilePath);
    m_userFailure = opened.message();
    m_days.setCurrentDate(m_store.today());
    loadCatalogueFor(status);
    loadSideFiles(status);
    if (!lookOnly()) {
        m_settings->setCurrentUserName(name);
    }
    return status;
}

void Session::loadSideFiles(SessionStatus& status) {
    const auto take = [&](const SideFileResult& loaded, SideFileState& state) {
        state = SideFileState{};
        state.readWhole = loaded.usable();
        if (!state.readWhole) {
            status.add(loaded.status);
            state.failure = loaded.status.message();
        }
    };
    m_recipes.clear();
    m_targets = MacroTargets{};
    if (m_store.userFolderPath.empty()) {
        return;
    }
    take(loadRecipes(m_store.userFolderPath, m_recipes), m_recipesFile);
    if (!m_recipesFile.readWhole) {
        m_recipes.clear();  // nothing half read stands for the file
    }
    take(loadTargets(m_store.userFolderPath, m_targets), m_targetsFile);
    if (!m_targetsFile.readWhole) {
        m_targets = MacroTargets{};
    }
}

void Session::loadCatalogueFor(SessionStatus& status) {
    m_catalogueCopied = false;
    m_catalogueReadWhole = false;
    m_catalogueFailure.clear();
    if (!m_shippedCatalogue.empty() && !lookOnly()) {
        status.add(installTemplateCatalogue(m_root, m_shippedCatalogue));
    }
    if (lookOnly()) {
        const bool listed = m_users.find(m_store.profile.userName()) != kNoPosition;
        if (!listed) {
            // A user looked at but not listed: the catalogue would be in the user's own folder.
            m_catalogue.folderPath = m_store.userFolderPath;
            m_catalogue.filePath = m_catalogue.folderPath / kCatalogueFileName;
        } else if (const StorageStatus path =
                       setCataloguePath(m_catalogue, m_users, m_store.dataFilePath);
                   !path) {
            status.add(ofOpenUser(path.message()));
            m_catalogue.reset();
            m_catalogue.filePath.clear();
            m_catalogue.folderPath.clear();
            m_catalogueFailure = path.message();
            return;
        }
        if (!fileExists(m_catalogue.filePath)) {
            // The template the user would start from, read but not copied in.
            m_catalogue.reset();
            const StorageStatus read =
                readTemplateInto(m_catalogue, templateCataloguePath(m_root), m_shippedCatalogue);
            m_catalogue.modified = false;
            m_catalogueCopied = true;
            m_catalogueReadWhole = read.ok();
            if (!read) {
                status.add(ofOpenUser(read.message()));
                m_catalogueFailure = read.message();
            }
            return;
        }
    }
    const UserCatalogueLoad loaded =
        loadUserCatalogue(m_catalogue, m_users, m_store.dataFilePath, templateCataloguePath(m_root),
                          MissingCatalogue::CopyTemplate);
    if (!loaded.status) {
        status.add(ofOpenUser(loaded.status.message()));
    }
    m_catalogueFailure = loaded.status.message();
    m_catalogueReadWhole = loaded.readWhole;
    m_catalogueCopied = loaded.outcome == CatalogueLoad::Copied;
}

void Session::closeUser() {
    m_store.reset();
    m_store.dataFilePath.clear();
    m_store.userFolderPath.clear();
    m_catalogue.reset();
    m_catalogue.filePath.clear();
    m_catalogue.folderPath.clear();
    m_catalogue.modified = false;
    m_recipes.clear();
    m_targets = MacroTargets{};
    m_recipesFile = SideFileState{};
    m_targetsFile = SideFileState{};
    m_userReadWhole = false;
    m_catalogueReadWhole = false;
    m_catalogueCopied = false;
    m_days.setCurrentDate(m_store.today());
}

SessionStatus Session::saveUserData() {
    SessionStatus status;
    if (lookOnly()) {
        m_store.modified = false;  // looking writes nothing, and asks nothing
    } else if (!userOpen()) {
        status.add("UserDB.ddb: not saved, because no user is open");
    } else if (!m_userReadWhole) {
        status.add(ofOpenUser(notWrittenOver(m_store.dataFilePath, m_userFailure)));
    } else {
        // The stored totals follow the foods, whatever edited them since the last save.
        const std::size_t written = std::min<std::size_t>(m_store.dayCount, m_store.days().size());
        for (std::size_t i = 0; i < written; ++i) {
            dayTotals(m_store.dayAt(static_cast<Position>(i)));
        }
        status.add(saveUser(m_store));
    }
    return status;
}

SessionStatus Session::saveCatalogue() {
    SessionStatus status;
    if (lookOnly()) {
        m_catalogue.modified = false;
    } else if (!userOpen() || m_catalogue.filePath.empty()) {
        status.add("FoodDB.ddb: not saved, because no user is open");
    } else if (!m_catalogueReadWhole) {
        status.add(ofOpenUser(notWrittenOver(m_catalogue.filePath, m_catalogueFailure)));
    } else if (m_catalogueCopied && !m_catalogue.modified) {
        // The copy of the template on disk is the catalogue; the empty one here is not.
    } else {
        const StorageStatus saved = ::nutrovex::saveCatalogue(m_catalogue);
        status.add(saved);
        if (saved) {
            m_catalogueCopied = false;
        }
    }
    return status;
}

SessionStatus Session::saveRecipes() {
    SessionStatus status;
    if (lookOnly()) {
        m_recipesFile.modified = false;  // looking writes nothing
    } else if (!userOpen()) {
        status.add(std::string(kRecipesFileName) + ": not saved, because no user is open");
    } else if (!m_recipesFile.readWhole) {
        status.add(ofOpenUser(
            notWrittenOver(m_store.userFolderPath / kRecipesFileName, m_recipesFile.failure)));
    } else {
        const StorageStatus saved = ::nutrovex::saveRecipes(m_store.userFolderPath, m_recipes);
        status.add(saved);
        m_recipesFile.modified = m_recipesFile.modified && !saved;
    }
    return status;
}

SessionStatus Session::saveTargets() {
    SessionStatus status;
    if (lookOnly()) {
        m_targetsFile.modified = false;  // looking writes nothing
    } else if (!userOpen()) {
        status.add(std::string(kTargetsFileName) + ": not saved, because no user is open");
    } else if (!m_targetsFile.readWhole) {
        status.add(ofOpenUser(
            notWrittenOver(m_store.userFolderPath / kTargetsFileName, m_targetsFile.failure)));
    } else {
        const StorageStatus saved = ::nutrovex::saveTargets(m_store.userFolderPath, m_targets);
        status.add(saved);
        m_targetsFile.modified = m_targetsFile.modified && !saved;
    }
    return status;
}

SessionStatus Session::saveModifiedSideFiles() {
    SessionStatus status;
    if (userOpen() && m_recipesFile.modified) {
        status = saveRecipes();
    }
    if (userOpen() && m_targetsFile.modified) {
        for (std::string& f : saveTargets().failures) {
            status.add(std::move(f));
        }
    }
    return status;
}

void Session::apply(const Notices& notices) {
    if (!userOpen()) {
        return;
    }
    if (notices.userData) {
        m_store.modified = true;
    }
    if (notices.catalogue) {
        m_catalogue.modified = true;
    }
    if (notices.recipes) {
        m_recipesFile.modified = true;
    }
    if (notices.targets) {
        m_targetsFile.modified = true;
    }
}

SessionStatus Session::save(SavePoint point) {
    const bool userData = point == SavePoint::UserData || point == SavePoint::Both;
    const bool catalogue = point == SavePoint::Catalogue || point == SavePoint::Both;
    SessionStatus status;
    if (userData && userDataModified()) {
        status = saveUserData();
    }
    if (catalogue && catalogueModified()) {
        for (std::string& f : saveCatalogue().failures) {
            status.add(std::move(f));
        }
    }
    for (std::string& f : saveModifiedSideFiles().failures) {
        status.add(std::move(f));
    }
    return status;
}

SessionStatus Session::saveAll() {
    SessionStatus status = saveUserData();
    for (std::string& f : saveCatalogue().failures) {
        status.add(std::move(f));
    }
    for (std::string& f : saveModifiedSideFiles().failures) {
        status.add(std::move(f));
    }
    return status;
}

SessionStatus Session::switchUser(std::string_view nameView) {
    const std::string name(nameView);
    SessionStatus status;
    if (m_users.find(name) == kNoPosition) {
        status.add(std::string(kUserListFileName) + ": " + quotedText(name) +
                   " is not a listed user");
        return status;
    }
    // Nothing typed for the open user may be lost by the switch.
    if (userOpen() && m_store.modified && m_userReadWhole) {
        status = saveUserData();
        if (!status) {
            return status;
        }
    }
    if (userOpen() && m_catalogue.modified && m_catalogueReadWhole) {
        status = saveCatalogue();
        if (!status) {
            return status;
        }
    }
    for (auto [modified, save] :
         {std::pair{m_recipesFile.modified && m_recipesFile.readWhole, &Session::saveRecipes},
          std::pair{m_targetsFile.modified && m_targetsFile.readWhole, &Session::saveTargets}}) {
        if (userOpen() && modified) {
            status = (this->*save)();
            if (!status) {
                return status;
            }
        }
    }
    return openUser(name);
}

SessionStatus Session::addUser(std::string_view nameView) {
    const std::string name(nameView);
    if (lookOnly()) {
        return refusedWhileLooking();
    }
    SessionStatus status;
    const StorageStatus added = m_users.add(name);
    if (!added) {
        status.add(added);
        return status;
    }
    status = switchUser(name);
    if (status) {
        status = saveUserData();
    }
    return status;
}

SessionStatus Session::renameUser(std::string_view nameView, std::string_view newNameView) {
    const std::string name(nameView);
    const std::string newName(newNameView);
    if (lookOnly()) {
        return refusedWhileLooking();
    }
    SessionStatus status;
    const bool wasOpen = userOpen() && openUserName() == name;
    const StorageStatus renamed = ::nutrovex::renameUser(m_store, m_users, name, newName);
    if (!renamed) {
        status.add(renamed);
        return status;
    }
    if (m_settings->currentUserName() == name) {
        m_settings->setCurrentUserName(newName);
    }
    if (wasOpen) {
        // The folder moved with both files; the open user's paths follow it, and the change is
        // saved at once, as after every change of the users screen.
        status.add(setCataloguePath(m_catalogue, m_users, m_store.dataFilePath));
        apply(Notices{.userData = true});  // the profile holds the new name
        for (std::string& f : saveUserData().failures) {
            status.add(std::move(f));
        }
        if (m_catalogue.modified) {
            for (std::string& f : saveCatalogue().failures) {
                status.add(std::move(f));
            }
        }
        for (std::string& f : saveModifiedSideFiles().failures) {
            status.add(std::move(f));
        }
    }
    return status;
}

SessionStatus Session::deleteUser(std::string_view nameView) {
    const std::string name(nameView);
    if (lookOnly()) {
        return refusedWhileLooking();
    }
    SessionStatus status;
    const bool wasOpen = userOpen() && openUserName() == name;
    const StorageStatus deleted = ::nutrovex::deleteUser(m_store, m_users, name);
    if (!deleted) {
        status.add(deleted);
        return status;
    }
    if (wasOpen) {
        // Never left with no user open: the first listed, else a new default user.
        closeUser();
        const std::string next =
            m_users.count() > 0 ? std::string(m_users.nameAt(0)) : std::string(kDefaultUserName);
        status = openUser(next);
    }
    if (m_settings->currentUserName() == name) {
        m_settings->setCurrentUserName(userOpen() ? std::string(openUserName()) : std::string());
    }
    return status;
}

Position Session::preselectedUser() const {
    if (m_users.count() == 0) {
        return kNoPosition;
    }
    const std::string remembered = m_settings->currentUserName();
    for (std::size_t i = 0; i < m_users.count(); ++i) {
        const auto pos = static_cast<Position>(i);
        if (compareIgnoringCase(m_users.nameAt(pos), remembered) == 0) {
            return pos;
        }
    }
    return 0;
}

}  // namespace nutrovex
