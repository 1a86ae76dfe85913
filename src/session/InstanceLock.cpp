#include "session/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "storage/StorageError.h"

namespace nutrovex {

namespace {

enum class Taken : uint8_t { Yes, ByAnother, Unsupported, Failed };

// flock, not fcntl: its locks belong to the open file, so even a second session inside the same
// process is kept out.
Taken lockExclusively(int fd, int& error) {
    while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        error = errno;
        if (error == EINTR) {
            continue;
        }
        if (error == EWOULDBLOCK) {
            return Taken::ByAnother;
        }
        // Some network file systems lock only files opened for writing.
        return error == EBADF || error == ENOLCK || error == EINVAL ? Taken::Unsupported
                                                                    : Taken::Failed;
    }
    return Taken::Yes;
}

}  // namespace

InstanceLock::~InstanceLock() {
    release();
}

void InstanceLock::release() {
    // Closing drops the locks.
    for (int* fd : {&m_fileFd, &m_folderFd}) {
        if (*fd >= 0) {
            ::close(*fd);
            *fd = -1;
        }
    }
}

InstanceLock::Result InstanceLock::acquire(const std::filesystem::path& root, std::string& reason,
                                           Access access) {
    release();
    const bool write = access == Access::Write;
    if (write) {
        std::error_code ec;
        std::filesystem::create_directories(root, ec);
        if (ec) {
            reason =
                "the data folder " + root.string() + " cannot be made: " + systemReason(ec.value());
            return Result::Failed;
        }
    }
    // The folder first: whoever deletes the lock file cannot let a second copy in, and a copy
    // refused makes no new lock file.
    int error = 0;
    m_folderFd = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_folderFd < 0) {
        if (!write && errno == ENOENT) {
            return Result::Acquired;  // no root: nothing to look at, nothing to guard
        }
        reason = root.string() + " cannot be opened: " + systemReason(errno);
        return Result::Failed;
    }
    switch (lockExclusively(m_folderFd, error)) {
        case Taken::Yes:
            break;
        case Taken::ByAnother:
            release();
            return Result::HeldElsewhere;
        case Taken::Unsupported:
            // Where folders cannot be locked the file's lock is all there is.
            ::close(m_folderFd);
            m_folderFd = -1;
            break;
        case Taken::Failed:
            release();
            reason = root.string() + " cannot be locked: " + systemReason(error);
            return Result::Failed;
    }
    const std::filesystem::path path = root / kLockFileName;
    m_fileFd = ::open(path.c_str(), (write ? O_RDWR | O_CREAT : O_RDONLY) | O_CLOEXEC, 0644);
    if (m_fileFd < 0) {
        if (!write && errno == ENOENT) {
            return Result::Acquired;
        }
        const int e = errno;
        release();
        reason = path.string() + " cannot be opened: " + systemReason(e);
        return Result::Failed;
    }
    switch (lockExclusively(m_fileFd, error)) {
        case Taken::Yes:
            break;
        case Taken::ByAnother:
            release();
            return Result::HeldElsewhere;
        case Taken::Unsupported:
        case Taken::Failed:
            release();
            reason = path.string() + " cannot be locked: " + systemReason(error);
            return Result::Failed;
    }
    return Result::Acquired;
}

}  // namespace nutrovex
