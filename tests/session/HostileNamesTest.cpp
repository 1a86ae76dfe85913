// Crafted user names through the users screen's operations (add, rename): each is refused with
// its reason or stored as one folder of its own directly below <root>/Users/, and nothing is
// ever made or written anywhere else.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <random>
#include <set>

#include "HostileNames.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::hostileNames;
using test::shown;

class HostileUserNames : public ::testing::Test {
protected:
    HostileUserNames() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        std::random_device rd;
        base = fs::temp_directory_path() / ("nutrovex-names-" + std::to_string(rd()));
        // Deep enough that "../" names would land inside base, where they are looked for.
        root = base / "one" / "root";
        fs::create_directories(root);
    }
    ~HostileUserNames() override {
        std::error_code ec;
        fs::remove_all(base, ec);
    }

    // Everything below base other than the root's own files and the users folder.
    [[nodiscard]] std::vector<std::string> outsideUsers() const {
        const std::set<fs::path> allowed = {base / "one", root, root / kLockFileName,
                                            templateCataloguePath(root), usersFolder(root)};
        std::vector<std::string> found;
        for (auto it = fs::recursive_directory_iterator(base); it != fs::end(it); ++it) {
            const fs::path& p = it->path();
            if (p == usersFolder(root)) {
                it.disable_recursion_pending();
            }
            if (allowed.count(p) == 0) {
                found.push_back(p.string());
            }
        }
        return found;
    }

    [[nodiscard]] std::vector<uint8_t> emptyCatalogue() const {
        ByteBuffer out;
        EXPECT_TRUE(writeCatalogueFile(FoodCatalogue(), out).ok());
        return {out.data(), out.data() + out.size()};
    }

    FixedClock clock;
    MemorySettings settings;
    std::vector<uint8_t> shipped = emptyCatalogue();
    fs::path base;
    fs::path root;
};

// A stored name has exactly one folder of its own directly in the users folder.
void expectOwnFolder(const Session& s, const fs::path& root, const std::string& name) {
    const std::optional<fs::path> maybeFolder = s.users().userFolder(name);
    ASSERT_TRUE(maybeFolder.has_value()) << shown(name);
    const fs::path& folder = *maybeFolder;
    EXPECT_EQ(folder.parent_path(), usersFolder(root)) << shown(name);
    EXPECT_TRUE(fs::is_directory(folder)) << shown(name);
}

TEST_F(HostileUserNames, AreRefusedOrStoredInTheirOwnFolder) {
    Session s(root, clock, settings, shipped);
    std::string reason;
    ASSERT_EQ(s.start(reason), Session::Start::Running) << reason;
    (void)s.initialLoad();
    ASSERT_TRUE(s.addUser("Base"));

    int refused = 0;
    int stored = 0;
    for (const std::string& name : hostileNames()) {
        const bool listedBefore = s.users().find(name) != kNoPosition;
        const SessionStatus added = s.addUser(name);
        if (added) {
            ++stored;
            EXPECT_FALSE(listedBefore) << shown(name);
            expectOwnFolder(s, root, name);
            EXPECT_TRUE(
                fs::is_regular_file(s.users().userFolder(name).value_or(root) / "UserDB.ddb"))
                << shown(name);
            EXPECT_EQ(s.openUserName(), name);
        } else {
            ++refused;
            EXPECT_FALSE(added.message().empty()) << shown(name);
            EXPECT_EQ(s.users().find(name) != kNoPosition, listedBefore) << shown(name);
            // A refusal leaves a user open, as every operation does.
            EXPECT_TRUE(s.userOpen()) << shown(name);
        }
        EXPECT_EQ(outsideUsers(), std::vector<std::string>{}) << "after adding " << shown(name);
    }
    // The list is both: these names must not all be turned away, nor all let in.
    EXPECT_GT(refused, 10);
    EXPECT_GT(stored, 10);
}

TEST_F(HostileUserNames, RenamingToThemIsRefusedOrStaysInTheUsersFolder) {
    Session s(root, clock, settings, shipped);
    std::string reason;
    ASSERT_EQ(s.start(reason), Session::Start::Running) << reason;
    (void)s.initialLoad();
    ASSERT_TRUE(s.addUser("Base"));
    std::string current = "Base";
    for (const std::string& name : hostileNames()) {
        const bool listedBefore = s.users().find(name) != kNoPosition;
        const SessionStatus renamed = s.renameUser(current, name);
        if (renamed) {
            EXPECT_FALSE(listedBefore) << shown(name);
            ASSERT_NE(s.users().find(name), kNoPosition) << shown(name);
            EXPECT_EQ(s.users().find(current), kNoPosition) << shown(name);
            // The data follows at the next save, into the new name's own folder.
            ASSERT_TRUE(s.saveAll()) << shown(name);
            expectOwnFolder(s, root, name);
            current = name;
        } else {
            EXPECT_FALSE(renamed.message().empty()) << shown(name);
            EXPECT_NE(s.users().find(current), kNoPosition) << shown(name);
        }
        EXPECT_EQ(outsideUsers(), std::vector<std::string>{})
            << "after renaming to " << shown(name);
    }
}

}  // namespace
}  // namespace nutrovex
