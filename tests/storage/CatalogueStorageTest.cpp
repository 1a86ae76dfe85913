#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "core/UserStore.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/StorageTestUtil.h"
#include "storage/UserList.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

Bytes catalogueBytes(const FoodCatalogue& c) {
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return Bytes(out.data(), out.data() + out.size());
}

class CatalogueStorageTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(users.read().ok()); }

    test::TempDir dir;
    UserList users{dir.path()};
    FoodCatalogue catalogue;
};

TEST_F(CatalogueStorageTest, ThePathFollowsTheUserFolderOfTheDataFile) {
    ASSERT_TRUE(users.add("Ann").ok());
    ASSERT_TRUE(users.add("Ben").ok());
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Ben") / "UserDB.ddb").ok());
    EXPECT_EQ(catalogue.filePath, dir.path() / "Users" / "Ben" / "FoodDB.ddb");
    EXPECT_EQ(catalogue.folderPath, dir.path() / "Users" / "Ben");
    // A folder that is not listed falls back to the first user, as the format always has.
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Zed") / "UserDB.ddb").ok());
    EXPECT_EQ(catalogue.folderPath, *users.userFolder("Ann"));
    // No user folder below the users folder: refused.
    EXPECT_FALSE(setCataloguePath(catalogue, users, users.usersFolder() / "UserDB.ddb").ok());
    EXPECT_FALSE(setCataloguePath(catalogue, users, dir.path() / "elsewhere" / "a" / "b").ok());
}

TEST_F(CatalogueStorageTest, AMissingCatalogueIsACopyOfTheTemplateReadAtOnce) {
    FoodCatalogue shipped;
    test::fillCatalogue(shipped, {1, 1}, 2);
    const Bytes templateBytes = catalogueBytes(shipped);
    ASSERT_TRUE(installTemplateCatalogue(dir.path(), templateBytes).ok());
    ASSERT_TRUE(users.add("Ann").ok());
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Ann") / "UserDB.ddb").ok());

    CatalogueLoadResult first = loadCatalogue(catalogue, templateCataloguePath(dir.path()));
    EXPECT_EQ(first.outcome, CatalogueLoad::Copied);
    EXPECT_EQ(catalogue.foodCount(), 4u);
    EXPECT_FALSE(catalogue.modified);
    EXPECT_EQ(test::readBytes(catalogue.filePath), templateBytes);

    CatalogueLoadResult second = loadCatalogue(catalogue, templateCataloguePath(dir.path()));
    EXPECT_EQ(second.outcome, CatalogueLoad::Read) << second.status.message();
    EXPECT_EQ(catalogue.foodCount(), 4u);
}

TEST_F(CatalogueStorageTest, ATemplateThatCannotBeReadWholeIsNotCopied) {
    FoodCatalogue shipped;
    test::fillCatalogue(shipped, {1, 1}, 2);
    Bytes templateBytes = catalogueBytes(shipped);
    templateBytes.resize(templateBytes.size() - 3);
    test::writeBytes(templateCataloguePath(dir.path()), templateBytes);
    ASSERT_TRUE(users.add("Ann").ok());
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Ann") / "UserDB.ddb").ok());
    const CatalogueLoadResult r = loadCatalogue(catalogue, templateCataloguePath(dir.path()));
    EXPECT_EQ(r.outcome, CatalogueLoad::Failed);
    EXPECT_EQ(r.status.message().rfind("FoodDB.ddb: chunk", 0), 0u) << r.status.message();
    EXPECT_EQ(catalogue.foodCount(), 0u);
    EXPECT_FALSE(fs::exists(catalogue.filePath));
}

TEST_F(CatalogueStorageTest, WithoutATemplateTheLoadFailsAndSaysWhy) {
    ASSERT_TRUE(users.add("Ann").ok());
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Ann") / "UserDB.ddb").ok());
    const CatalogueLoadResult r = loadCatalogue(catalogue, templateCataloguePath(dir.path()));
    EXPECT_EQ(r.outcome, CatalogueLoad::Failed);
    EXPECT_NE(r.status.message().find("template"), std::string::npos);
}

TEST_F(CatalogueStorageTest, AnInstalledTemplateIsNeverReplaced) {
    ASSERT_TRUE(installTemplateCatalogue(dir.path(), Bytes{1, 2, 3}).ok());
    ASSERT_TRUE(installTemplateCatalogue(dir.path(), Bytes{4, 5}).ok());
    EXPECT_EQ(test::readBytes(templateCataloguePath(dir.path())), (Bytes{1, 2, 3}));
}

TEST_F(CatalogueStorageTest, SaveAndLoadRoundTripAndASaveThatCannotBeRightKeepsTheOldFile) {
    ASSERT_TRUE(users.add("Ann").ok());
    ASSERT_TRUE(setCataloguePath(catalogue, users, *users.userFolder("Ann") / "UserDB.ddb").ok());
    test::fillCatalogue(catalogue, {2, 0, 1}, 3);
    catalogue.modified = true;
    ASSERT_TRUE(saveCatalogue(catalogue).ok());
    EXPECT_FALSE(catalogue.modified);
    const Bytes saved = test::readBytes(catalogue.filePath);

    catalogue.groups[5].emplace_back();  // chunk numbers now stale
    const StorageStatus s = saveCatalogue(catalogue);
    EXPECT_FALSE(s.ok());
    EXPECT_EQ(test::readBytes(catalogue.filePath), saved);

    const fs::path path = catalogue.filePath;
    FoodCatalogue back;
    back.filePath = path;
    ASSERT_EQ(loadCatalogue(back, templateCataloguePath(dir.path())).outcome, CatalogueLoad::Read);
    EXPECT_EQ(back.foodCount(), 9u);
    EXPECT_EQ(catalogueBytes(back), saved);
}

// Runs `save` in a child whose files may not grow past `limit` bytes: a real failing write.
// Returns the child's verdict: 0 the save failed with a message naming the file, 1 it succeeded,
// 2 it failed without a useful message.
template <typename Save>
int saveWithFileSizeLimit(rlim_t limit, Save save) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit lim{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &lim);
        const StorageStatus s = save();
        if (s.ok()) {
            ::_exit(1);
        }
        const bool named = s.message().find(".ddb: cannot be written: the file would be larger") !=
                           std::string::npos;
        ::_exit(named ? 0 : 2);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(AtomicSave, AWriteThatFailsPartWayLeavesThePreviousUserFileWhole) {
    test::TempDir dir;
    FixedClock clock{CalendarDate::fromDmy(1, 1, 2010)};
    UserStore store{clock};
    UserList users{dir.path()};
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(openUser(store, users, "Ann").ok());
    store.insertDay(test::sampleDay(1, 1, 2009));
    ASSERT_TRUE(saveUser(store).ok());
    const Bytes before = test::readBytes(store.dataFilePath);

    for (int d = 2; d < 60; ++d) {
        store.insertDay(test::sampleDay(d % 28 + 1, d / 28 + 2, 2009, 10));
    }
    EXPECT_EQ(saveWithFileSizeLimit(4096, [&] { return saveUser(store); }), 0);
    EXPECT_EQ(test::readBytes(store.dataFilePath), before);
    // No temporary file is left beside it.
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(store.userFolderPath)) {
        ++files;
    }
    EXPECT_EQ(files, 1u);
    // With room enough the same save goes through.
    EXPECT_EQ(saveWithFileSizeLimit(RLIM_INFINITY, [&] { return saveUser(store); }), 1);
}

TEST(AtomicSave, AFailingCatalogueSaveLeavesThePreviousFileWhole) {
    test::TempDir dir;
    FoodCatalogue c;
    c.filePath = dir.path() / "FoodDB.ddb";
    test::fillCatalogue(c, {1}, 1);
    ASSERT_TRUE(saveCatalogue(c).ok());
    const Bytes before = test::readBytes(c.filePath);
    c.groups[3].clear();
    test::fillCatalogue(c, {0, 0, 0, 40}, 50);
    EXPECT_EQ(saveWithFileSizeLimit(8192, [&] { return saveCatalogue(c); }), 0);
    EXPECT_EQ(test::readBytes(c.filePath), before);
}

TEST(AtomicSave, AnUnwritableFolderGivesAMessageNotANumber) {
    test::TempDir dir;
    const fs::path blocked = dir.path() / "file-not-folder";
    test::writeBytes(blocked, {1});
    const StorageStatus s = writeFileAtomically(blocked / "UserDB.ddb", Bytes{1, 2});
    ASSERT_FALSE(s.ok());
    EXPECT_EQ(s.message(), "UserDB.ddb: cannot be written: a part of the path is not a folder");
}

// An installed program reads its starting catalogue from <prefix>/share/nutrovex when that file
// is a catalogue; run from the build tree, or with the file missing or damaged, it uses its own.
TEST(TemplateCatalogue, TheInstalledOneWhenItReadsElseTheBuiltInOne) {
    test::TempDir prefix;
    FoodCatalogue installed;
    test::fillCatalogue(installed, {2, 1}, 3);
    const Bytes installedBytes = catalogueBytes(installed);
    const Bytes builtIn = catalogueBytes(FoodCatalogue{});
    ASSERT_NE(installedBytes, builtIn);
    const fs::path bin = prefix.path() / "bin";
    const fs::path file = prefix.path() / "share" / "nutrovex" / "FoodDB.ddb";
    EXPECT_EQ(installedTemplatePath(bin), file);
    EXPECT_EQ(installedTemplatePath(prefix.path() / "bin/"), file);

    EXPECT_EQ(chooseTemplateCatalogue(bin, builtIn), builtIn);  // nothing installed
    fs::create_directories(file.parent_path());
    test::writeBytes(file, installedBytes);
    EXPECT_EQ(chooseTemplateCatalogue(bin, builtIn), installedBytes);
    test::writeBytes(file, Bytes(installedBytes.begin(), installedBytes.end() - 5));
    EXPECT_EQ(chooseTemplateCatalogue(bin, builtIn), builtIn);  // cut short
    fs::remove(file);
    fs::create_directory(file);  // not a file at all
    EXPECT_EQ(chooseTemplateCatalogue(bin, builtIn), builtIn);
}

}  // namespace
}  // namespace nutrovex
