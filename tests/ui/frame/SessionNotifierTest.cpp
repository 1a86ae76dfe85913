#include <gtest/gtest.h>

#include <QSignalSpy>
#include <filesystem>
#include <fstream>

#include "forms/logbook/LogbookForm.h"
#include "forms/profile/PersonalInfoForm.h"
#include "ui/ScreenSession.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

// The screens' view of the notifier's signals.
class SessionNotifierTest : public test::ScreenSession {
protected:
    [[nodiscard]] std::vector<int> signalCounts() const {
        return {static_cast<int>(changed.count()), static_cast<int>(reset.count()),
                static_cast<int>(created.count()), static_cast<int>(user.count())};
    }
    Outcome water(const char* text) {
        return LogbookForm(session.days()).edit(LogbookForm::Field::Water, text);
    }

    QSignalSpy changed{&notifier, &SessionNotifier::dataChanged};
    QSignalSpy reset{&notifier, &SessionNotifier::personalInfoReset};
    QSignalSpy created{&notifier, &SessionNotifier::dayCreated};
    QSignalSpy user{&notifier, &SessionNotifier::userChanged};
};

TEST_F(SessionNotifierTest, AnOutcomesNoticesMarkTheDataAndReachEveryScreen) {
    ASSERT_TRUE(session.saveUserData().ok());
    EXPECT_FALSE(session.userDataModified());

    // Typing water into a day that does not exist yet creates it; nothing else is announced.
    ASSERT_EQ(session.days().currentRecord(), nullptr);
    EXPECT_TRUE(notifier.apply(water("3")).ok());
    EXPECT_TRUE(session.userDataModified());
    EXPECT_EQ(signalCounts(), (std::vector<int>{0, 0, 1, 0}));
    // Into the day that now exists: no day is created.
    EXPECT_TRUE(notifier.apply(water("4")).ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{0, 0, 1, 0}));

    // Resetting the personal information: the screens showing it reload, and all redraw.
    PersonalInfoForm info(session.store().profile);
    EXPECT_TRUE(notifier.apply(info.command(PersonalInfoForm::Command::Reset)).ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{1, 1, 1, 0}));

    // A command that changed nothing announces nothing.
    EXPECT_TRUE(notifier.apply(Outcome{}).ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{1, 1, 1, 0}));

    // Another user: everything shown is stale.
    EXPECT_TRUE(notifier.apply(Notices{.userChanged = true}).ok());
    EXPECT_EQ(signalCounts(), (std::vector<int>{2, 1, 1, 1}));
}

TEST_F(SessionNotifierTest, ASavePointWritesOnlyWhatChangedOrSaysWhyNot) {
    const fs::path file = userFile();
    ASSERT_TRUE(session.saveUserData().ok());
    const auto written = fs::last_write_time(file);

    // Nothing changed: nothing is written.
    EXPECT_TRUE(notifier.save(SavePoint::Both).ok());
    EXPECT_EQ(fs::last_write_time(file), written);

    // An outcome that saves at once writes the user's data.
    Outcome typed = water("7");
    typed.save = SavePoint::UserData;
    const auto before = fs::file_size(file);
    ASSERT_TRUE(notifier.apply(typed).ok());
    EXPECT_FALSE(session.userDataModified());
    EXPECT_GT(fs::file_size(file), before);  // the new day is on disk

    // The user's folder is gone and a file stands in its place: the save fails and says where,
    // the data stays modified for a later save, and the screens still hear about the change.
    fs::remove_all(file.parent_path());
    std::ofstream(file.parent_path()) << "in the way";
    (void)notifier.apply(water("8"));
    const SessionStatus status = notifier.save(SavePoint::UserData);
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.message().find("UserDB.ddb"), std::string::npos) << status.message();
    EXPECT_TRUE(session.userDataModified());
}

}  // namespace
}  // namespace nutrovex
