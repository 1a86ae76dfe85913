#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The catalogue screen on the session's catalogue, its first food selected ("catalogue").
[[nodiscard]] std::vector<TourStop> catalogueTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
