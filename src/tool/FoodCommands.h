#pragma once

#include <ostream>

#include "tool/Commands.h"

namespace nutrovex::tool {

// import-foods --user NAME CSV: adds the CSV's foods to the user's catalogue (CSV "-" = stdin).
// Each refused row goes to err with its line and reason; the status is 1 when any was refused.
int importFoods(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err);
int runImportFoods(const GlobalOptions& options, Args args);

// export-foods --user NAME [--csv FILE]: the user's catalogue as CSV, to FILE (replaced whole)
// or to out.
int exportFoods(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err);
int runExportFoods(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
