#pragma once

#include <QMainWindow>
#include <string>

#include "ui/frame/ScreenDialog.h"

class QAction;

namespace nutrovex {

class CNutrovexView;
class SessionNotifier;

// Screens of other areas that the main window opens; an empty one leaves its command disabled.
struct FrameOpeners {
    ScreenOpener logbook;
    ScreenOpener weightChart;  // the goals screen's "Weight Chart"
};

// The main window: the main menu with its menu bar ("View", "Options") and status bar. It loads
// the data once it is shown, saves on "Save User", and saves what changed when it closes.
class CMainFrame : public QMainWindow {
    Q_OBJECT

public:
    CMainFrame(SessionNotifier& notifier, FrameOpeners openers, QWidget* parent = nullptr);

    [[nodiscard]] CNutrovexView* view() const { return m_view; }
    [[nodiscard]] QAction* saveUserAction() const { return m_saveUser; }
    [[nodiscard]] QAction* usersAction() const { return m_users; }

    // The start-up load, under the wait cursor, then back to the remembered user (read before the
    // load, which remembers "Zerbu"). Failures are shown. Returns whether everything loaded.
    bool initialLoad();
    // "Save User": the user data, then the catalogue; a failure is shown.
    bool saveUser();
    // Opens the screen of a main menu command (kHealthyDietingStep ... kLogbookStep).
    void openStep(int command);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void openUsers();
    void showUser();

    SessionNotifier* m_notifier;
    FrameOpeners m_openers;
    CNutrovexView* m_view;
    QAction* m_saveUser = nullptr;
    QAction* m_users = nullptr;
};

}  // namespace nutrovex
