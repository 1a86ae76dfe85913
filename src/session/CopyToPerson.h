#pragma once

#include <span>
#include <string_view>

#include "core/CalendarDate.h"
#include "core/ExerciseEntry.h"
#include "core/FoodItem.h"
#include "foods/DayCopy.h"
#include "session/SessionStatus.h"

namespace nutrovex {

class Session;

struct CopyToPersonResult {
    // Why nothing was copied, or why the copy could not be saved (the other person's file is
    // then as it was); when it is not ok, the report's counts were never saved.
    SessionStatus status;
    DayCopyReport report;
};

// Copies foods and exercises (see foods/DayCopy.h) into a date of a person listed in the
// session's root. Into the open person: their day in the session, saved at the next save point.
// Into another person: their logbook is read whole first (when it cannot be, nothing is copied
// and nothing written), the day filled, and the file saved atomically at once; the session's
// lock on the root covers the write. The other person's catalogue and side files are not touched.
[[nodiscard]] CopyToPersonResult copyToPerson(Session& session, std::string_view person,
                                              const CalendarDate& date,
                                              std::span<const FoodItem> foods,
                                              std::span<const ExerciseEntry> exercises);

}  // namespace nutrovex
