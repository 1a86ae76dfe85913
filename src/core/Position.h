#pragma once

#include <cstdint>

namespace nutrovex {

// Positions in lists; kNoPosition means "not found" or "refused".
using Position = uint16_t;
inline constexpr Position kNoPosition = 0xFFFF;

}  // namespace nutrovex
