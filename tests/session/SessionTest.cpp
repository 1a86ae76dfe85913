#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "foods/CatalogueOps.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

std::vector<uint8_t> fileBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A shipped catalogue: one category of one food in the bread group.
std::vector<uint8_t> shippedCatalogue() {
    FoodCatalogue c;
    FoodCategory bagels;
    bagels.name = "Bagels";
    FoodItem bagel;
    bagel.name = "Bagel";
    bagels.foods.push_back(bagel);
    c.groups[5].push_back(bagels);
    c.renumberGroupChunks();
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return {out.data(), out.data() + out.size()};
}

class SessionTest : public ::testing::Test {
protected:
    SessionTest() : clock(CalendarDate::fromDmy(21, 11, 2002)), shipped(shippedCatalogue()) {}

    std::unique_ptr<Session> started() {
        auto s = std::make_unique<Session>(root, clock, settings, shipped);
        std::string reason;
        EXPECT_EQ(s->start(reason), Session::Start::Running) << reason;
        return s;
    }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped;
    test::TempDir dir;
    fs::path root = dir.path() / "root";
};

TEST_F(SessionTest, FirstStartOnAnEmptyRoot) {
    auto s = started();
    const SessionStatus status = s->initialLoad();
    EXPECT_TRUE(status.ok()) << status.message();

    EXPECT_TRUE(fs::is_directory(root / "Users"));
    EXPECT_TRUE(fs::exists(root / "Users" / "Users.udb"));
    EXPECT_TRUE(fs::is_directory(root / "Users" / "Zerbu"));
    EXPECT_EQ(fileBytes(root / "FoodDB.ddb"), shipped);
    // The user's catalogue is a copy of the template, read at the next load.
    EXPECT_EQ(fileBytes(root / "Users" / "Zerbu" / "FoodDB.ddb"), shipped);

    ASSERT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    ASSERT_EQ(s->users().count(), 1u);
    EXPECT_EQ(s->users().nameAt(0), "Zerbu");
    EXPECT_EQ(s->rememberedUserName(), "Zerbu");
    const CalendarDate& current = s->days().currentDate();
    EXPECT_EQ(current.day, 21);
    EXPECT_EQ(current.month, 11);
    EXPECT_EQ(current.year, 2002);
    EXPECT_FALSE(s->days().currentFound());
}

TEST_F(SessionTest, ASecondSessionOnTheSameRootIsRefused) {
    auto first = started();
    Session second(root, clock, settings, shipped);
    std::string reason;
    EXPECT_EQ(second.start(reason), Session::Start::AlreadyRunning);

    // Another root is free.
    Session elsewhere(root / "other", clock, settings, shipped);
    EXPECT_EQ(elsewhere.start(reason), Session::Start::Running) << reason;

    first.reset();
    Session third(root, clock, settings, shipped);
    EXPECT_EQ(third.start(reason), Session::Start::Running) << reason;
}

TEST_F(SessionTest, ARootThatCannotBeMadeFailsWithAReason) {
    fs::create_directories(root);
    std::ofstream(root / "file") << "x";
    Session s(root / "file" / "below", clock, settings, shipped);
    std::string reason;
    EXPECT_EQ(s.start(reason), Session::Start::Failed);
    EXPECT_FALSE(reason.empty());
}

TEST_F(SessionTest, SavedDataAndTheCatalogueComeBackNextTime) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        // Nothing edited: the template copy on disk stays as it is.
        EXPECT_TRUE(s->saveCatalogue().ok());
        EXPECT_EQ(fileBytes(root / "Users" / "Zerbu" / "FoodDB.ddb"), shipped);

        (void)s->days().ensureCurrentDay();
        s->days().currentRecord()->setWater(5);
        const SessionStatus saved = s->saveAll();
        EXPECT_TRUE(saved.ok()) << saved.message();
        EXPECT_FALSE(s->store().modified);
    }
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    const DayRecord* day = s->days().currentRecord();
    ASSERT_NE(day, nullptr);
    EXPECT_EQ(day->water(), 5);
    ASSERT_EQ(s->catalogue().groups[5].size(), 1u);
    EXPECT_EQ(s->catalogue().groups[5][0].name, "Bagels");
}

TEST_F(SessionTest, TemporaryFilesOfKilledSavesAreRemovedFromTheFoldersOpened) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
    }
    const fs::path leftovers[] = {root / ".FoodDB.ddb.tmp1-0", root / "Users" / ".Users.udb.tmp1-4",
                                  root / "Users" / "Zerbu" / ".UserDB.ddb.tmp1-2",
                                  root / "Users" / "Zerbu" / ".Recipes.json.tmp1-3",
                                  root / "Users" / "Zerbu" / ".Targets.json.tmp1-5"};
    for (const fs::path& p : leftovers) {
        std::ofstream(p) << "half a save";
    }
    std::ofstream(root / "Users" / "Zerbu" / "mine.txt") << "kept";
    auto s = started();
    EXPECT_FALSE(fs::exists(leftovers[0]));
    EXPECT_FALSE(fs::exists(leftovers[1]));
    ASSERT_TRUE(s->initialLoad().ok());
    EXPECT_FALSE(fs::exists(leftovers[2]));
    EXPECT_FALSE(fs::exists(leftovers[3]));
    EXPECT_FALSE(fs::exists(leftovers[4]));
    EXPECT_TRUE(fs::exists(root / "Users" / "Zerbu" / "mine.txt"));
}

TEST_F(SessionTest, OnlyWhatTheNoticesMarkIsSavedAndTotalsFollowTheFoods) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_TRUE(s->saveUserData().ok());
    const fs::path userFile = root / "Users" / "Zerbu" / "UserDB.ddb";
    const std::vector<uint8_t> saved = fileBytes(userFile);

    // Edited without a notice: nothing is due, so a save point writes nothing.
    (void)s->days().ensureCurrentDay();
    DayRecord& day = *s->days().currentRecord();
    FoodItem bagel;
    bagel.name = "Bagel";
    bagel.nutrients[kCalories] = 250.0f;
    bagel.ratio = 2.0f;
    day.group(5).push_back(bagel);
    day.rawFields().totals = {1, 1, 1, 1, 1, 1};  // stale
    EXPECT_FALSE(s->userDataModified());
    EXPECT_TRUE(s->saveModified().ok());
    EXPECT_EQ(fileBytes(userFile), saved);

    // The command's notice makes the save point write the day, its totals recomputed first.
    s->apply(Notices{.userData = true});
    EXPECT_TRUE(s->userDataModified());
    EXPECT_FALSE(s->catalogueModified());
    ASSERT_TRUE(s->saveModified().ok());
    EXPECT_FALSE(s->userDataModified());
    EXPECT_NE(fileBytes(userFile), saved);
    EXPECT_FLOAT_EQ(day.totals()[kCalories], 500.0f);
}

// A catalogue screen's edit is saved only once its notices reached the session.
TEST_F(SessionTest, ACatalogueEditIsSavedAtTheSavePointOnceTheSessionHasItsNotices) {
    const fs::path catalogueFile = root / "Users" / "Zerbu" / "FoodDB.ddb";
    {
        auto s = started();  // copies the template in, read from the next start on
        ASSERT_TRUE(s->initialLoad().ok());
    }
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        ASSERT_NE(addCategory(s->catalogue(), 5, "Rolls"), kNoPosition);
        EXPECT_FALSE(s->catalogueModified());
        EXPECT_TRUE(s->saveModified().ok());
        EXPECT_EQ(fileBytes(catalogueFile), shipped);

        s->apply(kCatalogueChanged);
        EXPECT_TRUE(s->catalogueModified());
        EXPECT_FALSE(s->userDataModified());
        const SessionStatus saved = s->saveModified();
        ASSERT_TRUE(saved.ok()) << saved.message();
        EXPECT_FALSE(s->catalogueModified());
    }
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_EQ(s->catalogue().groups[5].size(), 2u);
    EXPECT_EQ(s->catalogue().groups[5][1].name, "Rolls");
}

TEST_F(SessionTest, AFileThatCannotBeReadIsNeverWrittenOver) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
    }
    const fs::path userFile = root / "Users" / "Zerbu" / "UserDB.ddb";
    const std::vector<uint8_t> garbage = {1, 2, 3, 4, 5, 6, 7};
    std::ofstream(userFile, std::ios::binary)
        .write(reinterpret_cast<const char*>(garbage.data()),
               static_cast<std::streamsize>(garbage.size()));

    auto s = started();
    const SessionStatus status = s->initialLoad();
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.message().find("UserDB.ddb"), std::string::npos) << status.message();
    const SessionStatus saved = s->saveUserData();
    EXPECT_FALSE(saved.ok());
    EXPECT_NE(saved.message().find("UserDB.ddb"), std::string::npos);
    EXPECT_EQ(fileBytes(userFile), garbage);
}

TEST_F(SessionTest, AnUnreadableUserListIsLeftAlone) {
    fs::create_directories(root / "Users");
    const std::vector<uint8_t> garbage = {9, 9, 9};
    std::ofstream(root / "Users" / "Users.udb", std::ios::binary)
        .write(reinterpret_cast<const char*>(garbage.data()),
               static_cast<std::streamsize>(garbage.size()));
    auto s = started();
    const SessionStatus status = s->initialLoad();
    EXPECT_FALSE(status.ok());
    EXPECT_FALSE(s->userOpen());
    EXPECT_FALSE(s->saveAll().ok());
    EXPECT_EQ(fileBytes(root / "Users" / "Users.udb"), garbage);
}

TEST_F(SessionTest, AddingSwitchingRenamingAndDeletingUsers) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    (void)s->days().ensureCurrentDay();
    s->days().currentRecord()->setWater(3);
    s->store().modified = true;

    // A new user: Zerbu's typing is saved first, then Ann is made current and saved.
    SessionStatus status = s->addUser("Ann");
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(s->openUserName(), "Ann");
    EXPECT_EQ(s->rememberedUserName(), "Ann");
    EXPECT_TRUE(fs::exists(root / "Users" / "Ann" / "UserDB.ddb"));
    EXPECT_EQ(s->days().currentRecord(), nullptr);
    EXPECT_FALSE(s->addUser("Ann").ok());

    status = s->switchUser("Zerbu");
    ASSERT_TRUE(status.ok()) << status.message();
    ASSERT_NE(s->days().currentRecord(), nullptr);
    EXPECT_EQ(s->days().currentRecord()->water(), 3);
    EXPECT_EQ(s->rememberedUserName(), "Zerbu");
    EXPECT_FALSE(s->switchUser("Nobody").ok());
    EXPECT_EQ(s->openUserName(), "Zerbu");

    // Renaming the open user moves its folder.
    status = s->renameUser("Zerbu", "Zed");
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(s->openUserName(), "Zed");
    EXPECT_EQ(s->rememberedUserName(), "Zed");
    ASSERT_TRUE(s->saveUserData().ok());
    EXPECT_TRUE(fs::exists(root / "Users" / "Zed" / "UserDB.ddb"));
    EXPECT_FALSE(fs::exists(root / "Users" / "Zerbu"));

    status = s->deleteUser("Zed");
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(s->openUserName(), "Ann");
    EXPECT_FALSE(fs::exists(root / "Users" / "Zed"));
    EXPECT_EQ(s->rememberedUserName(), "Ann");
    ASSERT_EQ(s->users().count(), 1u);
    EXPECT_EQ(s->preselectedUser(), 0);
}

TEST_F(SessionTest, ThePreselectedUserIgnoresCaseAndFallsBackToTheFirst) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_TRUE(s->addUser("bob").ok());
    ASSERT_TRUE(s->addUser("Ann").ok());
    // List order: Ann, bob, Zerbu.
    settings.setCurrentUserName("BOB");
    EXPECT_EQ(s->preselectedUser(), 1);
    settings.setCurrentUserName("Gone");
    EXPECT_EQ(s->preselectedUser(), 0);
}

void addCategory(Session& s, std::size_t group, const char* name) {
    FoodCategory category;
    category.name = name;
    s.catalogue().groups[group].push_back(category);
    s.catalogue().renumberGroupChunks();
    s.apply(Notices{.catalogue = true});
}

bool hasCategory(const FoodCatalogue& c, std::size_t group, const char* name) {
    for (const FoodCategory& category : c.groups[group]) {
        if (category.name == name) {
            return true;
        }
    }
    return false;
}

void cutShort(const fs::path& file, std::size_t bytes) {
    std::vector<uint8_t> data = fileBytes(file);
    data.resize(data.size() - bytes);
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data.data()),
               static_cast<std::streamsize>(data.size()));
}

TEST_F(SessionTest, AUserListThatFailedToLoadIsNeverWrittenOverByAnyPath) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        for (const char* name : {"Ann", "Bob", "Cy"}) {
            ASSERT_TRUE(s->addUser(name).ok()) << name;
        }
    }
    const fs::path list = root / "Users" / "Users.udb";
    cutShort(list, 2);
    const std::vector<uint8_t> listBytes = fileBytes(list);

    auto s = started();
    const SessionStatus loaded = s->initialLoad();
    ASSERT_FALSE(loaded.ok());
    EXPECT_NE(loaded.message().find("Users.udb"), std::string::npos) << loaded.message();
    const SessionStatus added = s->addUser("Dan");
    EXPECT_FALSE(added.ok());
    EXPECT_NE(added.message().find("could not be read whole"), std::string::npos)
        << added.message();
    EXPECT_FALSE(s->renameUser("Ann", "Al").ok());
    EXPECT_FALSE(s->deleteUser("Bob").ok());
    (void)s->saveAll();
    EXPECT_EQ(fileBytes(list), listBytes);
    for (const char* name : {"Ann", "Bob", "Cy", "Zerbu"}) {
        EXPECT_TRUE(fs::is_directory(root / "Users" / name)) << name;
    }
    EXPECT_FALSE(fs::exists(root / "Users" / "Dan"));
    EXPECT_FALSE(fs::exists(root / "Users" / "Al"));
}

TEST_F(SessionTest, AnUnreadUserFileOrCatalogueSurvivesAddingSwitchingAndRenaming) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        (void)s->days().ensureCurrentDay();
        addCategory(*s, 0, "Muffins");
        ASSERT_TRUE(s->saveAll().ok());
    }
    cutShort(root / "Users" / "Zerbu" / "UserDB.ddb", 1);
    cutShort(root / "Users" / "Zerbu" / "FoodDB.ddb", 1);
    const std::vector<uint8_t> user = fileBytes(root / "Users" / "Zerbu" / "UserDB.ddb");
    const std::vector<uint8_t> foods = fileBytes(root / "Users" / "Zerbu" / "FoodDB.ddb");

    auto s = started();
    EXPECT_FALSE(s->initialLoad().ok());
    ASSERT_TRUE(s->userOpen());
    s->apply(Notices{.userData = true, .catalogue = true});
    EXPECT_TRUE(s->addUser("Ann").ok());
    EXPECT_FALSE(s->switchUser("Zerbu").ok());  // opened, and says it could not be read
    EXPECT_EQ(s->openUserName(), "Zerbu");
    s->apply(Notices{.userData = true, .catalogue = true});
    const SessionStatus renamed = s->renameUser("Zerbu", "Zed");
    EXPECT_NE(renamed.message().find("not saved"), std::string::npos) << renamed.message();
    EXPECT_FALSE(s->saveAll().ok());
    EXPECT_TRUE(s->switchUser("Ann").ok());
    EXPECT_EQ(fileBytes(root / "Users" / "Zed" / "UserDB.ddb"), user);
    EXPECT_EQ(fileBytes(root / "Users" / "Zed" / "FoodDB.ddb"), foods);
}

TEST_F(SessionTest, RenamingTheOpenUserMovesEverythingAndSavesAtOnce) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    addCategory(*s, 0, "Muffins");
    ASSERT_TRUE(s->saveCatalogue().ok());
    (void)s->days().ensureCurrentDay();
    s->days().currentRecord()->setWater(4);
    s->apply(Notices{.userData = true});

    const SessionStatus renamed = s->renameUser("Zerbu", "Ann");
    ASSERT_TRUE(renamed.ok()) << renamed.message();
    EXPECT_FALSE(s->store().modified);
    EXPECT_FALSE(fs::exists(root / "Users" / "Zerbu"));
    ASSERT_TRUE(s->addUser("Bob").ok());
    ASSERT_TRUE(s->switchUser("Ann").ok());
    EXPECT_TRUE(hasCategory(s->catalogue(), 0, "Muffins"));
    EXPECT_TRUE(hasCategory(s->catalogue(), 5, "Bagels"));
    ASSERT_NE(s->days().currentRecord(), nullptr);
    EXPECT_EQ(s->days().currentRecord()->water(), 4);
    // The old default name is free again.
    ASSERT_TRUE(s->addUser("Zerbu").ok());
}

TEST_F(SessionTest, StartUpReturnsToTheRememberedUserWhenListed) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        ASSERT_TRUE(s->renameUser("Zerbu", "Zed").ok());
        ASSERT_TRUE(s->addUser("Ann").ok());
    }
    const struct {
        const char* remembered;
        const char* opened;
    } cases[] = {
        {"Ann", "Ann"}, {"Zed", "Zed"}, {"", "Zerbu"}, {"Gone", "Zerbu"}, {"ann", "Zerbu"}};
    for (const auto& c : cases) {
        settings.setCurrentUserName(c.remembered);
        auto s = started();
        (void)s->initialLoad();
        EXPECT_EQ(s->openUserName(), c.opened) << c.remembered;
        EXPECT_EQ(s->rememberedUserName(), c.opened);
    }
    // A remembered user whose logbook or catalogue cannot be read is still the one opened: the
    // failure names her and the file, nothing of hers is saved over, and no other user is made
    // or remembered in her place.
    for (const char* file : {"UserDB.ddb", "FoodDB.ddb"}) {
        const std::vector<uint8_t> whole = fileBytes(root / "Users" / "Ann" / file);
        cutShort(root / "Users" / "Ann" / file, 1);
        const std::vector<uint8_t> damaged = fileBytes(root / "Users" / "Ann" / file);
        const std::vector<uint8_t> list = fileBytes(root / "Users" / "Users.udb");
        const auto folders = std::distance(fs::directory_iterator(root / "Users"), {});
        settings.setCurrentUserName("Ann");
        auto s = started();
        const SessionStatus loaded = s->initialLoad();
        EXPECT_NE(loaded.message().find(std::string("User 'Ann': ") + file + ": chunk "),
                  std::string::npos)
            << loaded.message();
        EXPECT_EQ(s->openUserName(), "Ann");
        EXPECT_EQ(s->rememberedUserName(), "Ann");
        s->apply(Notices{.userData = true, .catalogue = true});
        EXPECT_FALSE(s->saveAll().ok());
        EXPECT_EQ(fileBytes(root / "Users" / "Ann" / file), damaged);
        EXPECT_EQ(fileBytes(root / "Users" / "Users.udb"), list);
        EXPECT_EQ(std::distance(fs::directory_iterator(root / "Users"), {}), folders);
        s.reset();
        std::ofstream(root / "Users" / "Ann" / file, std::ios::binary | std::ios::trunc)
            .write(reinterpret_cast<const char*>(whole.data()),
                   static_cast<std::streamsize>(whole.size()));
    }
}

TEST_F(SessionTest, AFirstCatalogueEditKeepsTheShippedFoods) {
    {
        auto s = started();
        ASSERT_TRUE(s->initialLoad().ok());
        EXPECT_TRUE(hasCategory(s->catalogue(), 5, "Bagels"));
        addCategory(*s, 0, "Muffins");
        ASSERT_TRUE(s->saveAll().ok());
    }
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    EXPECT_TRUE(hasCategory(s->catalogue(), 0, "Muffins"));
    EXPECT_TRUE(hasCategory(s->catalogue(), 5, "Bagels"));
}

TEST_F(SessionTest, DeletingTheOpenUserAlwaysLeavesAUserOpen) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad().ok());
    ASSERT_TRUE(s->addUser("Ann").ok());
    // List order: Ann, Zerbu. Deleting the open Ann opens the first listed, Zerbu.
    SessionStatus status = s->deleteUser("Ann");
    ASSERT_TRUE(status.ok()) << status.message();
    ASSERT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->rememberedUserName(), "Zerbu");
    (void)s->days().ensureCurrentDay();
    s->days().currentRecord()->setWater(2);
    s->apply(Notices{.userData = true});

    // Deleting the last user: a new, empty "Zerbu" is opened, and works.
    status = s->deleteUser("Zerbu");
    ASSERT_TRUE(status.ok()) << status.message();
    ASSERT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->days().currentRecord(), nullptr);
    EXPECT_TRUE(hasCategory(s->catalogue(), 5, "Bagels"));
    EXPECT_TRUE(s->saveAll().ok());
    ASSERT_EQ(s->users().count(), 1u);
}

TEST(DataRoot, TheOptionBeatsTheEnvironmentWhichBeatsTheDefault) {
    ::setenv("NUTROVEX_ROOT", "/tmp/from-env", 1);
    DataRootChoice c = chooseDataRoot("/tmp/from-option");
    EXPECT_EQ(c.path, fs::path("/tmp/from-option"));
    EXPECT_TRUE(c.given);
    c = chooseDataRoot("");
    EXPECT_EQ(c.path, fs::path("/tmp/from-env"));
    EXPECT_TRUE(c.given);
    ::unsetenv("NUTROVEX_ROOT");
    c = chooseDataRoot("");
    EXPECT_FALSE(c.given);
    EXPECT_EQ(c.path.filename(), "Nutrovex");
}

}  // namespace
}  // namespace nutrovex
