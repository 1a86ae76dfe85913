// Save User stopped at every step: killed, failing with a full disk at each change it makes to
// the file system, and run on disks too small for it. Whatever happens, once the next start has
// swept, each file of the root is as it was or as the save made it, and a save that says it
// succeeded left the new files.
#include <gtest/gtest.h>
#include <signal.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "ChildProcess.h"
#include "PrivateMounts.h"
#include "StoppedRuns.h"
#include "TempDir.h"
#include "session/Session.h"
#include "storage/StorageTestUtil.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::FileMap;

class SaveUserStopped : public ::testing::Test {
protected:
    SaveUserStopped() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        {
            // Ann's logbook and catalogue are larger than the writer's window (256 KiB), so each
            // is written in several pieces.
            MemorySettings settings;
            Session s(root(), clock, settings, {});
            std::string reason;
            EXPECT_EQ(s.start(reason), Session::Start::Running) << reason;
            (void)s.initialLoad();
            (void)s.addUser("Ann");  // no template catalogue here: she starts with none
            EXPECT_EQ(s.openUserName(), "Ann");
            for (int d = 0; d < 300; ++d) {
                s.store().insertDay(
                    test::sampleDay(1 + d % 28, 1 + (d / 28) % 12, 1990 + d / 336, 12));
            }
            test::fillCatalogue(s.catalogue(), std::vector<int>(kFoodGroupCount, 8), 60);
            s.apply(Notices{.userData = true, .catalogue = true});
            EXPECT_TRUE(s.saveAll().ok());
        }
        EXPECT_GT(fs::file_size(root() / "Users" / "Ann" / "UserDB.ddb"), 262144u);
        EXPECT_GT(fs::file_size(root() / "Users" / "Ann" / "FoodDB.ddb"), 262144u);
        before = files(root());
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended whole = save(copy.path() / "root", {});
        EXPECT_TRUE(whole.exited && whole.code == 0) << whole.err;
        after = files(copy.path() / "root");
        EXPECT_NE(after, before);
    }

    fs::path root() const { return dir.path() / "root"; }

    Ended save(const fs::path& at, const std::vector<std::string>& env) {
        return test::runProgram({NUTROVEX_SAVE_USER_CHILD, at.string()}, env, dir.path());
    }

    // The root's files once a start has swept it; the lock file is nobody's data.
    FileMap files(const fs::path& at) {
        {
            MemorySettings settings;
            Session next(at, clock, settings, {});
            std::string reason;
            EXPECT_EQ(next.start(reason), Session::Start::Running) << reason;
        }
        FileMap all = test::everyFile(at);
        all.erase(kLockFileName);
        return all;
    }

    FixedClock clock;
    test::TempDir dir;
    FileMap before;
    FileMap after;
};

TEST_F(SaveUserStopped, KilledAtEveryStepItLeavesTheOldOrTheNewFiles) {
    test::TempDir scratch;
    fs::copy(root(), scratch.path() / "root", fs::copy_options::recursive);
    const long changes = test::changesMadeBy(
        {NUTROVEX_SAVE_USER_CHILD, (scratch.path() / "root").string()}, scratch.path());
    ASSERT_GT(changes, 10);
    int sawNew = 0;
    for (long k = 1; k <= changes; ++k) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended ended = save(copy.path() / "root", test::faultAt(k, "kill"));
        ASSERT_EQ(ended.signal, SIGKILL) << "change " << k << ": " << ended.err;
        const FileMap now = files(copy.path() / "root");
        EXPECT_EQ(test::unlessOldOrNew(before, after, now), "") << "killed at change " << k;
        sawNew += now == after ? 1 : 0;
    }
    // The last steps only tidy up: the new files were in place before them.
    EXPECT_GT(sawNew, 0);
    std::printf("Save User: killed at each of its %ld changes to the disk\n", changes);
}

TEST_F(SaveUserStopped, AFullDiskAtEveryStepFailsCleanlyOrSavesWhole) {
    test::TempDir scratch;
    fs::copy(root(), scratch.path() / "root", fs::copy_options::recursive);
    const long changes = test::changesMadeBy(
        {NUTROVEX_SAVE_USER_CHILD, (scratch.path() / "root").string()}, scratch.path());
    ASSERT_GT(changes, 10);
    int failed = 0;
    for (long k = 1; k <= changes; ++k) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended ended = save(copy.path() / "root", test::faultAt(k, std::to_string(ENOSPC)));
        ASSERT_TRUE(ended.exited) << "change " << k;
        const FileMap now = files(copy.path() / "root");
        EXPECT_EQ(test::unlessOldOrNew(before, after, now), "") << "disk full at change " << k;
        if (ended.code == 0) {
            EXPECT_EQ(now, after) << "a save that succeeded, disk full at change " << k;
        } else {
            ++failed;
            EXPECT_NE(ended.err.find("the disk is full"), std::string::npos)
                << "change " << k << ": " << ended.err;
        }
    }
    EXPECT_GT(failed, 0);
    std::printf("Save User: a full disk at each of its %ld changes, %d of them refused\n", changes,
                failed);
}

TEST_F(SaveUserStopped, OnDisksTooSmallItFailsCleanly) {
    // A few pages more than the files take, for the folders and the lock file.
    std::size_t used = 8 * 4096;
    for (const auto& [path, bytes] : before) {
        used += (bytes.size() + 4095) / 4096 * 4096;
    }
    // From a disk that holds the files and not a page more, to one with room for every new file
    // beside its old one.
    const std::size_t changed = after.at("Users/Ann/UserDB.ddb").size() +
                                after.at("Users/Ann/FoodDB.ddb").size() + 2 * 4096;
    int disks = 0;
    int refused = 0;
    int result = 0;
    for (std::size_t room = 0; room <= changed && result == 0; room += changed / 20) {
        const fs::path disk = dir.path() / "disk";
        fs::create_directories(disk);
        result = test::onSmallDisk(disk.string(), used + room, [&] {
            fs::copy(root(), disk / "root", fs::copy_options::recursive);
            const Ended ended = save(disk / "root", {});
            const FileMap now = files(disk / "root");
            const std::string wrong = test::unlessOldOrNew(before, after, now);
            if (!wrong.empty() || (ended.code == 0 && now != after) ||
                (ended.code != 0 && ended.err.find("the disk is full") == std::string::npos)) {
                std::fprintf(stderr, "%zu bytes spare: %s %s\n", room, wrong.c_str(),
                             ended.err.c_str());
                return 1;
            }
            return ended.code == 0 ? 0 : 2;  // whole, or refused cleanly
        });
        ++disks;
        if (result == 2) {
            ++refused;
            result = 0;
        }
    }
    if (result == 77) {
        GTEST_SKIP()
            << "this system allows no private tmpfs; the full disk at every step stands in";
    }
    EXPECT_EQ(result, 0);
    // The smallest disks refused it, the largest took it.
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, disks);
    std::printf("Save User: run on %d disks, too small for it on %d\n", disks, refused);
}

}  // namespace
}  // namespace nutrovex
