#include "ui/frame/CMainFrame.h"

#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>

#include "ui/TextConvert.h"
#include "ui/frame/AboutDialog.h"
#include "ui/frame/CNutrovexView.h"
#include "ui/frame/MessageBoxes.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/frame/WaitCursor.h"

namespace nutrovex {

CMainFrame::CMainFrame(MainFrameForm form, SessionNotifier& notifier, FrameOpeners openers,
                       QWidget* parent)
    : QMainWindow(parent),
      m_form(std::move(form)),
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
        if (!openerFor(command)) {
            action->setEnabled(false);
            m_view->stepButton(static_cast<int>(i))->setEnabled(false);
        }
    }
    viewMenu->addSeparator();
    m_saveUser = viewMenu->addAction(QStringLiteral("&Save User"));
    m_saveUser->setShortcut(QKeySequence::Save);
    m_saveUser->setStatusTip(toQString(MainFrameForm::saveUserPrompt()));
    connect(m_saveUser, &QAction::triggered, this, [this] { (void)saveUser(); });
    viewMenu->addSeparator();
    QAction* quit = viewMenu->addAction(QStringLiteral("&Quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setStatusTip(toQString(MainFrameForm::quitPrompt()));
    // Closing saves and asks first when the save fails, as closing the window does.
    connect(quit, &QAction::triggered, this, &QWidget::close);

    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    QAction* about = options->addAction(QStringLiteral("&About..."));
    about->setStatusTip(toQString(MainFrameForm::aboutPrompt()));
    connect(about, &QAction::triggered, this, [this] {
        AboutDialog dialog(this);
        dialog.exec();
    });
    m_users = options->addAction(QStringLiteral("&Users..."));
    m_users->setStatusTip(toQString(MainFrameForm::usersPrompt()));
    m_users->setEnabled(static_cast<bool>(m_openers.users));
    connect(m_users, &QAction::triggered, this, [this] {
        if (m_openers.users) {
            m_openers.users(this);
        }
    });

    connect(m_view, &CNutrovexView::stepChosen, this, &CMainFrame::openStep);
    connect(&notifier, &SessionNotifier::dataChanged, this, &CMainFrame::showUser);
    showUser();
}

const ScreenOpener& CMainFrame::openerFor(int command) const {
    switch (command) {
        case kHealthyDietingStep:
            return m_openers.help;
        case kPersonalInformationStep:
            return m_openers.personalInfo;
        case kSetGoalsStep:
            return m_openers.goals;
        case kLogbookStep:
            return m_openers.logbook;
        default:
            break;
    }
    static const ScreenOpener kNone;
    return kNone;
}

bool CMainFrame::run(MainFrameForm::Command command) {
    Outcome outcome;
    {
        const WaitCursor wait;
        outcome = m_form.command(command);
    }
    (void)showFailure(this, m_notifier->apply(outcome));
    if (command == MainFrameForm::Command::Load && !m_form.view().userOpen) {
        // Nothing could be opened: the data files themselves are unreadable.
        (void)showMessage(this, MainFrameForm::loadError());
    }
    if (outcome.message) {
        (void)showMessage(this, *outcome.message);
    }
    return !outcome.message;
}

bool CMainFrame::initialLoad() {
    return run(MainFrameForm::Command::Load);
}

bool CMainFrame::saveUser() {
    return run(MainFrameForm::Command::SaveUser);
}

void CMainFrame::openStep(int command) {
    if (const ScreenOpener& open = openerFor(command)) {
        open(this);
    }
}

void CMainFrame::showUser() {
    setWindowTitle(toQString(m_form.view().title));
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    SessionStatus status;
    {
        const WaitCursor wait;
        status = m_notifier->save(m_form.close());
    }
    if (!status && !showMessage(this, MainFrameForm::quitUnsaved(status))) {
        event->ignore();
        return;
    }
    event->accept();
}

}  // namespace nutrovex
