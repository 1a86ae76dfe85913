#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "DamagedFiles.h"
#include "core/FoodCatalogue.h"
#include "core/UserStore.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/StorageTestUtil.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

std::vector<std::string> namesOf(const UserList& list) {
    std::vector<std::string> out;
    for (const Text& n : list.names()) {
        out.push_back(n.str());
    }
    return out;
}

// The names as the list file holds them, read back by a fresh list.
std::vector<std::string> namesOnDisk(const fs::path& root) {
    UserList fresh(root);
    EXPECT_TRUE(fresh.read().ok());
    return namesOf(fresh);
}

TEST(UserList, AUserAddedWithFilesIsListedOnlyOnceTheFilesAreInPlace) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    ASSERT_TRUE(list.add("Ann").ok());
    const auto writeBoth = [](const fs::path& folder) {
        // Nothing is listed while the files are made: the folder is not the user's yet.
        EXPECT_EQ(namesOnDisk(folder.parent_path()), std::vector<std::string>{"Ann"});
        EXPECT_TRUE(fs::exists(folder / kNewUserMark));
        StorageStatus s = writeFileAtomically(folder / "UserDB.ddb", Bytes{1, 2, 3});
        return s ? writeFileAtomically(folder / "FoodDB.ddb", Bytes{4, 5}) : s;
    };
    ASSERT_TRUE(list.addWithFiles("Bob", writeBoth).ok());
    EXPECT_EQ(namesOnDisk(dir.path()), (std::vector<std::string>{"Ann", "Bob"}));
    EXPECT_EQ(test::readBytes(dir.path() / "Users" / "Bob" / "UserDB.ddb"), (Bytes{1, 2, 3}));
    EXPECT_FALSE(fs::exists(dir.path() / "Users" / "Bob" / kNewUserMark));

    // Refused as adding is, and a failure of the files leaves nothing behind.
    const auto before = std::distance(fs::recursive_directory_iterator(dir.path()), {});
    EXPECT_FALSE(list.addWithFiles("Ann", writeBoth).ok());
    EXPECT_FALSE(list.addWithFiles("../x", writeBoth).ok());
    fs::create_directories(dir.path() / "Users" / "Cy");
    EXPECT_FALSE(list.addWithFiles("Cy", writeBoth).ok());
    fs::remove(dir.path() / "Users" / "Cy");
    const StorageStatus failed = list.addWithFiles("Dee", [](const fs::path& folder) {
        EXPECT_TRUE(writeFileAtomically(folder / "UserDB.ddb", Bytes{1}).ok());
        return StorageStatus(fileError("FoodDB.ddb", "the disk is full"));
    });
    EXPECT_EQ(failed.message(), "FoodDB.ddb: the disk is full");
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(dir.path()), {}), before);
    EXPECT_EQ(namesOnDisk(dir.path()), (std::vector<std::string>{"Ann", "Bob"}));
}

TEST(UserList, TheSweepFinishesOrUndoesANewUserAsTheListSays) {
    test::TempDir dir;
    const fs::path root = dir.path();
    const fs::path users = root / "Users";
    UserList list(root);
    ASSERT_TRUE(list.read().ok());
    ASSERT_TRUE(list.add("Ann").ok());
    const auto make = [](const fs::path& folder, bool marked) {
        fs::create_directories(folder);
        test::writeBytes(folder / "UserDB.ddb", Bytes{1});
        test::writeBytes(folder / "FoodDB.ddb", Bytes{2});
        test::writeBytes(folder / ".UserDB.ddb.tmp1-0", Bytes{3});
        if (marked) {
            test::writeBytes(folder / std::string(kNewUserMark), {});
        }
    };
    make(users / "Ann", true);  // listed just before its maker was killed
    make(users / "Bob", true);  // moved in, never listed
    make(users / "Cy", false);  // someone's folder, unlisted: left alone
    make(users / "Dee", true);  // unlisted, but holding something of its own
    test::writeBytes(users / "Dee" / "notes.txt", Bytes{4});
    make(root / ".new-user.tmp1-0", true);  // never moved in
    make(root / ".new-user.tmp-0", false);  // not a name we make: left alone

    sweepDataRoot(root);
    EXPECT_TRUE(fs::exists(users / "Ann" / "UserDB.ddb"));
    EXPECT_FALSE(fs::exists(users / "Ann" / kNewUserMark));
    EXPECT_FALSE(fs::exists(users / "Bob"));
    EXPECT_TRUE(fs::exists(users / "Cy" / "UserDB.ddb"));
    EXPECT_FALSE(fs::exists(users / "Cy" / ".UserDB.ddb.tmp1-0"));
    EXPECT_EQ(test::readBytes(users / "Dee" / "notes.txt"), Bytes{4});
    EXPECT_FALSE(fs::exists(root / ".new-user.tmp1-0"));
    EXPECT_TRUE(fs::exists(root / ".new-user.tmp-0"));

    // While the list cannot be read, who is listed is not known: marked folders stay.
    make(users / "Bob", true);
    test::writeBytes(userListPath(root), Bytes{9, 9});
    sweepDataRoot(root);
    EXPECT_TRUE(fs::exists(users / "Bob" / "UserDB.ddb"));
    EXPECT_TRUE(fs::exists(users / "Bob" / kNewUserMark));
}

TEST(UserList, TheSweepUndoesARenameOnlyIntoAFreeFolderOfAListedName) {
    // Every name a mark below holds is listed too, the unsafe ones included (the list's reader
    // takes any name), so that only the checks of the sweep keep a folder where it is.
    const std::string longName(300, 'x');
    const std::vector<std::string> listed = {"Ann", "Bob", "",   "..",     "../Out",
                                             "a/b", ".",   "/x", longName, "Users.udb"};
    enum class Then { MovesBack, MarkGoes, Stays };
    struct Case {
        const char* folder;  // holding the mark
        std::string mark;    // the old name it holds
        Then then;
    };
    const std::vector<Case> cases = {
        {"Zed", "Bob", Then::MovesBack},  // moved, never listed: back to the listed name
        {"Ann", "Bob", Then::MarkGoes},   // listed under the new name: the rename finished
        {"Zed", "Ann", Then::Stays},      // the old name has a folder again
        {"Zed", "Cy", Then::Stays},       // the old name is not listed: not ours to move
        {"Zed", "", Then::Stays},        {"Zed", "..", Then::Stays},
        {"Zed", "../Out", Then::Stays},  {"Zed", "a/b", Then::Stays},
        {"Zed", ".", Then::Stays},       {"Zed", "/x", Then::Stays},
        {"Zed", longName, Then::Stays},  {"Zed", "Users.udb", Then::Stays},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.folder) + " marked " + quotedName(c.mark));
        test::TempDir dir;
        const fs::path root = dir.path() / "root";
        const fs::path users = root / "Users";
        fs::create_directories(users / "a");
        UserListFile list;
        list.names.assign(listed.begin(), listed.end());
        ByteBuffer bytes;
        ASSERT_TRUE(writeUserListFile(list, bytes).ok());
        test::writeBytes(userListPath(root), Bytes(bytes.data(), bytes.data() + bytes.size()));
        UserListFile back;
        ASSERT_TRUE(readUserListFile(bytes.bytes(), back, {}).ok());
        ASSERT_EQ(back.names.size(), listed.size());
        for (const char* name : {"Ann", c.folder}) {
            fs::create_directories(users / name);
            test::writeBytes(users / name / "UserDB.ddb", Bytes(name, name + 3));
        }
        test::writeBytes(users / c.folder / std::string(kRenameMark),
                         Bytes(c.mark.begin(), c.mark.end()));
        const std::map<fs::path, test::FileBytes> before = test::everyFile(dir.path());

        sweepDataRoot(root);
        std::map<fs::path, test::FileBytes> expected = before;
        const fs::path marked = fs::path("root/Users") / c.folder;
        if (c.then != Then::Stays) {
            expected.erase(marked / kRenameMark);
        }
        if (c.then == Then::MovesBack) {
            expected["root/Users/Bob/UserDB.ddb"] = expected.at(marked / "UserDB.ddb");
            expected.erase(marked / "UserDB.ddb");
        }
        EXPECT_EQ(test::everyFile(dir.path()), expected);
        EXPECT_EQ(fs::exists(users / c.folder), c.then != Then::MovesBack);
    }
}

TEST(UserList, AMissingListFileIsReplacedByAnEmptyOne) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    EXPECT_EQ(list.count(), 0u);
    // Chunk 0: the value 1 written little-endian; chunk 1: no names.
    EXPECT_EQ(test::readBytes(userListPath(dir.path())),
              (Bytes{0, 0, 0, 0, 2, 0, 0, 0, 1, 0, 1, 0, 0, 0, 2, 0, 0, 0, 0, 0}));
    UserListFile file;
    ASSERT_TRUE(readUserListFile(test::readBytes(userListPath(dir.path())), file, {}).ok());
    EXPECT_EQ(file.format, 256);  // read back big-endian, deliberately
}

TEST(UserList, NamesAreKeptInNameOrderAndDuplicatesAreOnlyExactMatches) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    for (const char* name : {"bob", "Ann", "Bob", "carl", "ann"}) {
        ASSERT_TRUE(list.add(name).ok()) << name;
    }
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"ann", "Ann", "bob", "Bob", "carl"}));
    EXPECT_FALSE(list.add("Bob").ok());
    EXPECT_EQ(list.find("Bob"), 3);
    EXPECT_EQ(list.find("BOB"), kNoPosition);
    EXPECT_EQ(namesOnDisk(dir.path()), namesOf(list));
    EXPECT_TRUE(fs::is_directory(*list.userFolder("Bob")));
    EXPECT_TRUE(fs::is_directory(*list.userFolder("bob")));
}

TEST(UserList, ALeftOverFolderMakesAddFail) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    fs::create_directories(*list.userFolder("Dana"));
    const StorageStatus s = list.add("Dana");
    EXPECT_FALSE(s.ok());
    EXPECT_NE(s.message().find("already there"), std::string::npos);
    EXPECT_EQ(list.count(), 0u);
    EXPECT_TRUE(namesOnDisk(dir.path()).empty());
}

TEST(UserList, NamesThatCouldLeaveTheUsersFolderAreRefused) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    ASSERT_TRUE(list.add("Eve").ok());
    const std::string bad[] = {
        "",          ".",       "..",    "../x", "a/b", "a\\b", std::string("a\0b", 3),
        "tab\there", "del\x7f", "c1\x81"};
    for (const std::string& name : bad) {
        EXPECT_FALSE(list.add(name).ok()) << name;
        EXPECT_FALSE(list.rename(0, name).ok()) << name;
    }
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"Eve"}));
    EXPECT_TRUE(list.add("..x").ok());
    EXPECT_TRUE(list.add("Zoë \x80").ok());  // any printable Windows-1252 text is a name
    std::vector<std::string> entries;
    for (const auto& e : fs::directory_iterator(dir.path())) {
        entries.push_back(e.path().filename().string());
    }
    EXPECT_EQ(entries, (std::vector<std::string>{"Users"}));
}

TEST(UserList, DeletingRemovesBothFilesTheFolderAndTheName) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    ASSERT_TRUE(list.add("Ann").ok());
    ASSERT_TRUE(list.add("Ben").ok());
    test::writeBytes(*list.userFolder("Ann") / "UserDB.ddb", {1, 2, 3});
    test::writeBytes(*list.userFolder("Ann") / "FoodDB.ddb", {4, 5, 6});
    ASSERT_TRUE(list.remove(0).ok());
    EXPECT_FALSE(fs::exists(*list.userFolder("Ann")));
    EXPECT_EQ(namesOnDisk(dir.path()), (std::vector<std::string>{"Ben"}));
    EXPECT_FALSE(list.remove(5).ok());
}

TEST(UserList, RenamingMovesTheFolderWithEverythingInIt) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    ASSERT_TRUE(list.add("Ann").ok());
    ASSERT_TRUE(list.add("Cy").ok());
    test::writeBytes(*list.userFolder("Ann") / "UserDB.ddb", {1, 2, 3});
    test::writeBytes(*list.userFolder("Ann") / "FoodDB.ddb", {4, 5});
    test::writeBytes(*list.userFolder("Ann") / "notes.txt", {6});
    ASSERT_TRUE(list.rename(0, "Dee").ok());
    EXPECT_EQ(namesOnDisk(dir.path()), (std::vector<std::string>{"Cy", "Dee"}));
    EXPECT_FALSE(fs::exists(*list.userFolder("Ann")));
    EXPECT_EQ(test::readBytes(*list.userFolder("Dee") / "UserDB.ddb"), (Bytes{1, 2, 3}));
    EXPECT_EQ(test::readBytes(*list.userFolder("Dee") / "FoodDB.ddb"), (Bytes{4, 5}));
    EXPECT_TRUE(fs::exists(*list.userFolder("Dee") / "notes.txt"));
    EXPECT_FALSE(list.rename(0, "Dee").ok());  // already listed
    // The old name can be added again: nothing of it is left behind.
    ASSERT_TRUE(list.add("Ann").ok());

    // A folder already there under the new name is neither merged nor replaced.
    fs::create_directories(*list.userFolder("Eve"));
    test::writeBytes(*list.userFolder("Eve") / "UserDB.ddb", {9});
    const StorageStatus s = list.rename(list.find("Dee"), "Eve");
    EXPECT_FALSE(s.ok());
    EXPECT_NE(s.message().find("already there"), std::string::npos) << s.message();
    EXPECT_EQ(namesOnDisk(dir.path()), (std::vector<std::string>{"Ann", "Cy", "Dee"}));
    EXPECT_EQ(test::readBytes(*list.userFolder("Dee") / "UserDB.ddb"), (Bytes{1, 2, 3}));
    EXPECT_EQ(test::readBytes(*list.userFolder("Eve") / "UserDB.ddb"), (Bytes{9}));

    // A listed user without a folder yet is renamed in the list alone.
    ASSERT_TRUE(fs::remove(*list.userFolder("Cy")));
    ASSERT_TRUE(list.rename(list.find("Cy"), "Cyd").ok());
    EXPECT_FALSE(fs::exists(*list.userFolder("Cyd")));
}

// Users.udb holding the given names, written as the program writes it.
void writeListFile(const fs::path& root, const std::vector<std::string>& names) {
    UserListFile file;
    for (const std::string& n : names) {
        file.names.emplace_back(n);
    }
    ByteBuffer bytes;
    ASSERT_TRUE(writeUserListFile(file, bytes).ok());
    fs::create_directories(usersFolder(root));
    test::writeBytes(userListPath(root), Bytes(bytes.data(), bytes.data() + bytes.size()));
}

// Every file and folder below root, relative to it.
std::vector<std::string> everythingBelow(const fs::path& root) {
    std::vector<std::string> out;
    for (const auto& e : fs::recursive_directory_iterator(root)) {
        out.push_back(e.path().lexically_relative(root).string());
    }
    std::sort(out.begin(), out.end());
    return out;
}

TEST(UserList, AListHoldingANameThatWouldBeRefusedWhenTypedFailsToLoad) {
    const struct {
        std::string name;
        const char* shown;
    } cases[] = {
        {"../../outside", "'../../outside'"},
        {"/etc", "'/etc'"},
        {"..", "'..'"},
        {".", "'.'"},
        {"", "''"},
        {"a\\b", "'a\\x5Cb'"},
        {"line\nbreak", "'line\\x0Abreak'"},
        {std::string("nul\0x", 5), "'nul\\x00x'"},
    };
    for (const auto& c : cases) {
        test::TempDir dir;
        const fs::path root = dir.path() / "root";
        fs::create_directories(root / "Users" / "Ann");
        fs::create_directories(dir.path() / "victim");
        test::writeBytes(dir.path() / "victim" / "UserDB.ddb", {7});
        writeListFile(root, {"Ann", c.name, "Bob"});
        const Bytes listBytes = test::readBytes(userListPath(root));

        UserList list(root);
        const StorageStatus s = list.read();
        ASSERT_FALSE(s.ok()) << c.shown;
        EXPECT_EQ(s.message(), "Users.udb: entry 2, " + std::string(c.shown) +
                                   ", is not a usable user name: " + unsafeUserNameReason());
        EXPECT_FALSE(list.readWhole());
        // Nothing is changed while the list stays unread: not the list, no folder anywhere.
        EXPECT_FALSE(list.add("Dan").ok());
        EXPECT_FALSE(list.rename(0, "Dee").ok());
        EXPECT_FALSE(list.remove(1).ok());
        EXPECT_FALSE(list.remove(0).ok());
        EXPECT_FALSE(list.write().ok());
        EXPECT_EQ(test::readBytes(userListPath(root)), listBytes);
        EXPECT_EQ(
            everythingBelow(dir.path()),
            (std::vector<std::string>{"root", "root/Users", "root/Users/Ann",
                                      "root/Users/Users.udb", "victim", "victim/UserDB.ddb"}));

        // Once the list reads whole again, changes are allowed again.
        writeListFile(root, {"Ann"});
        ASSERT_TRUE(list.read().ok());
        EXPECT_TRUE(list.add("Dan").ok());
    }
}

TEST(UserList, AnUnsafeNameNeverBecomesAPathWhereverItComesFrom) {
    test::TempDir dir;
    const fs::path root = dir.path() / "root";
    fs::create_directories(dir.path() / "victim");
    test::writeBytes(dir.path() / "victim" / "UserDB.ddb", {7});
    UserList list(root);
    ASSERT_TRUE(list.read().ok());
    for (const char* name : {"../../victim", "../escaped", "/tmp/abs", ".."}) {
        EXPECT_EQ(userFolderPath(root, name), std::nullopt) << name;
        EXPECT_EQ(list.userFolder(name), std::nullopt) << name;
        // A list changed in memory, past the reader: deleting and opening still refuse.
        std::vector<Text> names;
        names.emplace_back(name);
        list.setNames(std::move(names));
        EXPECT_FALSE(list.remove(0).ok()) << name;
        FixedClock clock{CalendarDate::fromDmy(1, 1, 2020)};
        UserStore store(clock);
        EXPECT_FALSE(openUser(store, list, name).ok()) << name;
        EXPECT_TRUE(store.dataFilePath.empty());
        FoodCatalogue catalogue;
        EXPECT_FALSE(
            setCataloguePath(catalogue, list, usersFolder(root) / "Ann" / "UserDB.ddb").ok());
        EXPECT_TRUE(catalogue.filePath.empty());
    }
    EXPECT_EQ(test::readBytes(dir.path() / "victim" / "UserDB.ddb"), (Bytes{7}));
    EXPECT_EQ(everythingBelow(dir.path()),
              (std::vector<std::string>{"root", "root/Users", "root/Users/Users.udb", "victim",
                                        "victim/UserDB.ddb"}));
}

TEST(UserList, AListCutShortIsNeverWrittenOver) {
    test::TempDir dir;
    UserList list(dir.path());
    ASSERT_TRUE(list.read().ok());
    for (const char* name : {"Ann", "Bob", "Cy"}) {
        ASSERT_TRUE(list.add(name).ok());
    }
    Bytes bytes = test::readBytes(userListPath(dir.path()));
    bytes.resize(bytes.size() - 2);
    test::writeBytes(userListPath(dir.path()), bytes);

    UserList again(dir.path());
    const StorageStatus s = again.read();
    ASSERT_FALSE(s.ok());
    const StorageStatus added = again.add("Dan");
    ASSERT_FALSE(added.ok());
    EXPECT_NE(added.message().find("could not be read whole"), std::string::npos)
        << added.message();
    EXPECT_FALSE(fs::exists(dir.path() / "Users" / "Dan"));
    EXPECT_EQ(test::readBytes(userListPath(dir.path())), bytes);
    EXPECT_TRUE(fs::exists(dir.path() / "Users" / "Cy"));
}

TEST(UserList, AFileWithDuplicatesAndNullNamesIsReadInFileOrder) {
    // Format bytes 01 00, then names "b", null, "a", "b".
    const Bytes bytes = {0, 0, 0, 0, 2, 0,   0, 0, 1, 0, 1, 0,   0, 0, 16, 0,   0,
                         0, 0, 4, 0, 2, 'b', 0, 0, 0, 0, 2, 'a', 0, 0, 2,  'b', 0};
    UserListFile file;
    ASSERT_TRUE(readUserListFile(bytes, file, {"Users.udb"}).ok());
    ASSERT_EQ(file.names.size(), 4u);
    EXPECT_TRUE(file.names[1].isNull());
    EXPECT_EQ(file.names[2], "a");
    ByteBuffer out;
    ASSERT_TRUE(writeUserListFile(file, out, FormatOnWrite::AsStored).ok());
    EXPECT_EQ(Bytes(out.data(), out.data() + out.size()), bytes);
}

class UserStorageTest : public ::testing::Test {
protected:
    test::TempDir dir;
    FixedClock clock{CalendarDate::fromDmy(21, 11, 2026)};
    UserStore store{clock};
    UserList users{dir.path()};
};

TEST_F(UserStorageTest, OpeningANewUserAddsItAndStartsEmpty) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Zerbu").ok());
    EXPECT_EQ(users.find("Zerbu"), 0);
    EXPECT_EQ(store.profile.userName(), "Zerbu");
    EXPECT_EQ(store.dataFilePath, dir.path() / "Users" / "Zerbu" / "UserDB.ddb");
    EXPECT_TRUE(store.days().empty());
    EXPECT_FALSE(fs::exists(store.dataFilePath));
}

TEST_F(UserStorageTest, SaveWritesTotalsAsTheyStandAndLoadPlacesDaysByDate) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    ASSERT_TRUE(store.profile.setDisplayName("Ann A."));
    store.insertDay(test::sampleDay(5, 3, 2004, 4));
    store.insertDay(test::sampleDay(1, 3, 2004, 2));
    store.dayAt(0).rawFields().totals = {1, 1, 1, 1, 1, 1};  // storage does no arithmetic
    store.modified = true;
    ASSERT_TRUE(saveUser(store).ok());
    EXPECT_FALSE(store.modified);
    ASSERT_TRUE(loadUser(store).ok());
    EXPECT_EQ(store.dayAt(0).totals()[kCalories], 1.0f);

    // A file whose days are out of date order loads sorted.
    UserFile file;
    file.days.push_back(test::sampleDay(9, 9, 2009));
    file.days.push_back(test::sampleDay(1, 1, 2001));
    file.days.push_back(test::sampleDay(9, 9, 2009, 0));
    file.dayCount = 3;
    ByteBuffer bytes;
    ASSERT_TRUE(writeUserFile(file.header, file.profile.fields(), 3, 3, file.days, bytes).ok());
    test::writeBytes(store.dataFilePath, Bytes(bytes.data(), bytes.data() + bytes.size()));
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    ASSERT_EQ(store.days().size(), 3u);
    EXPECT_EQ(store.dayCount, 3);
    EXPECT_EQ(store.dayAt(0).date().year, 2001);
    EXPECT_EQ(store.dayAt(1).allFoods().size(), 3u);  // same date: file order kept
    EXPECT_EQ(store.dayAt(2).allFoods().size(), 0u);
    EXPECT_EQ(store.profile.userName(), "Ann");
}

TEST_F(UserStorageTest, AFailedLoadKeepsWhatWasReadAndNamesTheFile) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    store.insertDay(test::sampleDay(1, 3, 2004));
    store.insertDay(test::sampleDay(2, 3, 2004));
    ASSERT_TRUE(saveUser(store).ok());
    Bytes bytes = test::readBytes(store.dataFilePath);
    bytes.resize(bytes.size() - 1);
    test::writeBytes(store.dataFilePath, bytes);
    const StorageStatus s = openUser(store, users, "Ann");
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.message().rfind("UserDB.ddb: chunk 4, byte ", 0), 0u) << s.message();
    EXPECT_EQ(store.days().size(), 1u);
}

TEST_F(UserStorageTest, DeletingTheOpenUserResetsTheStore) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    store.insertDay(test::sampleDay(1, 3, 2004));
    ASSERT_TRUE(saveUser(store).ok());
    ASSERT_TRUE(deleteUser(store, users, "Ann").ok());
    EXPECT_TRUE(store.days().empty());
    EXPECT_FALSE(fs::exists(*users.userFolder("Ann")));
    EXPECT_FALSE(saveUser(store).ok());  // nothing writes the deleted user back
    EXPECT_FALSE(deleteUser(store, users, "Ann").ok());
}

TEST_F(UserStorageTest, RenamingTheOpenUserSavesIntoTheNewFolder) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    store.insertDay(test::sampleDay(1, 3, 2004));
    ASSERT_TRUE(saveUser(store).ok());
    ASSERT_TRUE(renameUser(store, users, users.nameAt(0), "Bea").ok());
    EXPECT_EQ(store.profile.userName(), "Bea");
    EXPECT_EQ(store.dataFilePath, *users.userFolder("Bea") / "UserDB.ddb");
    EXPECT_FALSE(fs::exists(*users.userFolder("Ann")));
    ASSERT_TRUE(saveUser(store).ok());
    EXPECT_TRUE(fs::exists(*users.userFolder("Bea") / "UserDB.ddb"));
    EXPECT_FALSE(fs::exists(*users.userFolder("Ann")));
}

TEST_F(UserStorageTest, ARenamedUserThatIsNotOpenKeepsItsDays) {
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    store.insertDay(test::sampleDay(1, 3, 2004));
    ASSERT_TRUE(saveUser(store).ok());
    ASSERT_TRUE(openUser(store, users, "Cy").ok());
    ASSERT_TRUE(renameUser(store, users, "Ann", "Bea").ok());
    EXPECT_EQ(store.profile.userName(), "Cy");
    ASSERT_TRUE(openUser(store, users, "Bea").ok());
    EXPECT_EQ(store.days().size(), 1u);
}

}  // namespace
}  // namespace nutrovex
