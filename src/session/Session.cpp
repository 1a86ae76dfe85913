#include "session/Session.h"

#include <algorithm>
#include <system_error>

#include "calc/Totals.h"
#include "core/Names.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/UserStorage.h"

namespace nutrovex {

namespace {

std::string notWrittenOver(const std::filesystem::path& file, const std::string& why) {
    return file.filename().string() +
           ": not saved, so that the file on disk is kept; it could not be read whole (" + why +
           ")";
}

bool fileExists(const std::filesystem::path& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::exists(path, ec);
}

}  // namespace

Session::Session(std::filesystem::path root, const Clock& clock, SessionSettings& settings,
                 std::span<const uint8_t> shippedCatalogue)
    : m_root(std::move(root)),
      m_clock(&clock),
      m_settings(&settings),
      m_shippedCatalogue(shippedCatalogue.begin(), shippedCatalogue.end()),
      m_store(clock),
      m_users(m_root),
      m_days(m_store) {}

Session::Start Session::start(std::string& reason) {
    switch (m_lock.acquire(m_root, reason)) {
        case InstanceLock::Result::Acquired:
            // Saves of a copy that was killed may have left their temporary files.
            removeStaleSaves(m_root);
            removeStaleSaves(usersFolder(m_root));
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
    // A list that failed to load refuses every change, so nothing below writes over it.
    status.add(m_users.read());
    // A person returns to themselves: the remembered user when listed and readable.
    const std::string remembered = m_settings->currentUserName();
    if (!remembered.empty() && remembered != kDefaultUserName &&
        m_users.find(remembered) != kNoPosition) {
        SessionStatus tried = openUser(remembered);
        if (tried.ok()) {
            return status;
        }
        for (std::string& f : tried.failures) {
            status.add(std::move(f));
        }
    }
    for (std::string& f : openUser(kDefaultUserName).failures) {
        status.add(std::move(f));
    }
    if (!userOpen()) {
        closeUser();
    }
    return status;
}

SessionStatus Session::openUser(std::string_view nameView) {
    const std::string name(nameView);
    SessionStatus status;
    const StorageStatus opened = ::nutrovex::openUser(m_store, m_users, name);
    if (!opened && m_users.find(name) == kNoPosition) {
        status.add(opened);  // not added: the open user stays as it was
        return status;
    }
    status.add(opened);
    if (!m_store.userFolderPath.empty()) {
        removeStaleSaves(m_store.userFolderPath);
    }
    m_userReadWhole = opened.ok() || !fileExists(m_store.dataFilePath);
    m_userFailure = opened.message();
    m_days.setCurrentDate(m_store.today());
    loadCatalogueFor(status);
    m_settings->setCurrentUserName(name);
    return status;
}

void Session::loadCatalogueFor(SessionStatus& status) {
    m_catalogueCopied = false;
    m_catalogueReadWhole = false;
    m_catalogueFailure.clear();
    if (!m_shippedCatalogue.empty()) {
        status.add(installTemplateCatalogue(m_root, m_shippedCatalogue));
    }
    const StorageStatus path = setCataloguePath(m_catalogue, m_users, m_store.dataFilePath);
    if (!path) {
        status.add(path);
        m_catalogue.reset();
        m_catalogue.filePath.clear();
        m_catalogue.folderPath.clear();
        m_catalogueFailure = path.message();
        return;
    }
    const CatalogueLoadResult loaded = loadCatalogue(m_catalogue, templateCataloguePath(m_root));
    switch (loaded.outcome) {
        case CatalogueLoad::Read:
            m_catalogueReadWhole = true;
            break;
        case CatalogueLoad::Copied:
            m_catalogueReadWhole = true;
            m_catalogueCopied = true;
            break;
        case CatalogueLoad::Failed:
            status.add(loaded.status);
            m_catalogueFailure = loaded.status.message();
            m_catalogueReadWhole = !fileExists(m_catalogue.filePath);
            break;
    }
}

void Session::closeUser() {
    m_store.reset();
    m_store.dataFilePath.clear();
    m_store.userFolderPath.clear();
    m_catalogue.reset();
    m_catalogue.filePath.clear();
    m_catalogue.folderPath.clear();
    m_catalogue.modified = false;
    m_userReadWhole = false;
    m_catalogueReadWhole = false;
    m_catalogueCopied = false;
    m_days.setCurrentDate(m_store.today());
}

SessionStatus Session::saveUserData() {
    SessionStatus status;
    if (!userOpen()) {
        status.add("UserDB.ddb: not saved, because no user is open");
    } else if (!m_userReadWhole) {
        status.add(notWrittenOver(m_store.dataFilePath, m_userFailure));
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
    if (!userOpen() || m_catalogue.filePath.empty()) {
        status.add("FoodDB.ddb: not saved, because no user is open");
    } else if (!m_catalogueReadWhole) {
        status.add(notWrittenOver(m_catalogue.filePath, m_catalogueFailure));
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
    return status;
}

SessionStatus Session::saveAll() {
    SessionStatus status = saveUserData();
    for (std::string& f : saveCatalogue().failures) {
        status.add(std::move(f));
    }
    return status;
}

SessionStatus Session::switchUser(std::string_view nameView) {
    const std::string name(nameView);
    SessionStatus status;
    if (m_users.find(name) == kNoPosition) {
        status.add(std::string(kUserListFileName) + ": '" + name + "' is not a listed user");
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
    return openUser(name);
}

SessionStatus Session::addUser(std::string_view nameView) {
    const std::string name(nameView);
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
    }
    return status;
}

SessionStatus Session::deleteUser(std::string_view nameView) {
    const std::string name(nameView);
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
