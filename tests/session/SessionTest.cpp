#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "core/FoodItem.h"
#include "session/Session.h"
#include "session/UsersForm.h"
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
    EXPECT_EQ(UsersForm::addRefusal().caption, "New User");

    status = s->switchUser("Zerbu");
    ASSERT_TRUE(status.ok()) << status.message();
    ASSERT_NE(s->days().currentRecord(), nullptr);
    EXPECT_EQ(s->days().currentRecord()->water(), 3);
    EXPECT_EQ(s->rememberedUserName(), "Zerbu");
    EXPECT_FALSE(s->switchUser("Nobody").ok());
    EXPECT_EQ(s->openUserName(), "Zerbu");

    // Renaming the open user: its data goes to the new name's folder at the next save.
    status = s->renameUser("Zerbu", "Zed");
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_EQ(s->openUserName(), "Zed");
    EXPECT_EQ(s->rememberedUserName(), "Zed");
    ASSERT_TRUE(s->saveUserData().ok());
    EXPECT_TRUE(fs::exists(root / "Users" / "Zed" / "UserDB.ddb"));
    EXPECT_TRUE(fs::is_directory(root / "Users" / "Zerbu"));  // left in place

    status = s->deleteUser("Zed");
    ASSERT_TRUE(status.ok()) << status.message();
    EXPECT_FALSE(s->userOpen());
    EXPECT_FALSE(fs::exists(root / "Users" / "Zed"));
    EXPECT_FALSE(s->saveUserData().ok());
    EXPECT_EQ(s->rememberedUserName(), "");
    ASSERT_EQ(s->users().count(), 1u);
    EXPECT_EQ(s->preselectedUser(), 0);

    EXPECT_EQ(UsersForm::confirmDelete("Ann").text,
              "Delete the user name and ALL ASSOCIATED DATA of 'Ann'?");
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
