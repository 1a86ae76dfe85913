#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "ChildProcess.h"
#include "DamagedFiles.h"
#include "PrivateMounts.h"
#include "TempDir.h"

namespace nutrovex::test {

using FileMap = std::map<std::filesystem::path, FileBytes>;

// What a run stopped part way may leave in a root once the next start has swept it: every file
// as it was before the run or as a whole run leaves it, and nothing else. Empty when so, else
// what is wrong.
inline std::string unlessOldOrNew(const FileMap& before, const FileMap& after, const FileMap& now) {
    std::set<std::filesystem::path> paths;
    for (const FileMap* m : {&before, &after, &now}) {
        for (const auto& [path, bytes] : *m) {
            paths.insert(path);
        }
    }
    std::string wrong;
    for (const std::filesystem::path& path : paths) {
        const auto find = [&](const FileMap& m) -> const FileBytes* {
            const auto it = m.find(path);
            return it == m.end() ? nullptr : &it->second;
        };
        const FileBytes* was = find(before);
        const FileBytes* will = find(after);
        const FileBytes* is = find(now);
        const bool same = (is == nullptr && (was == nullptr || will == nullptr)) ||
                          (is != nullptr &&
                           ((was != nullptr && *is == *was) || (will != nullptr && *is == *will)));
        if (!same) {
            wrong +=
                path.string() + (is == nullptr ? " is gone" : " is neither old nor new") + "; ";
        }
    }
    return wrong;
}

// A program that changes a data root, stopped part way in every way a test can: killed or
// failing as a full disk at each change it makes to the file system, and run on disks too small
// for it. Each run gets its own copy of `root`; what it leaves is judged once the next start has
// swept the copy.
struct StoppableRun {
    std::filesystem::path root;
    // Runs the program on a root with the environment given.
    std::function<Ended(const std::filesystem::path& root, const std::vector<std::string>& env)>
        run;
    // The root's files once the next start has swept it.
    std::function<FileMap(const std::filesystem::path& root)> files;
    // What is wrong with what a stopped run left; empty when nothing is.
    std::function<std::string(const FileMap& now)> unlessFine;
    FileMap after;                   // what a whole run leaves
    std::size_t mostErrorLines = 0;  // of a refusal; 0: any number

    // How many changes to the file system a whole run makes.
    [[nodiscard]] long changes() const {
        TempDir scratch;
        std::filesystem::copy(root, scratch.path() / "root",
                              std::filesystem::copy_options::recursive);
        long n = -1;
        const Ended ended = run(scratch.path() / "root",
                                {std::string("LD_PRELOAD=") + NUTROVEX_FAULT_LIBRARY,
                                 "NUTROVEX_FAULT_COUNT=" + (scratch.path() / "changes").string(),
                                 "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"});
        std::ifstream(scratch.path() / "changes") >> n;
        EXPECT_TRUE(ended.exited && ended.code == 0) << ended.err;
        return n;
    }

    // A refusal says the disk is full, in at most mostErrorLines lines.
    [[nodiscard]] bool saysTheDiskIsFull(const Ended& ended) const {
        const auto lines =
            static_cast<std::size_t>(std::count(ended.err.begin(), ended.err.end(), '\n'));
        return ended.err.find("the disk is full") != std::string::npos &&
               (mostErrorLines == 0 || lines <= mostErrorLines);
    }

    // Kills the run at each of its changes; returns how many left what a whole run leaves.
    int killedAtEachChange(long changes) const {
        int whole = 0;
        for (long k = 1; k <= changes; ++k) {
            TempDir copy;
            std::filesystem::copy(root, copy.path() / "root",
                                  std::filesystem::copy_options::recursive);
            const Ended ended = run(copy.path() / "root", faultAt(k, "kill"));
            EXPECT_EQ(ended.signal, SIGKILL) << "change " << k << ": " << ended.err;
            const FileMap now = files(copy.path() / "root");
            EXPECT_EQ(unlessFine(now), "") << "killed at change " << k;
            whole += now == after ? 1 : 0;
        }
        return whole;
    }

    // Fails each of its changes as a full disk would; returns how many runs were refused. A run
    // that says it succeeded left what a whole run leaves.
    int diskFullAtEachChange(long changes) const {
        int refused = 0;
        for (long k = 1; k <= changes; ++k) {
            TempDir copy;
            std::filesystem::copy(root, copy.path() / "root",
                                  std::filesystem::copy_options::recursive);
            const Ended ended = run(copy.path() / "root", faultAt(k, std::to_string(ENOSPC)));
            EXPECT_TRUE(ended.exited) << "change " << k;
            const FileMap now = files(copy.path() / "root");
            EXPECT_EQ(unlessFine(now), "") << "disk full at change " << k;
            if (ended.code == 0) {
                EXPECT_EQ(now, after) << "succeeded with the disk full at change " << k;
            } else {
                ++refused;
                EXPECT_TRUE(saysTheDiskIsFull(ended)) << "change " << k << ": " << ended.err;
            }
        }
        return refused;
    }

    // Runs on tmpfs disks of `from` bytes, growing by `step` to `to`; counts the disks and those
    // that refused the run. False when the system allows no private disk.
    bool onSmallDisks(std::size_t from, std::size_t to, std::size_t step, int& disks,
                      int& refused) const {
        const TempDir dir;
        const std::filesystem::path disk = dir.path() / "disk";
        std::filesystem::create_directories(disk);
        for (std::size_t size = from; size <= to; size += step) {
            const int result = onSmallDisk(disk.string(), size, [&] {
                std::filesystem::copy(root, disk / "root",
                                      std::filesystem::copy_options::recursive);
                const Ended ended = run(disk / "root", {});
                const FileMap now = files(disk / "root");
                const std::string wrong = unlessFine(now);
                if (!wrong.empty() || (ended.code == 0 && now != after) ||
                    (ended.code != 0 && !saysTheDiskIsFull(ended))) {
                    std::fprintf(stderr, "a disk of %zu bytes: %s %s\n", size, wrong.c_str(),
                                 ended.err.c_str());
                    return 1;
                }
                return ended.code == 0 ? 0 : 2;  // whole, or refused cleanly
            });
            if (result == 77) {
                return false;
            }
            EXPECT_TRUE(result == 0 || result == 2) << "a disk of " << size << " bytes";
            ++disks;
            refused += result == 2 ? 1 : 0;
        }
        return true;
    }
};

// The bytes a root's files take on a disk, a page at a time, with a few pages for its folders.
inline std::size_t diskBytes(const FileMap& files) {
    std::size_t used = 8 * 4096;
    for (const auto& [path, bytes] : files) {
        used += (bytes.size() + 4095) / 4096 * 4096;
    }
    return used;
}

}  // namespace nutrovex::test
