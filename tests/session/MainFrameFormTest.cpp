#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "TempDir.h"
#include "core/UserProfile.h"
#include "session/MainFrameForm.h"
#include "session/Session.h"
#include "session/UsersForm.h"
#include "storage/CatalogueFile.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

std::vector<uint8_t> emptyCatalogue() {
    FoodCatalogue c;
    c.renumberGroupChunks();
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return {out.data(), out.data() + out.size()};
}

class MainFrameFormTest : public ::testing::Test {
protected:
    MainFrameFormTest() : clock(CalendarDate::fromDmy(21, 11, 2002)), shipped(emptyCatalogue()) {}

    std::unique_ptr<Session> started() {
        auto s = std::make_unique<Session>(root, clock, settings, shipped);
        std::string reason;
        EXPECT_EQ(s->start(reason), Session::Start::Running) << reason;
        return s;
    }

    // A user with a saved profile, made by an earlier run of the program.
    void makeUser(const std::string& name, int age) {
        auto s = started();
        const SessionStatus loaded = s->initialLoad();
        ASSERT_TRUE(loaded) << loaded.message();
        ASSERT_TRUE(s->addUser(name));
        s->store().profile.setAge(age);
        s->apply({.userData = true});
        ASSERT_TRUE(s->saveModified());
    }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped;
    test::TempDir dir;
    fs::path root = dir.path() / "root";
};

TEST_F(MainFrameFormTest, DeletingTheOpenUserOpensAnotherOrMakesTheDefaultAgain) {
    makeUser("Ann", 41);
    auto s = started();
    ASSERT_TRUE(s->initialLoad());
    ASSERT_TRUE(s->switchUser("Ann"));

    bool refused = true;
    EXPECT_TRUE(deleteUserKeepingOneOpen(*s, "Ann", refused));
    EXPECT_FALSE(refused);
    EXPECT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");

    // Nobody left: "Zerbu" is made again, with a file of its own.
    EXPECT_TRUE(deleteUserKeepingOneOpen(*s, "Zerbu", refused));
    EXPECT_FALSE(refused);
    EXPECT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->users().count(), 1u);

    // Deleting somebody who is not listed is refused and changes nothing.
    EXPECT_FALSE(deleteUserKeepingOneOpen(*s, "Nobody", refused));
    EXPECT_TRUE(refused);
    EXPECT_EQ(s->openUserName(), "Zerbu");
}

TEST_F(MainFrameFormTest, DeletingAnotherUserKeepsTheOpenOne) {
    makeUser("Ann", 41);
    auto s = started();
    ASSERT_TRUE(s->initialLoad());  // opens Ann, the remembered user
    ASSERT_TRUE(s->switchUser("Zerbu"));
    s->store().profile.setAge(33);
    s->apply({.userData = true});
    bool refused = true;
    EXPECT_TRUE(deleteUserKeepingOneOpen(*s, "Ann", refused));
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->store().profile.age(), 33);  // still the same, unsaved, user
    EXPECT_FALSE(fs::exists(root / "Users" / "Ann"));
}

}  // namespace
}  // namespace nutrovex
