// The tool's commands on a data root, run as the real program: what they may touch, and when.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/FoodCatalogue.h"
#include "session/Session.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "storage/UserList.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeText(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// Every file and folder below dir, relative to it, sorted.
std::vector<std::string> everythingBelow(const fs::path& dir) {
    std::vector<std::string> out;
    for (const auto& e : fs::recursive_directory_iterator(dir)) {
        out.push_back(e.path().lexically_relative(dir).string());
    }
    std::sort(out.begin(), out.end());
    return out;
}

const char* const kFoodsCsv =
    "group,category,name,amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat\n"
    "5,Bagels,Plain,1,item,245,48,2,10,1.5,0.2\n";

class RootCommands : public ::testing::Test {
protected:
    RootCommands() : clock(CalendarDate::fromDmy(5, 5, 2002)) {
        std::string pattern = (fs::temp_directory_path() / "nutrovex-root-XXXXXX").string();
        EXPECT_NE(::mkdtemp(pattern.data()), nullptr);
        dir = pattern;
        // Deep enough that "../../x" from the users folder stays inside dir.
        root = dir / "a" / "root";
        writeText(dir / "foods.csv", kFoodsCsv);
    }
    ~RootCommands() override {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }

    // Makes the root with the default user, as the program's first start does.
    void makeRoot() {
        Session session(root, clock, settings, {});
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();  // no template catalogue here
        ASSERT_TRUE(session.userOpen());
    }

    // Runs the real program through the shell; `prefix` runs before it in the same shell.
    int tool(const std::string& args, const std::string& prefix = "") {
        const std::string command = prefix + std::string(NUTROVEX_TOOL_PATH) + " " + args + " >" +
                                    (dir / "out").string() + " 2>" + (dir / "err").string();
        const int status = std::system(command.c_str());
        out = readText(dir / "out");
        err = readText(dir / "err");
        fs::remove(dir / "out");
        fs::remove(dir / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string rootOption() const { return "--root '" + root.string() + "' "; }

    FixedClock clock;
    MemorySettings settings;
    fs::path dir;
    fs::path root;
    std::string out;
    std::string err;
};

TEST_F(RootCommands, NamesFromTheUserListNeverLeadOutOfTheRoot) {
    makeRoot();
    for (const std::string bad : {"../../outside", "../escaped", "/tmp/nutrovex-absolute"}) {
        UserListFile list;
        list.names.emplace_back("Zerbu");
        list.names.emplace_back(bad);
        ByteBuffer bytes;
        ASSERT_TRUE(writeUserListFile(list, bytes).ok());
        ASSERT_TRUE(writeFileAtomically(userListPath(root), bytes.bytes()).ok());
        const std::vector<std::string> before = everythingBelow(dir);

        const std::string user = "--user '" + bad + "' ";
        EXPECT_EQ(tool(rootOption() + "import-foods " + user + (dir / "foods.csv").string()), 1);
        EXPECT_NE(err.find("entry 2, '" + bad + "', is not a usable user name"), std::string::npos)
            << err;
        EXPECT_EQ(tool(rootOption() + "export-foods " + user), 1);
        EXPECT_EQ(tool(rootOption() + "export-log " + user), 1);
        // The list as a whole fails, for its good names too.
        EXPECT_EQ(tool(rootOption() + "import-foods --user Zerbu " + (dir / "foods.csv").string()),
                  1);
        EXPECT_EQ(tool(rootOption() + "users"), 1);
        EXPECT_EQ(out, "");

        EXPECT_EQ(everythingBelow(dir), before) << bad;
        EXPECT_FALSE(fs::exists("/tmp/nutrovex-absolute"));
    }
}

TEST_F(RootCommands, AnUnsafeNameOnTheCommandLineIsRefusedBeforeAnyPath) {
    makeRoot();
    const std::vector<std::string> before = everythingBelow(dir);
    EXPECT_EQ(tool(rootOption() + "import-foods --user ../../x " + (dir / "foods.csv").string()),
              1);
    EXPECT_NE(err.find("'../../x' is not a usable user name"), std::string::npos) << err;
    EXPECT_EQ(everythingBelow(dir), before);
}

TEST_F(RootCommands, ImportingWaitsUntilTheProgramHasClosedTheRoot) {
    makeRoot();
    const fs::path catalogue = root / "Users" / "Zerbu" / "FoodDB.ddb";
    {
        Session program(root, clock, settings, {});
        std::string reason;
        ASSERT_EQ(program.start(reason), Session::Start::Running) << reason;
        EXPECT_EQ(tool(rootOption() + "import-foods --user Zerbu " + (dir / "foods.csv").string()),
                  1);
        EXPECT_EQ(err, "nutrovex-tool import-foods: " + root.string() +
                           ": Nutrovex has this data root open; close it first\n");
        EXPECT_FALSE(fs::exists(catalogue));
        // Reading needs no lock.
        EXPECT_EQ(tool(rootOption() + "users"), 0);
        EXPECT_EQ(out, "Zerbu\n");
    }
    EXPECT_EQ(tool(rootOption() + "import-foods --user Zerbu " + (dir / "foods.csv").string()), 0)
        << err;
    EXPECT_TRUE(fs::exists(catalogue));
}

TEST_F(RootCommands, EveryCommandThatWritesIntoTheRootTakesItsLock) {
    makeRoot();
    {
        Session s(root, clock, settings, {});
        std::string reason;
        ASSERT_EQ(s.start(reason), Session::Start::Running) << reason;
        (void)s.initialLoad();  // no template catalogue here
        ASSERT_TRUE(s.userOpen());
        ASSERT_TRUE(s.saveUserData().ok());
    }
    const fs::path userFile = root / "Users" / "Zerbu" / "UserDB.ddb";
    ASSERT_EQ(tool("dump-user '" + userFile.string() + "'"), 0) << err;
    writeText(dir / "user.json", out);
    ASSERT_EQ(tool("dump-users '" + userListPath(root).string() + "'"), 0) << err;
    writeText(dir / "users.json", out);
    FoodCatalogue empty;
    ByteBuffer emptyBytes;
    ASSERT_TRUE(writeCatalogueFile(empty, emptyBytes).ok());
    ASSERT_TRUE(writeFileAtomically(dir / "empty.ddb", emptyBytes.bytes()).ok());
    ASSERT_EQ(tool("dump-catalogue '" + (dir / "empty.ddb").string() + "'"), 0) << err;
    writeText(dir / "catalogue.json", out);
    const std::string user = " '" + (dir / "user.json").string() + "' ";
    const std::string catalogue = " '" + (dir / "catalogue.json").string() + "' ";
    const std::string users = " '" + (dir / "users.json").string() + "' ";

    // Onto a file anywhere in the root: the root, the users folder, a user's folder.
    const std::vector<std::string> writers = {
        "write-user" + user + "'" + userFile.string() + "'",
        "write-user" + user + "'" + (root / "Users" / "Zerbu" / "copy.ddb").string() + "'",
        "write-catalogue" + catalogue + "'" + (root / "FoodDB-copy.ddb").string() + "'",
        "write-users" + users + "'" + userListPath(root).string() + "'",
        rootOption() + "import-foods --user Zerbu '" + (dir / "foods.csv").string() + "'",
        rootOption() + "demo --user Demo",
    };
    const auto refusedWhileOpen = [&](const std::string& why) {
        const std::vector<std::string> before = everythingBelow(root);
        const std::string userBytes = readText(userFile);
        for (const std::string& command : writers) {
            EXPECT_EQ(tool(command), 1) << why << ": " << command;
            EXPECT_NE(
                err.find(root.string() + ": Nutrovex has this data root open; close it first\n"),
                std::string::npos)
                << why << ": " << err;
            EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
        }
        EXPECT_EQ(everythingBelow(root), before) << why;
        EXPECT_EQ(readText(userFile), userBytes) << why;
        // Outside a root no lock is wanted.
        EXPECT_EQ(tool("write-user" + user + "'" + (dir / "elsewhere.ddb").string() + "'"), 0)
            << err;
    };
    {
        Session program(root, clock, settings, {});
        std::string reason;
        ASSERT_EQ(program.start(reason), Session::Start::Running) << reason;
        refusedWhileOpen("the program has the root");
        // Deleting the lock file lets nobody in while the program runs.
        ASSERT_TRUE(fs::remove(root / kLockFileName));
        refusedWhileOpen("the lock file was deleted");
        Session second(root, clock, settings, {});
        EXPECT_EQ(second.start(reason), Session::Start::AlreadyRunning);
    }
    for (const std::string& command : writers) {
        EXPECT_EQ(tool(command), 0) << command << ": " << err;
    }
}

TEST_F(RootCommands, ImportingClearsWhatKilledSavesLeftInTheUsersFolder) {
    makeRoot();
    const fs::path folder = root / "Users" / "Zerbu";
    writeText(folder / ".FoodDB.ddb.tmp1-0", std::string(1000, 'x'));
    writeText(folder / ".UserDB.ddb.tmp77-3", "x");
    writeText(folder / "keep.txt", "x");
    EXPECT_EQ(tool(rootOption() + "import-foods --user Zerbu " + (dir / "foods.csv").string()), 0)
        << err;
    EXPECT_EQ(everythingBelow(folder), (std::vector<std::string>{"FoodDB.ddb", "keep.txt"}));
}

TEST_F(RootCommands, AFileSizeLimitIsAClearFailureThatLeavesNoTemporaryFile) {
    FoodCatalogue big;
    for (int g = 0; g < kFoodGroupCount; ++g) {
        for (int c = 0; c < 3; ++c) {
            FoodCategory category;
            category.name = "Category " + std::to_string(c);
            for (int f = 0; f < 100; ++f) {
                FoodItem food;
                food.name = "Food " + std::to_string(f);
                category.foods.push_back(food);
            }
            big.groups[static_cast<std::size_t>(g)].push_back(category);
        }
    }
    big.renumberGroupChunks();
    ByteBuffer bytes;
    ASSERT_TRUE(writeCatalogueFile(big, bytes).ok());
    ASSERT_GT(bytes.size(), 64u * 1024u);
    const fs::path work = dir / "work";
    fs::create_directories(work);
    ASSERT_TRUE(writeFileAtomically(work / "big.ddb", bytes.bytes()).ok());
    ASSERT_EQ(tool("dump-catalogue " + (work / "big.ddb").string()), 0) << err;
    writeText(dir / "big.json", out);

    EXPECT_EQ(tool("write-catalogue " + (dir / "big.json").string() + " " + (work / "OUT").string(),
                   "ulimit -f 64; "),
              1);
    EXPECT_NE(err.find("the file would be larger than the system allows"), std::string::npos)
        << err;
    EXPECT_EQ(everythingBelow(work), (std::vector<std::string>{"big.ddb"}));
}

}  // namespace
}  // namespace nutrovex
