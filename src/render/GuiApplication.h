#pragma once

namespace nutrovex {

// Starts a display-less GUI application for the rest of the process when none runs, so that fonts
// and painting work in the tool: on the off-screen platform unless QT_QPA_PLATFORM names another.
void ensureGuiApplication();

}  // namespace nutrovex
