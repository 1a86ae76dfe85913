#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "TempDir.h"
#include "core/CalendarDate.h"
#include "core/ScreenMessage.h"
#include "session/Session.h"
#include "session/SessionSettings.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// A running session on a fresh root with "Zerbu" open on 21 November 2002 at noon, its notifier,
// and a record of the messages a screen put to the person.
class ScreenTestSession : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        ASSERT_EQ(session.start(reason), Session::Start::Running) << reason;
        (void)session.initialLoad();  // no template catalogue: each test makes its own foods
        ASSERT_TRUE(session.userOpen());
    }

    static CalendarDate noon() {
        CalendarDate d = CalendarDate::fromDmy(21, 11, 2002);
        d.hour = 12;
        return d;
    }

    // Records each message and answers it: Yes to questions unless told otherwise.
    std::function<bool(const ScreenMessage&)> presenter() {
        return [this](const ScreenMessage& m) {
            messages.push_back(m);
            return answer;
        };
    }
    [[nodiscard]] std::vector<std::string> messageTexts() const {
        std::vector<std::string> texts;
        for (const ScreenMessage& m : messages) {
            texts.push_back(m.text);
        }
        return texts;
    }

    TempDir dir;
    FixedClock clock{noon()};
    MemorySettings settings;
    Session session{dir.path(), clock, settings, {}};
    SessionNotifier notifier{session};
    std::vector<ScreenMessage> messages;
    bool answer = true;
};

}  // namespace nutrovex::test
