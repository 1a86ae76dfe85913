#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The charts in the tour, on the session's data: the historic chart at every span
// ("historic-chart" at the 14-day span, "historic-chart-7-day" ... "historic-chart-5-year"), with
// the trend ("historic-chart-trend"), and the chart with body-mass bands ("body-mass-chart").
[[nodiscard]] std::vector<TourStop> chartsTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
