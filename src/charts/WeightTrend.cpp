#include "charts/WeightTrend.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace nutrovex {

namespace {

// Pounds per kilogram, as the weights are shown everywhere else.
constexpr double kPoundsPerKilogram = 2.21;

}  // namespace

bool isWeighIn(float pounds) {
    return std::isfinite(pounds) && pounds > 0.0f;
}

WeightTrend::WeightTrend(std::span<const DatedWeight> weighIns) {
    std::vector<DatedWeight> sorted(weighIns.begin(), weighIns.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const DatedWeight& a, const DatedWeight& b) { return a.day < b.day; });
    float trend = 0.0f;
    for (const DatedWeight& w : sorted) {
        if (!isWeighIn(w.pounds)) {
            continue;
        }
        // Single precision throughout: the step is float arithmetic on float values.
        trend = m_points.empty() ? w.pounds : trend + kTrendSmoothing * (w.pounds - trend);
        if (!m_points.empty() && m_points.back().day == w.day) {
            m_points.back().pounds = trend;
        } else {
            m_points.push_back({w.day, trend});
        }
    }
}

WeightTrend WeightTrend::ofDays(const DayList& days) {
    std::vector<DatedWeight> weighIns;
    weighIns.reserve(days.size());
    for (const auto& day : days) {
        if (isWeighIn(day->weight())) {
            weighIns.push_back({dayNumber(day->date()), day->weight()});
        }
    }
    return WeightTrend(weighIns);
}

std::optional<int32_t> WeightTrend::firstDay() const {
    if (m_points.empty()) {
        return std::nullopt;
    }
    return m_points.front().day;
}

std::optional<float> WeightTrend::at(int32_t day) const {
    // The last point on or before the day.
    const auto after = std::upper_bound(m_points.begin(), m_points.end(), day,
                                        [](int32_t d, const DatedWeight& p) { return d < p.day; });
    if (after == m_points.begin()) {
        return std::nullopt;
    }
    return std::prev(after)->pounds;
}

std::vector<std::optional<float>> WeightTrend::series(int32_t firstDay, int count) const {
    std::vector<std::optional<float>> values;
    values.reserve(static_cast<std::size_t>(std::max(count, 0)));
    auto next = std::upper_bound(m_points.begin(), m_points.end(), firstDay,
                                 [](int32_t d, const DatedWeight& p) { return d < p.day; });
    std::optional<float> current;
    if (next != m_points.begin()) {
        current = std::prev(next)->pounds;
    }
    for (int i = 0; i < count; ++i) {
        const int32_t day = firstDay + i;
        while (next != m_points.end() && next->day <= day) {
            current = next->pounds;
            ++next;
        }
        values.push_back(current);
    }
    return values;
}

std::optional<double> WeightTrend::weeklyRate(int32_t from, int32_t to) const {
    const std::optional<float> start = at(from);
    const std::optional<float> end = at(to);
    if (!start || !end || to <= from) {
        return std::nullopt;
    }
    return (static_cast<double>(*end) - static_cast<double>(*start)) * 7.0 / (to - from);
}

std::optional<double> TrendWindow::weeklyRate() const {
    if (!start || !end || days <= 0) {
        return std::nullopt;
    }
    return (static_cast<double>(*end) - static_cast<double>(*start)) * 7.0 / days;
}

TrendWindow trendWindow(const WeightTrend& trend, int32_t currentDay) {
    TrendWindow w;
    const std::optional<int32_t> first = trend.firstDay();
    if (!first) {
        return w;
    }
    const int32_t before = currentDay - kTrendWindowDays;  // the day before the window
    const int32_t from = *first > before ? *first : before;
    w.start = trend.at(from);
    w.end = trend.at(currentDay);
    w.days = currentDay - from;
    return w;
}

std::string trendWindowLabel() {
    return "Trend (" + std::to_string(kTrendWindowDays) + " days):";
}

std::string weeklyRateText(double poundsPerWeek, bool metric) {
    const double rate = metric ? poundsPerWeek / kPoundsPerKilogram : poundsPerWeek;
    const double tenths = std::round(rate * 10.0);
    char buffer[48];
    if (!std::isfinite(tenths) || std::fabs(tenths) >= 1e9) {
        return std::string("--- ") + (metric ? "kg" : "lbs") + "/week";
    }
    // No "-0.0" for a trend that holds steady.
    const double shown = tenths == 0.0 ? 0.0 : tenths / 10.0;
    std::snprintf(buffer, sizeof buffer, "%s%.1f %s/week", shown > 0.0 ? "+" : "", shown,
                  metric ? "kg" : "lbs");
    return buffer;
}

}  // namespace nutrovex
