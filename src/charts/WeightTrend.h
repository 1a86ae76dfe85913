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

// How far back the weight's recent trend is read: the food budget page and the chart give the
// same figure.
inline constexpr int32_t kTrendWindowDays = 28;

// The trend over the window ending at a day: from the day before the window, or from the very
// first weigh-in when that falls inside it, to the day.
struct TrendWindow {
    std::optional<float> start;
    std::optional<float> end;
    int32_t days = 0;  // the days the change is spread over
    // The change per week, in pounds; nullopt without a start, an end or a day between them.
    [[nodiscard]] std::optional<double> weeklyRate() const;
};
[[nodiscard]] TrendWindow trendWindow(const WeightTrend& trend, int32_t currentDay);

// "Trend (28 days):", as the page labels the window's rate and the chart introduces it.
[[nodiscard]] std::string trendWindowLabel();

// "-0.8 lbs/week", "+0.3 kg/week", "0.0 lbs/week": the rate in the display unit, one decimal,
// rounded half away from zero.
[[nodiscard]] std::string weeklyRateText(double poundsPerWeek, bool metric);

}  // namespace nutrovex
