#include <gtest/gtest.h>

#include <QSignalSpy>
#include <filesystem>
#include <fstream>
#include <memory>

#include "TempDir.h"
#include "logbook/Logbook.h"
#include "session/Session.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

// A running session on a fresh root with "Zerbu" open, and a screen's view of its signals.
class SessionNotifierTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();  // no template catalogue: only the user's data matters
        ASSERT_TRUE(session.userOpen());
        ASSERT_TRUE(session.saveUserData().ok());
    }

    [[nodiscard]] std::vector<int> signalCounts() const {
        return {static_cast<int>(changed.count()), static_cast<int>(reset.count()),
                static_cast<int>(created.count()), static_cast<int>(user.count())};
    }

    test::TempDir dir;
    FixedClock clock{CalendarDate::fromDmy(21, 11, 2002)};
    MemorySettings settings;
    Session session{dir.path(), clock, settings, {}};
    SessionNotifier notifier{session};
    Logbook logbook{session.days()};
    QSignalSpy changed{&notifier, &SessionNotifier::dataChanged};
    QSignalSpy reset{&notifier, &SessionNotifier::personalInfoReset};
    QSignalSpy created{&notifier, &SessionNotifier::dayCreated};
    QSignalSpy user{&notifier, &SessionNotifier::userChanged};
};

TEST_F(SessionNotifierTest, ACommandsNoticesMarkTheDataAndReachEveryScreen) {
    EXPECT_FALSE(session.userDataModified());

    // Typing water into a day that does not exist yet creates it; nothing else is announced.
    ASSERT_EQ(session.days().currentRecord(), nullptr);
    EXPECT_TRUE(notifier.apply(logbook.waterChanged(true, "3")).ok());
    EXPECT_TRUE(session.userDataModified());
    EXPECT_EQ(signalCounts(), (std::vector<int>{0, 0, 1, 0}));

    // Resetting the personal information: the screens showing it reload, and all redraw.
    session.store().profile.resetPersonal();
    EXPECT_TRUE(
        notifier.apply(Notices{.userData = true, .dataChanged = true, .personalInfoReset = true})
            .ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{1, 1, 1, 0}));

    // A command that changed nothing announces nothing.
    EXPECT_TRUE(notifier.apply(Notices{}).ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{1, 1, 1, 0}));

    notifier.announceUserChanged();
    EXPECT_EQ(signalCounts(), (std::vector<int>{2, 1, 1, 1}));
}

TEST_F(SessionNotifierTest, ASavePointWritesWhatChangedOrSaysWhyNot) {
    const fs::path userFile = dir.path() / "Users" / "Zerbu" / "UserDB.ddb";
    const auto before = fs::file_size(userFile);
    ASSERT_TRUE(notifier.applyAndSave(logbook.waterChanged(true, "7")).ok());
    EXPECT_FALSE(session.userDataModified());
    EXPECT_GT(fs::file_size(userFile), before);  // the new day is on disk
    EXPECT_EQ(created.count(), 1);

    // The user's folder is gone and a file stands in its place: the save fails and says where,
    // the data stays modified for a later save, and the screens still hear about the change.
    fs::remove_all(userFile.parent_path());
    std::ofstream(userFile.parent_path()) << "in the way";
    const SessionStatus status =
        notifier.applyAndSave(Notices{.userData = true, .dataChanged = true});
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.message().find("UserDB.ddb"), std::string::npos) << status.message();
    EXPECT_TRUE(session.userDataModified());
    EXPECT_EQ(changed.count(), 1);
}

}  // namespace
}  // namespace nutrovex
