#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The exercise log of the current date with a catalogue exercise chosen ("exercise-log"), and
// "Edit Exercise" on the day's first exercise ("edit-exercise").
[[nodiscard]] std::vector<TourStop> exerciseTourStops(Session& session, SessionNotifier& notifier);

}  // namespace nutrovex
