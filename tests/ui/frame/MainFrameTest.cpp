#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QTest>

#include <fstream>

#include "charts/ChartSettings.h"
#include "core/UserProfile.h"
#include "storage/UserStorage.h"
#include "ui/ScreenSession.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/CNutrovexView.h"
#include "ui/frame/HelpDialog.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/Tour.h"
#include "ui/frame/UsersDialog.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;
using test::answerMessage;
using test::SeenMessage;
using test::whenModal;

// The program's main window, before its start-up load.
class MainFrameTest : public test::ScreenSession {
protected:
    MainFrameTest() : ScreenSession(at(25, 9, 2002), false) {}

    std::unique_ptr<CMainFrame> frame(FrameOpeners openers = {}) {
        auto window =
            std::make_unique<CMainFrame>(MainFrameForm(session), notifier, std::move(openers));
        window->show();
        return window;
    }

    MemoryChartSettings charts;
};

// Walks the screen with Tab from its focused control until the focus comes back, and checks
// that every control a person can reach was reached and has a name for a screen reader.
void expectReachableByTab(QWidget& screen) {
    QWidget* first = screen.focusWidget();
    ASSERT_NE(first, nullptr);
    QSet<QWidget*> reached;
    QWidget* at = first;
    for (int i = 0; i < 64 && !reached.contains(at); ++i) {
        reached.insert(at);
        EXPECT_FALSE(at->accessibleName().isEmpty())
            << screen.windowTitle().toStdString() << ": " << at->metaObject()->className()
            << " has no accessible name";
        QTest::keyClick(at, Qt::Key_Tab);
        at = screen.focusWidget();
    }
    for (QWidget* w : screen.findChildren<QWidget*>()) {
        if (w->isVisibleTo(&screen) && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus) &&
            w->focusProxy() == nullptr && qobject_cast<QMenuBar*>(w) == nullptr) {
            EXPECT_TRUE(reached.contains(w))
                << screen.windowTitle().toStdString() << ": Tab never reaches "
                << w->metaObject()->className() << " " << w->accessibleName().toStdString();
        }
    }
}

// Tabs until the control has the focus.
void tabTo(QWidget& screen, QWidget* control) {
    for (int i = 0; i < 64 && screen.focusWidget() != control; ++i) {
        QTest::keyClick(screen.focusWidget(), Qt::Key_Tab);
    }
    ASSERT_EQ(screen.focusWidget(), control);
}

TEST_F(MainFrameTest, AFirstStartOnAnEmptyRootCreatesTheDefaultUser) {
    int opened = 0;
    FrameOpeners openers;
    openers.logbook = [&opened](QWidget*) { ++opened; };
    const auto window = frame(openers);
    EXPECT_TRUE(window->initialLoad());
    EXPECT_EQ(session.openUserName(), "Zerbu");
    EXPECT_TRUE(fs::is_directory(root() / "Users" / "Zerbu"));
    EXPECT_TRUE(fs::exists(root() / "Users" / "Users.udb"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Nutrovex - Zerbu"));
    EXPECT_EQ(settings.currentUserName(), "Zerbu");
    // A step opens through its opener; one the window was not given stays disabled.
    window->view()->stepButton(3)->click();
    EXPECT_EQ(opened, 1);
    EXPECT_FALSE(window->view()->stepButton(0)->isEnabled());
}

TEST_F(MainFrameTest, StartUpReturnsToTheRememberedUser) {
    ASSERT_TRUE(session.initialLoad());
    ASSERT_TRUE(session.addUser("Ann"));
    const auto window = frame();
    EXPECT_TRUE(window->initialLoad());
    EXPECT_EQ(session.openUserName(), "Ann");
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Nutrovex - Ann"));
}

TEST_F(MainFrameTest, ASecondCopyOnTheSameRootEndsAtOnceWithSuccess) {
    // This session holds the root's lock, as a running copy does.
    QProcess second;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    second.setProcessEnvironment(env);
    second.start(QStringLiteral(NUTROVEX_PROGRAM),
                 {QStringLiteral("--root"), QString::fromStdString(root().string())});
    ASSERT_TRUE(second.waitForFinished());
    EXPECT_EQ(second.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second.exitCode(), 0);
}

TEST_F(MainFrameTest, AtItsSmallestTheMainMenuStillLaysNothingOverAnything) {
    const auto window = frame();
    window->resize(window->minimumSizeHint());
    QApplication::processEvents();
    ASSERT_LE(window->width(), kDefaultWindowWidth);
    ASSERT_LE(window->height(), kDefaultWindowHeight);
    // Every child of the main menu (banner, step buttons, their labels) has a place of its own.
    QList<QWidget*> parts;
    for (QWidget* w : window->view()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (w->isVisible()) {
            parts << w;
        }
    }
    ASSERT_GE(parts.size(), 9);  // the banner, four buttons and four labels
    for (int i = 0; i < parts.size(); ++i) {
        EXPECT_TRUE(window->view()->rect().contains(parts[i]->geometry()))
            << parts[i]->accessibleName().toStdString();
        for (int j = i + 1; j < parts.size(); ++j) {
            EXPECT_FALSE(parts[i]->geometry().intersects(parts[j]->geometry()))
                << parts[i]->accessibleName().toStdString() << " / "
                << parts[j]->accessibleName().toStdString();
        }
    }
}

TEST_F(MainFrameTest, ChangesAreSavedWhenTheWindowCloses) {
    const auto window = frame();
    ASSERT_TRUE(window->initialLoad());
    session.store().profile.setAge(52);
    (void)notifier.apply(Notices{.userData = true});
    EXPECT_TRUE(window->close());

    UserStore saved(clock);
    saved.dataFilePath = userFile();
    ASSERT_TRUE(loadUser(saved));
    EXPECT_EQ(saved.profile.age(), 52);
    EXPECT_FALSE(session.userDataModified());
}

TEST_F(MainFrameTest, CtrlQSavesAndQuitsAsClosingTheWindowDoes) {
    const auto window = frame();
    ASSERT_TRUE(window->initialLoad());
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    session.store().profile.setAge(53);
    (void)notifier.apply(Notices{.userData = true});
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());

    UserStore saved(clock);
    saved.dataFilePath = userFile();
    ASSERT_TRUE(loadUser(saved));
    EXPECT_EQ(saved.profile.age(), 53);
}

TEST_F(MainFrameTest, AFailedSaveOnClosingAsksBeforeQuitting) {
    const auto window = frame();
    ASSERT_TRUE(window->initialLoad());
    session.store().profile.setAge(52);
    (void)notifier.apply(Notices{.userData = true});
    // The user's folder is gone and a file stands in its place: nothing can be written there.
    const fs::path folder = root() / "Users" / "Zerbu";
    fs::remove_all(folder);
    std::ofstream(folder) << "in the way";

    SeenMessage seen;
    answerMessage(QMessageBox::No, &seen);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(seen.icon, QMessageBox::Question);
    EXPECT_TRUE(seen.text.contains(QStringLiteral("UserDB.ddb"))) << seen.text.toStdString();

    answerMessage(QMessageBox::Yes);
    EXPECT_TRUE(window->close());
}

TEST_F(MainFrameTest, EveryScreenIsReachedUsedAndLeftWithTheKeyboard) {
    const auto window = frame(programOpeners(session, notifier, charts));
    CMainFrame& frame = *window;
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    ASSERT_TRUE(frame.initialLoad());
    frame.view()->stepButton(0)->setFocus();

    // Step 1: help, on the quick help; BMR; back with Escape.
    bool helped = false;
    whenModal<HelpDialog>([&helped](HelpDialog* help) {
        expectReachableByTab(*help);
        EXPECT_TRUE(help->textBox()->toPlainText().startsWith(QStringLiteral("At the top left")));
        for (QPushButton* b : help->findChildren<QPushButton*>()) {
            if (b->accessibleName() == QStringLiteral("BMR")) {
                tabTo(*help, b);
                QTest::keyClick(b, Qt::Key_Space);
            }
        }
        EXPECT_TRUE(help->textBox()->toPlainText().startsWith(
            QStringLiteral("Basal Metabolic Rate (BMR) is")));
        helped = true;
        QTest::keyClick(help->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(frame.view()->stepButton(0), Qt::Key_Space);
    EXPECT_TRUE(helped);

    // Step 2: personal information; type a name.
    bool named = false;
    whenModal<PersonalInfoDialog>([&named](PersonalInfoDialog* info) {
        expectReachableByTab(*info);
        tabTo(*info, info->nameEdit());
        QTest::keyClicks(info->nameEdit(), QStringLiteral("Ann"));
        named = true;
        QTest::keyClick(info->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(frame.view()->stepButton(0), Qt::Key_Tab);
    QTest::keyClick(frame.view()->stepButton(1), Qt::Key_Space);
    EXPECT_TRUE(named);
    EXPECT_EQ(session.store().profile.displayName(), "Ann");

    // Step 3: goals; type a start weight.
    bool weighed = false;
    whenModal<GoalsDialog>([&weighed](GoalsDialog* goals) {
        expectReachableByTab(*goals);
        tabTo(*goals, goals->startEdit());
        QTest::keyClicks(goals->startEdit(), QStringLiteral("180"));
        weighed = true;
        QTest::keyClick(goals->focusWidget(), Qt::Key_Escape);
    });
    QTest::keyClick(frame.view()->stepButton(1), Qt::Key_Tab);
    QTest::keyClick(frame.view()->stepButton(2), Qt::Key_Space);
    EXPECT_TRUE(weighed);
    EXPECT_EQ(session.store().profile.startWeight(), 180.0f);

    // The users screen, from the Options menu.
    bool listed = false;
    whenModal<UsersDialog>([&listed](UsersDialog* users) {
        expectReachableByTab(*users);
        listed = true;
        QTest::keyClick(users->focusWidget(), Qt::Key_Escape);
    });
    frame.usersAction()->trigger();
    EXPECT_TRUE(listed);
    EXPECT_TRUE(frame.isVisible());
}

}  // namespace
}  // namespace nutrovex
