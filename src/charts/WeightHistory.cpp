#include "charts/WeightHistory.h"

#include <algorithm>
#include <cstdio>

#include "calc/Bmr.h"
#include "calc/Goals.h"
#include "core/UserStore.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

const std::array<HistorySpan, kHistorySpanCount> kHistorySpans = {{
    {"7 Day", "Historic Weight (7-Day)", 8, 8, LabelStep::Day},
    {"14 Day", "Historic Weight (14-Day)", 15, 8, LabelStep::TwoDays},
    {"1 Month", "Historic Weight (1-Month)", 0, 2, LabelStep::Month},
    {"3 Month", "Historic Weight (3-Month)", 0, 4, LabelStep::Month},
    {"6 Month", "Historic Weight (6-Month)", 0, 7, LabelStep::Month},
    {"1 Year", "Historic Weight (1-Year)", 0, 5, LabelStep::ThreeMonths},
    {"5 Year", "Historic Weight (5-Year)", 0, 6, LabelStep::Year},
}};

const char* const kTooFewPointsMessage =
    "You must enter a minimum of 2 days of weight information within the range requested.  The "
    "historical chart plots data from the last record in your file and goes back the requested n "
    "days.  In this range 2 data points were not found.";

namespace {

// Weights below this are taken for slips of the stylus, not weigh-ins.
constexpr int16_t kLowestCountedWeight = 10;
constexpr int16_t kMaxLinesApart = 16;

// A month outside 1..12 counts 31 days, so a malformed date never shortens a span.
int monthLength(int month, int year) {
    const int days = daysInMonth(month, year);
    return days > 0 ? days : 31;
}

CalendarDate monthsBack(const CalendarDate& date, int months) {
    CalendarDate d = date;
    int month = date.month - months;
    int year = date.year;
    while (month < 1) {
        month += 12;
        --year;
    }
    if (date.day > monthLength(month, year)) {
        d.day = 1;
        if (++month > 12) {
            month = 1;
            ++year;
        }
    }
    d.month = static_cast<int16_t>(month);
    d.year = static_cast<int16_t>(year);
    return d;
}

std::string labelText(const CalendarDate& d) {
    char buffer[32];
    const int n = std::snprintf(buffer, sizeof buffer, "%d/%d/%d", d.month, d.day, d.year);
    return std::string(buffer, static_cast<std::size_t>(std::max(n, 0)));
}

}  // namespace

CalendarDate labelStepBack(const CalendarDate& date, LabelStep step) {
    switch (step) {
        case LabelStep::Day:
            return steppedDate(date, -1);
        case LabelStep::TwoDays:
            return steppedDate(date, -2);
        case LabelStep::Month:
            return monthsBack(date, 1);
        case LabelStep::ThreeMonths:
            return monthsBack(date, 3);
        case LabelStep::Year:
            return monthsBack(date, 12);
    }
    return date;
}

WeightScale weightScale(int16_t highest, int16_t lowest) {
    WeightScale s;
    if (highest < lowest) {
        return s;
    }
    const int range = highest - lowest;
    int step = 1;
    while (range / step >= kMaxLinesApart) {
        ++step;
    }
    s.step = static_cast<uint16_t>(step);
    s.lineCount = static_cast<uint16_t>(range / step + 3);
    return s;
}

WeightHistory collectWeightHistory(DayCursor& days, uint16_t span) {
    WeightHistory h;
    h.span = span < kHistorySpanCount ? span : 0;
    UserStore& store = days.store();
    const bool metric = store.profile.metric();
    h.startLine = weightToWhole(store.profile.startWeight(), metric).value;
    h.goalLine = weightToWhole(store.profile.goalWeight(), metric).value;
    h.unit = weightUnitLabel(metric);
    releaseChartData(store);

    const CalendarDate remembered = days.currentDate();
    if (!days.last()) {
        days.setCurrentDate(remembered);
        return h;
    }
    const CalendarDate lastDate = days.currentDate();
    const HistorySpan& spanRule = kHistorySpans[h.span];

    h.labels.resize(spanRule.labelCount);
    CalendarDate labelDate = lastDate;
    for (int slot = spanRule.labelCount - 1; slot >= 0; --slot) {
        h.labels[static_cast<std::size_t>(slot)] = labelText(labelDate);
        if (slot > 0) {
            labelDate = labelStepBack(labelDate, spanRule.step);
        }
    }
    if (spanRule.fixedDays != 0) {
        h.dayCount = spanRule.fixedDays;
    } else {
        // Dates a hostile file makes up could give any distance: keep it to what a span holds.
        const int32_t covered = dayNumber(lastDate) - dayNumber(labelDate) + 1;
        h.dayCount = static_cast<uint16_t>(std::clamp<int32_t>(covered, 1, 0xFFFF));
    }

    h.weights.assign(h.dayCount, -1);
    CalendarDate date = lastDate;
    for (int i = h.dayCount - 1; i >= 0; --i) {
        const Position at = store.findDay(date);
        if (at != kNoPosition) {
            const WholeResult whole = weightToWhole(store.dayAt(at).weight(), false);
            if (whole.value >= kLowestCountedWeight) {
                h.weights[static_cast<std::size_t>(i)] = whole.value;
                h.highest = std::max(h.highest, whole.value);
                h.lowest = std::min(h.lowest, whole.value);
                ++h.points;
            }
        }
        date = steppedDate(date, -1);
    }

    const WeightScale scale = weightScale(h.highest, h.lowest);
    h.step = scale.step;
    h.lineCount = scale.lineCount;

    for (std::size_t i = 0; i < h.labels.size() && i < store.chartLabels.size(); ++i) {
        store.chartLabels[i] = h.labels[i];
    }
    store.chartPoints.values = h.weights;
    store.chartPoints.step = static_cast<int16_t>(h.step);
    store.chartPoints.first = h.lineCount == 0 ? int16_t{0} : static_cast<int16_t>(h.lineWeight(0));

    days.setCurrentDate(remembered);
    return h;
}

void releaseChartData(UserStore& store) {
    for (std::string& label : store.chartLabels) {
        label.clear();
    }
    store.chartPoints = ChartPoints{};
}

}  // namespace nutrovex
