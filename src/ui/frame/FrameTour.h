#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The desktop program's stops: main menu, help, about, users and the calendar picker.
[[nodiscard]] std::vector<TourStop> frameTourStops(Session& session, SessionNotifier& notifier);

// Every area's stops, in the order the tour shows them.
[[nodiscard]] std::vector<TourStop> allTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
