#pragma once

#include <QObject>

#include "core/ScreenMessage.h"
#include "session/SessionStatus.h"

namespace nutrovex {

class Session;

// The one door through which a screen's change reaches the session and every other open screen.
// A screen runs an engine command, hands the Notices it returned to apply() (or applyAndSave() at
// a save point), and shows the returned status when it failed (showFailure() in MessageBoxes.h):
//
//     const Notices n = logbook.deleteCurrentDay();
//     showFailure(this, m_notifier.apply(n));
//
// Every open screen connects to the signals and redraws.
class SessionNotifier : public QObject {
    Q_OBJECT

public:
    explicit SessionNotifier(Session& session, QObject* parent = nullptr);

    [[nodiscard]] Session& session() { return *m_session; }

    // The session marks what changed modified; then the signals the notices name go out.
    SessionStatus apply(const Notices& notices);
    // The same, then what is modified is saved at once (a screen that saves when it closes).
    SessionStatus applyAndSave(const Notices& notices);
    // After the session switched, added, renamed or deleted a user: everything shown is stale.
    void announceUserChanged();

Q_SIGNALS:
    void dataChanged();
    void personalInfoReset();
    void dayCreated();
    void userChanged();

private:
    void publish(const Notices& notices);

    Session* m_session;
};

}  // namespace nutrovex
