#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/ScreenMessage.h"

namespace nutrovex {

class DayRecord;
class UserProfile;

// The adult body-mass index limits between the four bands.
inline constexpr double kUnderweightBelow = 18.5;
inline constexpr double kOverweightFrom = 25.0;
inline constexpr double kObeseFrom = 30.0;

enum class BodyMassBand : uint8_t { Under, Normal, Over, Obese };

struct BandLegend {
    const char* swatch;  // "Un"
    const char* text;    // "= Under"
};
extern const std::array<BandLegend, 4> kBandLegend;

// kg/m² from pounds and inches; nullopt when either is missing.
[[nodiscard]] std::optional<double> bodyMassIndex(float pounds, float inches);
[[nodiscard]] BodyMassBand bandOf(double bodyMassIndex);
// The weight in pounds at which a height reaches the index.
[[nodiscard]] double weightAtIndex(double bodyMassIndex, float inches);

// The chart with body-mass bands: the band limits as whole weights in the display unit, and the
// current and goal weights placed against them.
struct BodyMassChart {
    bool metric = false;
    int16_t underweightBelow = 0;
    int16_t overweightFrom = 0;
    int16_t obeseFrom = 0;
    int16_t current = 0;
    int16_t goal = 0;
    BodyMassBand currentBand = BodyMassBand::Normal;
    BodyMassBand goalBand = BodyMassBand::Normal;
};

// The chart for the current day, or nullopt when the current weight, the goal weight or the
// height is missing (the screen then shows missingChartDataMessage() and opens nothing).
[[nodiscard]] std::optional<BodyMassChart> bodyMassChart(const DayRecord* day,
                                                         const UserProfile& profile);
[[nodiscard]] ScreenMessage missingChartDataMessage();

}  // namespace nutrovex
