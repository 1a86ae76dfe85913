#pragma once

#include <vector>

#include "ui/frame/Tour.h"

namespace nutrovex {

class SessionNotifier;

// The exercise log of the current date with a catalogue exercise chosen ("exercise-log"), and
// "Edit Exercise" on the day's first exercise ("edit-exercise").
[[nodiscard]] std::vector<TourStop> exerciseTourStops(SessionNotifier& notifier);

}  // namespace nutrovex
