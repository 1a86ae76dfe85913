#pragma once

#include <ostream>

#include "tool/Commands.h"

namespace nutrovex::tool {

// chart --user NAME --span N --png FILE [--trend] [--width PIXELS]: the user's historic weight
// chart of span N (0 "7 Day" .. 6 "5 Year") as a PNG of PIXELS x PIXELS/2 (480 unless given),
// replacing FILE whole. Reads the data root and writes nothing in it.
int drawChart(const GlobalOptions& options, Args args, std::ostream& err);
int runChart(const GlobalOptions& options, Args args);

}  // namespace nutrovex::tool
