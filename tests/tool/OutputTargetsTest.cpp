// What the tool writes goes where it is asked, and never replaces what is not a regular file: a
// FIFO and a device are written through, a symbolic link is followed and stays a link, and what
// cannot take the bytes is refused with one line.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "data/ShippedCatalogue.h"
#include "tool/DemoLogbook.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class OutputTargets : public ::testing::Test {
protected:
    OutputTargets() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        GlobalOptions options;
        options.root = (dir.path() / "root").string();
        std::ostringstream said;
        std::ostringstream failed;
        EXPECT_EQ(makeDemo(options, {}, said, failed, clock, shippedCatalogue()), 0)
            << failed.str();
        work = dir.path() / "work";
        fs::create_directories(work);
    }

    int tool(const std::string& args) {
        const std::string command = std::string(NUTROVEX_TOOL_PATH) + " --root '" +
                                    (dir.path() / "root").string() + "' " + args + " >'" +
                                    (dir.path() / "out").string() + "' 2>'" +
                                    (dir.path() / "err").string() + "'";
        const int status = std::system(command.c_str());
        out = readText(dir.path() / "out");
        err = readText(dir.path() / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    // Runs the command writing into a FIFO of its own and gives what a reader of it received.
    std::string throughFifo(const std::string& commandBefore, const std::string& commandAfter,
                            int& status) {
        const fs::path fifo = work / "pipe";
        EXPECT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        auto received = std::async(std::launch::async, [fifo] { return readText(fifo); });
        status = tool(commandBefore + "'" + fifo.string() + "'" + commandAfter);
        if (const int fd = ::open(fifo.c_str(), O_WRONLY | O_NONBLOCK); fd >= 0) {
            ::close(fd);  // lets a reader still waiting for a writer go
        }
        const std::string text = received.get();
        struct stat st {};
        EXPECT_EQ(::lstat(fifo.c_str(), &st), 0);
        EXPECT_TRUE(S_ISFIFO(st.st_mode)) << "the FIFO was replaced";
        fs::remove(fifo);
        return text;
    }

    FixedClock clock;
    test::TempDir dir;
    fs::path work;
    std::string out;
    std::string err;
};

TEST_F(OutputTargets, AFifoIsWrittenThroughAndStaysAFifo) {
    ASSERT_EQ(tool("export-foods --user Demo"), 0) << err;
    const std::string foods = out;
    ASSERT_EQ(tool("export-log --user Demo"), 0) << err;
    const std::string log = out;
    const fs::path userFile = dir.path() / "root" / "Users" / "Demo" / "UserDB.ddb";
    ASSERT_EQ(tool("dump-user '" + userFile.string() + "' "), 0) << err;
    std::ofstream(work / "user.json") << out;

    int status = 0;
    EXPECT_EQ(throughFifo("export-foods --user Demo --csv ", "", status), foods);
    EXPECT_EQ(status, 0) << err;
    EXPECT_EQ(throughFifo("export-log --user Demo --csv ", "", status), log);
    EXPECT_EQ(status, 0) << err;
    EXPECT_EQ(throughFifo("write-user '" + (work / "user.json").string() + "' ", "", status),
              readText(userFile));
    EXPECT_EQ(status, 0) << err;
    EXPECT_EQ(std::vector<fs::path>(fs::directory_iterator(work), {}),
              std::vector<fs::path>{work / "user.json"})
        << "no temporary file is left beside the FIFO";
}

TEST_F(OutputTargets, ALinkIsFollowedAndStaysALink) {
    std::ofstream(work / "foods.csv") << "old";
    fs::create_symlink(work / "foods.csv", work / "link.csv");
    ASSERT_EQ(tool("export-foods --user Demo --csv '" + (work / "link.csv").string() + "'"), 0)
        << err;
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(work / "link.csv")));
    ASSERT_EQ(tool("export-foods --user Demo"), 0) << err;
    EXPECT_EQ(readText(work / "foods.csv"), out);
}

TEST_F(OutputTargets, WhatCannotTakeTheBytesIsRefusedWithOneLine) {
    fs::create_symlink(work / "nowhere.csv", work / "dangling.csv");
    fs::create_directories(work / "folder.csv");
    const struct {
        fs::path target;
        const char* reason;
    } cases[] = {
        {work / "dangling.csv", "it is a symbolic link to nothing"},
        {work / "folder.csv", "it is a folder"},
        {work / "missing" / "out.csv", "does not exist"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(tool("export-foods --user Demo --csv '" + c.target.string() + "'"), 1);
        EXPECT_EQ(err.rfind(c.target.string() + ": ", 0), 0u) << err;
        EXPECT_NE(err.find(c.reason), std::string::npos) << err;
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
    }
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(work / "dangling.csv")));
    EXPECT_FALSE(fs::exists(work / "nowhere.csv"));
    EXPECT_TRUE(fs::is_empty(work / "folder.csv"));
}

TEST_F(OutputTargets, ADeviceTakesTheBytesAndStaysADevice) {
    // A null device of the test's own, so that a tool that replaced it would harm nothing else.
    const fs::path device = work / "null";
    if (::mknod(device.c_str(), S_IFCHR | 0666, ::makedev(1, 3)) != 0) {
        GTEST_SKIP() << "this system lets no device node be made";
    }
    EXPECT_EQ(tool("export-foods --user Demo --csv '" + device.string() + "'"), 0) << err;
    EXPECT_EQ(tool("export-log --user Demo --csv '" + device.string() + "'"), 0) << err;
    struct stat st {};
    ASSERT_EQ(::lstat(device.c_str(), &st), 0);
    EXPECT_TRUE(S_ISCHR(st.st_mode));
    EXPECT_EQ(std::vector<fs::path>(fs::directory_iterator(work), {}),
              std::vector<fs::path>{device});
}

}  // namespace
}  // namespace nutrovex::tool
