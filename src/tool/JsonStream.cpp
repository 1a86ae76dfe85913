#include "tool/JsonStream.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace nutrovex::tool {

namespace {

using Kind = JsonTree::Kind;

constexpr std::size_t kKeyCount = std::size(kJsonKeyNames);

// An open-addressed table of the names, hashed on their length and a few characters.
class KeyTable {
public:
    KeyTable() {
        for (std::size_t id = 1; id < kKeyCount; ++id) {
            std::size_t h = hash(kJsonKeyNames[id]);
            while (m_slots[h & kMask] != 0) {
                ++h;
            }
            m_slots[h & kMask] = static_cast<uint8_t>(id);
        }
    }

    [[nodiscard]] uint8_t find(std::string_view name) const {
        if (name.empty()) {
            return 0;
        }
        for (std::size_t h = hash(name);; ++h) {
            const uint8_t id = m_slots[h & kMask];
            if (id == 0 || same(kJsonKeyNames[id], name)) {
                return id;
            }
        }
    }

private:
    static constexpr std::size_t kMask = 255;
    // The names are short: compared here rather than by a library call.
    static bool same(std::string_view a, std::string_view b) {
        if (a.size() != b.size()) {
            return false;
        }
        for (std::size_t i = 0; i < a.size(); ++i) {
            if (a[i] != b[i]) {
                return false;
            }
        }
        return true;
    }
    static std::size_t hash(std::string_view s) {
        const auto at = [&](std::size_t i) { return static_cast<std::size_t>(uint8_t(s[i])); };
        return s.size() * 7 + at(0) * 31 + at(s.size() - 1) * 131 + at(s.size() / 2) * 17;
    }
    uint8_t m_slots[kMask + 1] = {};
};

const KeyTable kKeys;

bool sameChars(const char* p, std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (p[i] != name[i]) {
            return false;
        }
    }
    return true;
}

bool isBlank(char c) {
    return c == ' ' || c == '\n' || c == '\r' || c == '\t';
}

bool isNumberChar(char c) {
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// A number's text read by JSON's grammar: whether it has neither fraction nor exponent, and
// its digits as an integer (while there are at most 19 of them) with the power of ten they are
// to be scaled by.
struct NumberText {
    bool integer = true;
    bool negative = false;
    int count = 0;  // digits of the significand
    uint64_t digits = 0;
    int64_t exponent = 0;
};

bool readNumber(std::string_view s, NumberText& n) {
    std::size_t i = 0;
    auto digit = [&] {
        if (++n.count <= 19) {
            n.digits = n.digits * 10 + static_cast<uint64_t>(s[i] - '0');
        }
        ++i;
    };
    if (i < s.size() && s[i] == '-') {
        n.negative = true;
        ++i;
    }
    if (i < s.size() && s[i] == '0') {
        digit();
    } else if (i < s.size() && s[i] >= '1' && s[i] <= '9') {
        while (i < s.size() && isDigit(s[i])) {
            digit();
        }
    } else {
        return false;
    }
    if (i < s.size() && s[i] == '.') {
        n.integer = false;
        const std::size_t first = ++i;
        while (i < s.size() && isDigit(s[i])) {
            digit();
            --n.exponent;
        }
        if (i == first) {
            return false;
        }
    }
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        n.integer = false;
        ++i;
        const bool negative = i < s.size() && s[i] == '-';
        if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
            ++i;
        }
        const std::size_t first = i;
        int64_t e = 0;
        for (; i < s.size() && isDigit(s[i]); ++i) {
            e = std::min<int64_t>(e * 10 + (s[i] - '0'), 1000000);
        }
        if (i == first) {
            return false;
        }
        n.exponent += negative ? -e : e;
    }
    return i == s.size();
}

// The value of a number's text that readNumber took, as the whole-document parser makes it:
// false when it is beyond a double.
bool numberValue(std::string_view text, const NumberText& number, JsonNumber& n) {
    const char* first = text.data();
    const char* last = first + text.size();
    constexpr uint64_t kExactInDouble = uint64_t{1} << 53;
    if (number.integer) {
        if (text == "-0") {  // a negative zero float
            n.kind = Kind::Float;
            n.d = -0.0;
            return true;
        }
        if (number.count <= 19 && !number.negative) {
            n.kind = Kind::Unsigned;
            n.u = number.digits;
            return true;
        }
        if (number.count <= 18 && number.negative) {
            n.kind = Kind::Integer;
            n.i = -static_cast<int64_t>(number.digits);
            return true;
        }
        if (text[0] == '-') {
            int64_t i = 0;
            if (std::from_chars(first, last, i).ec == std::errc()) {
                n.kind = Kind::Integer;
                n.i = i;
                return true;
            }
        } else {
            uint64_t u = 0;
            if (std::from_chars(first, last, u).ec == std::errc()) {
                n.kind = Kind::Unsigned;
                n.u = u;
                return true;
            }
        }
    } else if (number.count <= 19 && number.digits <= kExactInDouble && number.exponent >= -22 &&
               number.exponent <= 22) {
        // Both the digits and the power of ten are exact doubles, so one division or
        // multiplication rounds the value correctly, as reading it digit by digit would.
        static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                             1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                             1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
        double d = static_cast<double>(number.digits);
        d = number.exponent < 0 ? d / kPowers[-number.exponent] : d * kPowers[number.exponent];
        n.kind = Kind::Float;
        n.d = number.negative ? -d : d;
        return true;
    }
    // A fraction, an exponent, or an integer beyond 64 bits: a double.
    double d = 0.0;
    if (std::from_chars(first, last, d).ec != std::errc()) {
        // Beyond a double's range: the C library tells an underflow (kept, as its nearest
        // double) from an overflow (refused).
        const std::string copy(text);
        d = std::strtod(copy.c_str(), nullptr);
        if (!std::isfinite(d)) {
            return false;
        }
    }
    n.kind = Kind::Float;
    n.d = d;
    return true;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

int hex4(const char* p) {
    int value = 0;
    for (int i = 0; i < 4; ++i) {
        const int d = hexValue(p[i]);
        if (d < 0) {
            return -1;
        }
        value = value * 16 + d;
    }
    return value;
}

void appendUtf8(std::string& out, uint32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

uint8_t jsonKeyId(std::string_view name) {
    return kKeys.find(name);
}

uint32_t JsonTree::add(uint32_t parent, uint8_t key, Kind kind) {
    const auto index = static_cast<uint32_t>(m_nodes.size());
    Node& n = m_nodes.emplace_back();
    n.kind = kind;
    n.key = key;
    if (parent != kNone) {
        Node& p = m_nodes[parent];
        if (key != 0) {
            const uint64_t bit = uint64_t{1} << key;
            p.repeated = p.repeated || (p.keys & bit) != 0;
            p.keys |= bit;
        }
        if (p.last == kNone) {
            p.first = index;
        } else {
            m_nodes[p.last].next = index;
        }
        p.last = index;
        ++p.count;
    }
    return index;
}

uint32_t JsonTree::member(uint32_t object, uint8_t key) const {
    Node& o = m_nodes[object];
    if (key == 0 || (o.keys & (uint64_t{1} << key)) == 0) {
        return kNone;
    }
    if (o.repeated) {  // the last of the name counts
        uint32_t found = kNone;
        for (uint32_t i = o.first; i != kNone; i = m_nodes[i].next) {
            if (m_nodes[i].key == key) {
                found = i;
            }
        }
        return found;
    }
    const uint32_t start = o.found == kNone ? o.first : m_nodes[o.found].next;
    for (uint32_t i = start; i != kNone; i = m_nodes[i].next) {
        if (m_nodes[i].key == key) {
            return o.found = i;
        }
    }
    for (uint32_t i = o.first; i != start; i = m_nodes[i].next) {
        if (m_nodes[i].key == key) {
            return o.found = i;
        }
    }
    return kNone;
}

TreeValue TreeValue::operator[](std::size_t i) const {
    uint32_t at = node().first;
    for (; i > 0; --i) {
        at = m_tree->node(at).next;
    }
    return {*m_tree, at};
}

bool TreeValue::find(uint8_t key, TreeValue& out) const {
    const uint32_t found = m_tree->member(m_index, key);
    if (found == JsonTree::kNone) {
        return false;
    }
    out = TreeValue(*m_tree, found);
    return true;
}

// ---- reading ----

JsonPull::JsonPull(std::istream& in, std::size_t block)
    : m_in(in), m_block(std::max<std::size_t>(block, 1)) {
    m_capacity = std::max<std::size_t>(m_block, 16);
    m_buffer = std::make_unique<char[]>(m_capacity + kSentinel);
    m_p = m_end = m_buffer.get();
    // A byte-order mark may open the document.
    if (ensure(1) && *m_p == '\xEF') {
        if (!ensure(3) || m_p[1] != '\xBB' || m_p[2] != '\xBF') {
            fail("the document starts with a broken byte-order mark");
        }
        m_p += 3;
    }
}

void JsonPull::failAt(const char* at, const std::string& why) const {
    const char* base = m_buffer.get();
    uint64_t line = m_lines;
    uint64_t lineStart = m_lineStart;
    for (const char* q = base; q < at; ++q) {
        if (*q == '\n') {
            ++line;
            lineStart = m_dropped + static_cast<uint64_t>(q - base) + 1;
        }
    }
    const uint64_t offset = m_dropped + static_cast<uint64_t>(at - base);
    throw JsonSyntaxError("line " + std::to_string(line + 1) + ", column " +
                          std::to_string(offset - lineStart + 1) + ": " + why);
}

void JsonPull::fail(const std::string& why) const {
    failAt(m_p, why);
}

// Drops what was read, keeps what was not and reads the next block after it.
bool JsonPull::refill() {
    if (m_eof) {
        return false;
    }
    char* base = m_buffer.get();
    const auto drop = static_cast<std::size_t>(m_p - base);
    for (const char* q = base; (q = static_cast<const char*>(std::memchr(q, '\n', m_p - q))); ++q) {
        ++m_lines;
        m_lineStart = m_dropped + static_cast<uint64_t>(q - base) + 1;
    }
    m_dropped += drop;
    const auto kept = static_cast<std::size_t>(m_end - m_p);
    if (kept + m_block > m_capacity) {
        m_capacity = kept + m_block;
        auto bigger = std::make_unique<char[]>(m_capacity + kSentinel);
        std::memcpy(bigger.get(), m_p, kept);
        m_buffer = std::move(bigger);
        base = m_buffer.get();
    } else {
        std::memmove(base, m_p, kept);
    }
    m_in.read(base + kept, static_cast<std::streamsize>(m_block));
    const auto got = static_cast<std::size_t>(std::max<std::streamsize>(m_in.gcount(), 0));
    m_p = base;
    m_end = base + kept + got;
    base[kept + got] = 0;  // for JsonQuick
    if (got == 0) {
        m_eof = true;
        return false;
    }
    return true;
}

bool JsonPull::ensure(std::size_t n) {
    while (static_cast<std::size_t>(m_end - m_p) < n) {
        if (!refill()) {
            return false;
        }
    }
    return true;
}

void JsonPull::skipBlanksAcrossReads() {
    for (;;) {
        while (m_p < m_end && isBlank(*m_p)) {
            ++m_p;
        }
        if (m_p < m_end || !refill()) {
            return;
        }
    }
}

void JsonPull::expect(char c, const char* what) {
    skipBlanks();
    const int got = peekChar();
    if (got != static_cast<unsigned char>(c)) {
        fail(got < 0 ? std::string("the document ends early") : std::string("expected ") + what);
    }
    ++m_p;
}

JsonPull::Next JsonPull::peek() {
    skipBlanks();
    switch (peekChar()) {
        case '{':
            return Next::Object;
        case '[':
            return Next::Array;
        default:
            return Next::Other;
    }
}

void JsonPull::enterObject() {
    expect('{', "'{'");
    m_open.push_back({true, true});
}

void JsonPull::enterArray() {
    expect('[', "'['");
    m_open.push_back({false, true});
}

// Past one member or element of the container walked: `more` tells whether another follows.
void JsonPull::afterMember(bool& more, bool object) {
    Open& open = m_open.back();
    skipBlanks();
    const int c = peekChar();
    if (c == (object ? '}' : ']')) {
        ++m_p;
        m_open.pop_back();
        more = false;
        return;
    }
    if (open.first) {
        open.first = false;
    } else if (c == ',') {
        ++m_p;
    } else {
        fail(c < 0 ? "the document ends early"
                   : (object ? "expected ',' or '}' after an object member"
                             : "expected ',' or ']' after an array element"));
    }
    more = true;
}

bool JsonPull::nextMember(uint8_t& key) {
    bool more = false;
    afterMember(more, true);
    if (more) {
        skipBlanks();
        key = memberKey();
    }
    return more;
}

bool JsonPull::nextElement() {
    bool more = false;
    afterMember(more, false);
    return more;
}

uint32_t JsonPull::parse(JsonTree& tree, uint32_t parent, uint8_t key) {
    uint32_t index = JsonTree::kNone;
    value(&tree, parent, key, &index);
    return index;
}

void JsonPull::skip() {
    value(nullptr, JsonTree::kNone, 0, nullptr);
}

void JsonPull::finish() {
    skipBlanks();
    // A NUL byte where a token would start ends the document, as it does for the whole-document
    // parser (which reads C strings alike); what follows it is not read.
    if (peekChar() > 0) {
        fail("more follows the end of the document");
    }
}

// A whole value, containers walked with a stack of their own rather than by recursion, so that
// no depth of nesting can exhaust the call stack. Values of members whose names are no field
// of the files are checked and dropped.
void JsonPull::value(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index) {
    m_frames.clear();
    bool keep = tree != nullptr;
    for (;;) {
        skipBlanks();
        const int c = peekChar();
        if (c == '{' || c == '[') {
            const bool object = c == '{';
            ++m_p;
            uint32_t made = JsonTree::kNone;
            if (keep) {
                made = tree->add(parent, key, object ? Kind::Object : Kind::Array);
            }
            if (m_frames.empty() && index != nullptr) {
                *index = made;
            }
            m_frames.push_back({made, object, keep});
            skipBlanks();
            if (peekChar() != (object ? '}' : ']')) {
                parent = made;
                key = object ? memberKey() : 0;
                keep = keep && (!object || key != 0);
                continue;
            }
            ++m_p;
            m_frames.pop_back();
        } else {
            uint32_t made = JsonTree::kNone;
            scalar(keep ? tree : nullptr, parent, key, &made);
            if (m_frames.empty()) {
                if (index != nullptr) {
                    *index = made;
                }
                return;
            }
        }
        // After a value: close what ends here, then on to the next member or element.
        for (;;) {
            if (m_frames.empty()) {
                return;
            }
            const Frame& f = m_frames.back();
            skipBlanks();
            const int d = peekChar();
            if (d == ',') {
                ++m_p;
                parent = f.node;
                keep = f.keep;
                key = 0;
                if (f.object) {
                    skipBlanks();
                    key = memberKey();
                    keep = keep && key != 0;
                }
                break;
            }
            if (d == (f.object ? '}' : ']')) {
                ++m_p;
                m_frames.pop_back();
                continue;
            }
            fail(d < 0 ? "the document ends early"
                       : (f.object ? "expected ',' or '}' after an object member"
                                   : "expected ',' or ']' after an array element"));
        }
    }
}

// A member's name and the ':' after it.
uint8_t JsonPull::memberKey() {
    if (peekChar() != '"') {
        fail(m_p == m_end ? "the document ends early" : "expected a member name in quotes");
    }
    // A file's names come in the same order record after record: the name that followed the
    // last one the time before is tried first, where it lies.
    const uint8_t guess = m_follows[m_lastKey];
    const std::string_view expected = kJsonKeyNames[guess];
    uint8_t id = 0;
    if (guess != 0 && static_cast<std::size_t>(m_end - m_p) > expected.size() + 1 &&
        m_p[expected.size() + 1] == '"' && sameChars(m_p + 1, expected)) {
        id = guess;
        m_p += expected.size() + 2;
    } else {
        // Most names are plain and whole in the buffer: looked up where they lie.
        const char* q = m_p + 1;
        while (q < m_end && *q != '"' && *q != '\\' && static_cast<unsigned char>(*q) >= 0x20 &&
               static_cast<unsigned char>(*q) < 0x80) {
            ++q;
        }
        if (q < m_end && *q == '"') {
            id = jsonKeyId(std::string_view(m_p + 1, static_cast<std::size_t>(q - m_p - 1)));
            m_p = q + 1;
        } else {
            m_key.clear();
            readString(m_key);
            id = jsonKeyId(m_key);
        }
        m_follows[m_lastKey] = id;
    }
    m_lastKey = id;
    if (m_p < m_end && *m_p == ':') {
        ++m_p;
    } else {
        expect(':', "':' after a member name");
    }
    return id;
}

void JsonPull::scalar(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index) {
    const int c = peekChar();
    switch (c) {
        case '"':
            if (tree != nullptr) {
                const uint32_t made = tree->add(parent, key, Kind::String);
                std::string& chars = tree->chars();
                const std::size_t start = chars.size();
                readString(chars);
                JsonTree::Node& n = tree->node(made);
                n.text = start;
                n.count = static_cast<uint32_t>(chars.size() - start);
                *index = made;
            } else {
                m_key.clear();
                readString(m_key);
            }
            return;
        case 't':
            literal("true", 4);
            if (tree != nullptr) {
                *index = tree->add(parent, key, Kind::True);
            }
            return;
        case 'f':
            literal("false", 5);
            if (tree != nullptr) {
                *index = tree->add(parent, key, Kind::False);
            }
            return;
        case 'n':
            literal("null", 4);
            if (tree != nullptr) {
                *index = tree->add(parent, key, Kind::Null);
            }
            return;
        default:
            if (c == '-' || (c >= '0' && c <= '9')) {
                number(tree, parent, key, index);
                return;
            }
            fail(c < 0 ? "the document ends early" : "expected a value");
    }
}

void JsonPull::literal(const char* word, std::size_t size) {
    if (!ensure(size) || std::memcmp(m_p, word, size) != 0) {
        fail("expected a value");
    }
    m_p += size;
}

// A string's characters, checked and unescaped, appended to out.
void JsonPull::readString(std::string& out) {
    ++m_p;  // the opening quote
    for (;;) {
        const char* run = m_p;
        while (m_p < m_end) {
            const auto c = static_cast<unsigned char>(*m_p);
            if (c == '"' || c == '\\' || c < 0x20 || c >= 0x80) {
                break;
            }
            ++m_p;
        }
        out.append(run, static_cast<std::size_t>(m_p - run));
        if (m_p == m_end) {
            if (!refill()) {
                fail("the document ends inside a string");
            }
            continue;
        }
        const auto c = static_cast<unsigned char>(*m_p);
        if (c == '"') {
            ++m_p;
            return;
        }
        if (c < 0x20) {
            fail("a string holds a control character, which must be escaped");
        }
        if (c == '\\') {
            if (!ensure(2)) {
                fail("the document ends inside a string");
            }
            static constexpr std::string_view kEscapes = "\"\\/bfnrt";
            static constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
            const std::size_t simple = kEscapes.find(m_p[1]);
            if (simple != std::string_view::npos) {
                out += kMeanings[simple];
                m_p += 2;
                continue;
            }
            if (m_p[1] != 'u') {
                fail("a string holds an unknown escape");
            }
            if (!ensure(6)) {
                fail("the document ends inside a string");
            }
            int code = hex4(m_p + 2);
            if (code < 0) {
                fail("\\u must be followed by four hex digits");
            }
            if (code >= 0xDC00 && code <= 0xDFFF) {
                fail("a string holds the second half of a surrogate pair alone");
            }
            if (code >= 0xD800 && code <= 0xDBFF) {
                const int low = ensure(12) && m_p[6] == '\\' && m_p[7] == 'u' ? hex4(m_p + 8) : -1;
                if (low < 0xDC00 || low > 0xDFFF) {
                    fail("a string holds the first half of a surrogate pair alone");
                }
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                m_p += 6;
            }
            appendUtf8(out, static_cast<uint32_t>(code));
            m_p += 6;
            continue;
        }
        // A character of several bytes, checked as UTF-8 allows it (no overlong forms, no
        // surrogates, nothing above U+10FFFF).
        std::size_t size = 0;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (c >= 0xC2 && c <= 0xDF) {
            size = 2;
        } else if (c == 0xE0) {
            size = 3;
            low = 0xA0;
        } else if ((c >= 0xE1 && c <= 0xEC) || c == 0xEE || c == 0xEF) {
            size = 3;
        } else if (c == 0xED) {
            size = 3;
            high = 0x9F;
        } else if (c == 0xF0) {
            size = 4;
            low = 0x90;
        } else if (c >= 0xF1 && c <= 0xF3) {
            size = 4;
        } else if (c == 0xF4) {
            size = 4;
            high = 0x8F;
        } else {
            fail("a string holds bytes that are not UTF-8");
        }
        if (!ensure(size)) {
            fail("a string holds bytes that are not UTF-8");
        }
        const auto second = static_cast<unsigned char>(m_p[1]);
        bool valid = second >= low && second <= high;
        for (std::size_t i = 2; i < size; ++i) {
            const auto next = static_cast<unsigned char>(m_p[i]);
            valid = valid && next >= 0x80 && next <= 0xBF;
        }
        if (!valid) {
            fail("a string holds bytes that are not UTF-8");
        }
        out.append(m_p, size);
        m_p += size;
    }
}

void JsonPull::number(JsonTree* tree, uint32_t parent, uint8_t key, uint32_t* index) {
    const char* start = m_p;
    while (m_p < m_end && isNumberChar(*m_p)) {
        ++m_p;
    }
    std::string_view text(start, static_cast<std::size_t>(m_p - start));
    if (m_p == m_end && !m_eof) {  // it may go on in the next block
        m_number.assign(text);
        while (refill()) {
            const char* more = m_p;
            while (m_p < m_end && isNumberChar(*m_p)) {
                ++m_p;
            }
            m_number.append(more, static_cast<std::size_t>(m_p - more));
            if (m_p < m_end) {
                break;
            }
        }
        text = m_number;
    }
    const char* at = text.data() == m_number.data() ? m_p : start;
    NumberText number;
    if (!readNumber(text, number)) {
        failAt(at, "not a number: " + std::string(text.substr(0, 40)));
    }
    JsonNumber value;
    if (!numberValue(text, number, value)) {
        failAt(at, "the number " + std::string(text.substr(0, 40)) + " is beyond a double");
    }
    if (tree != nullptr) {
        JsonTree::Node& n = tree->node(*index = tree->add(parent, key, value.kind));
        switch (value.kind) {
            case Kind::Unsigned:
                n.u = value.u;
                break;
            case Kind::Integer:
                n.i = value.i;
                break;
            default:
                n.d = value.d;
                break;
        }
    }
}

bool JsonQuick::generalNumber(JsonNumber& n) {
    blanks();
    const char* p = m_p;
    while (p < m_end && isNumberChar(*p)) {
        ++p;
    }
    if (p == m_end) {
        return false;  // it may go on past the bytes held
    }
    const std::string_view text(m_p, static_cast<std::size_t>(p - m_p));
    NumberText number;
    if (!readNumber(text, number) || !numberValue(text, number, n)) {
        return false;
    }
    m_p = p;
    return true;
}

}  // namespace nutrovex::tool
