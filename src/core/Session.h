#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/CalendarDate.h"
#include "core/FoodCatalogue.h"
#include "core/Position.h"
#include "core/UserStore.h"
#include "logbook/DayCursor.h"
#include "logbook/ExerciseLog.h"
#include "logbook/ScreenMessage.h"
#include "storage/StorageError.h"
#include "storage/UserList.h"

namespace nutrovex {

// The user that start-up opens.
inline constexpr const char* kDefaultUserName = "Zerbu";
inline constexpr const char* kLockFileName = "Nutrovex.lock";

// Where the data lives: --root DIR, else $NUTROVEX_ROOT, else the per-user data folder. `given`
// tells the program to keep its settings inside the root, so every root is self-contained.
struct DataRootChoice {
    std::filesystem::path path;
    bool given = false;
};
[[nodiscard]] DataRootChoice chooseDataRoot(std::string_view rootOption);

// The remembered current user, kept by the program's settings (an absent value reads as "").
class SessionSettings {
public:
    virtual ~SessionSettings() = default;
    [[nodiscard]] virtual std::string currentUserName() const = 0;
    virtual void setCurrentUserName(std::string_view name) = 0;
};

// Settings that live as long as the object: for the tool and for tests.
class MemorySettings final : public SessionSettings {
public:
    [[nodiscard]] std::string currentUserName() const override { return m_name; }
    void setCurrentUserName(std::string_view name) override { m_name = name; }

private:
    std::string m_name;
};

// Keeps a second copy of the program off a data root: an exclusive lock on a file in the root,
// held while the object lives. The system drops it when the process ends, however it ends.
class InstanceLock {
public:
    enum class Result : uint8_t { Acquired, HeldElsewhere, Failed };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // Makes the root when it is missing. On Failed, reason says why.
    [[nodiscard]] Result acquire(const std::filesystem::path& root, std::string& reason);
    [[nodiscard]] bool held() const { return m_fd >= 0; }
    void release();

private:
    int m_fd = -1;
};

// The outcome of a session operation: every failure in words a screen can show, naming the file
// and why. Empty when everything went well.
struct SessionStatus {
    std::vector<std::string> failures;

    [[nodiscard]] bool ok() const { return failures.empty(); }
    explicit operator bool() const { return ok(); }
    [[nodiscard]] std::string message() const;
    void add(const StorageStatus& status);
    void add(std::string failure) { failures.push_back(std::move(failure)); }
};

// The users screen's messages.
[[nodiscard]] ScreenMessage loadErrorMessage();  // "Error loading data files. ..."
[[nodiscard]] ScreenMessage addUserRefusal();
[[nodiscard]] ScreenMessage renameUserRefusal();
[[nodiscard]] ScreenMessage confirmDeleteUser(std::string_view name);
[[nodiscard]] ScreenMessage deleteUserRefusal();

// The running program's data: one data root, exactly one open user with that user's food
// catalogue, the logbook's cursor and the exercise clipboard. The owners live as long as the
// session and are only reset and reloaded, never replaced. A user file or catalogue that could
// not be read whole is never written over: its saves are refused until another load succeeds.
class Session {
public:
    // shippedCatalogue: the catalogue that ships with the program, installed as the root's
    // template when the root has none.
    Session(std::filesystem::path root, const Clock& clock, SessionSettings& settings,
            std::span<const uint8_t> shippedCatalogue);

    enum class Start : uint8_t { Running, AlreadyRunning, Failed };
    // Takes the root's lock. AlreadyRunning: another copy works on this root, and this one ends
    // at once and silently. Failed: the root cannot be used; reason says why.
    [[nodiscard]] Start start(std::string& reason);

    // Opens the remembered user when listed and readable, else "Zerbu" (made with its folder
    // when missing); installs the template catalogue when the root has none, derives and loads
    // the user's catalogue, and puts the logbook on today. Failures along the way are
    // collected; the steps after them still run.
    SessionStatus initialLoad();

    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }
    [[nodiscard]] const Clock& clock() const { return *m_clock; }
    [[nodiscard]] UserStore& store() { return m_store; }
    [[nodiscard]] FoodCatalogue& catalogue() { return m_catalogue; }
    [[nodiscard]] UserList& users() { return m_users; }
    [[nodiscard]] const UserList& users() const { return m_users; }
    [[nodiscard]] DayCursor& days() { return m_days; }
    [[nodiscard]] ExerciseClipboard& exerciseClipboard() { return m_exerciseClipboard; }
    [[nodiscard]] bool userOpen() const { return !m_store.dataFilePath.empty(); }
    [[nodiscard]] std::string_view openUserName() const { return m_store.profile.userName(); }

    SessionStatus saveUserData();
    SessionStatus saveCatalogue();
    // "Save User": the user data first, then the catalogue.
    SessionStatus saveAll();

    // Switches to a listed user: the open user's unsaved changes are written first, then the
    // store is reset and the other user's file and catalogue are loaded.
    SessionStatus switchUser(std::string_view name);
    // The users screen's New...: adds the user (refused: the screen shows addUserRefusal()),
    // opens it with its catalogue, makes it current and saves its data.
    SessionStatus addUser(std::string_view name);
    // Moves the user's folder with everything in it; the open user is saved at once.
    SessionStatus renameUser(std::string_view name, std::string_view newName);
    // Deleting the open user opens the first listed one, or a new "Zerbu" when none is left.
    SessionStatus deleteUser(std::string_view name);

    [[nodiscard]] std::string rememberedUserName() const { return m_settings->currentUserName(); }
    // The users screen's selection: the listed name equal to the remembered one ignoring case,
    // else the first; kNoPosition for an empty list.
    [[nodiscard]] Position preselectedUser() const;

private:
    SessionStatus openUser(std::string_view name);
    void loadCatalogueFor(SessionStatus& status);
    void closeUser();

    std::filesystem::path m_root;
    const Clock* m_clock;
    SessionSettings* m_settings;
    std::vector<uint8_t> m_shippedCatalogue;
    InstanceLock m_lock;
    UserStore m_store;
    FoodCatalogue m_catalogue;
    UserList m_users;
    DayCursor m_days;
    ExerciseClipboard m_exerciseClipboard;
    bool m_userReadWhole = false;
    bool m_catalogueReadWhole = false;
    // The template was just copied in: until the catalogue is edited the file is already it.
    bool m_catalogueCopied = false;
    std::string m_userFailure;
    std::string m_catalogueFailure;
};

}  // namespace nutrovex
