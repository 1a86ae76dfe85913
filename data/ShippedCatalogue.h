#pragma once

#include <cstdint>
#include <span>

namespace nutrovex {

// The starting catalogue that ships inside the program (FoodDB.ddb built from data/foods.csv),
// installed as a data root's template catalogue when the root has none.
[[nodiscard]] std::span<const uint8_t> shippedCatalogue();

}  // namespace nutrovex
