#pragma once

#include <cstdint>
#include <ostream>
#include <span>
#include <string>

#include "core/CalendarDate.h"
#include "core/FoodCatalogue.h"
#include "core/ScreenMessage.h"
#include "logbook/DayCursor.h"
#include "logbook/ExerciseLog.h"
#include "tool/Commands.h"

namespace nutrovex::tool {

inline constexpr const char* kDemoUserName = "Demo";
inline constexpr int kDemoDays = 120;  // about four months, ending today
inline constexpr uint32_t kDemoSeed = 20021121;

// What the demo logbook holds.
struct DemoSummary {
    int days = 0;  // dates with a record
    int foods = 0;
    int exercises = 0;
    int weighIns = 0;
    CalendarDate first;
    CalendarDate last;
    Notices notices;  // what the forms changed, for the session to apply
};

// Gives the open user a plausible profile and goal and about four months of days ending today:
// a weight drifting towards the goal with day-to-day noise, three to six foods a day from the
// catalogue, some exercises, water and notes. Everything goes through the screens' own forms, so
// the days are what a person typing them would have made. The same seed makes the same logbook.
DemoSummary fillDemoLogbook(DayCursor& days, FoodCatalogue& catalogue, ExerciseClipboard& clipboard,
                            uint32_t seed = kDemoSeed);

// demo [--user NAME]: makes a new user (never one that exists) with a demo logbook in the data
// root, remembered as the root's current user. shipped: the catalogue installed as the root's
// template when it has none.
int makeDemo(const GlobalOptions& options, Args args, std::ostream& out, std::ostream& err,
             const Clock& clock, std::span<const uint8_t> shipped);

}  // namespace nutrovex::tool
