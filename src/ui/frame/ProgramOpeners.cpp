#include "ui/frame/ProgramOpeners.h"

namespace nutrovex {

FrameOpeners programOpeners(SessionNotifier& notifier) {
    (void)notifier;  // the logbook and the weight chart open on the notifier's session
    return {};
}

}  // namespace nutrovex
