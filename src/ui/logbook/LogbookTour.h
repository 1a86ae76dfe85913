#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The logbook's screens on the session's open user and current date: the logbook, the range of
// days, weigh-in, journal, activity/BMR, the food budget page and box, the summary table.
[[nodiscard]] std::vector<TourStop> logbookTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
