// Save User stopped at every step: killed, failing with a full disk at each change it makes to
// the file system, and run on disks too small for it. Whatever happens, once the next start has
// swept, each file of the root is as it was or as the save made it, and a save that says it
// succeeded left the new files.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "StoppedRuns.h"
#include "SweptRoot.h"
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
        const Ended whole = stoppable().run(copy.path() / "root", {});
        EXPECT_TRUE(whole.exited && whole.code == 0) << whole.err;
        after = files(copy.path() / "root");
        EXPECT_NE(after, before);
    }

    fs::path root() const { return dir.path() / "root"; }

    // Save User in a process of its own, stopped as the harness says.
    test::StoppableRun stoppable() {
        test::StoppableRun r;
        r.root = root();
        r.run = [this](const fs::path& at, const std::vector<std::string>& env) {
            return test::runProgram({NUTROVEX_SAVE_USER_CHILD, at.string()}, env, dir.path());
        };
        r.files = [this](const fs::path& at) { return files(at); };
        r.unlessFine = [this](const test::FileMap& now) {
            return test::unlessOldOrNew(before, after, now);
        };
        r.after = after;
        return r;
    }

    FileMap files(const fs::path& at) { return test::sweptRootFiles(at, clock); }

    FixedClock clock;
    test::TempDir dir;
    FileMap before;
    FileMap after;
};

TEST_F(SaveUserStopped, KilledAtEveryStepItLeavesTheOldOrTheNewFiles) {
    const test::StoppableRun save = stoppable();
    const long changes = save.changes();
    ASSERT_GT(changes, 10);
    // The last steps only tidy up: the new files were in place before them.
    const int whole = save.killedAtEachChange(changes);
    EXPECT_GT(whole, 0);
    std::printf("Save User: killed at each of its %ld changes to the disk\n", changes);
}

TEST_F(SaveUserStopped, AFullDiskAtEveryStepFailsCleanlyOrSavesWhole) {
    const test::StoppableRun save = stoppable();
    const long changes = save.changes();
    ASSERT_GT(changes, 10);
    const int refused = save.diskFullAtEachChange(changes);
    EXPECT_GT(refused, 0);
    std::printf("Save User: a full disk at each of its %ld changes, %d of them refused\n", changes,
                refused);
}

TEST_F(SaveUserStopped, OnDisksTooSmallItFailsCleanly) {
    // From a disk that holds the files and not a page more, to one with room for both new files
    // beside the old ones.
    const std::size_t changed = after.at("Users/Ann/UserDB.ddb").size() +
                                after.at("Users/Ann/FoodDB.ddb").size() + 2 * 4096;
    const std::size_t used = test::diskBytes(before);
    int disks = 0;
    int refused = 0;
    if (!stoppable().onSmallDisks(used, used + changed, changed / 20, disks, refused)) {
        GTEST_SKIP()
            << "this system allows no private tmpfs; the full disk at every step stands in";
    }
    // The smallest disks refused it, the largest took it.
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, disks);
    std::printf("Save User: run on %d disks, too small for it on %d\n", disks, refused);
}

}  // namespace
}  // namespace nutrovex
