#pragma once

#include <cstdint>
#include <string_view>

#include "calc/Bmr.h"

namespace nutrovex {

// The weight typed into the weigh-in screen, in the user's display unit, as the pounds stored.
// 0 (or nothing) is the no-weight marker; kilograms convert by the serving units' factors; more
// than the edit's three digits is kept to 999.
[[nodiscard]] float storedWeightFromEntry(int16_t typed, bool metric);
// The day's weight as the weigh-in and the logbook show it: whole pounds, or kilograms by the
// serving units' conversion, so a metric entry reads back as typed (the 2.21 factor of
// weightToWhole belongs to the goal weights and BMR). Fails with -1 for no weight.
[[nodiscard]] WholeResult dayWeightToWhole(float pounds, bool metric);
// Reads an edit the way the screen does: a signed whole number, 0 when there is none.
[[nodiscard]] int16_t wholeFromEdit(std::string_view text);

}  // namespace nutrovex
