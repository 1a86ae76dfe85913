#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/CalendarDate.h"
#include "core/FoodCatalogue.h"
#include "core/MacroTargets.h"
#include "core/Position.h"
#include "core/Recipe.h"
#include "core/ScreenMessage.h"
#include "core/UserStore.h"
#include "foods/FoodRunState.h"
#include "logbook/DayCursor.h"
#include "logbook/ExerciseLog.h"
#include "session/InstanceLock.h"
#include "session/SessionSettings.h"
#include "session/SessionStatus.h"
#include "storage/UserList.h"

namespace nutrovex {

// The user that start-up opens.
inline constexpr const char* kDefaultUserName = "Zerbu";

// The running program's data: one data root, exactly one open user with that user's food
// catalogue, the logbook's cursor and the exercise clipboard. The owners live as long as the
// session and are only reset and reloaded, never replaced. A user file or catalogue that could
// not be read whole is never written over: its saves are refused until another load succeeds.
class Session {
public:
    // Write: the program and the tool's writing commands. LookOnly (the program's tour) reads
    // what is there and writes nothing into the root: nothing is made, swept, remembered or
    // saved, and a save succeeds without writing.
    using Access = InstanceLock::Access;

    // shippedCatalogue: the catalogue that ships with the program, installed as the root's
    // template when the root has none.
    Session(std::filesystem::path root, const Clock& clock, SessionSettings& settings,
            std::span<const uint8_t> shippedCatalogue, Access access = Access::Write);

    enum class Start : uint8_t { Running, AlreadyRunning, Failed };
    // Takes the root's lock. AlreadyRunning: another copy works on this root, and this one ends
    // at once and silently. Failed: the root cannot be used; reason says why.
    [[nodiscard]] Start start(std::string& reason);

    // Opens the remembered user when listed, else "Zerbu" (made with its folder when missing);
    // installs the template catalogue when the root has none, derives and loads the user's
    // catalogue, and puts the logbook on today. A file of the user that cannot be read whole is
    // said, naming the user and the file, and is not saved over; it never makes another user.
    // A list that cannot be read opens nobody. Failures along the way are collected; the steps
    // after them still run.
    SessionStatus initialLoad();

    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }
    [[nodiscard]] bool lookOnly() const { return m_access == Access::LookOnly; }
    [[nodiscard]] const Clock& clock() const { return *m_clock; }
    [[nodiscard]] UserStore& store() { return m_store; }
    [[nodiscard]] FoodCatalogue& catalogue() { return m_catalogue; }
    [[nodiscard]] UserList& users() { return m_users; }
    [[nodiscard]] const UserList& users() const { return m_users; }
    [[nodiscard]] DayCursor& days() { return m_days; }
    [[nodiscard]] ExerciseClipboard& exerciseClipboard() { return m_exerciseClipboard; }
    // What the food screens keep for the whole run: the lists' view, clipboards, find.
    [[nodiscard]] FoodRunState& foodRunState() { return m_foodRunState; }
    // The open person's recipes and targets, kept in side files of their folder. While a side file
    // could not be read whole its contents here are empty and changes to them are refused by
    // every save, so that the file on disk is kept; a screen asks first (readWhole, failure).
    [[nodiscard]] RecipeBook& recipes() { return m_recipes; }
    [[nodiscard]] MacroTargets& targets() { return m_targets; }
    [[nodiscard]] bool recipesReadWhole() const { return userOpen() && m_recipesFile.readWhole; }
    [[nodiscard]] bool targetsReadWhole() const { return userOpen() && m_targetsFile.readWhole; }
    [[nodiscard]] const std::string& recipesFailure() const { return m_recipesFile.failure; }
    [[nodiscard]] const std::string& targetsFailure() const { return m_targetsFile.failure; }
    // Whether the catalogue could be read whole, and why not: a recipe's food is not made in a
    // catalogue that cannot be saved.
    [[nodiscard]] bool catalogueReadWhole() const { return userOpen() && m_catalogueReadWhole; }
    [[nodiscard]] const std::string& catalogueFailure() const { return m_catalogueFailure; }
    [[nodiscard]] bool userOpen() const { return !m_store.dataFilePath.empty(); }
    [[nodiscard]] std::string_view openUserName() const { return m_store.profile.userName(); }

    // The one door for changes: marks what a command changed as modified, so that the next save
    // point writes it. Screens reach it through the notifier, which also tells every open screen.
    void apply(const Notices& notices);
    [[nodiscard]] bool userDataModified() const { return userOpen() && m_store.modified; }
    [[nodiscard]] bool catalogueModified() const { return userOpen() && m_catalogue.modified; }
    [[nodiscard]] bool sideFilesModified() const {
        return userOpen() && (m_recipesFile.modified || m_targetsFile.modified);
    }
    // A screen's save point: writes what it names, the user data first, each only when modified,
    // then the side files that changed.
    SessionStatus save(SavePoint point);
    SessionStatus saveModified() { return save(SavePoint::Both); }

    // Recomputes every day's nutrient totals, then writes the user's data file.
    SessionStatus saveUserData();
    SessionStatus saveCatalogue();
    // Recipes.json and Targets.json of the open person.
    SessionStatus saveRecipes();
    SessionStatus saveTargets();
    // "Save User": the user data first, then the catalogue, then side files that changed.
    SessionStatus saveAll();

    // Switches to a listed user: the open user's unsaved changes are written first, then the
    // store is reset and the other user's file and catalogue are loaded.
    SessionStatus switchUser(std::string_view name);
    // The users screen's New...: adds the user (refused: the screen shows UsersForm::addRefusal()),
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
    void loadSideFiles(SessionStatus& status);
    SessionStatus saveModifiedSideFiles();
    void closeUser();
    // The failure of a file of the open user, naming the user.
    [[nodiscard]] std::string ofOpenUser(const std::string& failure) const;
    [[nodiscard]] SessionStatus refusedWhileLooking() const;

    struct SideFileState {
        bool readWhole = false;
        bool modified = false;
        std::string failure;  // why it could not be read whole
    };

    std::filesystem::path m_root;
    Access m_access;
    const Clock* m_clock;
    SessionSettings* m_settings;
    std::vector<uint8_t> m_shippedCatalogue;
    InstanceLock m_lock;
    UserStore m_store;
    FoodCatalogue m_catalogue;
    UserList m_users;
    DayCursor m_days;
    ExerciseClipboard m_exerciseClipboard;
    FoodRunState m_foodRunState;
    RecipeBook m_recipes;
    MacroTargets m_targets;
    SideFileState m_recipesFile;
    SideFileState m_targetsFile;
    bool m_userReadWhole = false;
    bool m_catalogueReadWhole = false;
    // The template was just copied in: until the catalogue is edited the file is already it.
    bool m_catalogueCopied = false;
    std::string m_userFailure;
    std::string m_catalogueFailure;
};

}  // namespace nutrovex
