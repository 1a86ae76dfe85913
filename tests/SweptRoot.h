#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "StoppedRuns.h"
#include "core/CalendarDate.h"
#include "session/InstanceLock.h"
#include "session/Session.h"
#include "session/SessionSettings.h"

namespace nutrovex::test {

// The root's files once a start has swept it, as the next start after a stopped run finds them;
// the lock file is nobody's data.
inline FileMap sweptRootFiles(const std::filesystem::path& at, const Clock& clock) {
    {
        MemorySettings settings;
        Session next(at, clock, settings, {});
        std::string reason;
        EXPECT_EQ(next.start(reason), Session::Start::Running) << reason;
    }
    FileMap all = everyFile(at);
    all.erase(kLockFileName);
    return all;
}

}  // namespace nutrovex::test
