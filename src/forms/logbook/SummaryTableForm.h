#pragma once

#include <string>

#include "core/MacroTargets.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

struct SummaryTableView {
    int days = 0;         // one row each, after the header row
    int currentRow = -1;  // the day row of the logbook's current date, or -1 when it has no record
    // With targets set, the days that met every one are marked; the legend says so.
    bool marksTargets = false;
    std::string targetsLegend;
};

// The summary table: one row per day of the logbook in date order, the date and the day's stored
// totals, then its exercise calories. A logbook holds thousands of days, so the screen reads the
// cells it paints one at a time. Read only.
class SummaryTableForm {
public:
    // targets, when given, are the person's; days within them are marked.
    explicit SummaryTableForm(DayCursor& days, const MacroTargets* targets = nullptr)
        : m_days(&days), m_targets(targets) {}

    [[nodiscard]] SummaryTableView view() const;
    // The text of a cell of a day row (0 = the first day) or, for row -1, of the header.
    [[nodiscard]] std::string cell(int row, int column) const;
    // Whether the day of a row met every target; false without targets.
    [[nodiscard]] bool withinTargets(int row) const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
    const MacroTargets* m_targets;
};

}  // namespace nutrovex
