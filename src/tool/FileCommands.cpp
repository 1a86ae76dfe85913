#include "tool/FileCommands.h"

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

const Json& arrayField(const Json& object, const char* name, std::size_t size = 0) {
    const Json& v = field(object, name);
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

std::array<uint8_t, kFixedTextSize> bytesOfHex(const Json& v) {
    if (!v.is_string() || v.get_ref<const std::string&>().size() != 2 * kFixedTextSize) {
        shapeError("each of 'texts' must be a string of 42 hex digits");
    }
    const std::string& s = v.get_ref<const std::string&>();
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

// write-* for the large files: the JSON is read as it is parsed (`read` keeps only records) and
// the file is written straight into a temporary file, which replaces OUT only when all of it
// is there.
template <typename Read, typename Write>
int writeFromJsonStream(Args args, const char* usageLine, Read&& read, Write&& write) {
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
        read(in);
    } catch (const Json::exception& e) {
        std::cerr << input << ": not valid JSON: " << e.what() << '\n';
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

void readUserFileJsonHead(const Json& value, UserFile& file) {
    within("header", [&] {
        const Json& h = field(value, "header");
        file.header.version = intField<uint16_t>(h, "version");
        file.header.word = intField<uint16_t>(h, "word");
        file.header.keyCounter.value = intField<uint32_t>(h, "keyCounter");
        file.header.flags = intField<uint16_t>(h, "flags");
    });
    within("profile", [&] { readProfile(field(value, "profile"), file.profile); });
    within("dayIndex", [&] {
        const Json& x = field(value, "dayIndex");
        file.firstDayChunk = intField<uint16_t>(x, "first");
        file.dayCount = intField<uint16_t>(x, "count");
    });
}

}  // namespace

// Each day is converted as soon as it is parsed and its JSON dropped. A refused day is kept
// until the document is read, as the whole document would be: a later "days" replaces it, and
// the refusals of the header, profile and day index come first.
void readUserFileJson(std::istream& in, UserFile& file) {
    file.days.clear();
    bool inDays = false;
    std::string topKey;
    std::optional<std::string> refused;
    const Json value = parseJson(in, [&](int depth, Json::parse_event_t event, Json& parsed) {
        using Event = Json::parse_event_t;
        if (depth == 1 && event == Event::key) {
            topKey = parsed.get<std::string>();
        } else if (depth == 1 && event == Event::array_start) {
            inDays = topKey == "days";
            if (inDays) {  // a later "days" replaces an earlier one, as a value would
                file.days.clear();
                refused.reset();
            }
        } else if (depth == 1 && event == Event::array_end) {
            inDays = false;
        } else if (inDays && refused) {
            return false;  // the rest of refused days is dropped unread
        } else if (inDays && depth == 2 &&
                   (event == Event::object_end || event == Event::array_end ||
                    event == Event::value)) {
            auto day = std::make_unique<DayRecord>(CalendarDate());
            try {
                within([&] { return "days[" + std::to_string(file.days.size()) + "]"; },
                       [&] { readDay(parsed, *day); });
            } catch (const JsonShapeError& e) {
                refused = e.what();
                return false;
            }
            file.days.push_back(std::move(day));
            return false;
        }
        return true;
    });
    readUserFileJsonHead(value, file);
    if (refused) {
        shapeError(*refused);
    }
    (void)arrayField(value, "days");
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

void readCatalogueHeader(const Json& value, CatalogueHeader& header) {
    within("header", [&] {
        const Json& h = field(value, "header");
        header.version = intField<uint16_t>(h, "version");
        const Json& groups = arrayField(h, "groups", kFoodGroupCount);
        for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
            within("groups[" + std::to_string(g) + "]", [&] {
                header.groupNames[g] = textField(groups[g], "name");
                header.groupChunks[g] = intField<uint16_t>(groups[g], "chunk");
            });
        }
        header.byte = intField<uint8_t>(h, "byte");
        const Json& texts = arrayField(h, "texts", kFixedTextCount);
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
FoodCategory categoryHead(const Json& value) {
    FoodCategory category;
    category.key.value = intField<uint32_t>(value, "key");
    category.byte = intField<uint8_t>(value, "byte");
    category.name = textField(value, "name");
    return category;
}

FoodItem foodAt(const Json& value, std::size_t f) {
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

// Each food is converted as soon as it is parsed and each category when it ends, and their JSON
// dropped. A refusal in "groups" is kept until the document is read, as the whole document would
// be: a later "groups" replaces it, and the header's refusals come first.
void readCatalogueJson(std::istream& in, FoodCatalogue& catalogue) {
    using Event = Json::parse_event_t;
    catalogue.reset();
    std::string topKey;
    bool inGroups = false;  // inside the outermost "groups" list
    std::optional<std::string> refused;
    std::size_t group = 0;  // the list of categories being read, in "groups"
    bool groupIsList = false;
    std::string categoryKey;  // the last key of the category being read
    bool categoryIsObject = false;
    bool inFoods = false;
    std::vector<FoodItem> foods;
    std::size_t categories = 0;
    // One event inside "groups"; false drops what it ends.
    auto groupsEvent = [&](int depth, Event event, Json& parsed) {
        if (depth == 2) {
            if (group >= kFoodGroupCount &&
                (event == Event::array_start || event == Event::object_start ||
                 event == Event::value)) {
                shapeError("'groups' must be a list of " + std::to_string(kFoodGroupCount));
            }
            if (event == Event::array_start || event == Event::object_start) {
                groupIsList = event == Event::array_start;
                categories = 0;
            } else if (event == Event::array_end) {
                ++group;
            } else if (event == Event::object_end || event == Event::value) {
                shapeError(groupName(group) + " must be a list of categories");
            }
            return true;
        }
        if (!groupIsList) {
            return true;
        }
        if (depth == 3) {
            if (event == Event::object_start || event == Event::array_start) {
                categoryIsObject = event == Event::object_start;
                categoryKey.clear();
                inFoods = false;
                foods.clear();
                return true;
            }
            // The category ends (or is a scalar): read it and drop its JSON.
            within(categoryName(group, categories), [&] {
                FoodCategory category = categoryHead(parsed);
                (void)arrayField(parsed, "foods");
                category.foods = std::move(foods);
                catalogue.groups[group].push_back(std::move(category));
            });
            foods = {};
            ++categories;
            return false;
        }
        if (!categoryIsObject) {
            return true;
        }
        if (depth == 4) {
            if (event == Event::key) {
                categoryKey = parsed.get<std::string>();
            } else if (event == Event::array_start && categoryKey == "foods") {
                inFoods = true;
                foods.clear();  // a later "foods" replaces an earlier one
            } else if (event == Event::array_end) {
                inFoods = false;
            }
            return true;
        }
        if (inFoods && depth == 5 &&
            (event == Event::object_end || event == Event::array_end || event == Event::value)) {
            within([&] { return categoryName(group, categories); },
                   [&] { foods.push_back(foodAt(parsed, foods.size())); });
            return false;
        }
        return true;
    };
    const Json value = parseJson(in, [&](int depth, Event event, Json& parsed) {
        if (depth == 1) {
            if (event == Event::key) {
                topKey = parsed.get<std::string>();
            } else if (event == Event::array_start) {
                inGroups = topKey == "groups";
                if (inGroups) {  // a later "groups" replaces an earlier one, as a value would
                    refused.reset();
                    group = 0;
                    for (CategoryList& list : catalogue.groups) {
                        list.clear();
                    }
                }
            } else if (event == Event::array_end) {
                inGroups = false;
            }
            return true;
        }
        if (!inGroups) {
            return true;
        }
        if (refused) {
            return false;  // the rest of a refused "groups" is dropped unread
        }
        try {
            return groupsEvent(depth, event, parsed);
        } catch (const JsonShapeError& e) {
            refused = e.what();
            return false;
        }
    });
    readCatalogueHeader(value, catalogue.header);
    if (refused) {
        shapeError(*refused);
    }
    const Json& groups = arrayField(value, "groups", kFoodGroupCount);
    for (std::size_t g = 0; g < kFoodGroupCount; ++g) {
        if (!groups[g].is_array()) {
            shapeError(groupName(g) + " must be a list of categories");
        }
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
        args, "write-user JSON OUT   (JSON \"-\" reads stdin)",
        [&](std::istream& in) { readUserFileJson(in, user); },
        [&](ChunkSink& sink) {
            return writeUserFile(user.header, user.profile.fields(), user.firstDayChunk,
                                 user.dayCount, user.days, sink);
        });
}

int runWriteCatalogue(const GlobalOptions&, Args args) {
    FoodCatalogue catalogue;
    return writeFromJsonStream(
        args, "write-catalogue JSON OUT   (JSON \"-\" reads stdin)",
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
