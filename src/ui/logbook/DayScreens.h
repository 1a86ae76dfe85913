#pragma once

#include "ui/logbook/LogbookDialog.h"

namespace nutrovex {

class Session;
class SessionNotifier;

// The logbook's own screens (weigh-in, BMR, journal, food budget page and box, summary table,
// range of days), each built with its form from the session's logbook. weightChart is what the
// weigh-in's "Weight Chart" opens. The openers of other areas are left empty.
[[nodiscard]] LogbookOpeners dayScreens(Session& session, SessionNotifier& notifier,
                                        ScreenOpener weightChart = {});

}  // namespace nutrovex
