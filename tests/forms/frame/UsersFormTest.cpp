#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "TempDir.h"
#include "core/UserProfile.h"
#include "forms/frame/UsersForm.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using Command = UsersForm::Command;
using Field = UsersForm::Field;

std::vector<uint8_t> emptyCatalogue() {
    FoodCatalogue c;
    c.renumberGroupChunks();
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return {out.data(), out.data() + out.size()};
}

class UsersFormTest : public ::testing::Test {
protected:
    UsersFormTest() : clock(CalendarDate::fromDmy(21, 11, 2002)), shipped(emptyCatalogue()) {}

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

    // Deletes a user as the screen does: selected, asked about, then deleted.
    static Outcome deleteUser(UsersForm& form, const std::string& name) {
        (void)form.edit(Field::Selected, name);
        return form.command(Command::Delete);
    }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped;
    test::TempDir dir;
    fs::path root = dir.path() / "root";
};

TEST_F(UsersFormTest, DeletingTheOpenUserOpensAnotherOrMakesTheDefaultAgain) {
    makeUser("Ann", 41);
    auto s = started();
    ASSERT_TRUE(s->initialLoad());
    ASSERT_TRUE(s->switchUser("Ann"));
    UsersForm form(*s);

    EXPECT_FALSE(deleteUser(form, "Ann").message);
    EXPECT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(form.view().names[static_cast<std::size_t>(form.view().selected)], "Zerbu");

    // Nobody left: "Zerbu" is made again, with a file of its own.
    const Outcome last = deleteUser(form, "Zerbu");
    EXPECT_FALSE(last.message);
    EXPECT_TRUE(last.notices.userChanged);
    EXPECT_TRUE(s->userOpen());
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->users().count(), 1u);

    // Somebody who is not listed cannot be deleted; nothing changes.
    (void)form.edit(Field::Selected, "Nobody");
    EXPECT_FALSE(form.confirmation(Command::Delete));
    EXPECT_FALSE(form.command(Command::Delete).notices.any());
    EXPECT_EQ(s->openUserName(), "Zerbu");
}

TEST_F(UsersFormTest, DeletingAnotherUserKeepsTheOpenOne) {
    makeUser("Ann", 41);
    auto s = started();
    ASSERT_TRUE(s->initialLoad());  // opens Ann, the remembered user
    ASSERT_TRUE(s->switchUser("Zerbu"));
    s->store().profile.setAge(33);
    s->apply({.userData = true});
    UsersForm form(*s);
    (void)form.edit(Field::Selected, "Ann");
    const std::optional<ScreenMessage> asked = form.confirmation(Command::Delete);
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->text, "Delete the user name and ALL ASSOCIATED DATA of 'Ann'?");
    EXPECT_EQ(asked->kind, MessageKind::Question);
    EXPECT_FALSE(form.command(Command::Delete).message);
    EXPECT_EQ(s->openUserName(), "Zerbu");
    EXPECT_EQ(s->store().profile.age(), 33);  // still the same, unsaved, user
    EXPECT_FALSE(fs::exists(root / "Users" / "Ann"));
}

TEST_F(UsersFormTest, TheCommandsActOnTheSelectedEntry) {
    makeUser("Ann", 41);
    makeUser("Bob", 52);
    auto s = started();
    ASSERT_TRUE(s->initialLoad());  // Bob, remembered last
    UsersForm form(*s);
    EXPECT_EQ(form.selectedName(), "Bob");
    EXPECT_EQ(form.view().selected, 1);

    (void)form.edit(Field::Selected, "Ann");
    (void)form.edit(Field::NewName, "Anne");
    const Outcome renamed = form.command(Command::Rename);
    EXPECT_TRUE(renamed.notices.userChanged);
    EXPECT_FALSE(renamed.message);
    EXPECT_EQ(form.view().names, (std::vector<std::string>{"Anne", "Bob", "Zerbu"}));
    EXPECT_EQ(form.selectedName(), "Anne");
    EXPECT_EQ(s->openUserName(), "Bob");

    // Renaming onto a listed name is refused and changes nothing.
    (void)form.edit(Field::NewName, "Zerbu");
    const Outcome refused = form.command(Command::Rename);
    EXPECT_EQ(refused.message, UsersForm::renameRefusal("Zerbu"));
    EXPECT_FALSE(refused.notices.any());

    EXPECT_FALSE(form.command(Command::Open).message);
    EXPECT_EQ(s->openUserName(), "Anne");
    EXPECT_EQ(s->store().profile.age(), 41);
}

TEST_F(UsersFormTest, AddingADuplicateOrUnsafeNameIsRefused) {
    auto s = started();
    ASSERT_TRUE(s->initialLoad());
    UsersForm form(*s);
    for (const char* name : {"Zerbu", "", "..", "a/b"}) {
        SCOPED_TRACE(name);
        (void)form.edit(Field::NewName, name);
        const Outcome refused = form.command(Command::Add);
        EXPECT_EQ(refused.message, UsersForm::addRefusal(name));
        EXPECT_FALSE(refused.notices.any());
    }
    (void)form.edit(Field::NewName, "Cy");
    const Outcome added = form.command(Command::Add);
    EXPECT_FALSE(added.message);
    EXPECT_EQ(s->openUserName(), "Cy");
    EXPECT_EQ(form.selectedName(), "Cy");
    EXPECT_TRUE(fs::exists(root / "Users" / "Cy" / "UserDB.ddb"));
}

TEST(UsersForm, ARefusedNameSaysWhyWhenItCannotBeAUsersName) {
    const struct {
        std::optional<std::string> name;
        const char* why;
    } cases[] = {
        {"Ann", "Make sure you are not inputting a duplicate name."},
        {"", "A user name cannot be empty."},
        {"..", "A user name cannot be \".\" or \"..\"."},
        {"a/b", "A user name cannot hold \"/\" or \"\\\"."},
        {"a\x1b[2J", "A user name cannot hold a control character."},
        {"\x9D", "A user name cannot hold a control character."},
        {"Users.udb", "A user name cannot be \"Users.udb\", the name of the list of users."},
        {std::string(200, '\xE9'), "A user name cannot be longer than a folder's name can be."},
        {std::nullopt, "A user name can hold only the characters of Windows-1252."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(UsersForm::addRefusal(c.name).text,
                  std::string("Could not add the user.  ") + c.why);
        EXPECT_EQ(UsersForm::renameRefusal(c.name).text,
                  std::string("Could not rename the user.  ") + c.why);
    }
    // A name quoted in a message shows its control characters, never sends them.
    EXPECT_EQ(UsersForm::confirmDelete("Ann\x1b[2J\x81").text,
              "Delete the user name and ALL ASSOCIATED DATA of 'Ann\\x1B[2J\\x81'?");
}

}  // namespace
}  // namespace nutrovex
