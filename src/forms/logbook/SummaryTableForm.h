#pragma once

#include <string>

#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"

namespace nutrovex {

struct SummaryTableView {
    int days = 0;         // one row each, after the header row
    int currentRow = -1;  // the day row of the logbook's current date, or -1 when it has no record
};

// The summary table: one row per day of the logbook in date order, the date and the day's stored
// totals, then its exercise calories. A logbook holds thousands of days, so the screen reads the
// cells it paints one at a time. Read only.
class SummaryTableForm {
public:
    explicit SummaryTableForm(DayCursor& days) : m_days(&days) {}

    [[nodiscard]] SummaryTableView view() const;
    // The text of a cell of a day row (0 = the first day) or, for row -1, of the header.
    [[nodiscard]] std::string cell(int row, int column) const;
    [[nodiscard]] SavePoint close() const { return SavePoint::Nothing; }

private:
    DayCursor* m_days;
};

}  // namespace nutrovex
