// Renaming a user stopped at every step: killed, or failing with a full disk, at each change it
// makes to the file system. Once the next start has swept, the user is listed exactly once, under
// the old name or the new one, the folder of that name holds the user's files as they were (or,
// for the open user, as the save after the rename made them), no mark of the rename is left and
// every other file is as it was.
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

const fs::path kList = "Users/Users.udb";

// Whether Ann, who is renamed Bea, is the user open while it happens.
class RenameStopped : public ::testing::TestWithParam<bool> {
protected:
    RenameStopped() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        {
            MemorySettings settings;
            Session s(root(), clock, settings, {});
            std::string reason;
            EXPECT_EQ(s.start(reason), Session::Start::Running) << reason;
            (void)s.initialLoad();
            for (const char* name : {"Bob", "Ann"}) {
                (void)s.addUser(name);  // no template catalogue here: each starts with none
                EXPECT_EQ(s.openUserName(), name);
                for (int d = 0; d < 40; ++d) {
                    s.store().insertDay(test::sampleDay(1 + d % 28, 1 + d / 28, 2001, 6));
                }
                test::fillCatalogue(s.catalogue(), std::vector<int>(kFoodGroupCount, 2), 10);
                s.apply(Notices{.userData = true, .catalogue = true});
                EXPECT_TRUE(s.saveAll().ok());
            }
        }
        before = files(root());
        EXPECT_TRUE(before.contains("Users/Ann/UserDB.ddb"));
        EXPECT_TRUE(before.contains("Users/Ann/FoodDB.ddb"));
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        const Ended whole = stoppable().run(copy.path() / "root", {});
        EXPECT_TRUE(whole.exited && whole.code == 0) << whole.err;
        after = files(copy.path() / "root");
        EXPECT_TRUE(after.contains("Users/Bea/UserDB.ddb"));
        EXPECT_FALSE(after.contains("Users/Ann/"));
        EXPECT_NE(after.at(kList), before.at(kList));
    }

    fs::path root() const { return dir.path() / "root"; }

    test::StoppableRun stoppable() {
        test::StoppableRun r;
        r.root = root();
        r.run = [this](const fs::path& at, const std::vector<std::string>& env) {
            return test::runProgram(
                {NUTROVEX_RENAME_USER_CHILD, at.string(), GetParam() ? "Ann" : "Bob", "Ann", "Bea"},
                env, dir.path());
        };
        r.files = [this](const fs::path& at) { return files(at); };
        r.unlessFine = [this](const FileMap& now) { return unlessOneUser(now); };
        r.after = after;
        return r;
    }

    // The root's files once a start has swept it, and each folder of the users folder as an
    // empty entry ending in "/"; the lock file is nobody's data.
    FileMap files(const fs::path& at) {
        FileMap all = test::sweptRootFiles(at, clock);
        for (const auto& entry : fs::directory_iterator(at / "Users")) {
            if (entry.is_directory()) {
                all[fs::relative(entry.path(), at) / ""] = {};
            }
        }
        return all;
    }

    // Empty when Ann is listed under one name with her folder of that name and her files whole.
    std::string unlessOneUser(const FileMap& now) const {
        if (!now.contains(kList)) {
            return "the list is gone";
        }
        const bool renamed = now.at(kList) == after.at(kList);
        if (!renamed && now.at(kList) != before.at(kList)) {
            return "the list is neither old nor new";
        }
        const fs::path folder = renamed ? "Users/Bea" : "Users/Ann";
        const fs::path gone = renamed ? "Users/Ann" : "Users/Bea";
        std::string wrong;
        const auto under = [](const fs::path& path, const fs::path& f) {
            return path.string().starts_with(f.string() + "/");
        };
        const auto judge = [&](const fs::path& path, const test::FileBytes* was,
                               const test::FileBytes* will) {
            const auto it = now.find(path);
            if (it == now.end()) {
                wrong += path.string() + " is missing; ";
            } else if ((was == nullptr || it->second != *was) &&
                       (will == nullptr || it->second != *will)) {
                wrong += path.string() + " is neither old nor new; ";
            }
        };
        // Each of her files as it was; the open user's are saved once she has the new name.
        const auto in = [](const fs::path& f, const std::string& rel) {
            return fs::path(f.string() + "/" + rel);
        };
        const auto relative = [](const fs::path& path, const fs::path& f) {
            return path.string().substr(f.string().size() + 1);
        };
        const auto mine = [&](const FileMap& m, const fs::path& f, const std::string& rel) {
            const auto it = m.find(in(f, rel));
            return it == m.end() ? nullptr : &it->second;
        };
        for (const auto& [path, bytes] : before) {
            if (under(path, "Users/Ann")) {
                const std::string rel = relative(path, "Users/Ann");
                judge(in(folder, rel), &bytes, renamed ? mine(after, "Users/Bea", rel) : nullptr);
            }
        }
        for (const auto& [path, bytes] : now) {
            if (under(path, gone)) {
                wrong += path.string() + " is there; ";
            } else if (under(path, folder)) {
                const std::string rel = relative(path, folder);
                if (mine(before, "Users/Ann", rel) == nullptr &&
                    (!renamed || mine(after, "Users/Bea", rel) == nullptr)) {
                    wrong += path.string() + " is left; ";
                }
            } else if (path != kList && (!before.contains(path) || before.at(path) != bytes)) {
                wrong += path.string() + " is neither old nor new; ";
            }
        }
        for (const auto& [path, bytes] : before) {
            if (!under(path, "Users/Ann") && !now.contains(path)) {
                wrong += path.string() + " is gone; ";
            }
        }
        return wrong;
    }

    FixedClock clock;
    test::TempDir dir;
    FileMap before;
    FileMap after;
};

TEST_P(RenameStopped, KilledAtEveryStepItLeavesTheUserUnderOneName) {
    const test::StoppableRun rename = stoppable();
    const long changes = rename.changes();
    ASSERT_GT(changes, 5);
    const int whole = rename.killedAtEachChange(changes);
    EXPECT_GT(whole, 0);
    EXPECT_LT(whole, changes);
    std::printf("rename: killed at each of its %ld changes to the disk\n", changes);
}

TEST_P(RenameStopped, WhatAKilledRenameDidNotDoCanBeDoneAgain) {
    const test::StoppableRun rename = stoppable();
    const long changes = rename.changes();
    int again = 0;
    for (long k = 1; k <= changes; ++k) {
        test::TempDir copy;
        fs::copy(root(), copy.path() / "root", fs::copy_options::recursive);
        (void)rename.run(copy.path() / "root", test::faultAt(k, "kill"));
        if (files(copy.path() / "root").contains("Users/Ann/")) {
            const Ended ended = rename.run(copy.path() / "root", {});
            EXPECT_EQ(ended.code, 0) << "after a kill at change " << k << ": " << ended.err;
            EXPECT_EQ(files(copy.path() / "root"), after) << "after a kill at change " << k;
            ++again;
        }
    }
    EXPECT_GT(again, 0);
}

TEST_P(RenameStopped, AFullDiskAtEveryStepFailsCleanlyOrRenames) {
    const test::StoppableRun rename = stoppable();
    const long changes = rename.changes();
    ASSERT_GT(changes, 5);
    const int refused = rename.diskFullAtEachChange(changes);
    EXPECT_GT(refused, 0);
    std::printf("rename: a full disk at each of its %ld changes, %d of them refused\n", changes,
                refused);
}

INSTANTIATE_TEST_SUITE_P(, RenameStopped, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& param) {
                             return param.param ? "TheOpenUser" : "AnotherUser";
                         });

}  // namespace
}  // namespace nutrovex
