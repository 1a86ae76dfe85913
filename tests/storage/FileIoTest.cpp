#include <gtest/gtest.h>

#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/FileIo.h"
#include "storage/StorageTestUtil.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

// Large enough that chunks straddle the file reader's window and the writer flushes many times.
FoodCatalogue largeCatalogue() {
    FoodCatalogue c;
    test::fillCatalogue(c, {40, 40, 40, 40, 40, 40, 40, 40}, 50);
    return c;
}

Bytes inMemory(const FoodCatalogue& c) {
    ByteBuffer out;
    EXPECT_TRUE(writeCatalogueFile(c, out).ok());
    return Bytes(out.data(), out.data() + out.size());
}

// A load's records fill pages the reserve made in one call, not a page fault each: the heap
// tuning it replaced silently never took effect, so this is checked where it runs.
#if !defined(__SANITIZE_ADDRESS__)
namespace {

// The page faults of filling three quarters of bytes with records written whole, with or without
// a reserve made first.
long faultsOfFilling(std::size_t bytes, bool reserved) {
    std::vector<std::unique_ptr<char[]> > records;
    records.reserve(bytes / 1000);
    rusage before{};
    rusage after{};
    {
        std::optional<HeapReserve> reserve;
        if (reserved) {
            reserve.emplace(bytes);
        }
        ::getrusage(RUSAGE_SELF, &before);
        for (std::size_t used = 0; used < bytes * 3 / 4; used += 1000) {
            records.push_back(std::make_unique<char[]>(1000));
        }
        ::getrusage(RUSAGE_SELF, &after);
    }
    return after.ru_minflt - before.ru_minflt;
}

}  // namespace
#endif

TEST(FileIo, TheRecordsOfALoadFillTheReserveWithoutPageFaults) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer's allocator keeps no heap to reserve";
#else
    // Measured in a fresh process, as a load at start meets the heap: what earlier tests in this
    // one left freed (and given back) would otherwise decide the count.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            constexpr std::size_t kBytes = std::size_t{16} << 20;
            const long with = faultsOfFilling(kBytes, true);
            ::malloc_trim(0);
            const long without = faultsOfFilling(kBytes, false);  // one for each of ~3,000 pages
            std::fprintf(stderr, "faults with the reserve %ld, without %ld\n", with, without);
            std::exit(with < 100 && without > 1000 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
#endif
}

TEST(FileIo, SavingAndLoadingThroughTheFileMatchTheBytesInMemory) {
    test::TempDir dir;
    FoodCatalogue c = largeCatalogue();
    c.filePath = dir.path() / "FoodDB.ddb";
    ASSERT_TRUE(saveCatalogue(c).ok());
    const Bytes expected = inMemory(c);
    ASSERT_GT(expected.size(), 1000000u);
    EXPECT_EQ(test::readBytes(c.filePath), expected);

    FoodCatalogue back;
    back.filePath = c.filePath;
    ASSERT_EQ(loadCatalogue(back, dir.path() / "none").outcome, CatalogueLoad::Read);
    EXPECT_EQ(inMemory(back), expected);
}

TEST(FileIo, TruncatedLargeFilesFailAtTheSamePlaceFromTheFileAsFromMemory) {
    test::TempDir dir;
    const Bytes whole = inMemory(largeCatalogue());
    std::mt19937 rng(7);
    std::vector<std::size_t> sizes = {8, 300, 262144, 262145, 262144 + 65536, whole.size() - 1};
    for (int i = 0; i < 20; ++i) {
        sizes.push_back(rng() % whole.size());
    }
    for (const std::size_t size : sizes) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
        const fs::path path = dir.path() / "FoodDB.ddb";
        test::writeBytes(path, cut);
        FoodCatalogue fromFile;
        fromFile.filePath = path;
        const CatalogueLoadResult r = loadCatalogue(fromFile, dir.path() / "none");
        FoodCatalogue fromMemory;
        const StorageStatus m = readCatalogueFile(cut, fromMemory, {"FoodDB.ddb"});
        ASSERT_EQ(r.outcome, CatalogueLoad::Failed) << size;
        EXPECT_EQ(r.status.message(), m.message()) << size;
        EXPECT_EQ(fromFile.foodCount(), fromMemory.foodCount()) << size;
    }
}

TEST(FileIo, AWholeBufferIsWrittenAtomicallyAndAMissingFileIsNotAFailure) {
    test::TempDir dir;
    Bytes big(3 << 20);
    std::mt19937 rng(1);
    for (uint8_t& b : big) {
        b = static_cast<uint8_t>(rng());
    }
    const fs::path path = dir.path() / "sub" / "blob.bin";
    EXPECT_FALSE(writeFileAtomically(path, big, false).ok());  // no folder, none made
    ASSERT_TRUE(writeFileAtomically(path, big, true).ok());
    ByteBuffer back;
    StorageError error;
    ASSERT_EQ(readWholeFile(path, back, error), ReadFile::Read);
    EXPECT_TRUE(std::equal(big.begin(), big.end(), back.data(), back.data() + back.size()));
    EXPECT_EQ(readWholeFile(dir.path() / "nothing", back, error), ReadFile::Missing);
    // A folder exists but is no file: a failure, never mistaken for a missing file.
    EXPECT_EQ(readWholeFile(dir.path() / "sub", back, error), ReadFile::Failed);
    EXPECT_EQ(error.message(), "sub: cannot be read: it is not a regular file");
}

TEST(FileIo, AWriteFailingPartWayThroughAStreamedSaveKeepsTheOldFile) {
    test::TempDir dir;
    FoodCatalogue c;
    c.filePath = dir.path() / "FoodDB.ddb";
    test::fillCatalogue(c, {1}, 1);
    ASSERT_TRUE(saveCatalogue(c).ok());
    const Bytes before = test::readBytes(c.filePath);
    FoodCatalogue large = largeCatalogue();
    large.filePath = c.filePath;

    const pid_t pid = ::fork();
    if (pid == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit lim{600000, 600000};  // fails in the middle of the stream
        ::setrlimit(RLIMIT_FSIZE, &lim);
        const StorageStatus s = saveCatalogue(large);
        ::_exit(s.ok() ? 1 : s.message().find("FoodDB.ddb: cannot be written") == 0 ? 0 : 2);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(test::readBytes(c.filePath), before);
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir.path())) {
        ++files;
    }
    EXPECT_EQ(files, 1u);
}

TEST(FileIo, OnlyTheTemporaryFilesOfKilledSavesOfOurFilesAreRemoved) {
    test::TempDir dir;
    const std::string own = std::to_string(::getpid());
    const char* const stale[] = {".UserDB.ddb.tmp1-0", ".FoodDB.ddb.tmp4194303-17",
                                 ".Users.udb.tmp12-345"};
    const std::string kept[] = {
        "UserDB.ddb",          ".UserDB.ddb.tmp" + own + "-0",  // a save of this process
        ".UserDB.ddb.tmp12",   ".UserDB.ddb.tmp-3",
        ".UserDB.ddb.tmpx-3",  ".UserDB.ddb.tmp1-",
        ".UserDB.ddb.tmp1-2a", ".Other.ddb.tmp1-0",
        "UserDB.ddb.tmp1-0",   ".UserDB.ddb.bak1-0"};
    for (const char* name : stale) {
        test::writeBytes(dir.path() / name, {1});
    }
    for (const std::string& name : kept) {
        test::writeBytes(dir.path() / name, {1});
    }
    fs::create_directory(dir.path() / ".FoodDB.ddb.tmp2-0");  // a folder is not ours

    const std::string_view ours[] = {"UserDB.ddb", "FoodDB.ddb", "Users.udb"};
    EXPECT_EQ(removeStaleTemporaries(dir.path(), ours), 3u);
    for (const char* name : stale) {
        EXPECT_FALSE(fs::exists(dir.path() / name)) << name;
    }
    for (const std::string& name : kept) {
        EXPECT_TRUE(fs::exists(dir.path() / name)) << name;
    }
    EXPECT_TRUE(fs::is_directory(dir.path() / ".FoodDB.ddb.tmp2-0"));
    EXPECT_EQ(removeStaleTemporaries(dir.path() / "missing", ours), 0u);
}

}  // namespace
}  // namespace nutrovex
