#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "storage/CatalogueFile.h"
#include "storage/UserFile.h"
#include "tool/FileCommands.h"
#include "tool/JsonStream.h"

namespace nutrovex::tool {
namespace {

// Read sizes that put every kind of token across two reads, and one that reads all at once.
const std::size_t kBlocks[] = {1, 2, 3, 5, 8, 64, std::size_t{1} << 20};

enum class Outcome { Read, NotJson, Refused };

const char* nameOf(Outcome o) {
    return o == Outcome::Read ? "read" : o == Outcome::NotJson ? "not JSON" : "refused";
}

template <typename Read>
Outcome outcomeOf(Read&& read, std::string* message = nullptr) {
    try {
        read();
        return Outcome::Read;
    } catch (const Json::exception& e) {
        return Outcome::NotJson;
    } catch (const JsonSyntaxError& e) {
        if (message != nullptr) {
            *message = e.what();
        }
        return Outcome::NotJson;
    } catch (const JsonShapeError& e) {
        if (message != nullptr) {
            *message = e.what();
        }
        return Outcome::Refused;
    }
}

// A user file of one day, as JSON, with `extra` as the first member of the document and of the
// day, and the day's weight written as `weight`.
std::string userDocument(const std::string& extra, const std::string& weight = "150.5") {
    UserFile user;
    user.days.push_back(std::make_unique<DayRecord>(CalendarDate::fromDmy(1, 2, 2003)));
    user.days[0]->rawFields().weight = 150.5f;
    FoodItem food;
    food.name = "Bagel";
    user.days[0]->rawFields().groups[5].push_back(food);
    user.dayCount = 1;
    std::string text = userFileJson(user).dump();
    const std::size_t at = text.find("\"weight\":150.5");
    text.replace(at, 14, "\"weight\":" + weight);
    if (!extra.empty()) {
        text.insert(text.find("{\"date\"") + 1, "\"extra\":" + extra + ",");
        text.insert(1, "\"extra\":" + extra + ",");
    }
    return text;
}

// What writing records makes: the file, or why it could not be written.
std::string writtenOf(const StorageStatus& status, const ByteBuffer& bytes) {
    return status ? std::string(bytes.data(), bytes.data() + bytes.size())
                  : "not written: " + status.message();
}

std::string writtenOf(const UserFile& user) {
    ByteBuffer bytes;
    const StorageStatus s = writeUserFile(user.header, user.profile.fields(), user.firstDayChunk,
                                          user.dayCount, user.days, bytes);
    return writtenOf(s, bytes);
}

std::string writtenOf(const FoodCatalogue& catalogue) {
    ByteBuffer bytes;
    const StorageStatus s = writeCatalogueFile(catalogue, bytes, VersionOnWrite::AsStored);
    return writtenOf(s, bytes);
}

// Reads text with the whole-document reader and, at every read size, the streamed one: they
// must agree on the outcome, a refusal word for word, and what the records write. Returns what
// the whole one made of it.
Outcome readBothWays(const std::string& text, const std::string& what) {
    UserFile whole;
    std::string expectedMessage;
    const Outcome expected =
        outcomeOf([&] { readUserFileJson(parseJson(text), whole); }, &expectedMessage);
    const std::string written = expected == Outcome::Read ? writtenOf(whole) : "";
    for (const std::size_t block : kBlocks) {
        std::istringstream in(text);
        UserFile streamed;
        std::string message;
        const Outcome got = outcomeOf([&] { readUserFileJson(in, streamed, block); }, &message);
        EXPECT_EQ(nameOf(got), std::string(nameOf(expected))) << what << ", read " << block;
        if (got == Outcome::Refused && expected == Outcome::Refused) {
            EXPECT_EQ(message, expectedMessage) << what << ", read " << block;
        }
        if (got == Outcome::Read && expected == Outcome::Read) {
            EXPECT_EQ(writtenOf(streamed), written) << what << ", read " << block;
        }
    }
    return expected;
}

TEST(JsonStream, TakesAndRefusesTheJsonTheWholeDocumentReaderDoes) {
    const struct {
        const char* value;  // a member no reader asks for
        Outcome outcome;
    } cases[] = {
        {"1e-0", Outcome::Read},  // an exponent's "-0" is no negative zero
        {"-0", Outcome::Read},
        {"[-0,-0.0,0e5,1E+2,-12.5e-3]", Outcome::Read},
        {"18446744073709551616", Outcome::Read},  // beyond 64 bits: a double
        {"-9223372036854775809", Outcome::Read},
        {"1e-400", Outcome::Read},  // too small for a double: zero
        {"1e400", Outcome::NotJson},
        {"-1e400", Outcome::NotJson},
        {"01", Outcome::NotJson},
        {"1.", Outcome::NotJson},
        {".5", Outcome::NotJson},
        {"+1", Outcome::NotJson},
        {"-", Outcome::NotJson},
        {"1e", Outcome::NotJson},
        {"--1", Outcome::NotJson},
        {"0x10", Outcome::NotJson},
        {"\"\\u00e9 \\ud83d\\ude00 \\u0000 \\/\\b\\f\\n\\r\\t\"", Outcome::Read},
        {"\"\\ud800\"", Outcome::NotJson},
        {"\"\\ud800\\u0041\"", Outcome::NotJson},
        {"\"\\udc00\"", Outcome::NotJson},
        {"\"\\u12g4\"", Outcome::NotJson},
        {"\"\\x\"", Outcome::NotJson},
        {"\"\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \x7F\"", Outcome::Read},
        {"\"\xC0\xAF\"", Outcome::NotJson},          // overlong
        {"\"\xE0\x80\xAF\"", Outcome::NotJson},      // overlong
        {"\"\xED\xA0\x80\"", Outcome::NotJson},      // a surrogate
        {"\"\xF4\x90\x80\x80\"", Outcome::NotJson},  // beyond U+10FFFF
        {"\"\xC3\"", Outcome::NotJson},
        {"\"\xBF\"", Outcome::NotJson},
        {"\"a\x01z\"", Outcome::NotJson},
        {"\"a\tz\"", Outcome::NotJson},
        {"true", Outcome::Read},
        {"tru", Outcome::NotJson},
        {"nulll", Outcome::NotJson},
        {"[1,]", Outcome::NotJson},
        {"[,1]", Outcome::NotJson},
        {"[1 2]", Outcome::NotJson},
        {"{\"a\":1,}", Outcome::NotJson},
        {"{\"a\" 1}", Outcome::NotJson},
        {"{1:2}", Outcome::NotJson},
        {"[1}", Outcome::NotJson},
        {"[[[[{\"date\":[{}]}]]]]", Outcome::Read},
        {"{\"n\\u0061me\":{\"date\":7}}", Outcome::Read},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(nameOf(readBothWays(userDocument(c.value), c.value)),
                  std::string(nameOf(c.outcome)))
            << c.value;
    }
    // The document around them.
    const std::string good = userDocument("");
    const struct {
        std::string text;
        Outcome outcome;
    } documents[] = {
        {"\xEF\xBB\xBF" + good, Outcome::Read},
        {"\xEF\xBB" + good, Outcome::NotJson},
        {" \r\n\t" + good + " \r\n\t", Outcome::Read},
        {good + " x", Outcome::NotJson},
        {good + std::string(" \0 x", 4), Outcome::Read},  // a NUL ends the document
        {good.substr(0, good.size() - 1) + std::string("\0}", 2), Outcome::NotJson},
        {good + "{}", Outcome::NotJson},
        {good.substr(0, good.size() - 1), Outcome::NotJson},
        {"", Outcome::NotJson},
        {"  ", Outcome::NotJson},
        {"[" + good + "]", Outcome::Refused},
        {"7", Outcome::Refused},
    };
    for (const auto& d : documents) {
        EXPECT_EQ(nameOf(readBothWays(d.text, d.text.substr(0, 12))),
                  std::string(nameOf(d.outcome)))
            << d.text.substr(0, 12);
    }
}

TEST(JsonStream, NumbersBecomeTheFloatsTheWholeDocumentReaderMakes) {
    const struct {
        const char* text;
        uint32_t bits;
    } cases[] = {
        {"-0", 0x80000000},
        {"-0.0", 0x80000000},
        {"0", 0x00000000},
        {"1e-0", 0x3F800000},
        {"16777217", 0x4B800000},  // rounds to 2^24
        {"0.1", 0x3DCCCCCD},
        {"18446744073709551616", 0x5F800000},
        {"-9223372036854775809", 0xDF000000},
        {"1e-400", 0x00000000},
        {"3.4028236e38", 0x7F800000},  // beyond a float, not a double
        {"\"nan(0x7fa00001)\"", 0x7FA00001},
        {"\"-inf\"", 0xFF800000},
    };
    for (const auto& c : cases) {
        const std::string text = userDocument("", c.text);
        ASSERT_EQ(readBothWays(text, c.text), Outcome::Read) << c.text;
        UserFile user;
        readUserFileJson(parseJson(text), user);
        uint32_t bits = 0;
        const float weight = user.days[0]->fields().weight;
        std::memcpy(&bits, &weight, sizeof bits);
        EXPECT_EQ(bits, c.bits) << c.text;
    }
}

TEST(JsonStream, NotJsonSaysTheLineAndColumnWhateverTheReadSize) {
    const std::string text =
        "{\n  \"header\": {\"version\": 4,\n     \"word\": tru},\n  \"days\": []\n}\n";
    for (const std::size_t block : kBlocks) {
        std::istringstream in(text);
        UserFile user;
        std::string message;
        EXPECT_EQ(outcomeOf([&] { readUserFileJson(in, user, block); }, &message),
                  Outcome::NotJson);
        EXPECT_EQ(message, "line 3, column 14: expected a value") << "read " << block;
    }
    std::istringstream cut("{\"days\": [{\"date\": [1, 2,");
    UserFile user;
    std::string message;
    EXPECT_EQ(outcomeOf([&] { readUserFileJson(cut, user, 3); }, &message), Outcome::NotJson);
    EXPECT_EQ(message, "line 1, column 26: the document ends early");
}

TEST(JsonStream, NestingOfAnyDepthIsReadWithoutRecursion) {
    const std::size_t depth = 200000;
    const std::string open(depth, '[');
    const std::string close(depth, ']');
    const std::string good = userDocument("");
    for (const bool closed : {true, false}) {
        const std::string text =
            "{\"deep\": " + open + (closed ? close : "") + ", " + good.substr(1);
        std::istringstream in(text);
        UserFile user;
        EXPECT_EQ(nameOf(outcomeOf([&] { readUserFileJson(in, user); })),
                  std::string(nameOf(closed ? Outcome::Read : Outcome::NotJson)));
    }
}

// The catalogue's JSON of one category of two foods in group 3.
std::string catalogueDocument(const std::string& category) {
    FoodCatalogue c;
    c.renumberGroupChunks();
    Json json = catalogueJson(c);
    std::string text = json.dump();
    const std::string empty = "\"groups\":[[],[],[],[]";
    text.replace(text.find(empty), empty.size(), "\"groups\":[[],[],[],[" + category + "]");
    return text;
}

TEST(JsonStream, OfANameGivenTwiceTheLaterValueCounts) {
    FoodItem food;
    food.name = "Rice";
    const std::string good = foodJson(food).dump();
    const std::string bad = "{\"key\": 1}";
    const struct {
        std::string category;
        Outcome outcome;
    } cases[] = {
        {"{\"key\":1,\"byte\":0,\"name\":\"A\",\"foods\":[" + bad + "],\"foods\":[" + good + "]}",
         Outcome::Read},
        {"{\"key\":1,\"byte\":0,\"name\":\"A\",\"foods\":[" + good + "],\"foods\":[" + bad + "]}",
         Outcome::Refused},
        {"{\"key\":1,\"byte\":0,\"name\":\"A\",\"foods\":[" + good + "],\"foods\":7}",
         Outcome::Refused},
        {"{\"key\":\"x\",\"byte\":0,\"name\":\"A\",\"foods\":[],\"key\":2}", Outcome::Read},
        {"{\"key\":\"x\",\"byte\":0,\"name\":\"A\",\"foods\":[],\"k\\u0065y\":2}", Outcome::Read},
        {"{\"key\":1,\"byte\":0,\"name\":\"A\",\"foods\":[],\"more\":{\"key\":\"x\"}}",
         Outcome::Read},
    };
    for (const auto& c : cases) {
        const std::string text = catalogueDocument(c.category);
        FoodCatalogue whole;
        const Outcome expected = outcomeOf([&] { readCatalogueJson(parseJson(text), whole); });
        EXPECT_EQ(nameOf(expected), std::string(nameOf(c.outcome))) << c.category;
        for (const std::size_t block : kBlocks) {
            std::istringstream in(text);
            FoodCatalogue streamed;
            EXPECT_EQ(nameOf(outcomeOf([&] { readCatalogueJson(in, streamed, block); })),
                      std::string(nameOf(expected)))
                << c.category << ", read " << block;
            if (expected == Outcome::Read) {
                EXPECT_EQ(streamed.groups[3].size(), whole.groups[3].size());
                EXPECT_EQ(streamed.groups[3][0].foods.size(), whole.groups[3][0].foods.size());
                EXPECT_EQ(streamed.groups[3][0].key.value, whole.groups[3][0].key.value);
            }
        }
    }
}

// ---- records read straight in their plain form, else the general way ----

// An object's members as text, with `gap` after each ',' and ':'.
struct Member {
    std::string name;
    std::string value;
};
using Members = std::vector<Member>;

std::string objectText(const Members& members, const std::string& gap = " ") {
    std::string text = "{";
    for (std::size_t i = 0; i < members.size(); ++i) {
        text += (i == 0 ? "" : "," + gap) + "\"" + members[i].name + "\":" + gap + members[i].value;
    }
    return text + "}";
}

const char* const kServing = "{\"amount\": 1.0, \"unit\": 14, \"sub\": 0}";

Members foodMembers() {
    return {{"key", "9"},          {"flag", "1"},
            {"name", "\"Bagel\""}, {"text2", "null"},
            {"serving", kServing}, {"ref1", "{\"amount\": 0.0, \"unit\": 0, \"sub\": 0}"},
            {"ref2", kServing},    {"nutrients", "[245.0, 48.0, 2.0, 10.0, 1.5, 0.2]"},
            {"meal", "0"},         {"ratio", "1.0"},
            {"group", "5"}};
}

Members exerciseMembers() {
    return {{"key", "5"},   {"byte", "0"},           {"type", "15"},    {"variant", "-1"},
            {"third", "2"}, {"name", "\"Running\""}, {"minutes", "30"}, {"calories", "360"}};
}

// Values of every kind and edge, for a field of each kind.
const std::vector<std::string> kIntegers = {"0",
                                            "-0",
                                            "0.0",
                                            "-0.0",
                                            "1",
                                            "-1",
                                            "255",
                                            "256",
                                            "-128",
                                            "32767",
                                            "32768",
                                            "-32768",
                                            "-32769",
                                            "65535",
                                            "65536",
                                            "4294967295",
                                            "4294967296",
                                            "1e2",
                                            "1E0",
                                            "01",
                                            "1.5",
                                            "1.",
                                            "-",
                                            "\"1\"",
                                            "null",
                                            "true",
                                            "[]",
                                            "{}",
                                            "18446744073709551615",
                                            "18446744073709551616",
                                            "-9223372036854775808",
                                            "-9223372036854775809",
                                            "1234567890123456789",
                                            "12345678901234567890",
                                            "-123456789012345678",
                                            "-1234567890123456789",
                                            " \n\t 7 \r\n"};
const std::vector<std::string> kFloats = {"1.5",
                                          "-0",
                                          "-0.0",
                                          "0",
                                          "7",
                                          "-7",
                                          "0.1",
                                          "1e-45",
                                          "1e-400",
                                          "1e400",
                                          "3.4028236e38",
                                          "16777217",
                                          "9007199254740993",
                                          "0.30000000000000004",
                                          "1234567890123456789",
                                          "12345678901234567890",
                                          "123456789.0123456789",
                                          "0.0000000000000000001",
                                          "-9223372036854775809",
                                          "1.",
                                          ".5",
                                          "01.5",
                                          "1.5.5",
                                          "1.5e",
                                          "\"nan\"",
                                          "\"inf\"",
                                          "\"-inf\"",
                                          "\"nan(0x7fa00001)\"",
                                          "\"1.5\"",
                                          "null",
                                          "[1.5]",
                                          "  1.25  "};
const std::vector<std::string> kTexts = {"\"\"",
                                         "null",
                                         "\"Bagel\"",
                                         "\"a\\\"b\"",
                                         "\"caf\\u00e9\"",
                                         "\"caf\xC3\xA9\"",
                                         "\"\xE2\x82\xAC\"",
                                         "\"\xE6\x97\xA5\"",
                                         "\"\x7F\"",
                                         "\"tab\\there\"",
                                         "\"a\tb\"",
                                         "\"\xC3\"",
                                         "nul",
                                         "nulll",
                                         "7",
                                         "[]",
                                         "\"" + std::string(65534, 'x') + "\"",
                                         "\"" + std::string(65535, 'x') + "\""};

// Every member's value replaced by each of `values` for its kind, every member left out, given
// twice (the later counting), an unknown member, the members reversed, blanks of every kind.
std::vector<std::string> variantsOf(
    const Members& members,
    const std::function<const std::vector<std::string>*(const std::string& name)>& valuesOf) {
    std::vector<std::string> out = {objectText(members),
                                    objectText(members, ""),
                                    objectText(members, "\n \r\t"),
                                    "{}",
                                    "[]",
                                    "null"};
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (const std::vector<std::string>* values = valuesOf(members[i].name)) {
            for (const std::string& v : *values) {
                Members m = members;
                m[i].value = v;
                out.push_back(objectText(m));
            }
        }
        Members without = members;
        without.erase(without.begin() + static_cast<std::ptrdiff_t>(i));
        out.push_back(objectText(without));
        Members twice = members;
        twice.insert(twice.begin() + static_cast<std::ptrdiff_t>(i), {members[i].name, "\"x\""});
        out.push_back(objectText(twice));
        twice = members;
        twice.push_back({members[i].name, "\"x\""});
        out.push_back(objectText(twice));
        twice = members;
        twice.push_back(members[i]);
        out.push_back(objectText(twice));
        Members escaped = members;  // the last letter of the name as an escape
        const auto last = static_cast<unsigned char>(escaped[i].name.back());
        escaped[i].name.pop_back();
        escaped[i].name +=
            std::string("\\u00") + "0123456789abcdef"[last >> 4] + "0123456789abcdef"[last & 15];
        out.push_back(objectText(escaped));
    }
    Members reversed(members.rbegin(), members.rend());
    out.push_back(objectText(reversed));
    Members unknown = members;
    unknown.insert(unknown.begin() + 1, {"more", "{\"key\": \"x\", \"list\": [1, {}]}"});
    out.push_back(objectText(unknown));
    std::string trailing = objectText(members);
    trailing.insert(trailing.size() - 1, ",");
    out.push_back(trailing);
    return out;
}

const std::vector<std::string>* foodValues(const std::string& name) {
    static const std::vector<std::string> kServings = [] {
        std::vector<std::string> servings = {
            "{\"amount\": 1.0, \"unit\": 14}", "[]", "7",
            "{\"amount\": 1.0, \"unit\": 14, \"sub\": 0, \"x\": 1}",
            "{\"sub\": 2, \"unit\": 3, \"amount\": 0.5}"};
        const Members serving = {{"amount", "1.0"}, {"unit", "14"}, {"sub", "0"}};
        for (std::size_t i = 0; i < serving.size(); ++i) {
            for (const std::string& v : i == 0 ? kFloats : kIntegers) {
                Members m = serving;
                m[i].value = v;
                servings.push_back(objectText(m));
            }
        }
        return servings;
    }();
    static const std::vector<std::string> kNutrients = [] {
        std::vector<std::string> lists = {
            "[1, 2, 3, 4, 5]",      "[1, 2, 3, 4, 5, 6, 7]", "[]", "{}",
            "[1, 2, 3, 4, 5, [6]]", "[1, 2, 3, 4, 5, 6,]"};
        for (const std::string& v : kFloats) {
            lists.push_back("[1, 2, " + v + ", 4, 5, 6]");
        }
        return lists;
    }();
    if (name == "name" || name == "text2") {
        return &kTexts;
    }
    if (name == "serving" || name == "ref1" || name == "ref2") {
        return &kServings;
    }
    if (name == "nutrients") {
        return &kNutrients;
    }
    return name == "ratio" ? &kFloats : &kIntegers;
}

// The same for a catalogue.
Outcome readCatalogueBothWays(const std::string& text, const std::string& what) {
    FoodCatalogue whole;
    std::string expectedMessage;
    const Outcome expected =
        outcomeOf([&] { readCatalogueJson(parseJson(text), whole); }, &expectedMessage);
    const std::string written = expected == Outcome::Read ? writtenOf(whole) : "";
    for (const std::size_t block : kBlocks) {
        std::istringstream in(text);
        FoodCatalogue streamed;
        std::string message;
        const Outcome got = outcomeOf([&] { readCatalogueJson(in, streamed, block); }, &message);
        EXPECT_EQ(nameOf(got), std::string(nameOf(expected))) << what << ", read " << block;
        if (got == Outcome::Refused && expected == Outcome::Refused) {
            EXPECT_EQ(message, expectedMessage) << what << ", read " << block;
        }
        if (got == Outcome::Read && expected == Outcome::Read) {
            EXPECT_EQ(writtenOf(streamed), written) << what << ", read " << block;
        }
    }
    return expected;
}

TEST(JsonStream, FoodsReadStraightAreTheFoodsAndRefusalsOfTheGeneralReader) {
    const std::string good = objectText(foodMembers());
    int read = 0;
    int refused = 0;
    for (const std::string& food : variantsOf(foodMembers(), foodValues)) {
        // Between good foods, so that a food read the general way is followed by a straight one.
        const std::string text =
            catalogueDocument("{\"key\": 1, \"byte\": 0, \"name\": \"A\", \"foods\": [" + good +
                              ", " + food + ", " + good + "]}");
        const Outcome o = readCatalogueBothWays(text, food.substr(0, 120));
        read += o == Outcome::Read ? 1 : 0;
        refused += o == Outcome::Refused ? 1 : 0;
    }
    // Both kinds are well represented.
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}

TEST(JsonStream, DaysReadStraightAreTheDaysAndRefusalsOfTheGeneralReader) {
    const std::string food = objectText(foodMembers());
    const std::string exercise = objectText(exerciseMembers());
    const Members day = {
        {"date", "[9, 25, 2002]"},
        {"weight", "154.0"},
        {"note", "\"\""},
        {"word", "0"},
        {"level", "2"},
        {"bmr", "1700"},
        {"flags", "32768"},
        {"totals", "[0, 0, 0, 0, 0, 0]"},
        {"groups", "[[], [" + food + ", " + food + "], [], [], [], [], [], [" + food + "]]"},
        {"exercises", "[" + exercise + "]"}};
    std::vector<std::string> dates = {"[1, 2]", "[1, 2, 3, 4]", "[]", "{}", "7"};
    for (const std::string& v : kIntegers) {
        dates.push_back("[1, " + v + ", 2003]");
    }
    std::vector<std::string> groups = {"[]",
                                       "[[], [], [], [], [], [], []]",
                                       "[[], [], [], [], [], [], [], [], []]",
                                       "[[], [], [], [], [], [], [], 7]",
                                       "[[], [], [], [], [], [], [], {}]",
                                       "[[], [], [], [], [], [], [], [" + food + ",]]",
                                       "[[], [], [], [], [], [], [], [,]]"};
    for (const std::string& f : variantsOf(foodMembers(), foodValues)) {
        groups.push_back("[[], [], [" + food + ", " + f + "], [], [], [], [], []]");
    }
    std::vector<std::string> exercises = {"[]", "{}", "[7]",
                                          "[" + exercise + ", " + exercise + "]"};
    for (const std::string& e : variantsOf(exerciseMembers(), [](const std::string& name) {
             return name == "name" ? &kTexts : &kIntegers;
         })) {
        exercises.push_back("[" + exercise + ", " + e + "]");
    }
    const std::vector<std::string> totals = {"[0, 0, 0, 0, 0]", "[0, 0, 0, 0, 0, \"nan\"]",
                                             "[0, 0, 0, 0, 0, 1e39]", "[0, 0, 0, 0, 0, -0]"};
    const auto valuesOf = [&](const std::string& name) -> const std::vector<std::string>* {
        if (name == "date") {
            return &dates;
        }
        if (name == "note") {
            return &kTexts;
        }
        if (name == "weight") {
            return &kFloats;
        }
        if (name == "groups") {
            return &groups;
        }
        if (name == "exercises") {
            return &exercises;
        }
        return name == "totals" ? &totals : &kIntegers;
    };
    const std::string good = objectText(day);
    int read = 0;
    int refused = 0;
    for (const std::string& d : variantsOf(day, valuesOf)) {
        const std::string document =
            "{\"header\": {\"version\": 4, \"word\": 0, \"keyCounter\": 17, "
            "\"flags\": 0}, \"profile\": " +
            profileJson(UserProfile()).dump() +
            ", \"dayIndex\": {\"first\": 3, \"count\": 3}, \"days\": [" + good + ", " + d + ", " +
            good + "]}";
        const Outcome o = readBothWays(document, d.substr(0, 120));
        read += o == Outcome::Read ? 1 : 0;
        refused += o == Outcome::Refused ? 1 : 0;
    }
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}

}  // namespace
}  // namespace nutrovex::tool
