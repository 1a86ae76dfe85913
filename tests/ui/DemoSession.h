#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "TempDir.h"
#include "core/CalendarDate.h"
#include "data/ShippedCatalogue.h"
#include "session/Session.h"
#include "tool/DemoLogbook.h"
#include "ui/frame/SessionNotifier.h"

namespace nutrovex::test {

// The demo user as the tool makes it (four months of days up to 21 November 2002, noon), open in
// a running session with its notifier: the data a person sees in the program on a typical day.
class DemoSession : public ::testing::Test {
protected:
    void SetUp() override {
        std::ostringstream said;
        std::ostringstream err;
        const std::vector<std::string> args;
        ASSERT_EQ(tool::makeDemo(tool::GlobalOptions{root.path().string()}, args, said, err, clock,
                                 shippedCatalogue()),
                  tool::kExitOk)
            << err.str();
        session = std::make_unique<Session>(root.path(), clock, settings, shippedCatalogue());
        std::string reason;
        ASSERT_EQ(session->start(reason), Session::Start::Running) << reason;
        (void)session->initialLoad();
        ASSERT_TRUE(session->switchUser(tool::kDemoUserName).ok());
        notifier = std::make_unique<SessionNotifier>(*session);
    }

    // Makes the most recent day that holds an exercise the current one.
    [[nodiscard]] bool goToADayWithAnExercise() {
        const auto& days = session->store().days();
        for (auto it = days.rbegin(); it != days.rend(); ++it) {
            if (!(*it)->exercises().empty()) {
                return session->days().setCurrentDate((*it)->date());
            }
        }
        return false;
    }

    TempDir root;
    FixedClock clock{[] {
        CalendarDate now = CalendarDate::fromDmy(21, 11, 2002);
        now.hour = 12;
        return now;
    }()};
    MemorySettings settings;
    std::unique_ptr<Session> session;
    std::unique_ptr<SessionNotifier> notifier;
};

}  // namespace nutrovex::test
