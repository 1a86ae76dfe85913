#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace nutrovex {

struct ServingQuantity;

// The serving units by the byte a file stores for each. A file may hold any byte: one past Item
// names no unit, is kept as read and written back unchanged, and converts to nothing.
enum class ServingUnit : uint8_t {
    Pinch,
    Teaspoon,
    Tablespoon,
    Cup,
    Pint,
    Quart,
    Gallon,
    FluidOunce,
    Litre,
    Millilitre,
    Ounce,
    Pound,
    Gram,
    Kilogram,
    Item,
};

inline constexpr int kUnitCount = 15;
// Every unit, in byte order (the order the lists offer them).
inline constexpr std::array<ServingUnit, kUnitCount> kServingUnits = {
    ServingUnit::Pinch, ServingUnit::Teaspoon,   ServingUnit::Tablespoon, ServingUnit::Cup,
    ServingUnit::Pint,  ServingUnit::Quart,      ServingUnit::Gallon,     ServingUnit::FluidOunce,
    ServingUnit::Litre, ServingUnit::Millilitre, ServingUnit::Ounce,      ServingUnit::Pound,
    ServingUnit::Gram,  ServingUnit::Kilogram,   ServingUnit::Item};

// The byte a file holds for a unit, and back.
[[nodiscard]] constexpr uint8_t unitByte(ServingUnit unit) {
    return static_cast<uint8_t>(unit);
}
[[nodiscard]] constexpr ServingUnit unitFromByte(uint8_t byte) {
    return static_cast<ServingUnit>(byte);
}

[[nodiscard]] constexpr bool isKnownUnit(ServingUnit unit) {
    return unitByte(unit) < kUnitCount;
}
[[nodiscard]] constexpr bool isVolumeUnit(ServingUnit unit) {
    return unitByte(unit) < unitByte(ServingUnit::Ounce);
}
[[nodiscard]] constexpr bool isWeightUnit(ServingUnit unit) {
    return unitByte(unit) >= unitByte(ServingUnit::Ounce) &&
           unitByte(unit) <= unitByte(ServingUnit::Kilogram);
}

// "pinch", "tsp", ... "item"; nullptr for a byte that names no unit.
[[nodiscard]] const char* unitName(ServingUnit unit);
// A unit by its name in any case ("g", "Cup"), or by its byte in digits ("12"); as the food CSV
// and the recipes name them.
[[nodiscard]] std::optional<ServingUnit> unitNamed(std::string_view text);

// Volume units convert among themselves; weight and item units among themselves, "item"
// counting as one gram on purpose. A byte past Item converts with the weights.
[[nodiscard]] bool unitsCompatible(ServingUnit from, ServingUnit to);

enum class ConvertResult { Failed, Converted, NothingWritten };

// Converts amount; on Converted, out holds the result. A to-unit that names no unit succeeds
// without writing anything (NothingWritten), leaving out as it was; a from-unit that names none
// converts as an amount of 0.
[[nodiscard]] ConvertResult convertServing(float amount, ServingUnit from, ServingUnit to,
                                           float& out);

// The multiplier of the reference serving's nutrients for a logged serving.
[[nodiscard]] float servingFactor(const ServingQuantity& reference, const ServingQuantity& logged);

}  // namespace nutrovex
