#pragma once

#include <cstdint>

#include "core/ServingUnits.h"

namespace nutrovex {

// An amount in one of the fifteen serving units.
struct ServingQuantity {
    float amount = 0.0f;
    ServingUnit unit = ServingUnit::Pinch;
    uint8_t sub = 0;

    [[nodiscard]] bool isWeight() const { return isWeightUnit(unit); }

    friend bool operator==(const ServingQuantity&, const ServingQuantity&) = default;
};

}  // namespace nutrovex
