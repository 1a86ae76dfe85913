#pragma once

#include <cstdint>

namespace nutrovex {

// The plan derived from the goal fields and stored with the profile: valid flag, weight change
// in whole pounds, days, and calories per day (the three values are signed, stored as u32).
struct GoalPlan {
    uint8_t valid = 0;
    uint32_t change = 0;
    uint32_t days = 0;
    uint32_t perDay = 0;

    friend bool operator==(const GoalPlan&, const GoalPlan&) = default;
};

}  // namespace nutrovex
