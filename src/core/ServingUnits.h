#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/ServingQuantity.h"

namespace nutrovex {

inline constexpr int kUnitCount = 15;
extern const std::array<const char*, kUnitCount> kUnitNames;

// A unit by its name in any case ("g", "Cup"), or by its code in digits ("12"); as the food CSV
// and the recipes name them.
[[nodiscard]] std::optional<uint8_t> unitNamed(std::string_view text);

// Volume units (0..9) convert among themselves; weight and item units (10..14) among
// themselves, "item" counting as one gram on purpose.
[[nodiscard]] bool unitsCompatible(unsigned from, unsigned to);

enum class ConvertResult { Failed, Converted, NothingWritten };

// Converts amount; on Converted, out holds the result. A to-unit of 15 or more succeeds without
// writing anything (NothingWritten), leaving out as it was.
[[nodiscard]] ConvertResult convertServing(float amount, unsigned from, unsigned to, float& out);

// The multiplier of the reference serving's nutrients for a logged serving.
[[nodiscard]] float servingFactor(const ServingQuantity& reference, const ServingQuantity& logged);

}  // namespace nutrovex
