#pragma once

#include "ui/frame/CMainFrame.h"

namespace nutrovex {

class ChartSettings;
class Session;
class SessionNotifier;

// The screens the main window and its screens open, each built with its form from the session:
// the one place that ties the program's screens together. chartSettings keeps the historic
// chart's span for the run.
[[nodiscard]] FrameOpeners programOpeners(Session& session, SessionNotifier& notifier,
                                          ChartSettings& chartSettings);

}  // namespace nutrovex
