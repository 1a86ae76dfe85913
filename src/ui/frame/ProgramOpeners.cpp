#include "ui/frame/ProgramOpeners.h"

#include "ui/charts/BodyMassChartDialog.h"

namespace nutrovex {

FrameOpeners programOpeners(SessionNotifier& notifier) {
    FrameOpeners openers;
    openers.weightChart = [&notifier](QWidget* parent) {
        (void)BodyMassChartDialog::openChecked(notifier, parent);
    };
    return openers;
}

}  // namespace nutrovex
