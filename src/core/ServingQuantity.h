#pragma once

#include <cstdint>

namespace nutrovex {

// An amount in one of the fifteen serving units (see core/ServingUnits.h).
struct ServingQuantity {
    float amount = 0.0f;
    uint8_t unit = 0;
    uint8_t sub = 0;

    [[nodiscard]] bool isVolume() const { return unit < 10; }
    [[nodiscard]] bool isWeight() const { return unit >= 10 && unit <= 13; }
    [[nodiscard]] bool isItem() const { return unit == 14; }

    friend bool operator==(const ServingQuantity&, const ServingQuantity&) = default;
};

}  // namespace nutrovex
