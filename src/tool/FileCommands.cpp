#include "tool/FileCommands.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <sstream>
#include <type_traits>

#include "core/Cp1252.h"
#include "core/Names.h"
#include "storage/CatalogueFile.h"
#include "storage/DataRoot.h"
#include "storage/FileIo.h"
#include "tool/JsonPrint.h"
#include "tool/JsonStream.h"
#include "tool/UserLookup.h"

namespace nutrovex::tool {

namespace {

[[noreturn]] void shapeError(const std::string& what) {
    throw JsonShapeError(what);
}

// Runs a reader of one element, naming the element in its error; `where` is the name or, where
// elements are many, what makes it.
template <typename Where, typename Read>
void within(const Where& where, Read&& read) {
    try {
        read();
    } catch (const JsonShapeError& e) {
        if constexpr (std::is_invocable_v<const Where&>) {
            throw JsonShapeError(where() + ": " + e.what());
        } else {
            throw JsonShapeError(std::string(where) + ": " + e.what());
        }
    }
}

template <typename Value>
auto arrayField(const Value& object, const char* name, std::size_t size = 0)
    -> decltype(field(object, name)) {
    decltype(auto) v = field(object, name);
    if (!v.is_array() || (size != 0 && v.size() != size)) {
        shapeError(std::string("'") + name + "' must be a list" +
                   (size != 0 ? " of " + std::to_string(size) : std::string()));
    }
    return v;
}

// ---- files ----

std::string hexOf(const std::array<uint8_t, kFixedTextSize>& bytes) {
    static const char kDigits[] = "0123456789abcdef";
    std::string s;
    for (const uint8_t b : bytes) {
        s += kDigits[b >> 4];
        s += kDigits[b & 15];
    }
    return s;
}

template <typename Value>
std::array<uint8_t, kFixedTextSize> bytesOfHex(const Value& v) {
    if (!v.is_string() || stringOf(v).size() != 2 * kFixedTextSize) {
        shapeError("each of 'texts' must be a string of 42 hex digits");
    }
    const std::string_view s = stringOf(v);
    std::array<uint8_t, kFixedTextSize> out{};
    auto digit = [](char c) -> int {
        const int value = hexDigitValue(c);
        if (value < 0) {
            shapeError("each of 'texts' must be a string of 42 hex digits");
        }
        return value;
    };
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = static_cast<uint8_t>(digit(s[2 * i]) * 16 + digit(s[2 * i + 1]));
    }
    return out;
}

// Reads FILE, or stdin for "-".
bool readInput(const std::string& path, std::string& text) {
    if (path == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        return true;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

void reportError(const std::string& path, StorageError error) {
    error.file = path;
    std::cerr << error.message() << '\n';
}

// What opening or reading a data file came to: true when it was read; otherwise the reason,
// reported.
bool readOrReport(const std::string& path, ReadFile outcome, StorageError& error) {
    switch (outcome) {
        case ReadFile::Read:
            return true;
        case ReadFile::Missing:
            error = fileError(path, "cannot be opened: the file does not exist");
            break;
        case ReadFile::Failed:
            break;
    }
    reportError(path, error);
    return false;
}

// Reads a data file whole; on failure reports it and returns false.
bool readDataFile(const std::string& path, ByteBuffer& bytes) {
    StorageError error;
    const ReadFile outcome = readWholeFile(path, bytes, error);
    return readOrReport(path, outcome, error);
}

// Opens a data file to be read a window at a time; on failure reports it and returns false.
bool openDataFile(const std::string& path, FileSource& source) {
    StorageError error;
    const ReadFile outcome = source.open(path, error);
    return readOrReport(path, outcome, error);
}

int usage(const char* line) {
    std::cerr << "usage: nutrovex-tool " << line << '\n';
    return kExitUsage;
}

// OUT inside a data root is written only with the root's lock, as the program writes it.
bool lockRootOfOutput(const std::string& output, const char* usageLine, InstanceLock& lock) {
    const std::optional<std::filesystem::path> root = dataRootHolding(output);
    const std::string_view line(usageLine);
    return !root || lockDataRoot(*root, lock, line.substr(0, line.find(' ')), std::cerr);
}

// write-*: JSON in, file out, exactly as the JSON says.
template <typename Build>
int writeFromJson(Args args, const char* usageLine, Build&& build) {
    if (args.size() != 2) {
        return usage(usageLine);
    }
    const std::string& input = args[0];
    const std::string& output = args[1];
    InstanceLock lock;
    if (!lockRootOfOutput(output, usageLine, lock)) {
        return kExitDataError;
    }
    std::string text;
    if (!readInput(input, text)) {
        std::cerr << input << ": cannot be read\n";
        return kExitDataError;
    }
    ByteBuffer bytes;
    try {
        const Json json = parseJson(text);
        StorageStatus status = build(json, bytes);
        if (!status) {
            reportError(output, status.error());
            return kExitDataError;
        }
    } catch (const Json::exception& e) {
        std::cerr << input << ": not valid JSON: " << e.what() << '\n';
        return kExitDataError;
    } catch (const JsonShapeError& e) {
        std::cerr << input << ": " << e.what() << '\n';
        return kExitDataError;
    }
    const StorageStatus written = writeOutputFile(output, bytes.bytes());
    if (!written) {
        reportError(output, written.error());
        return kExitDataError;
    }
    return kExitOk;
}

// The size of the JSON to be read, when it is a file (stdin included); 0 when not known.
std::size_t jsonInputSize(const std::string& input) {
    struct stat st {};
    const int got = input == "-" ? ::fstat(STDIN_FILENO, &st) : ::stat(input.c_str(), &st);
    return got == 0 && S_ISREG(st.st_mode) ? static_cast<std::size_t>(st.st_size) : 0;
}

// write-* for the large files: the JSON is read as it is parsed (`read` keeps only records) and
// the file is written straight into a temporary file, which replaces OUT only when all of it
// is there. The records take about recordsPerByte of the JSON's size, readied at once.
template <typename Read, typename Write>
int writeFromJsonStream(Args args, const char* usageLine, double recordsPerByte, Read&& read,
                        Write&& write) {
    if (args.size() != 2) {
        return usage(usageLine);
    }
    const std::string& input = args[0];
    const std::string& output = args[1];
    InstanceLock lock;
    if (!lockRootOfOutput(output, usageLine, lock)) {
        return kExitDataError;
    }
    std::ifstream file;
    if (input != "-") {
        file.open(input, std::ios::binary);
        if (!file) {
            std::cerr << input << ": cannot be read\n";
            return kExitDataError;
        }
    }
    std::istream& in = input == "-" ? std::cin : file;
    try {
        const HeapReserve reserve(
            static_cast<std::size_t>(static_cast<double>(jsonInputSize(input)) * recordsPerByte));
        read(in);
    } catch (const JsonSyntaxError& e) {
        if (in.bad()) {
            std::cerr << input << ": cannot be read\n";
        } else {
            std::cerr << input << ": not valid JSON: " << e.what() << '\n';
        }
        return kExitDataError;
    } catch (const JsonShapeError& e) {
        std::cerr << input << ": " << e.what() << '\n';
        return kExitDataError;
    }
    if (in.bad()) {
        std::cerr << input << ": cannot be read\n";
        return kExitDataError;
    }
    OutputFile out(output);
    StorageStatus status = out.open();
    if (status) {
        status = write(static_cast<ChunkSink&>(out));
    }
    if (status) {
        status = out.commit();
    }
    if (!status) {
        out.abandon();
        reportError(output, status.error());
        return kExitDataError;
    }
    return kExitOk;
}

enum class FileKind { User, Catalogue, UserList };

const char* kindName(FileKind kind) {
    switch (kind) {
        case FileKind::User:
            return "user file";
        case FileKind::Catalogue:
            return "food catalogue";
        case FileKind::UserList:
            return "user list";
    }
    return "";
}

std::string count(std::size_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

std::string lower(std::string s) {
    for (char& c : s) {
        c = asciiLower(c);
    }
    return s;
}

// Reads the bytes as one kind, as the program reads them; on success describes what was found.
StorageStatus checkAs(FileKind kind, std::span<const uint8_t> bytes, const std::string& path,
                      std::string& summary) {
    const ReadOptions options{path};
    switch (kind) {
        case FileKind::User: {
            UserFile file;
            StorageStatus s = readUserFile(bytes, file, CalendarDate(), options);
            summary = count(file.days.size(), "day", "days");
            return s;
        }
        case FileKind::Catalogue: {
            FoodCatalogue catalogue;
            StorageStatus s = readCatalogueFile(bytes, catalogue, options);
            std::size_t categories = 0;
            for (const CategoryList& g : catalogue.groups) {
                categories += g.size();
            }
            summary = count(categories, "category", "categories") + ", " +
                      count(catalogue.foodCount(), "food", "foods");
            return s;
        }
        case FileKind::UserList: {
            UserListFile list;
            StorageStatus s = readUserListFile(bytes, list, options);
            if (s) {
                // A list the program would not load is no good list, however well it reads.
                s = checkUserNames(list.names);
                if (!s) {
                    StorageError e = s.error();
                    e.file = path;
                    s = e;
                }
            }
            summary = count(list.names.size(), "name", "names");
            return s;
        }
    }
    return {};
}

}  // namespace

// ---- JSON shapes ----

namespace {

Json userHeaderJson(const UserFile& file) {
    return {{"version", file.header.version},
            {"word", file.header.word},
            {"keyCounter", file.header.keyCounter.value},
            {"flags", file.header.flags}};
}

Json dayIndexJson(const UserFile& file) {
    return {{"first", file.firstDayChunk}, {"count", file.dayCount}};
}

}  // namespace

Json userFileJson(const UserFile& file) {
    const ExactNanBits exact;
    Json j;
    j["header"] = userHeaderJson(file);
    j["profile"] = profileJson(file.profile);
    j["dayIndex"] = dayIndexJson(file);
    Json days = Json::array();
    for (const auto& day : file.days) {
        days.push_back(dayJson(*day));
    }
    j["days"] = std::move(days);
    return j;
}

namespace {

template <typename Value>
void readUserFileJsonHead(const Value& value, UserFile& file) {
    within("header", [&] {
        const auto& h = field(value, "header");
        file.header.version = intField<uint16_t>(h, "version");
        file.header.word = intField<uint16_t>(h, "word");
        file.header.keyCounter.value = intField<uint32_t>(h, "keyCounter");
        file.header.flags = intField<uint16_t>(h, "flags");
    });
    within("profile", [&] { readProfile(field(value, "profile"), file.profile); });
    within("dayIndex", [&] {
        const auto& x = field(value, "dayIndex");
        file.firstDayChunk = intField<uint16_t>(x, "first");
        file.dayCount = intField<uint16_t>(x, "count");
    });
}

// Reads the document's outermost value into top, all but the members that `member(object, key)`
// reads itself (it returns true when it did), then the end of the document. Only the kind of an
// outermost list is kept: the readers want an object.
template <typename Member>
uint32_t readOutermost(JsonPull& pull, JsonTree& top, Member&& member) {
    top.clear();
    uint32_t root = JsonTree::kNone;
    switch (pull.peek()) {
        case JsonPull::Next::Object: {
            pull.enterObject();
            root = top.add(JsonTree::kNone, 0, JsonTree::Kind::Object);
            uint8_t key = 0;
            while (pull.nextMember(key)) {
                if (member(root, key)) {
                    continue;
                }
                if (key == 0) {
                    pull.skip();
                } else {
                    (void)pull.parse(top, root, key);
                }
            }
            break;
        }
        case JsonPull::Next::Array:
            root = top.add(JsonTree::kNone, 0, JsonTree::Kind::Array);
            pull.skip();
            break;
        case JsonPull::Next::Other:
            root = pull.parse(top);
            break;
    }
    pull.finish();
    return root;
}

// A list read by the caller stands in its document as a list of `count` elements.
void addReadList(JsonTree& tree, uint32_t object, uint8_t key, uint32_t count) {
    tree.node(tree.add(object, key, JsonTree::Kind::Array)).count = count;
}

}  // namespace

// Each day is read as soon as its text is, and only its record kept. A document with one fault
// is refused with the whole document's error: the header, profile and day index are checked
// first, then the list, then the days in order. Of a name given twice the later value counts,
// so a later "days" replaces an earlier one, refusal and all.
void readUserFileJson(std::istream& in, UserFile& file, std::size_t block) {
    JsonPull pull(in, block);
    JsonTree top;   // the document without its days
    JsonTree tree;  // one day
    std::optional<std::string> refused;
    file.days.clear();
    const uint8_t daysKey = jsonKeyId("days");
    const uint32_t root = readOutermost(pull, top, [&](uint32_t object, uint8_t key) {
        if (key != daysKey) {
            return false;
        }
        file.days.clear();
        refused.reset();
        if (pull.peek() != JsonPull::Next::Array) {
            return false;
        }
        pull.enterArray();
        uint32_t count = 0;
        for (; pull.nextElement(); ++count) {
            if (refused) {
                pull.skip();  // checked as JSON only
                continue;
            }
            auto day = std::make_unique<DayRecord>(CalendarDate());
            if (pull.quick([&](JsonQuick& q) { return quickDay(q, *day); })) {
                file.days.push_back(std::move(day));
                continue;
            }
            day = std::make_unique<DayRecord>(CalendarDate());
            tree.clear();
            const TreeValue value(tree, pull.parse(tree));
            try {
                within([&] { return "days[" + std::to_string(count) + "]"; },
                       [&] { readDay(value, *day); });
                file.days.push_back(std::move(day));
            } catch (const JsonShapeError& e) {
                refused = e.what();
            }
        }
        addReadList(top, object, key, count);
        return true;
    });
    const TreeValue value(top, root);
    readUserFileJsonHead(value, file);
    (void)arrayField(value, "days");
    if (refused) {
        shapeError(*refused);
    }
}

void readUserFileJson(const Json& value, UserFile& file) {
    readUserFileJsonHead(value, file);
    const Json& days = arrayField(value, "days");
    file.days.clear();
    for (std::size_t i = 0; i < days.size(); ++i) {
        auto day = std::make_unique<DayRecord>(CalendarDate());
        within("days[" + std::to_string(i) + "]", [&] { readDay(days[i], *day); });
        file.days.push_back(std::move(day));
    }
}

namespace {

Json catalogueHeaderJson(const CatalogueHeader& h) {
    Json groups = Json::array();
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        groups.push_back({{"name", textJson(h.groupNames[g])}, {"chunk", h.groupChunks[g]}});
    }
    Json texts = Json::array();
    for (const auto& t : h.texts) {
        texts.push_back(hexOf(t));
    }
    return {{"version", h.version},
            {"groups", std::move(groups)},
            {"byte", h.byte},
            {"texts", std::move(texts)},
            {"keyCounter", h.keyCounter.value}};
}

template <typename Value>
void readCatalogueHeader(const Value& value, CatalogueHeader& header) {
    within("header", [&] {
        const auto& h = field(value, "header");
        header.version = intField<uint16_t>(h, "version");
        const auto& groups = arrayField(h, "groups", kFoodGroupCount);
        for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
            within("groups[" + std::to_string(g) + "]", [&] {
                header.groupNames[g] = textField(groups[g], "name");
                header.groupChunks[g] = intField<uint16_t>(groups[g], "chunk");
            });
        }
        header.byte = intField<uint8_t>(h, "byte");
        const auto& texts = arrayField(h, "texts", kFixedTextCount);
        for (std::size_t t = 0; t < kFixedTextCount; ++t) {
            header.texts[t] = bytesOfHex(texts[t]);
        }
        header.keyCounter.value = intField<uint32_t>(h, "keyCounter");
    });
}

std::string groupName(std::size_t g) {
    return "groups[" + std::to_string(g) + "]";
}

std::string categoryName(std::size_t g, std::size_t c) {
    return groupName(g) + "[" + std::to_string(c) + "]";
}

// A category's own fields; its foods are read apart.
template <typename Value>
FoodCategory categoryHead(const Value& value) {
    FoodCategory category;
    category.key.value = intField<uint32_t>(value, "key");
    category.byte = intField<uint8_t>(value, "byte");
    category.name = textField(value, "name");
    return category;
}

template <typename Value>
FoodItem foodAt(const Value& value, std::size_t f) {
    FoodItem food;
    within([f] { return "foods[" + std::to_string(f) + "]"; }, [&] { food = foodValue(value); });
    return food;
}

}  // namespace

Json catalogueJson(const FoodCatalogue& catalogue) {
    const ExactNanBits exact;
    Json j;
    j["header"] = catalogueHeaderJson(catalogue.header);
    Json lists = Json::array();
    for (const CategoryList& list : catalogue.groups) {
        Json categories = Json::array();
        for (const FoodCategory& c : list) {
            categories.push_back(categoryJson(c));
        }
        lists.push_back(std::move(categories));
    }
    j["groups"] = std::move(lists);
    return j;
}

void readCatalogueJson(const Json& value, FoodCatalogue& catalogue) {
    catalogue.reset();
    readCatalogueHeader(value, catalogue.header);
    const Json& groups = arrayField(value, "groups", kFoodGroupCount);
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        if (!groups[g].is_array()) {
            shapeError(groupName(g) + " must be a list of categories");
        }
        for (std::size_t c = 0; c < groups[g].size(); ++c) {
            within(categoryName(g, c), [&] {
                const Json& cj = groups[g][c];
                FoodCategory category = categoryHead(cj);
                const Json& foods = arrayField(cj, "foods");
                category.foods.reserve(foods.size());
                for (std::size_t f = 0; f < foods.size(); ++f) {
                    category.foods.push_back(foodAt(foods[f], f));
                }
                catalogue.groups[g].push_back(std::move(category));
            });
        }
    }
}

namespace {

// The next value, of which only the kind is wanted when it is a list.
uint32_t kindOrScalar(JsonPull& pull, JsonTree& tree) {
    if (pull.peek() == JsonPull::Next::Array) {
        const uint32_t index = tree.add(JsonTree::kNone, 0, JsonTree::Kind::Array);
        pull.skip();
        return index;
    }
    return pull.parse(tree);
}

}  // namespace

// Each food is read as soon as its text is, and each category's own fields when it ends; only
// the records are kept. A document with one fault is refused with the whole document's error
// (the header first, then the list of groups, then what comes first in it); of a name given
// twice the later value counts.
void readCatalogueJson(std::istream& in, FoodCatalogue& catalogue, std::size_t block) {
    JsonPull pull(in, block);
    JsonTree top;                        // the document without its groups
    JsonTree head;                       // a category without its foods
    JsonTree tree;                       // one food
    std::optional<std::string> refused;  // the first refusal in "groups"
    std::size_t lastFoods = 0;
    catalogue.reset();
    const uint8_t groupsKey = jsonKeyId("groups");
    const uint8_t foodsKey = jsonKeyId("foods");

    auto readCategory = [&](std::size_t g, std::size_t c) {
        head.clear();
        std::vector<FoodItem> foods;
        std::optional<std::string> foodRefused;
        uint32_t root = JsonTree::kNone;
        if (pull.peek() == JsonPull::Next::Object) {
            pull.enterObject();
            root = head.add(JsonTree::kNone, 0, JsonTree::Kind::Object);
            uint8_t key = 0;
            while (pull.nextMember(key)) {
                if (key == foodsKey) {
                    foods.clear();
                    foodRefused.reset();
                }
                if (key == foodsKey && pull.peek() == JsonPull::Next::Array) {
                    foods.reserve(lastFoods);  // categories are mostly alike
                    pull.enterArray();
                    uint32_t count = 0;
                    for (; pull.nextElement(); ++count) {
                        if (foodRefused) {
                            pull.skip();
                            continue;
                        }
                        if (pull.quick(
                                [&](JsonQuick& q) { return quickFood(q, foods.emplace_back()); })) {
                            continue;
                        }
                        foods.pop_back();
                        tree.clear();
                        const TreeValue food(tree, pull.parse(tree));
                        try {
                            foods.push_back(foodAt(food, count));
                        } catch (const JsonShapeError& e) {
                            foodRefused = e.what();
                        }
                    }
                    addReadList(head, root, key, count);
                } else if (key == 0) {
                    pull.skip();
                } else {
                    (void)pull.parse(head, root, key);
                }
            }
        } else {
            root = kindOrScalar(pull, head);
        }
        within(categoryName(g, c), [&] {
            const TreeValue value(head, root);
            FoodCategory category = categoryHead(value);
            (void)arrayField(value, "foods");
            if (foodRefused) {
                shapeError(*foodRefused);
            }
            lastFoods = foods.size();
            category.foods = std::move(foods);
            catalogue.groups[g].push_back(std::move(category));
        });
    };

    const uint32_t root = readOutermost(pull, top, [&](uint32_t object, uint8_t key) {
        if (key != groupsKey) {
            return false;
        }
        refused.reset();
        for (CategoryList& list : catalogue.groups) {
            list.clear();
        }
        if (pull.peek() != JsonPull::Next::Array) {
            return false;
        }
        pull.enterArray();
        uint32_t count = 0;
        for (; pull.nextElement(); ++count) {
            const std::size_t g = count;
            if (refused || g >= kFoodGroupCount) {
                pull.skip();  // checked as JSON only
                continue;
            }
            if (pull.peek() != JsonPull::Next::Array) {
                refused = groupName(g) + " must be a list of categories";
                pull.skip();
                continue;
            }
            pull.enterArray();
            for (std::size_t c = 0; pull.nextElement(); ++c) {
                if (refused) {
                    pull.skip();
                    continue;
                }
                try {
                    readCategory(g, c);
                } catch (const JsonShapeError& e) {
                    refused = e.what();
                }
            }
        }
        addReadList(top, object, key, count);
        return true;
    });
    const TreeValue value(top, root);
    readCatalogueHeader(value, catalogue.header);
    (void)arrayField(value, "groups", kFoodGroupCount);
    if (refused) {
        shapeError(*refused);
    }
}

Json userListJson(const UserListFile& list) {
    Json names = Json::array();
    for (const Text& n : list.names) {
        names.push_back(textJson(n));
    }
    Json j;
    j["format"] = list.format;
    j["names"] = std::move(names);
    return j;
}

void readUserListJson(const Json& value, UserListFile& list) {
    list.format = intField<uint16_t>(value, "format");
    const Json& names = arrayField(value, "names");
    list.names.clear();
    for (std::size_t i = 0; i < names.size(); ++i) {
        within("names[" + std::to_string(i) + "]",
               [&] { list.names.push_back(textValue(names[i], "name")); });
    }
}

void printJson(std::ostream& out, const Json& value) {
    std::string text;
    appendPretty(text, value, 0);
    text += '\n';
    out << text;
}

// ---- commands ----

int runDumpUser(const GlobalOptions&, Args args) {
    if (args.size() != 1) {
        return usage("dump-user FILE");
    }
    const std::string& path = args[0];
    // The file is read twice, a day at a time: once to know it reads whole before anything is
    // printed, once to print it, so its size never matters.
    FileSource check;
    if (!openDataFile(path, check)) {
        return kExitDataError;
    }
    UserFile file;
    StorageStatus s =
        readUserFile(check, file, CalendarDate(), {path}, [](const DayRecord&, uint16_t) {});
    if (!s) {
        reportError(path, s.error());
        return kExitDataError;
    }
    FileSource source;
    if (!openDataFile(path, source)) {
        return kExitDataError;
    }
    const ExactNanBits exact;
    {
        PrettyStream out(std::cout);
        out << "{\n";
        out.member("header", userHeaderJson(file));
        out << ",\n";
        out.member("profile", profileJson(file.profile));
        out << ",\n";
        out.member("dayIndex", dayIndexJson(file));
        out << ",\n  \"days\": " << (file.dayCount == 0 ? "[]" : "[\n");
        UserFile again;
        s = readUserFile(source, again, CalendarDate(), {path},
                         [&](const DayRecord& day, uint16_t i) {
                             std::string& text = out.text();
                             text += i == 0 ? "    " : ",\n    ";
                             appendDayJson(text, day, 4);
                             out.flushIfFull();
                         });
        out << (file.dayCount == 0 ? "" : "\n  ]") << "\n}\n";
    }
    std::cout.flush();
    if (!s) {
        reportError(path, s.error());  // the file changed between the two readings
        return kExitDataError;
    }
    return kExitOk;
}

int runDumpCatalogue(const GlobalOptions&, Args args) {
    if (args.size() != 1) {
        return usage("dump-catalogue FILE");
    }
    const std::string& path = args[0];
    // Read whole before anything is printed (the records are about the file's size), then
    // printed a category at a time.
    FileSource source;
    if (!openDataFile(path, source)) {
        return kExitDataError;
    }
    FoodCatalogue catalogue;
    const StorageStatus s = readCatalogueFile(source, catalogue, {path});
    if (!s) {
        reportError(path, s.error());
        return kExitDataError;
    }
    const ExactNanBits exact;
    {
        PrettyStream out(std::cout);
        out << "{\n";
        out.member("header", catalogueHeaderJson(catalogue.header));
        out << ",\n  \"groups\": ";
        appendCatalogueGroupsJson(out.text(), catalogue, 2, [&] { out.flushIfFull(); });
        out << "\n}\n";
    }
    std::cout.flush();
    return kExitOk;
}

int runDumpUsers(const GlobalOptions&, Args args) {
    if (args.size() != 1) {
        return usage("dump-users FILE");
    }
    ByteBuffer bytes;
    if (!readDataFile(args[0], bytes)) {
        return kExitDataError;
    }
    UserListFile list;
    const StorageStatus s = readUserListFile(bytes.bytes(), list, {args[0]});
    if (!s) {
        reportError(args[0], s.error());
        return kExitDataError;
    }
    printJson(std::cout, userListJson(list));
    return kExitOk;
}

int runWriteUser(const GlobalOptions&, Args args) {
    UserFile user;
    return writeFromJsonStream(
        args, "write-user JSON OUT   (JSON \"-\" reads stdin)", 0.4,
        [&](std::istream& in) { readUserFileJson(in, user); },
        [&](ChunkSink& sink) {
            return writeUserFile(user.header, user.profile.fields(), user.firstDayChunk,
                                 user.dayCount, user.days, sink);
        });
}

int runWriteCatalogue(const GlobalOptions&, Args args) {
    FoodCatalogue catalogue;
    return writeFromJsonStream(
        args, "write-catalogue JSON OUT   (JSON \"-\" reads stdin)", 0.35,
        [&](std::istream& in) { readCatalogueJson(in, catalogue); },
        [&](ChunkSink& sink) {
            return writeCatalogueFile(catalogue, sink, VersionOnWrite::AsStored);
        });
}

int runWriteUsers(const GlobalOptions&, Args args) {
    return writeFromJson(args, "write-users JSON OUT   (JSON \"-\" reads stdin)",
                         [](const Json& json, ByteBuffer& bytes) {
                             UserListFile list;
                             readUserListJson(json, list);
                             return writeUserListFile(list, bytes, FormatOnWrite::AsStored);
                         });
}

int runCheck(const GlobalOptions&, Args args) {
    if (args.empty()) {
        return usage("check FILE...");
    }
    int result = kExitOk;
    for (const std::string& path : args) {
        ByteBuffer bytes;
        if (!readDataFile(path, bytes)) {
            result = kExitDataError;
            continue;
        }
        const std::string name = lower(std::filesystem::path(path).filename().string());
        std::vector<FileKind> kinds;
        if (name == "userdb.ddb") {
            kinds = {FileKind::User};
        } else if (name == "fooddb.ddb") {
            kinds = {FileKind::Catalogue};
        } else if (name == "users.udb") {
            kinds = {FileKind::UserList};
        } else {
            kinds = {FileKind::User, FileKind::Catalogue, FileKind::UserList};
        }
        // The kind that reads; failing that, the one that got furthest.
        StorageStatus best;
        FileKind bestKind = kinds[0];
        bool found = false;
        for (const FileKind kind : kinds) {
            std::string summary;
            const StorageStatus s = checkAs(kind, bytes.bytes(), path, summary);
            if (s) {
                std::cout << path << ": ok, " << kindName(kind) << ", " << summary << '\n';
                found = true;
                break;
            }
            if (best.ok() || s.error().offset > best.error().offset) {
                best = s;
                bestKind = kind;
            }
        }
        if (!found) {
            std::string message = best.message();
            if (kinds.size() > 1) {
                message += " (read as a " + std::string(kindName(bestKind)) +
                           ", the kind it comes closest to)";
            }
            std::cerr << message << '\n';
            result = kExitDataError;
        }
    }
    return result;
}

int runUsers(const GlobalOptions& options, Args args) {
    if (!args.empty()) {
        return usage("[--root DIR] users");
    }
    const std::filesystem::path root =
        options.root.empty() ? defaultDataRoot() : std::filesystem::path(options.root);
    const std::filesystem::path path = userListPath(root);
    ByteBuffer bytes;
    StorageError error;
    switch (readWholeFile(path, bytes, error)) {
        case ReadFile::Missing:
            return kExitOk;  // no users yet
        case ReadFile::Failed:
            reportError(path.string(), error);
            return kExitDataError;
        case ReadFile::Read:
            break;
    }
    UserListFile list;
    StorageStatus s = readUserListFile(bytes.bytes(), list, {path.string()});
    if (s) {
        s = checkUserNames(list.names);
    }
    if (!s) {
        reportError(path.string(), s.error());
        return kExitDataError;
    }
    for (const Text& name : list.names) {
        std::cout << cp1252ToUtf8(name.view()) << '\n';
    }
    return kExitOk;
}

}  // namespace nutrovex::tool
