#include "ui/frame/CMainFrame.h"

#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

#include "session/MainFrameForm.h"
#include "session/Session.h"
#include "session/UsersForm.h"
#include "ui/TextConvert.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/CNutrovexView.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/frame/UsersDialog.h"
#include "ui/frame/WaitCursor.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {

CMainFrame::CMainFrame(SessionNotifier& notifier, FrameOpeners openers, QWidget* parent)
    : QMainWindow(parent),
      m_notifier(&notifier),
      m_openers(std::move(openers)),
      m_view(new CNutrovexView(this)) {
    setCentralWidget(m_view);
    menuBar()->setNativeMenuBar(false);
    statusBar();  // shows the menu prompts
    resize(kDefaultWindowWidth, kDefaultWindowHeight);

    QMenu* viewMenu = menuBar()->addMenu(QStringLiteral("&View"));
    const auto steps = MainFrameForm::steps();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const MainMenuStep& step = steps[i];
        QAction* action = viewMenu->addAction(toQString(step.menuText));
        action->setStatusTip(toQString(step.prompt));
        const int command = step.command;
        connect(action, &QAction::triggered, this, [this, command] { openStep(command); });
        if (command == kLogbookStep && !m_openers.logbook) {
            action->setEnabled(false);
            m_view->stepButton(static_cast<int>(i))->setEnabled(false);
        }
    }
    viewMenu->addSeparator();
    m_saveUser = viewMenu->addAction(QStringLiteral("&Save User"));
    m_saveUser->setShortcut(QKeySequence::Save);
    m_saveUser->setStatusTip(toQString(MainFrameForm::saveUserPrompt()));
    connect(m_saveUser, &QAction::triggered, this, [this] { (void)saveUser(); });

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    QAction* about = options->addAction(QStringLiteral("&About..."));
    about->setStatusTip(toQString(MainFrameForm::aboutPrompt()));
    connect(about, &QAction::triggered, this, [this] {
        AboutDialog dialog(this);
        dialog.exec();
    });
    m_users = options->addAction(QStringLiteral("&Users..."));
    m_users->setStatusTip(toQString(MainFrameForm::usersPrompt()));
    connect(m_users, &QAction::triggered, this, &CMainFrame::openUsers);

    connect(m_view, &CNutrovexView::stepChosen, this, &CMainFrame::openStep);
    connect(&notifier, &SessionNotifier::userChanged, this, &CMainFrame::showUser);
    connect(&notifier, &SessionNotifier::dataChanged, this, &CMainFrame::showUser);
    showUser();
}

bool CMainFrame::initialLoad() {
    SessionStatus status;
    {
        const WaitCursor wait;
        Session& session = m_notifier->session();
        status = session.initialLoad();
    }
    m_notifier->announceUserChanged();
    if (!m_notifier->session().userOpen()) {
        // Nothing could be opened: the data files themselves are unreadable.
        (void)showMessage(this, UsersForm::loadError());
    }
    return showFailure(this, status);
}

bool CMainFrame::saveUser() {
    SessionStatus status;
    {
        const WaitCursor wait;
        status = m_notifier->session().saveAll();
    }
    m_notifier->announceUserChanged();
    return showFailure(this, status);
}

void CMainFrame::openStep(int command) {
    switch (command) {
        case kHealthyDietingStep: {
            HelpDialog dialog(this);
            dialog.exec();
            break;
        }
        case kPersonalInformationStep: {
            PersonalInfoDialog dialog(*m_notifier, this);
            dialog.exec();
            break;
        }
        case kSetGoalsStep: {
            GoalsDialog dialog(*m_notifier, this, m_openers.weightChart);
            dialog.exec();
            break;
        }
        case kLogbookStep:
            if (m_openers.logbook) {
                m_openers.logbook(this);
            }
            break;
        default:
            break;
    }
}

void CMainFrame::openUsers() {
    UsersDialog dialog(*m_notifier, this);
    dialog.exec();
}

void CMainFrame::showUser() {
    setWindowTitle(toQString(MainFrameForm::windowTitle(m_notifier->session().openUserName())));
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    Session& session = m_notifier->session();
    if (session.userDataModified() || session.catalogueModified() || session.sideFilesModified()) {
        SessionStatus status;
        {
            const WaitCursor wait;
            status = session.saveModified();
        }
        if (!status && !showMessage(this, MainFrameForm::quitUnsaved(status))) {
            event->ignore();
            return;
        }
    }
    event->accept();
}

}  // namespace nutrovex
