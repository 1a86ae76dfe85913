#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
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

// The names of the fields the tool's files have, each a small number so that a record's fields
// are found without comparing strings; 0 for any other name.
[[nodiscard]] uint8_t jsonKeyId(std::string_view name);

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

// JSON read from a stream a block at a time, as a sequence the caller pulls: the containers it
// wants to walk member by member, the values it wants whole as trees, the rest skipped. The
// syntax is JSON's (a leading byte-order mark allowed), strings are checked UTF-8, and numbers
// read as nlohmann's parser reads them: an integer as unsigned or signed 64 bits where it fits,
// else as a double; "-0" is a negative zero double, the way a negative zero float is written.
class JsonPull {
public:
    static constexpr std::size_t kBlock = std::size_t{1} << 20;

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
