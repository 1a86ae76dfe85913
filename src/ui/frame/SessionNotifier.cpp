#include "ui/frame/SessionNotifier.h"

#include "session/Session.h"

namespace nutrovex {

SessionNotifier::SessionNotifier(Session& session, QObject* parent)
    : QObject(parent), m_session(&session) {}

SessionStatus SessionNotifier::apply(const Notices& notices) {
    m_session->apply(notices);
    publish(notices);
    return {};
}

SessionStatus SessionNotifier::applyAndSave(const Notices& notices) {
    m_session->apply(notices);
    SessionStatus status = m_session->saveModified();
    publish(notices);
    return status;
}

void SessionNotifier::announceUserChanged() {
    Q_EMIT userChanged();
    Q_EMIT dataChanged();
}

void SessionNotifier::publish(const Notices& notices) {
    // The personal information first: screens that show it reload before they redraw.
    if (notices.personalInfoReset) {
        Q_EMIT personalInfoReset();
    }
    if (notices.dayCreated) {
        Q_EMIT dayCreated();
    }
    if (notices.dataChanged) {
        Q_EMIT dataChanged();
    }
}

}  // namespace nutrovex
