#pragma once

#include "ui/frame/CMainFrame.h"

namespace nutrovex {

class ChartSettings;
class SessionNotifier;

// The screens of the other areas that the main window and its screens open: the one place that
// ties the program's screens together. chartSettings keeps the historic chart's span for the run.
[[nodiscard]] FrameOpeners programOpeners(SessionNotifier& notifier, ChartSettings& chartSettings);

}  // namespace nutrovex
