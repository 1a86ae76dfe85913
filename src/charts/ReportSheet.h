#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "calc/FoodBudget.h"
#include "charts/RangeReport.h"

namespace nutrovex {

// The report as the texts it prints, the same on paper and in HTML. Texts are Windows-1252, as
// everywhere in the engine.

// "—": a figure the day does not have (no weigh-in, no activity level, no budget).
extern const char* const kReportMissing;
extern const char* const kReportNoFood;   // "no food logged"
extern const char* const kReportNoEntry;  // "no entry in the logbook"

// "Nutrovex report: Ann".
[[nodiscard]] std::string reportTitle(const RangeReport& report);
// "Monday July 27, 2026 to Monday November 23, 2026".
[[nodiscard]] std::string reportRangeText(const RangeReport& report);

// The page above the table: the person, the range and its days, the goal and plan, the targets,
// the weight trend and the measured maintenance, each a labelled row (BudgetRow: a row without a
// label is a line of text).
[[nodiscard]] std::vector<BudgetSection> reportSummary(const RangeReport& report);

// "Weight 183.4 lbs", "Trend -0.8 lbs/week": what the chart's two lines are.
[[nodiscard]] std::string reportChartCaption(const RangeReport& report);

enum class ReportColumn : uint8_t {
    Date,
    Calories,
    Carbohydrate,
    CarbohydrateTarget,
    Fiber,
    FiberTarget,
    Protein,
    ProteinTarget,
    Fat,
    FatTarget,
    SaturatedFat,
    SaturatedFatTarget,
    Exercise,
    Bmr,
    Weight,
    Trend,
    Budget,
    TargetsMet,
};

struct ReportColumnHead {
    ReportColumn column = ReportColumn::Date;
    std::string head;  // "Carb"
    std::string unit;  // "g", "cal", "lbs"; a second line under the head
};

// The table's columns: a target column beside each nutrient that has a target, and "Targets"
// when any is set.
[[nodiscard]] std::vector<ReportColumnHead> reportColumns(const RangeReport& report);

enum class ReportRowKind : uint8_t { Day, WeekTotal, WeekAverage, RangeTotal, RangeAverage };

struct ReportCell {
    std::string text;
    uint16_t span = 1;     // columns it covers
    bool missing = false;  // a day's blank, drawn apart from the figures
};

// Cells left to right; their spans add up to the number of columns.
struct ReportRow {
    ReportRowKind kind = ReportRowKind::Day;
    std::vector<ReportCell> cells;
};

// Every day of the range, each week followed by its total and average, then the range's total
// and average when it spans more than one week.
[[nodiscard]] std::vector<ReportRow> reportRows(const RangeReport& report);
// The rows of one block of days, so a long report can be laid out a block at a time.
[[nodiscard]] std::vector<ReportRow> reportDayRows(const RangeReport& report,
                                                   const ReportBlock& block);
[[nodiscard]] std::vector<ReportRow> reportBlockRows(const RangeReport& report,
                                                     const ReportBlock& block, bool whole);

// Where the table's pages begin: the index of each page's first row. The first page holds
// `firstPageRows` rows (0: the table begins on a page of its own), every other `pageRows`. A week's
// total is never parted from its average: when only the total would fit, the page ends before it.
[[nodiscard]] std::vector<std::size_t> reportPageStarts(const std::vector<ReportRow>& rows,
                                                        std::size_t firstPageRows,
                                                        std::size_t pageRows);

// The lines under the table that say how to read it.
[[nodiscard]] std::vector<std::string> reportNotes(const RangeReport& report);

}  // namespace nutrovex
