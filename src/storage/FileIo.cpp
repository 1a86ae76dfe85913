#include "storage/FileIo.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <string>
#include <utility>

namespace nutrovex {

namespace {

std::string nameOf(const std::filesystem::path& path) {
    return path.filename().string();
}

// Closes the descriptor when the scope ends, unless released.
class FdGuard {
public:
    explicit FdGuard(int fd) : m_fd(fd) {}
    ~FdGuard() {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    FdGuard(const FdGuard&) = delete;
    FdGuard& operator=(const FdGuard&) = delete;
    [[nodiscard]] int get() const { return m_fd; }
    int release() { return std::exchange(m_fd, -1); }

private:
    int m_fd;
};

bool writeAll(int fd, const uint8_t* data, std::size_t size, int& errorNumber) {
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            errorNumber = errno;
            return false;
        }
        if (n == 0) {
            errorNumber = EIO;
            return false;
        }
        data += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

int openTemporary(const std::filesystem::path& path, std::string& tempPath) {
    static std::atomic<unsigned> counter{0};
    const std::filesystem::path folder = path.parent_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name = "." + nameOf(path) + ".tmp" + std::to_string(::getpid()) + "-" +
                                 std::to_string(counter.fetch_add(1));
        tempPath = (folder / name).string();
        const int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) {
            return fd;
        }
    }
    errno = EEXIST;
    return -1;
}

constexpr std::size_t kMappedBufferSize = std::size_t{1} << 20;

}  // namespace

ByteBuffer::ByteBuffer(std::size_t size) : m_size(size), m_capacity(size) {
    if (size >= kMappedBufferSize) {
        void* p = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (p != MAP_FAILED) {
#ifdef MADV_HUGEPAGE
            (void)::madvise(p, size, MADV_HUGEPAGE);
#endif
            m_data = static_cast<uint8_t*>(p);
            m_mapped = true;
            return;
        }
    }
    m_data = new uint8_t[size];
}

ByteBuffer::~ByteBuffer() {
    release();
}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    if (this != &other) {
        release();
        m_data = std::exchange(other.m_data, nullptr);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
        m_mapped = other.m_mapped;
    }
    return *this;
}

void ByteBuffer::release() noexcept {
    if (m_mapped) {
        ::munmap(m_data, m_capacity);
    } else {
        delete[] m_data;
    }
    m_data = nullptr;
    m_size = 0;
    m_capacity = 0;
}

ReadFile readWholeFile(const std::filesystem::path& path, ByteBuffer& out, StorageError& error) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            return ReadFile::Missing;
        }
        error = fileError(nameOf(path), "cannot be opened: " + systemReason(errno));
        return ReadFile::Failed;
    }
    FdGuard guard(fd);
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        error = fileError(nameOf(path), "cannot be read: " + systemReason(errno));
        return ReadFile::Failed;
    }
    if (!S_ISREG(st.st_mode)) {
        error = fileError(nameOf(path), "cannot be read: it is not a regular file");
        return ReadFile::Failed;
    }
    ByteBuffer buffer(static_cast<std::size_t>(st.st_size));
    std::size_t got = 0;
    while (got < buffer.size()) {
        const ssize_t n = ::read(fd, buffer.data() + got, buffer.size() - got);
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            error = fileError(nameOf(path), "cannot be read: " + systemReason(errno));
            return ReadFile::Failed;
        }
        if (n == 0) {
            break;  // the file shrank while we read it: take what is there
        }
        got += static_cast<std::size_t>(n);
    }
    buffer.shrink(got);
    out = std::move(buffer);
    return ReadFile::Read;
}

StorageStatus writeFileAtomically(const std::filesystem::path& path, std::span<const uint8_t> bytes,
                                  bool createFolder) {
    const std::string name = nameOf(path);
    std::string tempPath;
    int fd = openTemporary(path, tempPath);
    if (fd < 0 && errno == ENOENT && createFolder) {
        if (::mkdir(path.parent_path().c_str(), 0777) != 0 && errno != EEXIST) {
            return fileError(name, "its folder cannot be made: " + systemReason(errno));
        }
        fd = openTemporary(path, tempPath);
    }
    if (fd < 0) {
        return fileError(name, "cannot be written: " + systemReason(errno));
    }
    FdGuard guard(fd);
    auto fail = [&](const char* step, int errorNumber) {
        ::close(guard.release());
        ::unlink(tempPath.c_str());
        return StorageStatus(fileError(name, std::string(step) + systemReason(errorNumber)));
    };

    // A replaced file keeps its permissions.
    struct stat old {};
    if (::stat(path.c_str(), &old) == 0) {
        (void)::fchmod(fd, old.st_mode & 07777);
    }
    int errorNumber = 0;
    if (!writeAll(fd, bytes.data(), bytes.size(), errorNumber)) {
        return fail("cannot be written: ", errorNumber);
    }
    if (::fsync(fd) != 0) {
        return fail("cannot be flushed to the disk: ", errno);
    }
    if (::close(guard.release()) != 0) {
        const int e = errno;
        ::unlink(tempPath.c_str());
        return fileError(name, "cannot be written: " + systemReason(e));
    }
    if (::rename(tempPath.c_str(), path.c_str()) != 0) {
        const int e = errno;
        ::unlink(tempPath.c_str());
        return fileError(name, "cannot replace the old file: " + systemReason(e));
    }
    // Make the rename itself durable.
    const int dirFd = ::open(path.parent_path().empty() ? "." : path.parent_path().c_str(),
                             O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        (void)::fsync(dirFd);
        ::close(dirFd);
    }
    return {};
}

}  // namespace nutrovex
