#include "storage/FileIo.h"

#include <fcntl.h>
#include <malloc.h>
#include <signal.h>
#include <stdio.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>
#include <tuple>
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
    void reset(int fd) {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
        m_fd = fd;
    }

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

constexpr std::string_view kTemporaryMark = ".tmp";

// "." + file name + ".tmp" + process id + "-" + a counter: the process's own part ends at "-".
std::string temporaryPrefix(std::string_view fileName, long pid) {
    return "." + std::string(fileName) + std::string(kTemporaryMark) + std::to_string(pid) + "-";
}

bool allDigits(std::string_view s) {
    return !s.empty() &&
           std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

int openTemporary(const std::filesystem::path& path, std::string& tempPath) {
    static std::atomic<unsigned> counter{0};
    const std::filesystem::path folder = path.parent_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name =
            temporaryPrefix(nameOf(path), ::getpid()) + std::to_string(counter.fetch_add(1));
        tempPath = (folder / name).string();
        const int fd = ::open(tempPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) {
            return fd;
        }
    }
    errno = EEXIST;
    return -1;
}

// Removes the temporary files that saves of this file by processes no longer running left behind
// (a copy killed mid-save). Those of running processes, this one included, are left alone.
void removeStaleTemporaries(const std::filesystem::path& path) {
    const std::string prefix = "." + nameOf(path) + ".tmp";
    std::error_code ec;
    const std::filesystem::path folder =
        path.parent_path().empty() ? std::filesystem::path(".") : path.parent_path();
    for (std::filesystem::directory_iterator it(folder, ec), end; !ec && it != end;
         it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.compare(0, prefix.size(), prefix) != 0) {
            continue;
        }
        const std::size_t dash = name.find('-', prefix.size());
        if (dash == std::string::npos || dash == prefix.size()) {
            continue;
        }
        pid_t pid = 0;
        bool digits = true;
        for (std::size_t i = prefix.size(); i < dash; ++i) {
            digits = digits && name[i] >= '0' && name[i] <= '9' && pid < 100000000;
            pid = pid * 10 + (name[i] - '0');
        }
        if (digits && pid > 0 && pid != ::getpid() && ::kill(pid, 0) != 0 && errno == ESRCH) {
            (void)::unlink(it->path().c_str());
        }
    }
}

constexpr std::size_t kMappedBufferSize = std::size_t{1} << 20;
// The allocator's own step: its padding of a heap growth, the least it gives back, the least
// block it maps apart.
constexpr std::size_t kDefaultHeapStep = std::size_t{128} << 10;
// Large enough for any chunk, small enough to stay in the cache while it is parsed.
constexpr std::size_t kWindowSize = std::size_t{256} << 10;

}  // namespace

HeapReserve::HeapReserve(std::size_t bytes) {
#if defined(__GLIBC__) && defined(MADV_POPULATE_WRITE)
    constexpr std::size_t kPage = 4096;
    constexpr std::size_t kSmallest = std::size_t{1} << 20;
    constexpr std::size_t kLargest = std::size_t{1} << 30;
    if (bytes < kSmallest || bytes > kLargest) {
        return;
    }
    // What the heap has free at its top, up to the break, is where the records will go.
    auto top = [] {
        const auto end = reinterpret_cast<std::uintptr_t>(::sbrk(0));
        return std::pair{end - ::mallinfo2().keepcost, end};
    };
    // Nothing freed at the top goes back to the system while the load fills it.
    (void)::mallopt(M_TRIM_THRESHOLD, static_cast<int>(kLargest));
    m_active = true;
    auto [from, to] = top();
    if (to - from < bytes) {
        // Grow the heap by the reserve in one step: a block larger than its free top, taken from
        // the heap rather than mapped apart, with the reserve as the padding of the growth.
        const std::size_t probe = to - from + kPage;
        (void)::mallopt(M_MMAP_THRESHOLD, static_cast<int>(probe + kPage));
        (void)::mallopt(M_TOP_PAD, static_cast<int>(bytes));
        void* volatile block = ::malloc(probe);  // volatile: the pair is not to be elided
        ::free(block);
        (void)::mallopt(M_TOP_PAD, static_cast<int>(kDefaultHeapStep));
        (void)::mallopt(M_MMAP_THRESHOLD, static_cast<int>(kDefaultHeapStep));
        std::tie(from, to) = top();
    }
    from = (from + kPage - 1) & ~(kPage - 1);
    to = std::min(to & ~(kPage - 1), from + bytes);
    if (to > from) {
        (void)::madvise(reinterpret_cast<void*>(from), to - from, MADV_POPULATE_WRITE);
    }
#else
    (void)bytes;
#endif
}

HeapReserve::~HeapReserve() {
    if (m_active) {
        (void)::mallopt(M_TRIM_THRESHOLD, static_cast<int>(kDefaultHeapStep));
    }
}

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

// Opens a regular file for reading into guard and gives its size. Missing only when there is no
// such file; anything else that stops the read is Failed with the reason.
static ReadFile openRegularFile(const std::filesystem::path& path, FdGuard& guard,
                                std::size_t& size, StorageError& error) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT) {
            return ReadFile::Missing;
        }
        error = fileError(nameOf(path), "cannot be opened: " + systemReason(errno));
        return ReadFile::Failed;
    }
    guard.reset(fd);
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        error = fileError(nameOf(path), "cannot be read: " + systemReason(errno));
        return ReadFile::Failed;
    }
    if (!S_ISREG(st.st_mode)) {
        error = fileError(nameOf(path), "cannot be read: it is not a regular file");
        return ReadFile::Failed;
    }
    size = static_cast<std::size_t>(st.st_size);
    return ReadFile::Read;
}

ReadFile readWholeFile(const std::filesystem::path& path, ByteBuffer& out, StorageError& error) {
    FdGuard guard(-1);
    std::size_t fileSize = 0;
    if (const ReadFile opened = openRegularFile(path, guard, fileSize, error);
        opened != ReadFile::Read) {
        return opened;
    }
    const int fd = guard.get();
    ByteBuffer buffer(fileSize);
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

FileSource::~FileSource() {
    if (m_fd >= 0) {
        ::close(m_fd);
    }
}

ReadFile FileSource::open(const std::filesystem::path& path, StorageError& error) {
    FdGuard guard(-1);
    std::size_t fileSize = 0;
    if (const ReadFile opened = openRegularFile(path, guard, fileSize, error);
        opened != ReadFile::Read) {
        return opened;
    }
    const int fd = guard.get();
    (void)::posix_fadvise(fd, 0, 0, POSIX_FADV_SEQUENTIAL);
    m_size = fileSize;
    m_window = ByteBuffer(std::min(m_size, kWindowSize));
    m_start = 0;
    m_length = 0;
    m_fd = guard.release();
    return ReadFile::Read;
}

std::span<const uint8_t> FileSource::bytes(std::size_t offset, std::size_t n) {
    if (offset >= m_start && offset + n <= m_start + m_length) {
        return {m_window.data() + (offset - m_start), n};
    }
    // Slide: keep what is already here from offset on, then read on from the file.
    std::size_t kept = 0;
    if (offset >= m_start && offset < m_start + m_length) {
        kept = m_start + m_length - offset;
        std::memmove(m_window.data(), m_window.data() + (offset - m_start), kept);
    }
    m_start = offset;
    m_length = kept;
    const std::size_t want = std::min(m_window.size(), m_size - offset);
    while (m_length < want) {
        const ssize_t got = ::pread(m_fd, m_window.data() + m_length, want - m_length,
                                    static_cast<off_t>(offset + m_length));
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            m_failure = systemReason(errno);
            break;
        }
        if (got == 0) {
            m_failure = "the file became shorter while it was read";
            break;
        }
        m_length += static_cast<std::size_t>(got);
    }
    return {m_window.data(), std::min(n, m_length)};
}

AtomicFile::AtomicFile(std::filesystem::path path) : m_path(std::move(path)) {}

AtomicFile::~AtomicFile() {
    abandon();
}

void AtomicFile::abandon() {
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
        ::unlink(m_tempPath.c_str());
    }
}

StorageStatus AtomicFile::open(bool createFolder) {
    const std::string name = nameOf(m_path);
    int fd = openTemporary(m_path, m_tempPath);
    if (fd < 0 && errno == ENOENT && createFolder) {
        if (::mkdir(m_path.parent_path().c_str(), 0777) != 0 && errno != EEXIST) {
            return fileError(name, "its folder cannot be made: " + systemReason(errno));
        }
        fd = openTemporary(m_path, m_tempPath);
    }
    if (fd < 0) {
        return fileError(name, "cannot be written: " + systemReason(errno));
    }
    m_fd = fd;
    // A replaced file keeps its permissions.
    struct stat old {};
    if (::stat(m_path.c_str(), &old) == 0) {
        (void)::fchmod(fd, old.st_mode & 07777);
    }
    m_window = ByteBuffer(kWindowSize);
    m_used = 0;
    m_errno = 0;
    return {};
}

void AtomicFile::flush() {
    if (m_errno == 0 && m_used > 0 && !writeAll(m_fd, m_window.data(), m_used, m_errno)) {
        m_errno = m_errno != 0 ? m_errno : EIO;
    }
    m_used = 0;  // after a failure the rest is only collected to be dropped
}

uint8_t* AtomicFile::room(std::size_t n) {
    if (n > m_window.size()) {
        flush();
        m_window = ByteBuffer(n);
    } else if (m_used + n > m_window.size()) {
        flush();
    }
    uint8_t* p = m_window.data() + m_used;
    m_used += n;
    return p;
}

void AtomicFile::write(std::span<const uint8_t> bytes) {
    flush();
    if (m_errno == 0 && !writeAll(m_fd, bytes.data(), bytes.size(), m_errno)) {
        m_errno = m_errno != 0 ? m_errno : EIO;
    }
}

StorageStatus AtomicFile::commit() {
    const std::string name = nameOf(m_path);
    if (m_fd < 0) {
        return fileError(name, "cannot be written: it was never opened");
    }
    flush();
    if (m_errno != 0) {
        const int e = m_errno;
        abandon();
        return fileError(name, "cannot be written: " + systemReason(e));
    }
    if (::fsync(m_fd) != 0) {
        const int e = errno;
        abandon();
        return fileError(name, "cannot be flushed to the disk: " + systemReason(e));
    }
    const int fd = std::exchange(m_fd, -1);
    if (::close(fd) != 0) {
        const int e = errno;
        ::unlink(m_tempPath.c_str());
        return fileError(name, "cannot be written: " + systemReason(e));
    }
    if (::rename(m_tempPath.c_str(), m_path.c_str()) != 0) {
        const int e = errno;
        ::unlink(m_tempPath.c_str());
        return fileError(name, "cannot replace the old file: " + systemReason(e));
    }
    // Make the rename itself durable.
    syncFolder(m_path.parent_path().empty() ? std::filesystem::path(".") : m_path.parent_path());
    removeStaleTemporaries(m_path);
    return {};
}

void syncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        (void)::fsync(fd);
        ::close(fd);
    }
}

StorageStatus moveFolder(const std::filesystem::path& from, const std::filesystem::path& to) {
    const std::string name = to.filename().string();
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) != 0) {
        int e = errno;
        if (e == EINVAL || e == ENOSYS) {
            // A file system that cannot refuse by itself: look first.
            struct stat st {};
            if (::lstat(to.c_str(), &st) == 0) {
                e = EEXIST;
            } else if (::rename(from.c_str(), to.c_str()) == 0) {
                e = 0;
            } else {
                e = errno;
            }
        }
        if (e == EEXIST) {
            return fileError(name, "a folder of that name is already there");
        }
        if (e != 0) {
            return fileError(name, "the folder cannot be moved into place: " + systemReason(e));
        }
    }
    syncFolder(to.parent_path());
    syncFolder(from.parent_path());
    return {};
}

std::size_t removeStaleTemporaries(const std::filesystem::path& folder,
                                   std::span<const std::string_view> fileNames) {
    std::size_t removed = 0;
    std::error_code ec;
    std::filesystem::directory_iterator it(folder, ec);
    if (ec) {
        return 0;  // a folder that is not there holds nothing stale
    }
    const std::string ownPid = std::to_string(::getpid());
    for (; it != std::filesystem::directory_iterator(); it.increment(ec)) {
        if (ec) {
            break;
        }
        const std::string name = it->path().filename().string();
        for (const std::string_view file : fileNames) {
            const std::string lead = "." + std::string(file) + std::string(kTemporaryMark);
            if (!name.starts_with(lead)) {
                continue;
            }
            const std::string_view rest = std::string_view(name).substr(lead.size());
            const std::size_t dash = rest.find('-');
            if (dash == std::string_view::npos || !allDigits(rest.substr(0, dash)) ||
                !allDigits(rest.substr(dash + 1)) || rest.substr(0, dash) == ownPid) {
                continue;
            }
            std::error_code statError;
            if (it->symlink_status(statError).type() == std::filesystem::file_type::regular &&
                ::unlink(it->path().c_str()) == 0) {
                ++removed;
            }
        }
    }
    return removed;
}

OutputFile::OutputFile(std::filesystem::path path) : m_path(std::move(path)) {}

OutputFile::~OutputFile() {
    abandon();
}

StorageStatus OutputFile::open() {
    const std::string name = m_path.string();
    struct stat target {};
    if (::stat(m_path.c_str(), &target) != 0) {
        const int e = errno;
        struct stat link {};
        if (e == ENOENT && ::lstat(m_path.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) {
            return fileError(name, "not written: it is a symbolic link to nothing");
        }
        if (e != ENOENT) {
            return fileError(name, "cannot be written: " + systemReason(e));
        }
    } else if (S_ISCHR(target.st_mode) || S_ISFIFO(target.st_mode)) {
        // Written through, as a shell's redirection would: a device or a pipe is no file to
        // replace. A FIFO waits here for its reader.
        int fd = -1;
        do {
            fd = ::open(m_path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        } while (fd < 0 && errno == EINTR);
        if (fd < 0) {
            return fileError(name, "cannot be written: " + systemReason(errno));
        }
        m_fd = fd;
        m_window = ByteBuffer(kWindowSize);
        m_used = 0;
        m_errno = 0;
        return {};
    } else if (!S_ISREG(target.st_mode)) {
        return fileError(name, S_ISDIR(target.st_mode)
                                   ? "not written: it is a folder"
                                   : "not written: it is neither a file, a device nor a FIFO");
    }
    // A regular file, or none yet. Through a symbolic link it is the file linked to that is
    // replaced, so the link stays a link.
    std::filesystem::path file = m_path;
    std::error_code ec;
    if (std::filesystem::is_symlink(std::filesystem::symlink_status(m_path, ec))) {
        file = std::filesystem::canonical(m_path, ec);
        if (ec) {
            return fileError(name, "cannot be written: the link cannot be followed: " +
                                       systemReason(ec.value()));
        }
    }
    m_replace = std::make_unique<AtomicFile>(file);
    StorageStatus status = m_replace->open(false);
    if (!status) {
        m_replace.reset();
        StorageError error = status.error();
        error.file = name;
        return error;
    }
    return {};
}

void OutputFile::flush() {
    if (m_errno == 0 && m_used > 0 && !writeAll(m_fd, m_window.data(), m_used, m_errno)) {
        m_errno = m_errno != 0 ? m_errno : EIO;
    }
    m_used = 0;
}

uint8_t* OutputFile::room(std::size_t n) {
    if (m_replace) {
        return m_replace->room(n);
    }
    if (n > m_window.size()) {
        flush();
        m_window = ByteBuffer(n);
    } else if (m_used + n > m_window.size()) {
        flush();
    }
    uint8_t* p = m_window.data() + m_used;
    m_used += n;
    return p;
}

void OutputFile::write(std::span<const uint8_t> bytes) {
    if (m_replace) {
        m_replace->write(bytes);
        return;
    }
    flush();
    if (m_errno == 0 && !writeAll(m_fd, bytes.data(), bytes.size(), m_errno)) {
        m_errno = m_errno != 0 ? m_errno : EIO;
    }
}

StorageStatus OutputFile::commit() {
    const std::string name = m_path.string();
    if (m_replace) {
        StorageStatus status = m_replace->commit();
        m_replace.reset();
        if (!status) {
            StorageError error = status.error();
            error.file = name;
            return error;
        }
        return status;
    }
    if (m_fd < 0) {
        return fileError(name, "cannot be written: it was never opened");
    }
    flush();
    const int fd = std::exchange(m_fd, -1);
    const int closed = ::close(fd) == 0 ? 0 : errno;
    if (m_errno != 0 || closed != 0) {
        return fileError(name,
                         "cannot be written: " + systemReason(m_errno != 0 ? m_errno : closed));
    }
    return {};
}

void OutputFile::abandon() {
    if (m_replace) {
        m_replace->abandon();
        m_replace.reset();
    }
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

StorageStatus writeOutputFile(const std::filesystem::path& path, std::span<const uint8_t> bytes) {
    OutputFile file(path);
    if (StorageStatus s = file.open(); !s) {
        return s;
    }
    file.write(bytes);
    return file.commit();
}

StorageStatus writeFileAtomically(const std::filesystem::path& path, std::span<const uint8_t> bytes,
                                  bool createFolder) {
    AtomicFile file(path);
    if (StorageStatus s = file.open(createFolder); !s) {
        return s;
    }
    file.write(bytes);
    return file.commit();
}

}  // namespace nutrovex
