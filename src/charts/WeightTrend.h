#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/UserStore.h"

namespace nutrovex {

// Each weigh-in moves the trend this share of the way towards it.
inline constexpr float kTrendSmoothing = 0.1f;

// A weigh-in on a calendar day (dayNumber of the date), in pounds.
struct DatedWeight {
    int32_t day = 0;
    float pounds = 0.0f;
};

// Whether a stored weight counts as a weigh-in: positive and finite (negative means none; a
// damaged file may hold a NaN or infinity, which must not poison the trend).
[[nodiscard]] bool isWeighIn(float pounds);

// The smoothed weight: an exponential moving average over the weigh-ins in date order, kept in
// single precision. The first weigh-in starts it; each later one moves it kTrendSmoothing of the
// way there; days without a weigh-in keep it.
class WeightTrend {
public:
    WeightTrend() = default;
    // weighIns in any order; they are taken by date, those of one date in the order given.
    explicit WeightTrend(std::span<const DatedWeight> weighIns);
    // The weigh-ins of a logbook's days, in list order.
    static WeightTrend ofDays(const DayList& days);

    [[nodiscard]] bool empty() const { return m_points.empty(); }
    // The day of the first weigh-in, which starts the trend.
    [[nodiscard]] std::optional<int32_t> firstDay() const;
    // The trend at the end of a day; nullopt before the first weigh-in.
    [[nodiscard]] std::optional<float> at(int32_t day) const;
    // The trend of count consecutive days from firstDay, for drawing; nullopt before it starts.
    [[nodiscard]] std::vector<std::optional<float>> series(int32_t firstDay, int count) const;
    // The trend's change per week from one day to a later one, in pounds; nullopt when the trend
    // has not started by `from` or the days are not in order.
    [[nodiscard]] std::optional<double> weeklyRate(int32_t from, int32_t to) const;

private:
    // The trend after each weigh-in day, ascending days, one point per day.
    std::vector<DatedWeight> m_points;
};

// "-0.8 lbs/week", "+0.3 kg/week", "0.0 lbs/week": the rate in the display unit, one decimal,
// rounded half away from zero.
[[nodiscard]] std::string weeklyRateText(double poundsPerWeek, bool metric);

}  // namespace nutrovex
