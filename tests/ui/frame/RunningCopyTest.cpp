#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <atomic>
#include <filesystem>
#include <thread>

#include "ui/frame/RunningCopy.h"

namespace nutrovex {
namespace {

namespace fs = std::filesystem;

// Asks from another thread, as a second process would, while this one answers.
bool askWhileAnswering(const fs::path& root, int timeoutMs = 3000) {
    std::atomic<bool> done = false;
    bool answered = false;
    std::thread second([&] {
        answered = RunningCopy::askToComeForward(root, timeoutMs);
        done = true;
    });
    while (!done) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    second.join();
    return answered;
}

TEST(RunningCopy, ASecondCopyOnTheSameRootAsksTheFirstToComeForward) {
    QTemporaryDir dir;
    const fs::path root = dir.path().toStdString();
    RunningCopy first(root);
    ASSERT_TRUE(first.listen());
    QSignalSpy asked(&first, &RunningCopy::comeForwardAsked);

    EXPECT_TRUE(askWhileAnswering(root));
    EXPECT_EQ(asked.count(), 1);
    // Another spelling of the same root reaches the same copy.
    EXPECT_TRUE(askWhileAnswering(root / "Users" / ".."));
    EXPECT_EQ(asked.count(), 2);
}

TEST(RunningCopy, NobodyAnswersOnAnotherRootOrAfterTheFirstEnded) {
    QTemporaryDir dir;
    const fs::path one = fs::path(dir.path().toStdString()) / "one";
    const fs::path two = fs::path(dir.path().toStdString()) / "two";
    fs::create_directories(one / "Users");
    fs::create_directories(two);
    EXPECT_NE(RunningCopy::serverName(one), RunningCopy::serverName(two));
    {
        RunningCopy first(one);
        ASSERT_TRUE(first.listen());
        QSignalSpy asked(&first, &RunningCopy::comeForwardAsked);
        EXPECT_FALSE(askWhileAnswering(two, 200));
        EXPECT_EQ(asked.count(), 0);
    }
    EXPECT_FALSE(askWhileAnswering(one, 200));
    // The lock's next holder takes the name over.
    RunningCopy next(one);
    ASSERT_TRUE(next.listen());
    EXPECT_TRUE(askWhileAnswering(one));
}

}  // namespace
}  // namespace nutrovex
