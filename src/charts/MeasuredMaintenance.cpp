#include "charts/MeasuredMaintenance.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

#include "calc/Goals.h"
#include "calc/Totals.h"
#include "charts/WeightTrend.h"
#include "core/UserProfile.h"

namespace nutrovex {

namespace {

std::string countText(int count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

bool isLogged(double calories) {
    return std::isfinite(calories) && calories > 0.0;
}

}  // namespace

int Maintenance::missingLoggedDays() const {
    return std::max(kMinLoggedDays - loggedDays, 0);
}

int Maintenance::missingWeighIns() const {
    return std::max(kMinWeighIns - weighIns, 0);
}

std::optional<double> Maintenance::weeklyRate() const {
    return TrendWindow{trendStart, trendEnd, trendDays}.weeklyRate();
}

Maintenance measureMaintenance(std::span<const DaySample> days, int32_t currentDay) {
    const int32_t before = currentDay - kMaintenanceWindowDays;  // the day before the window
    std::vector<DatedWeight> weighIns;
    // Per date of the window: the calories of its records, and whether one carries a weight.
    std::map<int32_t, std::pair<double, bool>> window;
    for (const DaySample& d : days) {
        if (d.day > currentDay) {
            continue;
        }
        if (isWeighIn(d.weight)) {
            weighIns.push_back({d.day, d.weight});
        }
        if (d.day > before) {
            auto& [calories, weighed] = window[d.day];
            if (isLogged(d.calories)) {
                calories += d.calories;
            }
            weighed = weighed || isWeighIn(d.weight);
        }
    }

    Maintenance m;
    double intake = 0.0;
    for (const auto& [day, entry] : window) {
        if (entry.first > 0.0) {
            ++m.loggedDays;
            intake += entry.first;
        }
        m.weighIns += entry.second ? 1 : 0;
    }

    // The same window as the chart's trend rate, so both give one figure.
    const TrendWindow trend = trendWindow(WeightTrend(weighIns), currentDay);
    m.trendStart = trend.start;
    m.trendEnd = trend.end;
    m.trendDays = trend.days;

    m.valid = m.loggedDays >= kMinLoggedDays && m.weighIns >= kMinWeighIns && m.trendStart &&
              m.trendEnd && m.trendDays > 0;
    if (m.valid) {
        const double stored = static_cast<double>(kCaloriesPerPound) *
                              (static_cast<double>(*m.trendEnd) - *m.trendStart) / m.trendDays;
        m.calories = intake / m.loggedDays - stored;
    }
    return m;
}

Maintenance measureMaintenance(const DayList& days, const CalendarDate& current) {
    const int32_t currentDay = dayNumber(current);
    std::vector<DaySample> samples;
    samples.reserve(days.size());
    for (const auto& day : days) {
        const int32_t d = dayNumber(day->date());
        // Only the window's foods matter; a twenty-year logbook is not summed for four weeks.
        const bool inWindow = d > currentDay - kMaintenanceWindowDays && d <= currentDay;
        samples.push_back(
            {d, day->weight(),
             inWindow ? static_cast<double>(computeDayTotals(*day)[kCalories]) : 0.0});
    }
    return measureMaintenance(samples, currentDay);
}

int32_t roundedMaintenance(double calories) {
    if (std::isnan(calories)) {
        return 0;
    }
    const double r = std::round(calories);  // halves away from zero
    constexpr double lo = std::numeric_limits<int32_t>::min();
    constexpr double hi = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(r, lo, hi));
}

std::string missingForMaintenance(const Maintenance& m) {
    std::string text;
    if (const int days = m.missingLoggedDays(); days > 0) {
        text = countText(days, "more day of food logging", "more days of food logging");
    }
    if (const int weighIns = m.missingWeighIns(); weighIns > 0) {
        text += text.empty() ? "" : " and ";
        text += countText(weighIns, "more weigh-in", "more weigh-ins");
    }
    return text;
}

std::optional<int32_t> suggestedBudget(const Maintenance& m, const GoalPlan& plan) {
    const std::optional<int32_t> perDay = planCaloriesPerDay(plan);
    if (!m.valid || !perDay) {
        return std::nullopt;
    }
    const int64_t budget = int64_t{roundedMaintenance(m.calories)} - *perDay;
    return static_cast<int32_t>(
        std::clamp<int64_t>(budget, kLowestSuggestedBudget, std::numeric_limits<int32_t>::max()));
}

std::string groupedCalories(int64_t calories) {
    const bool negative = calories < 0;
    // Through unsigned arithmetic, so the lowest value has a magnitude too.
    uint64_t magnitude =
        negative ? 0 - static_cast<uint64_t>(calories) : static_cast<uint64_t>(calories);
    std::string digits;
    int n = 0;
    do {
        if (n > 0 && n % 3 == 0) {
            digits += ',';
        }
        digits += static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
        ++n;
    } while (magnitude != 0);
    if (negative) {
        digits += '-';
    }
    std::reverse(digits.begin(), digits.end());
    return digits + " cal";
}

BudgetSection measuredSection(const Maintenance& m, const UserProfile& profile) {
    BudgetSection section{"Measured", {}};
    if (m.valid) {
        section.rows.push_back(
            {"Maintenance (" + std::to_string(kMaintenanceWindowDays) + " days):",
             std::to_string(roundedMaintenance(m.calories)) + " cal"});
        GoalPlan plan = profile.plan();
        computeGoalPlan(plan, profile.startWeight(), profile.startDate(), profile.goalWeight(),
                        profile.goalDate());
        if (const auto budget = suggestedBudget(m, plan)) {
            section.rows.push_back({"Suggested budget:", std::to_string(*budget) + " cal"});
            section.rows.push_back(
                {"",
                 "Measured: what your own food log and weight trend say you burn, less the "
                 "goal's " +
                     std::to_string(planCaloriesPerDay(plan).value_or(0)) + " cal a day."});
        }
    } else {
        section.rows.push_back(
            {"", "Measured maintenance needs " + missingForMaintenance(m) + "."});
    }
    if (const auto rate = m.weeklyRate()) {
        section.rows.push_back({trendWindowLabel(), weeklyRateText(*rate, profile.metric())});
    }
    return section;
}

BudgetSection measuredSection(const UserStore& store, const CalendarDate& current) {
    return measuredSection(measureMaintenance(store.days(), current), store.profile);
}

}  // namespace nutrovex
