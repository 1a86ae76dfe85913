#pragma once

#include <functional>

#include "ui/frame/ScreenDialog.h"

namespace nutrovex {

class SessionNotifier;

// A screen of the logbook's area: the program's screen frame, on the session the notifier gives.
class LogbookScreen : public ScreenDialog {
    Q_OBJECT

public:
    LogbookScreen(SessionNotifier& notifier, QWidget* parent, const QString& title);

    [[nodiscard]] SessionNotifier& notifier() const { return *m_notifier; }

protected:
    // "Options": the screen's own entries (fill), then "About...".
    QMenu* addOptionsMenu(const std::function<void(QMenu*)>& fill = {});

private:
    SessionNotifier* m_notifier;
};

// Opens a child screen without blocking (window-modal over its parent) and runs then after it
// closed, whatever closed it. The child deletes itself.
void openChild(QDialog* child, std::function<void(int result)> then = {});

}  // namespace nutrovex
