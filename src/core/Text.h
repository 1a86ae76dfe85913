#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace nutrovex {

// An 8-bit (Windows-1252) text that also knows "no text at all", which the files store
// differently from an empty text. Short texts (every food name) live inline, so a catalogue of
// 200,000 foods loads without an allocation per name, and a food with its two texts stays small.
class Text {
public:
    Text() noexcept : m_bytes{} { setTag(kNullTag); }
    Text(std::string_view s) : m_bytes{} {  // NOLINT: implicit on purpose, texts are values
        setTag(kNullTag);
        assign(s);
    }
    Text(const char* s) : Text(std::string_view(s)) {}
    Text(const std::string& s) : Text(std::string_view(s)) {}
    Text(const Text& other) { copyFrom(other); }
    Text(Text&& other) noexcept { moveFrom(other); }
    ~Text() { release(); }

    Text& operator=(const Text& other) {
        if (this != &other) {
            release();
            copyFrom(other);
        }
        return *this;
    }
    Text& operator=(Text&& other) noexcept {
        if (this != &other) {
            release();
            moveFrom(other);
        }
        return *this;
    }
    Text& operator=(std::string_view s) {
        assign(s);
        return *this;
    }
    Text& operator=(const char* s) { return *this = std::string_view(s); }
    Text& operator=(const std::string& s) { return *this = std::string_view(s); }

    static Text null() { return Text(); }

    [[nodiscard]] bool isNull() const noexcept { return tag() == kNullTag; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] std::size_t size() const noexcept {
        return isHeap() ? heapSize() : kInlineCapacity - (tag() & kSpareMask);
    }
    [[nodiscard]] const char* data() const noexcept { return isHeap() ? heapPtr() : m_bytes; }
    [[nodiscard]] std::string_view view() const noexcept { return {data(), size()}; }
    operator std::string_view() const noexcept { return view(); }  // NOLINT
    [[nodiscard]] std::string str() const { return std::string(view()); }

    // Back to "no text at all".
    void clear() noexcept {
        release();
        setNull();
    }

    void assign(std::string_view s) {
        if (s.size() <= kInlineCapacity) {
            // s may point into this text: inline characters are moved over themselves, and a
            // heap buffer is freed only after its characters were copied out.
            char* heap = isHeap() ? heapPtr() : nullptr;
            copyShort(m_bytes, s.data(), s.size());
            delete[] heap;
            m_bytes[s.size()] = 0;  // with every inline byte in use, the tag set next is the zero
            setTag(static_cast<uint8_t>(kInlineCapacity - s.size()));
            return;
        }
        char* p = new char[s.size() + 1];
        std::memcpy(p, s.data(), s.size());
        p[s.size()] = 0;
        release();
        const auto size = static_cast<uint32_t>(s.size());
        std::memcpy(m_bytes, &p, sizeof p);
        std::memcpy(m_bytes + sizeof p, &size, sizeof size);
        setTag(kHeapTag);
    }

    // Equal when both are null, or both hold the same bytes.
    friend bool operator==(const Text& a, const Text& b) noexcept {
        return a.isNull() == b.isNull() && a.view() == b.view();
    }
    friend bool operator==(const Text& a, std::string_view b) noexcept {
        return !a.isNull() && a.view() == b;
    }
    friend bool operator==(const Text& a, const char* b) noexcept {
        return a == std::string_view(b);
    }

private:
    // 24 bytes: up to 23 characters inline, their terminating zero, and a last byte that tells
    // the form. Inline, it counts the unused characters, so a text of 23 characters ends in the
    // zero it needs; on the heap, the first bytes hold the pointer and the size.
    static constexpr std::size_t kSize = 24;
    static constexpr std::size_t kInlineCapacity = kSize - 1;
    static constexpr uint8_t kSpareMask = 0x1F;
    static constexpr uint8_t kNullTag = 0x40 | kInlineCapacity;  // reads as an empty inline text
    static constexpr uint8_t kHeapTag = 0x80;

    [[nodiscard]] uint8_t tag() const noexcept { return static_cast<uint8_t>(m_bytes[kSize - 1]); }
    void setTag(uint8_t t) noexcept { m_bytes[kSize - 1] = static_cast<char>(t); }
    [[nodiscard]] bool isHeap() const noexcept { return tag() == kHeapTag; }
    void setNull() noexcept {
        m_bytes[0] = 0;
        setTag(kNullTag);
    }

    void release() noexcept {
        if (isHeap()) {
            delete[] heapPtr();
            setNull();
        }
    }
    void copyFrom(const Text& other) {
        // Null and inline texts are plain bytes: one fixed-size copy (every food name).
        std::memcpy(m_bytes, other.m_bytes, kSize);
        if (isHeap()) [[unlikely]] {
            setNull();
            assign(other.view());
        }
    }
    void moveFrom(Text& other) noexcept {
        std::memcpy(m_bytes, other.m_bytes, kSize);
        other.setNull();
    }

    // Copies up to kInlineCapacity bytes without a library call; every byte is loaded before any
    // is stored, so the source may overlap the destination.
    static void copyShort(char* dst, const char* src, std::size_t n) noexcept {
        if (n >= 16) {
            char head[16];
            char tail[16];
            std::memcpy(head, src, 16);
            std::memcpy(tail, src + n - 16, 16);
            std::memcpy(dst, head, 16);
            std::memcpy(dst + n - 16, tail, 16);
        } else if (n >= 8) {
            uint64_t head;
            uint64_t tail;
            std::memcpy(&head, src, 8);
            std::memcpy(&tail, src + n - 8, 8);
            std::memcpy(dst, &head, 8);
            std::memcpy(dst + n - 8, &tail, 8);
        } else if (n >= 4) {
            uint32_t head;
            uint32_t tail;
            std::memcpy(&head, src, 4);
            std::memcpy(&tail, src + n - 4, 4);
            std::memcpy(dst, &head, 4);
            std::memcpy(dst + n - 4, &tail, 4);
        } else if (n > 0) {
            const char first = src[0];
            const char middle = src[n / 2];
            const char last = src[n - 1];
            dst[0] = first;
            dst[n / 2] = middle;
            dst[n - 1] = last;
        }
    }

    [[nodiscard]] char* heapPtr() const noexcept {
        char* p;
        std::memcpy(&p, m_bytes, sizeof p);
        return p;
    }
    [[nodiscard]] uint32_t heapSize() const noexcept {
        uint32_t n;
        std::memcpy(&n, m_bytes + sizeof(char*), sizeof n);
        return n;
    }

    // Every byte is defined from construction on, so a fixed-size copy never reads garbage.
    char m_bytes[kSize];
};

static_assert(sizeof(Text) == 24);

}  // namespace nutrovex
