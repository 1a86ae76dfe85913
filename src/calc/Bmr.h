#pragma once

#include <cstdint>

namespace nutrovex {

class DayRecord;
class UserProfile;

// A whole number and whether it could be computed.
struct WholeResult {
    bool ok = false;
    int16_t value = -1;
};

// The shared rounding of shown numbers: clamp to 0..10000, then round the whole part up when the
// single-precision fraction is at least 0.49 (a deliberate threshold, so 70.495 shows as 71).
[[nodiscard]] int16_t roundWhole(float value);
inline constexpr int16_t kMaxShownWhole = 10000;

// Pounds to whole pounds, or to whole kilograms at 2.21 pounds per kilogram.
[[nodiscard]] WholeResult weightToWhole(float pounds, bool toKg);
// Inches to whole inches or whole centimetres.
[[nodiscard]] WholeResult heightToWhole(float inches, bool toCm);

struct BmrResult {
    bool ok = false;
    uint16_t bmr = 0;
};

enum ActivityLevel : uint16_t {
    kLevelNone = 0,
    kLevelBed = 1,
    kLevelSitting = 2,
    kLevelStanding = 3,
    kLevelWalking = 4,
    kLevelManual = 5,
};
extern const char* const kActivityLevelNames[6];

// Harris-Benedict BMR scaled by the activity level; fails for level 5 and for a missing height,
// weight or age.
[[nodiscard]] BmrResult computeBmr(const UserProfile& profile, uint16_t level, float weightPounds);

// Stores a day's weight and settles its activity level and BMR from the profile: no weight
// (negative) clears both; a level of 0 takes the profile's default; a manual BMR is kept.
void setDayWeight(DayRecord& day, float pounds, const UserProfile& profile);

}  // namespace nutrovex
