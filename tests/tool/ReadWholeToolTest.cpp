// The tool judges a file as the program does: each file of a root, damaged in each way that once
// let a read stop short, is refused by every command that reads it, at the same chunk and offset
// as `check` gives, and no command that writes changes anything in the root.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "DamagedFiles.h"
#include "TempDir.h"
#include "core/FoodCatalogue.h"
#include "data/ShippedCatalogue.h"
#include "storage/CatalogueFile.h"
#include "storage/UserList.h"
#include "tool/DemoLogbook.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;
using test::Damaged;
using test::everyFile;
using test::FileBytes;
using test::fileBytes;

std::string readText(const fs::path& path) {
    const FileBytes b = fileBytes(path);
    return {b.begin(), b.end()};
}

class ReadWholeTool : public ::testing::Test {
protected:
    ReadWholeTool() : clock(CalendarDate::fromDmy(21, 11, 2002)) {
        for (const char* name : {"Ann", "Bob"}) {
            GlobalOptions options;
            options.root = root().string();
            std::ostringstream said;
            std::ostringstream failed;
            const std::vector<std::string> args = {"--user", name};
            EXPECT_EQ(makeDemo(options, args, said, failed, clock, shippedCatalogue()), 0)
                << failed.str();
        }
        test::putFileBytes(
            dir.path() / "foods.csv",
            FileBytes(kFoodsCsv, kFoodsCsv + std::char_traits<char>::length(kFoodsCsv)));
    }

    fs::path root() const { return dir.path() / "root"; }

    // Runs the real tool through the shell; standard output and error are kept.
    int tool(const std::string& args) {
        const std::string command = std::string(NUTROVEX_TOOL_PATH) + " " + args + " >" +
                                    (dir.path() / "out").string() + " 2>" +
                                    (dir.path() / "err").string();
        const int status = std::system(command.c_str());
        out = readText(dir.path() / "out");
        err = readText(dir.path() / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    // Every command refuses the damaged file at the place `check` names, and changes nothing.
    void expectRefusedEverywhere(const fs::path& file, const std::vector<Damaged>& damages,
                                 const std::vector<std::string>& commands) {
        const FileBytes whole = fileBytes(file);
        for (const Damaged& damage : damages) {
            test::putFileBytes(file, damage.bytes);
            ASSERT_EQ(tool("check '" + file.string() + "'"), 1) << damage.how;
            // "FILE: chunk N, byte M: why", or "FILE: entry N, ...": the part after the file.
            const std::string place = err.substr(err.find(": ", file.string().size()) + 2);
            ASSERT_FALSE(place.empty()) << damage.how;
            const auto before = everyFile(root());
            for (const std::string& command : commands) {
                const std::string where = file.filename().string() + " with " + damage.how + ", " +
                                          command.substr(0, command.find(' '));
                EXPECT_EQ(tool("--root '" + root().string() + "' " + command), 1) << where;
                EXPECT_NE(err.find(place), std::string::npos) << where << ": " << err;
                EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << where << ": " << err;
                EXPECT_EQ(everyFile(root()), before) << where;
                ++tried;
            }
        }
        test::putFileBytes(file, whole);
    }

    static constexpr const char* kFoodsCsv =
        "group,category,name,amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat\n"
        "5,Bagels,Plain,1,item,245,48,2,10,1.5,0.2\n";

    FixedClock clock;
    test::TempDir dir;
    std::string out;
    std::string err;
    int tried = 0;
};

TEST_F(ReadWholeTool, AUserListNotReadWholeIsRefusedByEveryCommand) {
    const fs::path list = root() / "Users" / "Users.udb";
    std::vector<Damaged> damages = test::damagedVersions(fileBytes(list), 1, 0, 1);
    UserListFile unsafe;
    unsafe.names = {Text("Ann"), Text("Bob"), Text("../Eve")};
    ByteBuffer unsafeBytes;
    ASSERT_TRUE(writeUserListFile(unsafe, unsafeBytes).ok());
    const std::string csv = " '" + (dir.path() / "foods.csv").string() + "'";
    std::vector<std::string> commands = {
        "users",
        "demo --user Cy",
        "import-foods --user Ann" + csv,
        "export-foods --user Ann",
        "export-log --user Ann",
        "chart --user Ann --span 3 --png '" + (dir.path() / "chart.png").string() + "'"};
    // The dump shows a list with an unsafe name, so that it can be mended; nothing else uses it.
    expectRefusedEverywhere(
        list,
        {{"an unsafe name",
          FileBytes(unsafeBytes.data(), unsafeBytes.data() + unsafeBytes.size())}},
        commands);
    commands.push_back("dump-users '" + list.string() + "'");
    expectRefusedEverywhere(list, damages, commands);
    EXPECT_EQ(tried, 1 * 6 + 5 * 7);
}

TEST_F(ReadWholeTool, ALogbookNotReadWholeIsRefusedByEveryCommand) {
    const fs::path logbook = root() / "Users" / "Ann" / "UserDB.ddb";
    const FileBytes whole = fileBytes(logbook);
    const std::size_t last = test::chunkPlaces(whole).size() - 1;
    std::vector<Damaged> damages = test::damagedVersions(whole, 2, 2, last);
    damages.push_back({"a day count five lower", test::countLowered(whole, 2, 2, 5)});
    expectRefusedEverywhere(
        logbook, damages,
        {"dump-user '" + logbook.string() + "'", "export-log --user Ann",
         "chart --user Ann --span 3 --png '" + (dir.path() / "chart.png").string() + "'"});
    EXPECT_EQ(tried, 6 * 3);
}

TEST_F(ReadWholeTool, ACatalogueNotReadWholeIsRefusedByEveryCommand) {
    const fs::path catalogue = root() / "Users" / "Ann" / "FoodDB.ddb";
    const FileBytes whole = fileBytes(catalogue);
    FoodCatalogue read;
    ASSERT_TRUE(readCatalogueFile(whole, read, {"FoodDB.ddb"}).ok());
    ASSERT_GT(read.groups[7].size(), 1u);
    const std::size_t last = test::chunkPlaces(whole).size() - 1;
    // The last group's category count one lower: its last category's foods follow uncounted.
    std::vector<Damaged> damages =
        test::damagedVersions(whole, read.header.groupChunks[7], 0, last);
    damages.push_back({"a food count one lower", test::countLowered(whole, last, 0)});
    const std::string csv = " '" + (dir.path() / "foods.csv").string() + "'";
    expectRefusedEverywhere(catalogue, damages,
                            {"dump-catalogue '" + catalogue.string() + "'",
                             "import-foods --user Ann" + csv, "export-foods --user Ann"});
    EXPECT_EQ(tried, 6 * 3);
}

}  // namespace
}  // namespace nutrovex::tool
