// `demo` stopped at every step: killed, failing with a full disk at each change it makes to the
// file system, and run on disks too small for it. Once the next start has swept, the new user is
// there whole and listed, or nothing of it is, and every other file is as it was.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>

#include "StoppedRuns.h"
#include "SweptRoot.h"
#include "TempDir.h"
#include "data/ShippedCatalogue.h"
#include "session/Session.h"
#include "tool/DemoLogbook.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;
using test::Ended;
using test::FileMap;

class DemoStopped : public ::testing::Test {
protected:
    DemoStopped() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        GlobalOptions options;
        options.root = root().string();
        std::ostringstream out;
        std::ostringstream err;
        const std::vector<std::string> args = {"--user", "Ann"};
        EXPECT_EQ(makeDemo(options, args, out, err, clock, shippedCatalogue()), 0) << err.str();
        before = files(root());
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended whole = stoppable().run(copy.path() / "root", {});
        EXPECT_TRUE(whole.exited && whole.code == 0) << whole.err;
        after = files(copy.path() / "root");
        EXPECT_TRUE(after.contains("Users/Cy/UserDB.ddb"));
        EXPECT_TRUE(after.contains("Users/Cy/FoodDB.ddb"));
    }

    fs::path root() const { return dir.path() / "root"; }

    // The real tool's demo, stopped as the harness says.
    test::StoppableRun stoppable() {
        test::StoppableRun r;
        r.root = root();
        r.run = [this](const fs::path& at, const std::vector<std::string>& env) {
            return test::runProgram(
                {NUTROVEX_TOOL_PATH, "--root", at.string(), "demo", "--user", "Cy"}, env,
                dir.path());
        };
        r.files = [this](const fs::path& at) { return files(at); };
        r.unlessFine = [this](const test::FileMap& now) { return unlessAllOrNothing(now); };
        r.after = after;
        r.mostErrorLines = 1;
        return r;
    }

    FileMap files(const fs::path& at) { return test::sweptRootFiles(at, clock); }

    // All or nothing: Cy is listed exactly when both of Cy's files are there, as made.
    std::string unlessAllOrNothing(const FileMap& now) {
        std::string wrong = test::unlessOldOrNew(before, after, now);
        const bool listed = now.at("Users/Users.udb") == after.at("Users/Users.udb");
        for (const char* file : {"Users/Cy/UserDB.ddb", "Users/Cy/FoodDB.ddb"}) {
            if (now.contains(file) != listed) {
                wrong += std::string(file) + (listed ? " is missing" : " is there unlisted") + "; ";
            }
        }
        return wrong;
    }

    FixedClock clock;
    test::TempDir dir;
    FileMap before;
    FileMap after;
};

TEST_F(DemoStopped, KilledAtEveryStepItMakesTheWholeUserOrNothing) {
    const test::StoppableRun demo = stoppable();
    const long changes = demo.changes();
    ASSERT_GT(changes, 10);
    const int whole = demo.killedAtEachChange(changes);
    EXPECT_GT(whole, 0);
    std::printf(
        "demo: killed at each of its %ld changes to the disk, %d late enough to leave all "
        "a whole run leaves\n",
        changes, whole);
}

TEST_F(DemoStopped, WhatAKilledDemoDidNotMakeCanBeMadeAgain) {
    const test::StoppableRun demo = stoppable();
    const long changes = demo.changes();
    for (long k = 1; k <= changes; k += 3) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        (void)demo.run(copy.path() / "root", test::faultAt(k, "kill"));
        if (!files(copy.path() / "root").contains("Users/Cy/UserDB.ddb")) {
            const Ended again = demo.run(copy.path() / "root", {});
            EXPECT_EQ(again.code, 0) << "after a kill at change " << k << ": " << again.err;
            EXPECT_EQ(files(copy.path() / "root"), after) << "after a kill at change " << k;
        }
    }
}

TEST_F(DemoStopped, AFullDiskAtEveryStepFailsCleanlyOrMakesTheWholeUser) {
    const test::StoppableRun demo = stoppable();
    const long changes = demo.changes();
    ASSERT_GT(changes, 10);
    const int refused = demo.diskFullAtEachChange(changes);
    EXPECT_GT(refused, 0);
    std::printf("demo: a full disk at each of its %ld changes, %d of them refused\n", changes,
                refused);
}

TEST_F(DemoStopped, OnDisksTooSmallItFailsCleanly) {
    // From a disk that holds the root and not a page more, to one with room for the new user
    // twice over.
    const std::size_t used = test::diskBytes(before);
    const std::size_t added = test::diskBytes(after) - used;
    int disks = 0;
    int refused = 0;
    if (!stoppable().onSmallDisks(used, used + 2 * added, added / 12, disks, refused)) {
        GTEST_SKIP()
            << "this system allows no private tmpfs; the full disk at every step stands in";
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, disks);
    std::printf("demo: run on %d disks, too small for it on %d\n", disks, refused);
}

}  // namespace
}  // namespace nutrovex::tool
