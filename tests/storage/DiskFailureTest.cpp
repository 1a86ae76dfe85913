// Saves onto failing disks: a file-size limit at many sizes across the file, a full file system
// and a read-only folder. Each save fails with one reason naming the file, leaves the previous
// file byte-identical and no temporary file, and the records in memory save later.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

#include "PrivateMounts.h"
#include "SaveFaultTestUtil.h"
#include "storage/CatalogueStorage.h"
#include "storage/UserStorage.h"

namespace nutrovex {
namespace {

using namespace test;
namespace fs = std::filesystem;

// One file kind: how to save either version and what the saved versions are.
struct SaveCase {
    std::string fileName;
    std::function<StorageStatus(bool newer)> save;
};

// Lowers the file-size limit while it lives. SIGXFSZ would end the process; the program ignores
// it so that the write fails with EFBIG instead, and so does this test.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = ::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_old;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        ::signal(SIGXFSZ, m_oldHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_old{};
    sighandler_t m_oldHandler = nullptr;
};

// Expects a refused save of the newer version: one reason naming the file, the older version
// still on disk and nothing else in the folder.
void expectRefused(const StorageStatus& status, const fs::path& folder, const SaveCase& c,
                   const Bytes& older, const std::string& reason, const std::string& where) {
    ASSERT_FALSE(status.ok()) << where;
    EXPECT_NE(status.message().find(c.fileName), std::string::npos) << status.message();
    EXPECT_NE(status.message().find(reason), std::string::npos) << status.message();
    EXPECT_EQ(readBytes(folder / c.fileName), older) << where;
    EXPECT_EQ(strayFiles(folder, {c.fileName}), std::vector<std::string>{}) << where;
}

void saveUnderFileSizeLimits(const fs::path& folder, const SaveCase& c) {
    ASSERT_TRUE(c.save(true).ok());
    const std::size_t newerSize = readBytes(folder / c.fileName).size();
    ASSERT_TRUE(c.save(false).ok());
    const Bytes older = readBytes(folder / c.fileName);
    ASSERT_GT(newerSize, std::size_t{500000});

    // Every edge the writer has (nothing, one byte, a page, its 256 KiB window, the last byte),
    // and thirty sizes spread over the file.
    std::vector<std::size_t> limits = {0,      1,      4095,          4096,         262143,
                                       262144, 262145, newerSize / 2, newerSize - 1};
    for (std::size_t i = 1; i <= 30; ++i) {
        limits.push_back(newerSize * i / 31 + i * 37);
    }
    for (const std::size_t limit : limits) {
        const std::string where = c.fileName + " limited to " + std::to_string(limit) + " bytes";
        {
            const FileSizeLimit lowered(limit);
            expectRefused(c.save(true), folder, c, older,
                          "the file would be larger than the system allows", where);
        }
        // The records were kept: the same save succeeds once the limit is gone.
        ASSERT_TRUE(c.save(true).ok()) << where;
        ASSERT_EQ(readBytes(folder / c.fileName).size(), newerSize) << where;
        ASSERT_TRUE(c.save(false).ok()) << where;
    }
}

TEST(DiskFailure, UserFileSavesUnderAFileSizeLimitFailCleanly) {
    TempDir dir;
    UserVersions v = userVersions(dir.path(), 400);
    saveUnderFileSizeLimits(dir.path(), {"UserDB.ddb", [&](bool newer) {
                                             return saveUser(newer ? *v.newer : *v.older);
                                         }});
}

TEST(DiskFailure, CatalogueSavesUnderAFileSizeLimitFailCleanly) {
    TempDir dir;
    FoodCatalogue older;
    FoodCatalogue newer;
    fillCatalogueVersion(older, dir.path(), 8, "Old ");
    fillCatalogueVersion(newer, dir.path(), 9, "New ");
    saveUnderFileSizeLimits(dir.path(), {"FoodDB.ddb", [&](bool isNewer) {
                                             return saveCatalogue(isNewer ? newer : older);
                                         }});
}

// In the child: a refused save as expectRefused checks it, reported on stderr.
bool refusedCleanly(const StorageStatus& status, const fs::path& folder, const SaveCase& c,
                    const Bytes& older, const std::string& reason, const std::string& where,
                    const std::vector<std::string>& alsoThere) {
    std::vector<std::string> expected = alsoThere;
    expected.push_back(c.fileName);
    const bool ok = !status.ok() && status.message().find(c.fileName) != std::string::npos &&
                    status.message().find(reason) != std::string::npos &&
                    readBytes(folder / c.fileName) == older && strayFiles(folder, expected).empty();
    if (!ok) {
        std::fprintf(stderr, "%s: %s\n", where.c_str(),
                     status.ok() ? "the save succeeded" : status.message().c_str());
    }
    return ok;
}

TEST(DiskFailure, SavesOntoAFullFileSystemFailCleanly) {
    TempDir dir;
    const fs::path disk = dir.path() / "disk";
    fs::create_directories(disk);
    UserVersions v = userVersions(disk, 400);
    const SaveCase c{"UserDB.ddb",
                     [&](bool newer) { return saveUser(newer ? *v.newer : *v.older); }};
    ASSERT_TRUE(c.save(false).ok());
    // Room for the old file and half as much again, never for both the old and the new.
    const std::size_t diskSize = (readBytes(disk / c.fileName).size() * 3 / 2 / 4096 + 1) * 4096;
    fs::remove(disk / c.fileName);
    const int result = inPrivateMounts([&] {
        const std::string options = "size=" + std::to_string(diskSize);
        if (::mount("none", disk.c_str(), "tmpfs", 0, options.c_str()) != 0) {
            return 77;
        }
        if (!c.save(false).ok()) {
            return 2;
        }
        const Bytes older = readBytes(disk / c.fileName);
        const std::size_t free = diskSize - older.size();
        for (std::size_t left = 0; left < free; left += free / 23 + 1) {
            std::vector<std::string> filler;
            if (free - left > 8192) {
                writeBytes(disk / "filler", Bytes(free - left - 8192, 0x55));
                filler.push_back("filler");
            }
            const std::string where = std::to_string(left) + " bytes left";
            if (!refusedCleanly(c.save(true), disk, c, older, "the disk is full", where, filler)) {
                return 1;
            }
            fs::remove(disk / "filler");
        }
        return 0;
    });
    if (result == 77) {
        GTEST_SKIP() << "this system allows no private tmpfs; the file-size limit stands in";
    }
    EXPECT_EQ(result, 0);
}

TEST(DiskFailure, SavesIntoAReadOnlyFolderFailCleanly) {
    TempDir dir;
    UserVersions v = userVersions(dir.path(), 20);
    FoodCatalogue catalogue;
    fillCatalogueVersion(catalogue, dir.path(), 1, "");
    ASSERT_TRUE(saveUser(*v.older).ok());
    ASSERT_TRUE(saveCatalogue(catalogue).ok());
    const Bytes olderUser = readBytes(dir.path() / "UserDB.ddb");
    const Bytes olderCatalogue = readBytes(dir.path() / "FoodDB.ddb");
    const SaveCase user{"UserDB.ddb", [&](bool) { return saveUser(*v.newer); }};
    const SaveCase food{"FoodDB.ddb", [&](bool) {
                            catalogue.groups[0][0].name = "Renamed";
                            return saveCatalogue(catalogue);
                        }};
    const int result = inPrivateMounts([&] {
        // A read-only view of the folder: refused even to a process with every privilege.
        const char* folder = dir.path().c_str();
        if (::mount(folder, folder, nullptr, MS_BIND, nullptr) != 0 ||
            ::mount(nullptr, folder, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) != 0) {
            return 77;
        }
        const bool ok = refusedCleanly(user.save(true), dir.path(), user, olderUser,
                                       "the disk is read-only", "user file", {"FoodDB.ddb"}) &&
                        refusedCleanly(food.save(true), dir.path(), food, olderCatalogue,
                                       "the disk is read-only", "catalogue", {"UserDB.ddb"});
        return ok ? 0 : 1;
    });
    if (result == 77) {
        GTEST_SKIP() << "this system allows no private read-only mount";
    }
    EXPECT_EQ(result, 0);
    // Outside the child the folder was writable all along: the same records save.
    ASSERT_TRUE(saveUser(*v.newer).ok());
    EXPECT_NE(readBytes(dir.path() / "UserDB.ddb"), olderUser);
}

}  // namespace
}  // namespace nutrovex
