#pragma once

#include <QMainWindow>
#include <string>

#include "forms/frame/MainFrameForm.h"
#include "ui/frame/ScreenDialog.h"

class QAction;

namespace nutrovex {

class CNutrovexView;
class SessionNotifier;

// The screens the main window opens, each built with its form by whoever made the window; an
// empty one leaves its step or command disabled.
struct FrameOpeners {
    ScreenOpener help;
    ScreenOpener personalInfo;
    ScreenOpener goals;
    ScreenOpener logbook;
    ScreenOpener users;
};

// The main window: the main menu with its menu bar ("View", "Options") and status bar. It loads
// the data once it is shown, saves on "Save User", and saves what changed when it closes.
class CMainFrame : public QMainWindow {
    Q_OBJECT

public:
    CMainFrame(MainFrameForm form, SessionNotifier& notifier, FrameOpeners openers,
               QWidget* parent = nullptr);

    [[nodiscard]] CNutrovexView* view() const { return m_view; }
    [[nodiscard]] QAction* usersAction() const { return m_users; }

    // The start-up load, under the wait cursor. Failures are shown. Returns whether everything
    // loaded.
    bool initialLoad();
    // "Save User": the user data, then the catalogue; a failure is shown.
    bool saveUser();
    // Opens the screen of a main menu command (kHealthyDietingStep ... kLogbookStep).
    void openStep(int command);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] const ScreenOpener& openerFor(int command) const;
    bool run(MainFrameForm::Command command);
    void showUser();

    MainFrameForm m_form;
    SessionNotifier* m_notifier;
    FrameOpeners m_openers;
    CNutrovexView* m_view;
    QAction* m_saveUser = nullptr;
    QAction* m_users = nullptr;
};

}  // namespace nutrovex
