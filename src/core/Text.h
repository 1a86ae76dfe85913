#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace nutrovex {

// An 8-bit (Windows-1252) text that also knows "no text at all", which the files store
// differently from an empty text. Short texts (every food name) live inline, so a catalogue of
// 200,000 foods loads without an allocation per name.
class Text {
public:
    Text() noexcept { m_inline[0] = 0; }
    Text(std::string_view s) { assign(s); }  // NOLINT: implicit on purpose, texts are values
    Text(const char* s) { assign(std::string_view(s)); }
    Text(const std::string& s) { assign(std::string_view(s)); }
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

    [[nodiscard]] bool isNull() const noexcept { return m_state == kNull; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    [[nodiscard]] std::size_t size() const noexcept {
        return m_state == kHeap ? heapSize() : m_inlineSize;
    }
    [[nodiscard]] const char* data() const noexcept {
        return m_state == kHeap ? heapPtr() : m_inline;
    }
    [[nodiscard]] std::string_view view() const noexcept { return {data(), size()}; }
    operator std::string_view() const noexcept { return view(); }  // NOLINT
    [[nodiscard]] std::string str() const { return std::string(view()); }

    // Back to "no text at all".
    void clear() noexcept {
        release();
        m_state = kNull;
        m_inlineSize = 0;
        m_inline[0] = 0;
    }

    void assign(std::string_view s) {
        if (s.size() <= kInlineCapacity) {
            // s may point into this text: inline characters are moved over themselves, and a
            // heap buffer is freed only after its characters were copied out.
            char* heap = m_state == kHeap ? heapPtr() : nullptr;
            if (!s.empty()) {
                std::memmove(m_inline, s.data(), s.size());
            }
            delete[] heap;
            m_inline[s.size()] = 0;
            m_inlineSize = static_cast<uint8_t>(s.size());
            m_state = kInline;
            return;
        }
        char* p = new char[s.size() + 1];
        std::memcpy(p, s.data(), s.size());
        p[s.size()] = 0;
        release();
        const auto size = static_cast<uint32_t>(s.size());
        std::memcpy(m_inline, &p, sizeof p);
        std::memcpy(m_inline + sizeof p, &size, sizeof size);
        m_state = kHeap;
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
    static constexpr std::size_t kInlineCapacity = 29;
    enum : uint8_t { kNull = 0, kInline = 1, kHeap = 2 };

    void release() noexcept {
        if (m_state == kHeap) {
            delete[] heapPtr();
            m_state = kNull;
        }
    }
    void copyFrom(const Text& other) {
        if (other.m_state != kHeap) {
            // Null and inline texts are plain bytes: one fixed-size copy (every food name).
            std::memcpy(static_cast<void*>(this), &other, sizeof(Text));
            return;
        }
        m_state = kNull;
        m_inlineSize = 0;
        assign(other.view());
    }
    void moveFrom(Text& other) noexcept {
        std::memcpy(static_cast<void*>(this), &other, sizeof(Text));
        other.m_state = kNull;
        other.m_inlineSize = 0;
        other.m_inline[0] = 0;
    }

    [[nodiscard]] char* heapPtr() const noexcept {
        char* p;
        std::memcpy(&p, m_inline, sizeof p);
        return p;
    }
    [[nodiscard]] uint32_t heapSize() const noexcept {
        uint32_t n;
        std::memcpy(&n, m_inline + sizeof(char*), sizeof n);
        return n;
    }

    // Inline characters, or (on the heap) the pointer and the size.
    alignas(8) char m_inline[kInlineCapacity + 1];
    uint8_t m_inlineSize = 0;
    uint8_t m_state = kNull;
};

static_assert(sizeof(Text) == 32);

}  // namespace nutrovex
