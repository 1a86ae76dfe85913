#pragma once

#include <cstdint>
#include <vector>

#include "core/PackedKey.h"
#include "core/Text.h"

namespace nutrovex {

// One logged exercise. Type 26 with no variant is a user-defined exercise named by `name`.
struct ExerciseEntry {
    PackedKey key;
    uint8_t byte = 0;
    uint16_t type = 26;
    int16_t variant = -1;
    int16_t third = -1;
    Text name;
    uint16_t minutes = 0;
    uint16_t calories = 0;
};

using ExerciseList = std::vector<ExerciseEntry>;

}  // namespace nutrovex
