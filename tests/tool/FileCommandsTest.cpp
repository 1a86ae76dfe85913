#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "TempDir.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/UserFile.h"
#include "storage/UserList.h"
#include "tool/FileCommands.h"
#include "tool/RandomRecords.h"

namespace nutrovex::tool {
namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

Bytes readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeBytes(const fs::path& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

Bytes bytesOf(const ByteBuffer& b) {
    return Bytes(b.data(), b.data() + b.size());
}

class ToolFiles : public ::testing::Test {
protected:
    // Runs the real program; its output lands in out and err.
    int tool(const std::string& args) {
        const std::string command = std::string(NUTROVEX_TOOL_PATH) + " " + args + " >" +
                                    (dir / "out").string() + " 2>" + (dir / "err").string();
        const int status = std::system(command.c_str());
        out = readText(dir / "out");
        err = readText(dir / "err");
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string at(const char* name) const { return (dir / name).string(); }

    test::TempDir tmp;
    fs::path dir = tmp.path();
    std::string out;
    std::string err;
};

TEST_F(ToolFiles, DumpThenWriteReproducesRandomFilesByteForByte) {
    RandomRecords random(20260421);
    for (int round = 0; round < 12; ++round) {
        UserFile user = random.userFile();
        ByteBuffer userBytes;
        ASSERT_TRUE(writeUserFile(user.header, user.profile.fields(), user.firstDayChunk,
                                  user.dayCount, user.days, userBytes)
                        .ok());
        FoodCatalogue catalogue;
        random.catalogue(catalogue);
        ByteBuffer catalogueBytes;
        ASSERT_TRUE(writeCatalogueFile(catalogue, catalogueBytes, VersionOnWrite::AsStored).ok());
        UserListFile list;
        list.format = random.any<uint16_t>();
        for (int n = round; n > 0; --n) {
            list.names.push_back(random.anyText());
        }
        ByteBuffer listBytes;
        ASSERT_TRUE(writeUserListFile(list, listBytes, FormatOnWrite::AsStored).ok());

        const struct {
            const char* kind;
            const char* file;
            const ByteBuffer& bytes;
        } files[] = {{"user", "UserDB.ddb", userBytes},
                     {"catalogue", "FoodDB.ddb", catalogueBytes},
                     {"users", "Users.udb", listBytes}};
        for (const auto& f : files) {
            writeBytes(dir / f.file, bytesOf(f.bytes));
            ASSERT_EQ(tool(std::string("dump-") + f.kind + " " + at(f.file) + " >" +
                           at("dump.json") + " && cat " + at("dump.json")),
                      0)
                << err;
            ASSERT_EQ(
                tool(std::string("write-") + f.kind + " - " + at("again") + " <" + at("dump.json")),
                0)
                << f.kind << ": " << err;
            ASSERT_EQ(readBytes(dir / "again"), bytesOf(f.bytes)) << f.kind << " round " << round;
            // A list reads whole with any names, but is good only with names the program takes.
            const bool good = std::string_view(f.kind) != "users" ||
                              std::all_of(list.names.begin(), list.names.end(),
                                          [](const Text& n) { return isSafeUserName(n.view()); });
            ASSERT_EQ(tool("check " + at(f.file)), good ? 0 : 1) << err;
        }
    }
}

TEST_F(ToolFiles, TheStreamedUserDumpPrintsWhatTheWholeDocumentWould) {
    RandomRecords random(20261123);
    for (int round = 0; round < 8; ++round) {
        UserFile user = random.userFile();
        ByteBuffer bytes;
        ASSERT_TRUE(writeUserFile(user.header, user.profile.fields(), user.firstDayChunk,
                                  user.dayCount, user.days, bytes)
                        .ok());
        writeBytes(dir / "UserDB.ddb", bytesOf(bytes));
        UserFile read;
        ASSERT_TRUE(readUserFile(bytes.bytes(), read, CalendarDate(), {"UserDB.ddb"}).ok());
        std::ostringstream whole;
        printJson(whole, userFileJson(read));
        ASSERT_EQ(tool("dump-user " + at("UserDB.ddb")), 0) << err;
        EXPECT_EQ(out, whole.str()) << "round " << round << ", " << read.dayCount << " days";
    }
}

// The catalogue's JSON with foods, to break in one place at a time.
Json sampleCatalogueJson() {
    RandomRecords random(5);
    FoodCatalogue c;
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        for (int k = 0; k < 3; ++k) {
            FoodCategory& category = c.groups[g].emplace_back();
            category.key.value = static_cast<uint32_t>(10 * g + k);
            category.name = "Category";
            for (int f = 0; f < 4; ++f) {
                category.foods.push_back(random.food());
            }
        }
    }
    c.renumberGroupChunks();
    return catalogueJson(c);
}

std::string errorOf(const std::function<void()>& read) {
    try {
        read();
    } catch (const JsonShapeError& e) {
        return e.what();
    }
    return "(read)";
}

TEST(FileJson, TheStreamedCatalogueReaderKeepsWhatItReadsAndTheErrorsItGives) {
    const Json good = sampleCatalogueJson();
    const struct {
        const char* fault;
        std::function<void(Json&)> breakIt;
    } faults[] = {
        {"a food in the middle lacks a field",
         [](Json& j) { j["groups"][3][1]["foods"][2].erase("name"); }},
        {"a food is a number", [](Json& j) { j["groups"][3][1]["foods"][2] = 5; }},
        {"a food is a list", [](Json& j) { j["groups"][3][1]["foods"][2] = Json::array({1}); }},
        {"a food's nutrients are five",
         [](Json& j) { j["groups"][7][2]["foods"][3]["nutrients"].erase(0); }},
        {"the foods are an object",
         [](Json& j) {
             j["groups"][0][0]["foods"] = Json::object({{"a", 1}});
         }},
        {"a category has no foods", [](Json& j) { j["groups"][5][2].erase("foods"); }},
        {"a category's key is too large", [](Json& j) { j["groups"][2][0]["key"] = 4294967296; }},
        {"a category is a list",
         [](Json& j) { j["groups"][2][0] = Json::array({Json::array({1})}); }},
        {"a category is a number", [](Json& j) { j["groups"][2][1] = 1; }},
        {"a group is an object",
         [](Json& j) {
             j["groups"][4] = Json::object({{"x", Json::array()}});
         }},
        {"a group is a number", [](Json& j) { j["groups"][4] = 4; }},
        {"nine groups", [](Json& j) { j["groups"].push_back(Json::array()); }},
        {"seven groups", [](Json& j) { j["groups"].erase(7); }},
        {"no groups", [](Json& j) { j.erase("groups"); }},
        {"groups is an object", [](Json& j) { j["groups"] = Json::object(); }},
        {"the header's texts are short", [](Json& j) { j["header"]["texts"][4] = "00"; }},
        {"no header", [](Json& j) { j.erase("header"); }},
        {"the document is a list", [](Json& j) { j = Json::array({j}); }},
    };
    for (const auto& f : faults) {
        Json broken = good;
        f.breakIt(broken);
        FoodCatalogue whole;
        const std::string expected = errorOf([&] { readCatalogueJson(broken, whole); });
        ASSERT_NE(expected, "(read)") << f.fault;
        std::istringstream in(broken.dump());
        FoodCatalogue streamed;
        EXPECT_EQ(errorOf([&] { readCatalogueJson(in, streamed); }), expected) << f.fault;
    }

    // A refused "groups" replaced by a later one is no refusal, as in the whole document.
    {
        Json broken = good;
        broken["groups"][3][1]["foods"][2] = 5;
        const std::string text =
            "{\"groups\": " + broken["groups"].dump() + ", " + good.dump().substr(1);
        std::istringstream in(text);
        FoodCatalogue streamed;
        EXPECT_EQ(errorOf([&] { readCatalogueJson(in, streamed); }), "(read)");
        EXPECT_EQ(streamed.groups[3][1].foods.size(), 4u);
    }

    // What reads gives the same file, whether streamed or whole; of a key given twice the
    // later value counts, as in the whole document.
    RandomRecords random(99);
    for (int round = 0; round < 10; ++round) {
        FoodCatalogue c;
        random.catalogue(c);
        FoodCatalogue other;
        random.catalogue(other);
        std::string text;
        {
            const ExactNanBits exact;
            const Json json = catalogueJson(c);
            const Json earlier = catalogueJson(other);
            text = json.dump();
            if (round % 2 == 1) {
                text = "{\"groups\": " + earlier["groups"].dump() +
                       ", \"header\": " + earlier["header"].dump() + ", " + text.substr(1);
            }
        }
        std::istringstream in(text);
        FoodCatalogue streamed;
        readCatalogueJson(in, streamed);
        FoodCatalogue whole;
        readCatalogueJson(parseJson(text), whole);
        ByteBuffer expected;
        ByteBuffer got;
        ByteBuffer fromWhole;
        ASSERT_TRUE(writeCatalogueFile(c, expected, VersionOnWrite::AsStored).ok());
        ASSERT_TRUE(writeCatalogueFile(streamed, got, VersionOnWrite::AsStored).ok());
        ASSERT_TRUE(writeCatalogueFile(whole, fromWhole, VersionOnWrite::AsStored).ok());
        EXPECT_EQ(bytesOf(got), bytesOf(expected)) << "round " << round;
        EXPECT_EQ(bytesOf(fromWhole), bytesOf(expected)) << "round " << round;
    }
}

TEST_F(ToolFiles, WriteCatalogueRefusingAFoodInTheMiddleNamesItAndKeepsTheOldFile) {
    Json json = sampleCatalogueJson();
    std::ofstream(dir / "good.json") << json.dump();
    ASSERT_EQ(tool("write-catalogue " + at("good.json") + " " + at("FoodDB.ddb")), 0) << err;
    const Bytes before = readBytes(dir / "FoodDB.ddb");
    json["groups"][3][1]["foods"][2]["ratio"] = "much";
    std::ofstream(dir / "bad.json") << json.dump(2);
    EXPECT_EQ(tool("write-catalogue - " + at("FoodDB.ddb") + " <" + at("bad.json")), 1);
    EXPECT_EQ(err,
              "-: groups[3][1]: foods[2]: 'ratio' must be a number, \"nan\", \"inf\" or "
              "\"-inf\"\n");
    EXPECT_EQ(readBytes(dir / "FoodDB.ddb"), before);
    // Nothing else is left in the folder: no temporary file of the refused write.
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir)) {
        names.push_back(e.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names,
              (std::vector<std::string>{"FoodDB.ddb", "bad.json", "err", "good.json", "out"}));
    // A document cut short is refused the same way, after the foods before the cut were read.
    const std::string text = sampleCatalogueJson().dump();
    std::ofstream(dir / "cut.json") << text.substr(0, text.size() / 2);
    EXPECT_EQ(tool("write-catalogue " + at("cut.json") + " " + at("FoodDB.ddb")), 1);
    EXPECT_NE(err.find("not valid JSON"), std::string::npos) << err;
    EXPECT_EQ(readBytes(dir / "FoodDB.ddb"), before);
}

TEST_F(ToolFiles, TheDocumentedUserExampleWritesAndDumpsBack) {
    const char* example = R"({
  "header":  {"version": 4, "word": 0, "keyCounter": 17, "flags": 0},
  "profile": {"byte": 0, "text1": null, "displayName": "Ann", "userName": "Ann",
              "height": 70.0, "age": 30, "gender": 0,
              "startWeight": 180.0, "startDate": [9, 25, 2002],
              "goalWeight": 170.0, "goalDate": [12, 25, 2002],
              "plan": {"byte": 1, "values": [10, 91, 384]},
              "defaultLevel": 2, "units": 0, "flags": 65473},
  "dayIndex": {"first": 3, "count": 1},
  "days": [
    {"date": [9, 25, 2002], "weight": 154.0, "note": "", "word": 0, "level": 2, "bmr": 1700,
     "flags": 32768, "totals": [0, 0, 0, 0, 0, 0],
     "groups": [[], [], [], [], [], [], [], []],
     "exercises": [
       {"key": 5, "byte": 0, "type": 15, "variant": 0, "third": 2, "name": "Running",
        "minutes": 30, "calories": 360}]}
  ]
})";
    std::ofstream(dir / "in.json") << example;
    ASSERT_EQ(tool("write-user " + at("in.json") + " " + at("UserDB.ddb")), 0) << err;
    ASSERT_EQ(tool("dump-user " + at("UserDB.ddb")), 0) << err;
    EXPECT_EQ(Json::parse(out), Json::parse(example));
    // Keys come in the documented order.
    EXPECT_LT(out.find("\"header\""), out.find("\"profile\""));
    EXPECT_LT(out.find("\"profile\""), out.find("\"dayIndex\""));
    EXPECT_LT(out.find("\"dayIndex\""), out.find("\"days\""));
}

TEST_F(ToolFiles, ReadErrorsNameFileChunkAndOffsetAndExitWithOne) {
    UserFile user;
    user.days.push_back(std::make_unique<DayRecord>(CalendarDate::fromDmy(1, 1, 2001)));
    user.dayCount = 1;
    ByteBuffer bytes;
    ASSERT_TRUE(writeUserFile(user.header, user.profile.fields(), 3, 1, user.days, bytes).ok());
    Bytes cut = bytesOf(bytes);
    cut.resize(cut.size() - 5);
    writeBytes(dir / "UserDB.ddb", cut);
    EXPECT_EQ(tool("dump-user " + at("UserDB.ddb")), 1);
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(err.rfind(at("UserDB.ddb") + ": chunk 3, byte ", 0), 0u) << err;
    EXPECT_NE(err.find("ends 5 bytes early"), std::string::npos) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1);

    EXPECT_EQ(tool("check " + at("UserDB.ddb")), 1);
    EXPECT_NE(err.find("chunk 3"), std::string::npos);
    EXPECT_EQ(tool("dump-catalogue " + at("missing.ddb")), 1);
    EXPECT_NE(err.find("does not exist"), std::string::npos);
}

TEST_F(ToolFiles, WrongUsageExitsWithTwo) {
    EXPECT_EQ(tool("dump-user"), 2);
    EXPECT_EQ(tool("write-users only-one"), 2);
    EXPECT_EQ(tool("check"), 2);
    EXPECT_EQ(tool("users extra"), 2);
    EXPECT_NE(err.find("usage"), std::string::npos);
}

TEST_F(ToolFiles, HelpAndVersionAnswerOnStandardOutputWithSuccess) {
    EXPECT_EQ(tool("--version"), 0);
    EXPECT_TRUE(out.starts_with("nutrovex-tool ")) << out;
    EXPECT_TRUE(out.size() > 14 && out[14] >= '0' && out[14] <= '9') << out;
    EXPECT_EQ(err, "");
    EXPECT_EQ(tool("--help"), 0);
    EXPECT_NE(out.find("--version"), std::string::npos);
    EXPECT_EQ(err, "");
}

TEST_F(ToolFiles, CheckKnowsFilesByNameOrByTrying) {
    FoodCatalogue catalogue;
    ByteBuffer bytes;
    ASSERT_TRUE(writeCatalogueFile(catalogue, bytes).ok());
    writeBytes(dir / "backup.bin", bytesOf(bytes));
    writeBytes(dir / "FoodDB.ddb", bytesOf(bytes));
    EXPECT_EQ(tool("check " + at("backup.bin") + " " + at("FoodDB.ddb")), 0) << err;
    EXPECT_NE(out.find("backup.bin: ok, food catalogue, 0 categories, 0 foods"), std::string::npos)
        << out;
    // Named as a user file, a catalogue is a problem; one bad file fails the run.
    writeBytes(dir / "UserDB.ddb", bytesOf(bytes));
    EXPECT_EQ(tool("check " + at("FoodDB.ddb") + " " + at("UserDB.ddb")), 1);
    EXPECT_NE(out.find("FoodDB.ddb: ok"), std::string::npos);
    EXPECT_NE(err.find("UserDB.ddb: chunk "), std::string::npos) << err;
}

TEST_F(ToolFiles, WriteTakesTotalsAndDayCountFromTheJson) {
    UserFile user;
    user.days.push_back(std::make_unique<DayRecord>(CalendarDate::fromDmy(1, 1, 2001)));
    user.days.push_back(std::make_unique<DayRecord>(CalendarDate::fromDmy(2, 1, 2001)));
    user.days[0]->rawFields().totals = {12345.0f, 1, 2, 3, 4, 5};
    user.dayCount = 2;
    Json json = userFileJson(user);
    json["dayIndex"]["count"] = 1;
    std::ofstream(dir / "one.json") << json.dump();
    ASSERT_EQ(tool("write-user " + at("one.json") + " " + at("UserDB.ddb")), 0) << err;
    ASSERT_EQ(tool("dump-user " + at("UserDB.ddb")), 0);
    const Json back = Json::parse(out);
    EXPECT_EQ(back["days"].size(), 1u);
    EXPECT_EQ(back["days"][0]["totals"][0], 12345.0);

    json["dayIndex"]["count"] = 3;  // more than the days listed: refused, nothing written
    std::ofstream(dir / "three.json") << json.dump();
    EXPECT_EQ(tool("write-user " + at("three.json") + " " + at("Other.ddb")), 1);
    EXPECT_NE(err.find("counts 3 days but the list holds 2"), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(dir / "Other.ddb"));
}

TEST_F(ToolFiles, BadJsonIsADataErrorThatSaysWhere) {
    std::ofstream(dir / "bad.json") << R"({"format": 256, "names": ["ok", 5]})";
    EXPECT_EQ(tool("write-users " + at("bad.json") + " " + at("Users.udb")), 1);
    EXPECT_NE(err.find("names[1]"), std::string::npos) << err;
    std::ofstream(dir / "bad2.json") << "{";
    EXPECT_EQ(tool("write-users " + at("bad2.json") + " " + at("Users.udb")), 1);
    EXPECT_NE(err.find("not valid JSON"), std::string::npos) << err;
    EXPECT_FALSE(fs::exists(dir / "Users.udb"));
}

TEST_F(ToolFiles, UsersListsTheNamesOfTheRoot) {
    UserList users(dir);
    ASSERT_TRUE(users.read().ok());
    ASSERT_TRUE(users.add("bob").ok());
    ASSERT_TRUE(users.add("Bob").ok());
    ASSERT_TRUE(users.add("Zo\xEB").ok());
    ASSERT_EQ(tool("--root " + dir.string() + " users"), 0) << err;
    EXPECT_EQ(out, "bob\nBob\nZo\xC3\xAB\n");
    ASSERT_EQ(tool("--root " + at("nowhere") + " users"), 0) << err;
    EXPECT_EQ(out, "");
}

TEST(FileJson, NanBitsSurviveTheDumpButPlainNanStaysPlain) {
    UserFile user;
    uint32_t odd = 0x7FA00001;
    std::memcpy(&user.profile.rawFields().height, &odd, 4);
    user.profile.rawFields().startWeight = std::numeric_limits<float>::quiet_NaN();
    const Json j = userFileJson(user);
    EXPECT_EQ(j["profile"]["height"], "nan(0x7fa00001)");
    EXPECT_EQ(j["profile"]["startWeight"], "nan");
    UserFile back;
    readUserFileJson(j, back);
    uint32_t bits;
    std::memcpy(&bits, &back.profile.fields().height, 4);
    EXPECT_EQ(bits, odd);
    // Outside a file dump (eval answers) every NaN is plain "nan".
    EXPECT_EQ(floatJson(back.profile.fields().height), "nan");
    EXPECT_THROW((void)floatValue(Json("nan(0x3f800000)"), "x"), JsonShapeError);  // not a NaN
}

TEST(FileJson, CatalogueTextsAreFortyTwoHexDigits) {
    FoodCatalogue c;
    c.header.texts[9][20] = 0xAB;
    const Json j = catalogueJson(c);
    EXPECT_EQ(j["header"]["texts"][9], std::string(40, '0') + "ab");
    EXPECT_EQ(j["header"]["groups"][2]["name"], "Meat, Poultry, Fish");
    Json bad = j;
    bad["header"]["texts"][0] = "00";
    FoodCatalogue back;
    EXPECT_THROW(readCatalogueJson(bad, back), JsonShapeError);
    readCatalogueJson(j, back);
    EXPECT_EQ(back.header.texts, c.header.texts);
}

}  // namespace
}  // namespace nutrovex::tool
