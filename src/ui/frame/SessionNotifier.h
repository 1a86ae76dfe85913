#pragma once

#include <QObject>

#include "core/ScreenMessage.h"
#include "session/SessionStatus.h"

class QWidget;

namespace nutrovex {

class Session;

// The one door through which a screen's change reaches the session and every other open screen.
// A screen runs a command of its form and hands the Outcome to apply(): the session marks what
// changed modified and writes what the outcome asks to save now, then the signals the notices
// name go out. When the screen closes, its form's save point goes to save():
//
//     showOutcome(this, m_notifier, m_form.command(LogbookForm::Command::DeleteCurrentDay));
//     ...
//     showFailure(this, m_notifier.save(m_form.close()));
//
// Every open screen connects to the signals and redraws. Screens never hold the session: whoever
// opens a screen builds its form from the session.
class SessionNotifier : public QObject {
    Q_OBJECT

public:
    explicit SessionNotifier(Session& session, QObject* parent = nullptr);

    SessionStatus apply(const Outcome& outcome);
    SessionStatus apply(const Notices& notices) { return apply(Outcome{.notices = notices}); }
    // A screen's save point: what it names is written, each part only when it changed.
    SessionStatus save(SavePoint point);
    // A food was logged into the current day by a screen other than the day's food grid.
    void announceFoodLogged(int group, int presented) { Q_EMIT foodLogged(group, presented); }

Q_SIGNALS:
    void dataChanged();
    void personalInfoReset();
    void dayCreated();
    // Another user is open (or the open one was renamed): everything shown is stale.
    void userChanged();
    // The day's food grid of that list selects the entry at that presented position.
    void foodLogged(int group, int presented);

private:
    void publish(const Notices& notices);

    Session* m_session;
};

// The one door, for a screen: applies the outcome, then shows a failed save and the outcome's
// message. Returns whether the outcome had a message.
bool showOutcome(QWidget* screen, SessionNotifier& notifier, const Outcome& outcome);

}  // namespace nutrovex
