#include "session/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "storage/StorageError.h"

namespace nutrovex {

InstanceLock::~InstanceLock() {
    release();
}

void InstanceLock::release() {
    if (m_fd >= 0) {
        ::close(m_fd);  // closing drops the lock
        m_fd = -1;
    }
}

InstanceLock::Result InstanceLock::acquire(const std::filesystem::path& root, std::string& reason) {
    release();
    std::error_code ec;
    std::filesystem::create_directories(root, ec);
    if (ec) {
        reason =
            "the data folder " + root.string() + " cannot be made: " + systemReason(ec.value());
        return Result::Failed;
    }
    const std::filesystem::path path = root / kLockFileName;
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        reason = path.string() + " cannot be opened: " + systemReason(errno);
        return Result::Failed;
    }
    // flock, not fcntl: its locks belong to the open file, so even a second session inside the
    // same process is kept out.
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        ::close(fd);
        if (error == EWOULDBLOCK) {
            return Result::HeldElsewhere;
        }
        reason = path.string() + " cannot be locked: " + systemReason(error);
        return Result::Failed;
    }
    m_fd = fd;
    return Result::Acquired;
}

}  // namespace nutrovex
