// `demo` stopped at every step: killed, failing with a full disk at each change it makes to the
// file system, and run on disks too small for it. Once the next start has swept, the new user is
// there whole and listed, or nothing of it is, and every other file is as it was.
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sstream>
#include <string>

#include "ChildProcess.h"
#include "PrivateMounts.h"
#include "StoppedRuns.h"
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
        const Ended whole = demo(copy.path() / "root", {});
        EXPECT_TRUE(whole.exited && whole.code == 0) << whole.err;
        after = files(copy.path() / "root");
        EXPECT_TRUE(after.contains("Users/Cy/UserDB.ddb"));
        EXPECT_TRUE(after.contains("Users/Cy/FoodDB.ddb"));
    }

    fs::path root() const { return dir.path() / "root"; }

    Ended demo(const fs::path& at, const std::vector<std::string>& env) {
        return test::runProgram({NUTROVEX_TOOL_PATH, "--root", at.string(), "demo", "--user", "Cy"},
                                env, dir.path());
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
    test::TempDir scratch;
    fs::copy(root(), scratch.path() / "root", fs::copy_options::recursive);
    const long changes = test::changesMadeBy(
        {NUTROVEX_TOOL_PATH, "--root", (scratch.path() / "root").string(), "demo", "--user", "Cy"},
        scratch.path());
    ASSERT_GT(changes, 10);
    int made = 0;
    for (long k = 1; k <= changes; ++k) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended ended = demo(copy.path() / "root", test::faultAt(k, "kill"));
        ASSERT_EQ(ended.signal, SIGKILL) << "change " << k << ": " << ended.err;
        const FileMap now = files(copy.path() / "root");
        EXPECT_EQ(unlessAllOrNothing(now), "") << "killed at change " << k;
        made += now.contains("Users/Cy/UserDB.ddb") ? 1 : 0;
        // What was not made can be made again.
        if (!now.contains("Users/Cy/UserDB.ddb")) {
            const Ended again = demo(copy.path() / "root", {});
            EXPECT_EQ(again.code, 0) << "after a kill at change " << k << ": " << again.err;
        }
    }
    EXPECT_GT(made, 0);
    std::printf("demo: killed at each of its %ld changes to the disk, the user made by %d\n",
                changes, made);
}

TEST_F(DemoStopped, AFullDiskAtEveryStepFailsCleanlyOrMakesTheWholeUser) {
    test::TempDir scratch;
    fs::copy(root(), scratch.path() / "root", fs::copy_options::recursive);
    const long changes = test::changesMadeBy(
        {NUTROVEX_TOOL_PATH, "--root", (scratch.path() / "root").string(), "demo", "--user", "Cy"},
        scratch.path());
    ASSERT_GT(changes, 10);
    int refused = 0;
    for (long k = 1; k <= changes; ++k) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended ended = demo(copy.path() / "root", test::faultAt(k, std::to_string(ENOSPC)));
        ASSERT_TRUE(ended.exited) << "change " << k;
        const FileMap now = files(copy.path() / "root");
        EXPECT_EQ(unlessAllOrNothing(now), "") << "disk full at change " << k;
        if (ended.code == 0) {
            EXPECT_EQ(now, after) << "disk full at change " << k;
        } else {
            ++refused;
            EXPECT_EQ(ended.code, 1) << "change " << k;
            EXPECT_NE(ended.err.find("the disk is full"), std::string::npos)
                << "change " << k << ": " << ended.err;
            EXPECT_EQ(std::count(ended.err.begin(), ended.err.end(), '\n'), 1)
                << "change " << k << ": " << ended.err;
        }
    }
    EXPECT_GT(refused, 0);
    std::printf("demo: a full disk at each of its %ld changes, %d of them refused\n", changes,
                refused);
}

TEST_F(DemoStopped, OnDisksTooSmallItFailsCleanly) {
    std::size_t used = 8 * 4096;
    for (const auto& [path, bytes] : before) {
        used += (bytes.size() + 4095) / 4096 * 4096;
    }
    std::size_t added = 2 * 4096;
    for (const auto& [path, bytes] : after) {
        added += (bytes.size() + 4095) / 4096 * 4096;
    }
    added -= used - 8 * 4096;
    int disks = 0;
    int refused = 0;
    int result = 0;
    for (std::size_t room = 0; room <= 2 * added && result == 0; room += added / 12) {
        const fs::path disk = dir.path() / "disk";
        fs::create_directories(disk);
        result = test::onSmallDisk(disk.string(), used + room, [&] {
            fs::copy(root(), disk / "root", fs::copy_options::recursive);
            const Ended ended = demo(disk / "root", {});
            const FileMap now = files(disk / "root");
            const std::string wrong = unlessAllOrNothing(now);
            if (!wrong.empty() || (ended.code == 0) != (now == after)) {
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
    std::printf("demo: run on %d disks, too small for it on %d\n", disks, refused);
}

}  // namespace
}  // namespace nutrovex::tool
