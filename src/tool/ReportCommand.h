#pragma once

#include <ostream>

#include "core/CalendarDate.h"
#include "tool/Commands.h"

namespace nutrovex::tool {

// report --user NAME --from M/D/YYYY --to M/D/YYYY (--pdf FILE | --html FILE): the person's
// report of the range, as a PDF on the locale's paper or as a page of HTML. Only reads the root.
int writeReport(const GlobalOptions& options, Args args, std::ostream& err);
int runReport(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
