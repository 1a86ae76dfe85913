#pragma once

#include <cstdint>

#include "calc/ExerciseCatalog.h"

namespace nutrovex {

struct ExerciseCaloriesResult {
    bool ok = false;        // on failure the caller keeps the calories it had
    uint16_t calories = 0;  // at most 10000
};

// Calories burnt by `minutes` of the selected exercise at `weightPounds` whole pounds. Fails for
// no minutes, no weight or a user-defined exercise; a selection with no formula gives 0 without
// failing.
[[nodiscard]] ExerciseCaloriesResult computeExerciseCalories(const ExerciseSelection& selection,
                                                             int16_t weightPounds, int16_t minutes);

inline constexpr uint16_t kMaxExerciseCalories = 10000;

}  // namespace nutrovex
