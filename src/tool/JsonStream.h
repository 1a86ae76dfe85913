#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <istream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace nutrovex::tool {

// A document that is not JSON, or holds a number beyond a double: the line, the column and why.
class JsonSyntaxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Every field name of the three files' JSON; a name's number is its place here.
inline constexpr std::string_view kJsonKeyNames[] = {
    "",         "amount",  "unit",        "sub",         "key",       "flag",       "name",
    "text2",    "serving", "ref1",        "ref2",        "nutrients", "meal",       "ratio",
    "group",    "byte",    "type",        "variant",     "third",     "minutes",    "calories",
    "height",   "age",     "gender",      "startWeight", "startDate", "goalWeight", "goalDate",
    "units",    "text1",   "displayName", "userName",    "plan",      "values",     "defaultLevel",
    "flags",    "date",    "weight",      "note",        "word",      "level",      "bmr",
    "totals",   "groups",  "exercises",   "header",      "version",   "keyCounter", "profile",
    "dayIndex", "first",   "count",       "days",        "chunk",     "texts",      "foods",
    "format",   "names"};
static_assert(std::size(kJsonKeyNames) <= 64, "an object's names are a bit each of 64");

// The names of the fields the tool's files have, each a small number so that a record's fields
// are found without comparing strings; 0 for any other name.
[[nodiscard]] uint8_t jsonKeyId(std::string_view name);
// The same for a name known when compiling.
consteval uint8_t jsonKey(std::string_view name) {
    for (std::size_t i = 1; i < std::size(kJsonKeyNames); ++i) {
        if (kJsonKeyNames[i] == name) {
            return static_cast<uint8_t>(i);
        }
    }
    throw "no such field name";
}

// Values parsed into memory: one record at a time (a day, a food) or the small parts of a
// document. Members whose names are no field of the files are not kept; of a name given twice
// in one object the later value counts.
class JsonTree {
public:
    enum class Kind : uint8_t {
        Null,
        False,
        True,
        String,
        Unsigned,
        Integer,
        Float,
        Array,
        Object
    };
    static constexpr uint32_t kNone = 0xFFFFFFFF;

    struct Node {
        Kind kind = Kind::Null;
        uint8_t key = 0;         // the member's name (jsonKeyId), in an object
        bool repeated = false;   // an object with a name given twice
        uint32_t found = kNone;  // the member found last: the next is looked for first
        uint32_t count = 0;      // elements or members; a string's length
        uint32_t first = kNone;  // the first element or member
        uint32_t last = kNone;
        uint32_t next = kNone;  // the next element or member of the same container
        uint64_t keys = 0;      // the names an object holds, a bit each
        union {
            uint64_t u = 0;
            int64_t i;
            double d;
            uint64_t text;  // a string's first character in chars()
        };
    };

    void clear() {
        m_nodes.clear();
        m_chars.clear();
    }
    // A new value, the last element or member of parent (kNone: a value of its own).
    uint32_t add(uint32_t parent, uint8_t key, Kind kind);
    [[nodiscard]] const Node& node(uint32_t i) const { return m_nodes[i]; }
    [[nodiscard]] Node& node(uint32_t i) { return m_nodes[i]; }
    [[nodiscard]] std::string& chars() { return m_chars; }
    [[nodiscard]] std::string_view text(const Node& n) const {
        return {m_chars.data() + n.text, n.count};
    }
    // The last member of object named `key`, or kNone. Members are mostly asked for in the
    // order they were written, so the search starts after the one found before.
    [[nodiscard]] uint32_t member(uint32_t object, uint8_t key) const;

private:
    mutable std::vector<Node> m_nodes;
    std::string m_chars;
};

// A value of a JsonTree with the few queries of nlohmann's JSON values that the tool's readers
// use, spelled the same, so that every reader is written once for a whole document and for a
// document read record by record.
class TreeValue {
public:
    using Kind = JsonTree::Kind;

    TreeValue(const JsonTree& tree, uint32_t index) : m_tree(&tree), m_index(index) {}

    [[nodiscard]] bool is_null() const { return kind() == Kind::Null; }
    [[nodiscard]] bool is_boolean() const { return kind() == Kind::False || kind() == Kind::True; }
    [[nodiscard]] bool is_string() const { return kind() == Kind::String; }
    [[nodiscard]] bool is_number() const {
        return kind() == Kind::Unsigned || kind() == Kind::Integer || kind() == Kind::Float;
    }
    [[nodiscard]] bool is_number_float() const { return kind() == Kind::Float; }
    [[nodiscard]] bool is_number_unsigned() const { return kind() == Kind::Unsigned; }
    // As in nlohmann's values: true for unsigned integers too.
    [[nodiscard]] bool is_number_integer() const {
        return kind() == Kind::Unsigned || kind() == Kind::Integer;
    }
    [[nodiscard]] bool is_array() const { return kind() == Kind::Array; }
    [[nodiscard]] bool is_object() const { return kind() == Kind::Object; }
    [[nodiscard]] std::size_t size() const { return node().count; }

    // A number as a double, as nlohmann's get<double>() gives it.
    [[nodiscard]] double asDouble() const {
        switch (kind()) {
            case Kind::Unsigned:
                return static_cast<double>(node().u);
            case Kind::Integer:
                return static_cast<double>(node().i);
            default:
                return node().d;
        }
    }
    [[nodiscard]] uint64_t asUnsigned() const { return node().u; }
    [[nodiscard]] int64_t asSigned() const { return node().i; }

    [[nodiscard]] std::string_view string() const { return m_tree->text(node()); }
    [[nodiscard]] TreeValue operator[](std::size_t i) const;
    // The member named `key` (jsonKeyId), if there is one.
    [[nodiscard]] bool find(uint8_t key, TreeValue& out) const;

    class Iterator {
    public:
        Iterator(const JsonTree& tree, uint32_t index) : m_tree(&tree), m_index(index) {}
        TreeValue operator*() const { return {*m_tree, m_index}; }
        Iterator& operator++() {
            m_index = m_tree->node(m_index).next;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return m_index != other.m_index; }

    private:
        const JsonTree* m_tree;
        uint32_t m_index;
    };
    [[nodiscard]] Iterator begin() const { return {*m_tree, node().first}; }
    [[nodiscard]] Iterator end() const { return {*m_tree, JsonTree::kNone}; }

private:
    [[nodiscard]] const JsonTree::Node& node() const { return m_tree->node(m_index); }
    [[nodiscard]] Kind kind() const { return node().kind; }

    const JsonTree* m_tree;
    uint32_t m_index;
};

// A number as the readers take it: of the kind its text makes, as JsonPull reads it.
struct JsonNumber {
    JsonTree::Kind kind = JsonTree::Kind::Float;
    union {
        uint64_t u = 0;
        int64_t i;
        double d;
    };
};

namespace json_detail {

// What a byte can be in JSON's plain text, a bit each.
inline constexpr uint8_t kBlank = 1;
inline constexpr uint8_t kDigit = 2;
inline constexpr uint8_t kPlain =
    4;  // in a string as it is: printable ASCII and DEL, no '"' or '\'
inline constexpr uint8_t kNumber = 8;  // in a number's text
inline constexpr std::array<uint8_t, 256> kClasses = [] {
    std::array<uint8_t, 256> classes{};
    for (int c = 0; c < 256; ++c) {
        uint8_t k = 0;
        k |= (c == ' ' || c == '\n' || c == '\r' || c == '\t') ? kBlank : 0;
        k |= (c >= '0' && c <= '9') ? kDigit : 0;
        k |= (c >= 0x20 && c < 0x80 && c != '"' && c != '\\') ? kPlain : 0;
        k |= ((c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E')
                 ? kNumber
                 : 0;
        classes[static_cast<std::size_t>(c)] = k;
    }
    return classes;
}();

// A field name with its closing quote as two words of memory, and which of their bits count.
struct QuotedName {
    uint64_t bytes[2] = {};
    uint64_t mask[2] = {};
};
inline constexpr auto kQuotedNames = [] {
    std::array<QuotedName, std::size(kJsonKeyNames)> names{};
    for (std::size_t id = 1; id < names.size(); ++id) {
        const std::string_view name = kJsonKeyNames[id];
        for (std::size_t i = 0; i <= name.size(); ++i) {
            const auto byte = static_cast<uint8_t>(i < name.size() ? name[i] : '"');
            const std::size_t shift =
                8 * (std::endian::native == std::endian::little ? i % 8 : 7 - i % 8);
            names[id].bytes[i / 8] |= uint64_t{byte} << shift;
            names[id].mask[i / 8] |= uint64_t{0xFF} << shift;
        }
    }
    return names;
}();
static_assert(std::ranges::all_of(kJsonKeyNames, [](std::string_view n) { return n.size() < 16; }));

}  // namespace json_detail

// A record's JSON in its plain form read straight into the record, from bytes already in memory,
// without a tree. Each read is false at anything but the plain form (an escape, a name out of
// place, given twice or not wanted, a value of another kind or out of range, the end of the
// bytes), and then the record is read again from its start the general way, which makes the
// same record of what the quick reads take and finds any fault. So a quick read takes only
// what the general one takes, and makes of it what the general one makes.
class JsonQuick {
public:
    // The bytes must be followed by a NUL byte and kPadding bytes more that may be read: the NUL
    // ends every run of characters, so what lies beyond it never counts.
    static constexpr std::size_t kPadding = 16;

    JsonQuick(const char* p, const char* end) : m_p(p), m_end(end) {}

    [[nodiscard]] const char* position() const { return m_p; }

    // Blanks, then c.
    [[nodiscard]] bool take(char c) {
        blanks();
        if (*m_p == c) {
            ++m_p;
            return true;
        }
        return false;
    }

    // A member's name and the ':' after it, as a field name's number; `expected` is tried first.
    // False for a name with an escape or of no field.
    [[nodiscard]] bool name(uint8_t expected, uint8_t& key) {
        if (!take('"')) {
            return false;
        }
        const json_detail::QuotedName& e = json_detail::kQuotedNames[expected];
        uint64_t words[2];
        std::memcpy(words, m_p, sizeof words);
        if (expected != 0 && (words[0] & e.mask[0]) == e.bytes[0] &&
            (words[1] & e.mask[1]) == e.bytes[1]) {
            key = expected;
            m_p += kJsonKeyNames[expected].size() + 1;
        } else {
            const char* start = m_p;
            while (is(*m_p, json_detail::kPlain)) {
                ++m_p;
            }
            if (*m_p != '"') {
                return false;
            }
            key = jsonKeyId(std::string_view(start, static_cast<std::size_t>(m_p - start)));
            ++m_p;
        }
        return key != 0 && take(':');
    }

    // A number: integers and decimals of up to 19 digits directly, exactly as JsonPull reads
    // them, any other through JsonPull's own reading.
    [[nodiscard]] [[gnu::always_inline]] bool number(JsonNumber& n) {
        blanks();
        const char* p = m_p;
        const bool negative = *p == '-';
        p += negative ? 1 : 0;
        const char* first = p;
        uint64_t digits = 0;
        for (unsigned d; (d = digitOf(*p)) < 10; ++p) {
            digits = digits * 10 + d;
        }
        const char* point = p;
        if (*p == '.') {
            for (unsigned d; (d = digitOf(*++p)) < 10;) {
                digits = digits * 10 + d;
            }
        }
        // Digits before the point and after it; no leading zero; nothing more of a number
        // after them (an exponent), and not the end of the bytes, where it may go on.
        const auto whole = static_cast<std::size_t>(point - first);
        const auto fraction = static_cast<std::size_t>(p - point) - (p != point ? 1 : 0);
        if (whole == 0 || whole + fraction > 19 || (whole > 1 && *first == '0') ||
            (p != point && fraction == 0) || is(*p, json_detail::kNumber) || p == m_end) {
            return generalNumber(n);
        }
        if (p == point && !(negative && digits == 0)) {
            if (!negative) {
                n.kind = JsonTree::Kind::Unsigned;
                n.u = digits;
            } else if (whole <= 18) {
                n.kind = JsonTree::Kind::Integer;
                n.i = -static_cast<int64_t>(digits);
            } else {
                return generalNumber(n);
            }
        } else {
            if (digits > kExactInDouble) {
                return generalNumber(n);
            }
            // Both the digits and the power of ten are exact doubles: one division rounds.
            const double d = static_cast<double>(digits) / kPowersOfTen[fraction];
            n.kind = JsonTree::Kind::Float;
            n.d = negative ? -d : d;
        }
        m_p = p;
        return true;
    }

    // null (`isNull` set), or a string of plain characters, which is the same text in UTF-8 and
    // Windows-1252.
    [[nodiscard]] bool text(bool& isNull, std::string_view& s) {
        blanks();
        if (*m_p == 'n') {
            if (m_p[1] != 'u' || m_p[2] != 'l' || m_p[3] != 'l') {
                return false;
            }
            m_p += 4;
            isNull = true;
            return true;
        }
        if (*m_p != '"') {
            return false;
        }
        const char* start = ++m_p;
        while (is(*m_p, json_detail::kPlain)) {
            ++m_p;
        }
        if (*m_p != '"') {
            return false;
        }
        isNull = false;
        s = std::string_view(start, static_cast<std::size_t>(m_p - start));
        ++m_p;
        return true;
    }

private:
    static constexpr uint64_t kExactInDouble = uint64_t{1} << 53;
    static constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                              1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                              1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

    static unsigned digitOf(char c) { return static_cast<unsigned char>(c - '0'); }
    static bool is(char c, uint8_t kind) {
        return (json_detail::kClasses[static_cast<unsigned char>(c)] & kind) != 0;
    }
    void blanks() {
        while (is(*m_p, json_detail::kBlank)) {
            ++m_p;
        }
    }
    // Any other number, read as JsonPull reads it; false when it is no number or goes on past
    // the bytes.
    bool generalNumber(JsonNumber& n);

    const char* m_p;
    const char* m_end;
};

// JSON read from a stream a block at a time, as a sequence the caller pulls: the containers it
// wants to walk member by member, the values it wants whole as trees, the rest skipped. The
// syntax is JSON's (a leading byte-order mark allowed), strings are checked UTF-8, and numbers
// read as nlohmann's parser reads them: an integer as unsigned or signed 64 bits where it fits,
// else as a double; "-0" is a negative zero double, the way a negative zero float is written.
class JsonPull {
public:
    static constexpr std::size_t kBlock = std::size_t{1} << 20;
    static constexpr std::size_t kQuickRoom = std::size_t{1} << 16;

    // `block` is how much is read at a time (small blocks test values split between reads).
    explicit JsonPull(std::istream& in, std::size_t block = kBlock);

    enum class Next { Object, Array, Other };
    // What the next value is, without reading it.
    [[nodiscard]] Next peek();

    // Walks an object: enter it, then nextMember() gives each member's name (jsonKeyId) before
    // its value is read, and false once the object is closed.
    void enterObject();
    [[nodiscard]] bool nextMember(uint8_t& key);
    // Walks an array: nextElement() is true while another element follows.
    void enterArray();
    [[nodiscard]] bool nextElement();

    // Reads the next value whole into tree, under parent (kNone: as a value of its own), as
    // member `key` of an object parent; returns its index.
    uint32_t parse(JsonTree& tree, uint32_t parent = JsonTree::kNone, uint8_t key = 0);
    // Reads the next value straight into a record with `read`, a function of a JsonQuick over
    // the bytes held, when it can: true when it did; false, with nothing read, when it did not
    // (the value is then to be read the general way).
    template <typename Read>
    [[nodiscard]] bool quick(Read&& read) {
        skipBlanks();
        if (static_cast<std::size_t>(m_end - m_p) < kQuickRoom) {
            (void)refill();  // so that a record is rarely cut by the end of the bytes held
        }
        JsonQuick q(m_p, m_end);
        if (!read(q)) {
            return false;
        }
        m_p = q.position();
        return true;
    }
    // Reads the next value and keeps nothing of it.
    void skip();
    // After the document's value: only blanks may follow.
    void finish();

private:
    [[noreturn]] void fail(const std::string& why) const;
    [[noreturn]] void failAt(const char* at, const std::string& why) const;
    bool refill();
    bool ensure(std::size_t n);
    void skipBlanks() {
        while (m_p < m_end && (*m_p == ' ' || *m_p == '\n' || *m_p == '\r' || *m_p == '\t')) {
            ++m_p;
        }
        if (m_p == m_end) {
            skipBlanksAcrossReads();
        }
    }
    void skipBlanksAcrossReads();
    int peekChar() {
        if (m_p == m_end && !refill()) {
            return -1;
        }
        return static_cast<unsigned char>(*m_p);
    }
    void expect(char c, const char* what);
    void value(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index);
    void scalar(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index);
    void readString(std::string& out);
    uint8_t memberKey();
    void number(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index);
    void literal(const char* word, std::size_t size);
    void afterMember(bool& more, bool object);

    std::istream& m_in;
    std::size_t m_block;
    // What is held ends with a NUL byte and JsonQuick's padding after it.
    static constexpr std::size_t kSentinel = 1 + JsonQuick::kPadding;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_capacity = 0;
    const char* m_p = nullptr;
    const char* m_end = nullptr;
    bool m_eof = false;
    // Of the bytes already dropped from the buffer: how many, their lines, where the last began.
    uint64_t m_dropped = 0;
    uint64_t m_lines = 0;
    uint64_t m_lineStart = 0;
    std::string m_key;
    std::string m_number;
    // For each name, the name that came next the time before.
    uint8_t m_follows[64] = {};
    uint8_t m_lastKey = 0;
    // Containers being walked by enterObject/enterArray: whether each is an object, whether
    // its first member is still to come.
    struct Open {
        bool object;
        bool first;
    };
    std::vector<Open> m_open;
    struct Frame {
        uint32_t node;
        bool object;
        bool keep;
    };
    std::vector<Frame> m_frames;
};

}  // namespace nutrovex::tool
