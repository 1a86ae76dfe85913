// Crafted names written into a user list with write-users, then named to every command that
// takes --user: each is refused with its reason or used as a folder inside <root>/Users/, and
// nothing is ever made or written anywhere else.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "HostileNames.h"
#include "core/Cp1252.h"
#include "tool/JsonValues.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;
using test::hostileNames;

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// A shell word.
std::string quoted(const std::string& s) {
    std::string q = "'";
    for (const char c : s) {
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return q + "'";
}

TEST(HostileNamesTool, ListedNamesNeverLeadOutsideTheUsersFolder) {
    std::string pattern = (fs::temp_directory_path() / "nutrovex-hostile-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    const fs::path base = pattern;
    const fs::path root = base / "one" / "root";
    fs::create_directories(root / "Users");

    Json names = Json::array();
    std::vector<std::string> usable;  // names a command line can carry
    for (const std::string& n : hostileNames()) {
        names.push_back(cp1252ToUtf8(n));
        if (n.find('\0') == std::string::npos && !n.empty()) {
            usable.push_back(cp1252ToUtf8(n));
        }
    }
    std::ofstream(base / "users.json") << Json{{"format", 256}, {"names", names}}.dump();
    std::ofstream(base / "foods.csv") << "group,category,name,amount,unit,calories,carbohydrate,"
                                         "fiber,protein,fat,saturated fat\n"
                                         "5,Bagels,Plain,1,item,245,48,2,10,1.5,0.2\n";
    const std::string tool = NUTROVEX_TOOL_PATH;
    const std::string quiet = " >" + (base / "out").string() + " 2>" + (base / "err").string();
    ASSERT_EQ(std::system((tool + " write-users " + quoted((base / "users.json").string()) + " " +
                           quoted((root / "Users" / "Users.udb").string()) + quiet)
                              .c_str()),
              0)
        << readText(base / "err");

    const std::set<fs::path> allowed = {
        base / "one",       root,         root / "Users", base / "users.json",
        base / "foods.csv", base / "out", base / "err",   base / "log.csv"};
    for (const std::string& name : usable) {
        const std::string user = " --user " + quoted(name);
        for (const std::string& command :
             {"import-foods" + user + " " + quoted((base / "foods.csv").string()),
              "export-foods" + user,
              "export-log" + user + " --csv " + quoted((base / "log.csv").string())}) {
            const int status = std::system(
                (tool + " --root " + quoted(root.string()) + " " + command + quiet).c_str());
            ASSERT_TRUE(WIFEXITED(status)) << command;
            if (WEXITSTATUS(status) != 0) {
                EXPECT_FALSE(readText(base / "err").empty()) << command;
            }
            for (auto it = fs::recursive_directory_iterator(base); it != fs::end(it); ++it) {
                if (it->path() == root / "Users") {
                    it.disable_recursion_pending();
                } else {
                    EXPECT_TRUE(allowed.count(it->path()) != 0)
                        << it->path() << " made by " << command;
                }
            }
            // Anything made for the user is one folder directly in the users folder.
            for (const auto& entry : fs::directory_iterator(root / "Users")) {
                EXPECT_EQ(entry.path().parent_path(), root / "Users");
            }
        }
    }
    std::error_code ec;
    fs::remove_all(base, ec);
}

}  // namespace
}  // namespace nutrovex::tool
