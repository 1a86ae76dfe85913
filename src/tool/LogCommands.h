#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "core/CalendarDate.h"
#include "tool/Commands.h"

namespace nutrovex {
class DayRecord;
class UserStore;
}  // namespace nutrovex

namespace nutrovex::tool {

// A date typed as M/D/YYYY; nullopt unless it is a real day of 1904..2031.
[[nodiscard]] std::optional<CalendarDate> parseLogDate(std::string_view text);

// The header row and one day's row of export-log: date, weight (pounds, empty when not
// entered), activity level, BMR, the six totals, exercise calories and minutes, water, note
// (UTF-8). The totals and exercise figures are recomputed from the day's foods and exercises.
[[nodiscard]] std::string logCsvHeader();
[[nodiscard]] std::string logCsvRow(DayRecord& day);

// export-log --user NAME [--from M/D/YYYY] [--to M/D/YYYY] [--csv FILE]: the rows go to FILE
// (replaced whole) or to out; problems go to err. When the logbook measures a maintenance over
// the 28 days to --to (else today), a summary line says so: on out after writing FILE, on err
// when the rows go to out.
int exportLog(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err);
int exportLog(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err,
              const Clock& clock);
// The summary line, or "" when no valid maintenance is measured.
[[nodiscard]] std::string maintenanceSummary(const UserStore& store, const CalendarDate& current);
int runExportLog(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
