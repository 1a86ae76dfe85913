#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace nutrovex {

inline constexpr const char* kLockFileName = "Nutrovex.lock";

// Keeps a second copy of the program off a data root: an exclusive lock on a file in the root,
// held while the object lives. The system drops it when the process ends, however it ends.
class InstanceLock {
public:
    enum class Result : uint8_t { Acquired, HeldElsewhere, Failed };

    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    // Makes the root when it is missing. On Failed, reason says why.
    [[nodiscard]] Result acquire(const std::filesystem::path& root, std::string& reason);
    [[nodiscard]] bool held() const { return m_fd >= 0; }
    void release();

private:
    int m_fd = -1;
};

}  // namespace nutrovex
