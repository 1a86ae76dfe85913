#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "core/Text.h"

namespace nutrovex {

// Reads the files' fields from one buffer: big-endian payload numbers, the raw little-endian
// words, and counted texts. Every read is checked against what is left; the first failure is
// remembered with its offset and every later read yields zero, so a parser checks once per item.
class ByteReader {
public:
    // base: the offset of bytes[0] in the file, so errors name file offsets.
    ByteReader(std::span<const uint8_t> bytes, std::size_t base)
        : m_begin(bytes.data()),
          m_pos(bytes.data()),
          m_end(bytes.data() + bytes.size()),
          m_base(base) {}

    [[nodiscard]] bool ok() const { return m_error.empty(); }
    [[nodiscard]] const std::string& error() const { return m_error; }
    [[nodiscard]] std::size_t errorOffset() const { return m_errorOffset; }
    [[nodiscard]] std::size_t offset() const {
        return m_base + static_cast<std::size_t>(m_pos - m_begin);
    }
    [[nodiscard]] std::size_t remaining() const { return static_cast<std::size_t>(m_end - m_pos); }

    // Records the first failure at the current offset.
    void fail(std::string reason) { failAt(offset(), std::move(reason)); }
    void failAt(std::size_t at, std::string reason) {
        if (m_error.empty()) {
            m_error = std::move(reason);
            m_errorOffset = at;
            m_pos = m_end;
        }
    }

    // True when n more bytes are there; otherwise fails naming what was being read.
    bool need(std::size_t n, const char* what) {
        if (remaining() >= n) [[likely]] {
            return true;
        }
        tooShort(n, what);
        return false;
    }

    uint8_t u8() {
        if (!need(1, "a byte")) {
            return 0;
        }
        return *m_pos++;
    }
    uint16_t u16be() {
        if (!need(2, "a 16-bit number")) {
            return 0;
        }
        const auto v = static_cast<uint16_t>((m_pos[0] << 8) | m_pos[1]);
        m_pos += 2;
        return v;
    }
    int16_t i16be() { return static_cast<int16_t>(u16be()); }
    uint32_t u32be() {
        if (!need(4, "a 32-bit number")) {
            return 0;
        }
        const uint32_t v = (uint32_t{m_pos[0]} << 24) | (uint32_t{m_pos[1]} << 16) |
                           (uint32_t{m_pos[2]} << 8) | uint32_t{m_pos[3]};
        m_pos += 4;
        return v;
    }
    uint32_t u32le() {
        if (!need(4, "a 32-bit number")) {
            return 0;
        }
        const uint32_t v = (uint32_t{m_pos[3]} << 24) | (uint32_t{m_pos[2]} << 16) |
                           (uint32_t{m_pos[1]} << 8) | uint32_t{m_pos[0]};
        m_pos += 4;
        return v;
    }
    // The float's bits exactly as stored, NaN payloads included.
    float f32be() {
        const uint32_t bits = u32be();
        float f;
        std::memcpy(&f, &bits, sizeof f);
        return f;
    }
    // The next n bytes to decode with the be16/be32 helpers below, or nullptr (and the error)
    // when fewer are left: one check for a run of fixed-size fields.
    const uint8_t* take(std::size_t n, const char* what) {
        if (!need(n, what)) {
            return nullptr;
        }
        const uint8_t* p = m_pos;
        m_pos += n;
        return p;
    }
    void raw(uint8_t* out, std::size_t n) {
        if (!need(n, "a fixed field")) {
            std::memset(out, 0, n);
            return;
        }
        std::memcpy(out, m_pos, n);
        m_pos += n;
    }
    // A count of 0 is no text at all; a count N holds N - 1 characters and a terminating zero. A
    // last byte that is not zero fails the read: writing the text back would change it.
    Text text() {
        Text t;
        text(t);
        return t;
    }
    // Reads into a text, which is left as it was when the read fails.
    [[gnu::always_inline]] void text(Text& out) {
        const uint16_t count = u16be();
        if (count == 0) {
            if (ok()) {
                out.clear();
            }
            return;
        }
        if (remaining() < count || m_pos[count - 1] != 0) [[unlikely]] {
            badText(count);
            return;
        }
        out.assign(std::string_view(reinterpret_cast<const char*>(m_pos), count - 1u));
        m_pos += count;
    }

private:
    [[gnu::noinline, gnu::cold]] void badText(uint16_t count) {
        const std::size_t start = offset() - 2;
        if (remaining() < count) {
            failAt(start, "a text of " + std::to_string(count - 1) + " characters needs " +
                              std::to_string(count) + " bytes but only " +
                              std::to_string(remaining()) + " are left");
        } else {
            failAt(start, "the text does not end in a zero byte");
        }
    }
    [[gnu::noinline, gnu::cold]] void tooShort(std::size_t n, const char* what) {
        if (ok()) {
            fail(std::string(what) + " needs " + std::to_string(n) + " bytes but only " +
                 std::to_string(remaining()) + " are left");
        }
    }

    const uint8_t* m_begin;
    const uint8_t* m_pos;
    const uint8_t* m_end;
    std::size_t m_base;
    std::string m_error;
    std::size_t m_errorOffset = 0;
};

// Decoding of fields handed out by ByteReader::take.
[[nodiscard]] inline uint16_t be16(const uint8_t* p) {
    return static_cast<uint16_t>((p[0] << 8) | p[1]);
}
[[nodiscard]] inline uint32_t be32(const uint8_t* p) {
    return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | uint32_t{p[3]};
}
[[nodiscard]] inline float beFloat(const uint8_t* p) {
    const uint32_t bits = be32(p);
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

inline void putBe16(uint8_t* p, uint16_t v) {
    p[0] = static_cast<uint8_t>(v >> 8);
    p[1] = static_cast<uint8_t>(v);
}
inline void putBe32(uint8_t* p, uint32_t v) {
    p[0] = static_cast<uint8_t>(v >> 24);
    p[1] = static_cast<uint8_t>(v >> 16);
    p[2] = static_cast<uint8_t>(v >> 8);
    p[3] = static_cast<uint8_t>(v);
}
inline void putFloat(uint8_t* p, float f) {
    uint32_t bits;
    std::memcpy(&bits, &f, sizeof bits);
    putBe32(p, bits);
}

// Writes fields into a buffer whose size was computed beforehand by the records' size functions.
class ByteWriter {
public:
    ByteWriter(uint8_t* begin, uint8_t* end) : m_pos(begin), m_end(end) {}

    [[nodiscard]] uint8_t* position() const { return m_pos; }
    // The next n bytes, to fill with the put helpers below: a local pointer lets the compiler
    // keep it in a register, where stores through m_pos make it reload m_pos after every byte.
    uint8_t* take(std::size_t n) {
        assert(static_cast<std::size_t>(m_end - m_pos) >= n);
        uint8_t* p = m_pos;
        m_pos += n;
        return p;
    }

    void u8(uint8_t v) {
        assert(m_end - m_pos >= 1);
        *m_pos++ = v;
    }
    void u16be(uint16_t v) {
        assert(m_end - m_pos >= 2);
        m_pos[0] = static_cast<uint8_t>(v >> 8);
        m_pos[1] = static_cast<uint8_t>(v);
        m_pos += 2;
    }
    void i16be(int16_t v) { u16be(static_cast<uint16_t>(v)); }
    void u32be(uint32_t v) {
        assert(m_end - m_pos >= 4);
        m_pos[0] = static_cast<uint8_t>(v >> 24);
        m_pos[1] = static_cast<uint8_t>(v >> 16);
        m_pos[2] = static_cast<uint8_t>(v >> 8);
        m_pos[3] = static_cast<uint8_t>(v);
        m_pos += 4;
    }
    void u32le(uint32_t v) {
        assert(m_end - m_pos >= 4);
        m_pos[0] = static_cast<uint8_t>(v);
        m_pos[1] = static_cast<uint8_t>(v >> 8);
        m_pos[2] = static_cast<uint8_t>(v >> 16);
        m_pos[3] = static_cast<uint8_t>(v >> 24);
        m_pos += 4;
    }
    void f32be(float f) {
        uint32_t bits;
        std::memcpy(&bits, &f, sizeof bits);
        u32be(bits);
    }
    void raw(const uint8_t* data, std::size_t n) {
        assert(static_cast<std::size_t>(m_end - m_pos) >= n);
        std::memcpy(m_pos, data, n);
        m_pos += n;
    }
    void text(const Text& t) {
        if (t.isNull()) {
            u16be(0);
            return;
        }
        const std::size_t n = t.size();
        uint8_t* p = take(n + 3);
        putBe16(p, static_cast<uint16_t>(n + 1));
        std::memcpy(p + 2, t.data(), n);
        p[n + 2] = 0;
    }

private:
    uint8_t* m_pos;
    uint8_t* m_end;
};

}  // namespace nutrovex
