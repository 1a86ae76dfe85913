#pragma once

#include <array>
#include <string>

namespace nutrovex {

class DayRecord;

// The summary table: one row per day of the logbook in date order, the date and the day's stored
// totals, then its exercise calories.
inline constexpr int kSummaryColumnCount = 8;
inline constexpr std::array<const char*, kSummaryColumnCount> kSummaryColumnHeads{
    "Date", "Cal", "Carb", "Prot", "Fib", "Fat", "SFat", "Exer"};

// The text of one cell: "%02d/%02d" (month/day), whole calories, grams "%1.1f g", and the
// exercise calories the day's entries add up to.
[[nodiscard]] std::string summaryCell(const DayRecord& day, int column);

}  // namespace nutrovex
