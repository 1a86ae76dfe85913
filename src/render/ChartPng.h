#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "charts/WeightHistory.h"

namespace nutrovex {

// The historic chart of width x width/2 pixels as PNG bytes, drawn as the screen draws it, in the
// application's palette and font. Needs no display: when no GUI application runs, one is started on
// the off-screen platform. Empty when the picture could not be encoded.
[[nodiscard]] std::vector<uint8_t> historicChartPng(const WeightHistory& history,
                                                    const std::vector<std::optional<float>>* trend,
                                                    int width);

}  // namespace nutrovex
