#include <gtest/gtest.h>

#include <cstring>
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

// Reads text with the whole-document reader and, at every read size, the streamed one: they
// must agree. Returns what the whole one made of it and its file.
Outcome readBothWays(const std::string& text, ByteBuffer& written, const std::string& what) {
    UserFile whole;
    const Outcome expected = outcomeOf([&] { readUserFileJson(parseJson(text), whole); });
    if (expected == Outcome::Read) {
        EXPECT_TRUE(writeUserFile(whole.header, whole.profile.fields(), whole.firstDayChunk,
                                  whole.dayCount, whole.days, written)
                        .ok());
    }
    for (const std::size_t block : kBlocks) {
        std::istringstream in(text);
        UserFile streamed;
        const Outcome got = outcomeOf([&] { readUserFileJson(in, streamed, block); });
        EXPECT_EQ(nameOf(got), std::string(nameOf(expected))) << what << ", read " << block;
        if (got == Outcome::Read && expected == Outcome::Read) {
            ByteBuffer bytes;
            EXPECT_TRUE(writeUserFile(streamed.header, streamed.profile.fields(),
                                      streamed.firstDayChunk, streamed.dayCount, streamed.days,
                                      bytes)
                            .ok());
            EXPECT_EQ(std::string(bytes.data(), bytes.data() + bytes.size()),
                      std::string(written.data(), written.data() + written.size()))
                << what << ", read " << block;
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
        ByteBuffer written;
        EXPECT_EQ(nameOf(readBothWays(userDocument(c.value), written, c.value)),
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
        ByteBuffer written;
        EXPECT_EQ(nameOf(readBothWays(d.text, written, d.text.substr(0, 12))),
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
        ByteBuffer written;
        ASSERT_EQ(readBothWays(userDocument("", c.text), written, c.text), Outcome::Read) << c.text;
        UserFile user;
        ASSERT_TRUE(readUserFile(written.bytes(), user, CalendarDate(), {"UserDB.ddb"}).ok());
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

}  // namespace
}  // namespace nutrovex::tool
