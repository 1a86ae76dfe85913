#pragma once

#include <cstdint>

namespace nutrovex {

// Identifies foods and exercise entries: from the top, fields of 1, 4, 4 and 5 bits, then an
// 18-bit serial. Only the serial is ever issued; the upper fields are kept as stored.
struct PackedKey {
    uint32_t value = 0;

    static constexpr uint32_t kSerialMask = 0x3FFFF;

    [[nodiscard]] uint32_t serial() const { return value & kSerialMask; }
    [[nodiscard]] uint32_t field1() const { return value >> 31; }
    [[nodiscard]] uint32_t field2() const { return (value >> 27) & 0xF; }
    [[nodiscard]] uint32_t field3() const { return (value >> 23) & 0xF; }
    [[nodiscard]] uint32_t field4() const { return (value >> 18) & 0x1F; }

    friend bool operator==(PackedKey a, PackedKey b) = default;
};

// Increments the counter's serial, wrapping within its 18 bits, and returns the new key.
inline PackedKey nextKey(PackedKey& counter) {
    const uint32_t serial = (counter.value + 1) & PackedKey::kSerialMask;
    counter.value = (counter.value & ~PackedKey::kSerialMask) | serial;
    return counter;
}

}  // namespace nutrovex
