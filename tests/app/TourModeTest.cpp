// The tour with the real program only looks: whatever the root holds, even a remembered user whose
// catalogue cannot be read, or no root at all, it writes nothing into it and says what it could
// not read.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <string>

#include "TempDir.h"

namespace {

namespace fs = std::filesystem;

std::string fileText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Every file and folder below dir: for a file, its size, a hash of its bytes and its time of
// change.
std::map<std::string, std::string> everything(const fs::path& dir) {
    std::map<std::string, std::string> all;
    std::error_code ec;
    for (fs::recursive_directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().lexically_relative(dir).string();
        if (!it->is_regular_file()) {
            all[name] = "folder";
            continue;
        }
        const std::string text = fileText(it->path());
        all[name] = std::to_string(text.size()) + " bytes, hash " +
                    std::to_string(std::hash<std::string>{}(text)) + ", changed " +
                    std::to_string(fs::last_write_time(it->path()).time_since_epoch().count());
    }
    return all;
}

int run(const std::string& command, std::string& err, const fs::path& scratch) {
    const std::string line = "QT_QPA_PLATFORM=offscreen HOME='" + scratch.string() + "' " +
                             command + " >/dev/null 2>'" + (scratch / "err").string() + "'";
    const int status = std::system(line.c_str());
    err = fileText(scratch / "err");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class TourMode : public ::testing::Test {
protected:
    nutrovex::test::TempDir dir;
    std::string err;
};

TEST_F(TourMode, AnUnreadableRememberedCatalogueIsSaidAndNothingIsWritten) {
    const fs::path root = dir.path() / "root";
    ASSERT_EQ(run(std::string(NUTROVEX_TOOL_PATH) + " --root '" + root.string() + "' demo", err,
                  dir.path()),
              0)
        << err;
    const fs::path catalogue = root / "Users" / "Demo" / "FoodDB.ddb";
    fs::resize_file(catalogue, fs::file_size(catalogue) - 1);
    const auto before = everything(root);

    EXPECT_EQ(run(std::string(NUTROVEX_PROGRAM_PATH) + " --root '" + root.string() + "' --tour '" +
                      (dir.path() / "pictures").string() + "'",
                  err, dir.path()),
              0)
        << err;
    EXPECT_NE(err.find("User 'Demo': FoodDB.ddb: chunk "), std::string::npos) << err;
    EXPECT_EQ(everything(root), before);
    EXPECT_TRUE(fs::exists(dir.path() / "pictures" / "catalogue.png"));
}

TEST_F(TourMode, NoRootIsMadeByLookingAtIt) {
    const fs::path root = dir.path() / "nothing here";
    // A first start has no logged food to edit, so that one screen is reported as not opened.
    (void)run(std::string(NUTROVEX_PROGRAM_PATH) + " --root '" + root.string() + "' --tour '" +
                  (dir.path() / "pictures").string() + "'",
              err, dir.path());
    EXPECT_FALSE(fs::exists(root)) << err;
    EXPECT_TRUE(fs::exists(dir.path() / "pictures" / "main-menu.png"));
}

}  // namespace
