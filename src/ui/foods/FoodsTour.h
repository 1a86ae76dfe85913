#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The food screens on the session's current day and catalogue, each filled in: meals,
// food-grid, log-food, find, new-food-item, edit-food-item, insert-food, edit-logged-food and
// category.
[[nodiscard]] std::vector<TourStop> foodsTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
