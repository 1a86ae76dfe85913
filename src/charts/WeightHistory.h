#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/CalendarDate.h"

namespace nutrovex {

class DayCursor;
class UserStore;

inline constexpr uint16_t kHistorySpanCount = 7;

// How far back the labels step.
enum class LabelStep : uint8_t { Day, TwoDays, Month, ThreeMonths, Year };

struct HistorySpan {
    const char* button;  // "7 Day"
    const char* title;   // "Historic Weight (7-Day)"
    uint16_t fixedDays;  // days covered, or 0 when the labels decide
    uint16_t labelCount;
    LabelStep step;
};

// Index 0 "7 Day" .. 6 "5 Year". The first two cover one day more than their name, so that the
// first and the last label both fall on a day of the span.
extern const std::array<HistorySpan, kHistorySpanCount> kHistorySpans;

extern const char* const kTooFewPointsMessage;  // "You must enter a minimum of 2 days ..."

// A label date stepped back once by the span's step. A month or year step keeps the day; a day
// that the earlier month lacks lands on the first of the month after it, so one month back from
// 31 March is 1 March.
[[nodiscard]] CalendarDate labelStepBack(const CalendarDate& date, LabelStep step);

// The recorded weights of one span, ending at the last day of the logbook.
struct WeightHistory {
    uint16_t span = 0;
    uint16_t dayCount = 0;
    std::vector<int16_t> weights;     // whole pounds, one per day, oldest first; -1 where missing
    std::vector<std::string> labels;  // "%d/%d/%d" month/day/year, oldest first
    int16_t highest = -1;
    int16_t lowest = 999;
    uint16_t step = 0;       // weight between value lines
    uint16_t lineCount = 0;  // 0 when no weight was found
    uint16_t points = 0;     // the days that carry a weight
    // The profile's start and goal weights in the display unit, -1 when not entered; the chart
    // draws the goal.
    int16_t startLine = -1;
    int16_t goalLine = -1;
    std::string unit = "lbs";  // the weights' unit: "lbs" or "kg"

    [[nodiscard]] uint16_t labelCount() const { return static_cast<uint16_t>(labels.size()); }
    // Value line i stands for this weight; line 0 lies one step below the lowest weight.
    [[nodiscard]] int32_t lineWeight(int line) const { return lowest + (line - 1) * step; }
    // The chart draws only with two points and labels; otherwise it shows kTooFewPointsMessage.
    [[nodiscard]] bool drawable() const { return points >= 2 && !labels.empty(); }
};

// The step and line count of the value lines for the highest and lowest weights.
struct WeightScale {
    uint16_t step = 0;
    uint16_t lineCount = 0;
};
[[nodiscard]] WeightScale weightScale(int16_t highest, int16_t lowest);

// Collects the history of a span (0..6; anything else is taken as 0), leaves the labels and the
// points in the store's chart fields (the chart takes its own copy, the returned one, and then
// releases them), and restores the logbook's current date. No records: an empty history.
WeightHistory collectWeightHistory(DayCursor& days, uint16_t span);
// Empties the store's chart labels and points once the chart holds its copy.
void releaseChartData(UserStore& store);

}  // namespace nutrovex
