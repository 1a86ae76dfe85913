#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace nutrovex {

inline constexpr const char* kLockFileName = "Nutrovex.lock";

// Keeps a second copy of the program, and the tool's writing commands, off a data root: an
// exclusive lock on a file in the root and on the root folder itself, held while the object
// lives. The folder's lock holds even when the file is deleted under a running copy. The system
// drops both when the process ends, however it ends.
class InstanceLock {
public:
    enum class Result : uint8_t { Acquired, HeldElsewhere, Failed };
    // Write makes the root and the lock file when they are missing; LookOnly makes nothing and
    // locks what is there (a missing root has nothing to guard).
    enum class Access : uint8_t { Write, LookOnly };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // On Failed, reason says why.
    [[nodiscard]] Result acquire(const std::filesystem::path& root, std::string& reason,
                                 Access access = Access::Write);
    [[nodiscard]] bool held() const { return m_fileFd >= 0 || m_folderFd >= 0; }
    void release();

private:
    int m_fileFd = -1;
    int m_folderFd = -1;
};

}  // namespace nutrovex
