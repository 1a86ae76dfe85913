#pragma once

#include "ui/frame/CMainFrame.h"

namespace nutrovex {

class SessionNotifier;

// The screens of the other areas that the main window and its screens open. The one place that
// ties them in; a screen that is not part of the program yet stays empty (its command disabled).
[[nodiscard]] FrameOpeners programOpeners(SessionNotifier& notifier);

}  // namespace nutrovex
