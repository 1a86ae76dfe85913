#include "ui/frame/SessionNotifier.h"

#include "session/Session.h"
#include "ui/frame/MessageBoxes.h"

namespace nutrovex {

SessionNotifier::SessionNotifier(Session& session, QObject* parent)
    : QObject(parent), m_session(&session) {}

SessionStatus SessionNotifier::apply(const Outcome& outcome) {
    m_session->apply(outcome.notices);
    SessionStatus status = m_session->save(outcome.save);
    publish(outcome.notices);
    return status;
}

SessionStatus SessionNotifier::save(SavePoint point) {
    return m_session->save(point);
}

void SessionNotifier::publish(const Notices& notices) {
    if (notices.userChanged) {
        Q_EMIT userChanged();
    }
    // The personal information first: screens that show it reload before they redraw.
    if (notices.personalInfoReset) {
        Q_EMIT personalInfoReset();
    }
    if (notices.dayCreated) {
        Q_EMIT dayCreated();
    }
    if (notices.dataChanged || notices.userChanged) {
        Q_EMIT dataChanged();
    }
}

bool showOutcome(QWidget* screen, SessionNotifier& notifier, const Outcome& outcome) {
    (void)showFailure(screen, notifier.apply(outcome));
    if (outcome.message) {
        (void)showMessage(screen, *outcome.message);
        return true;
    }
    return false;
}

}  // namespace nutrovex
