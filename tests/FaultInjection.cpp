// Preloaded into a process under test (LD_PRELOAD), makes the N-th change it makes to the file
// system end it with SIGKILL or fail with an error, so that a test can stop a save or a new user
// at every step and see what is left. A change is a file opened for writing, a write to anything
// but the standard streams, a flush to the disk, a rename, and a file or folder made or removed.
//
//   NUTROVEX_FAULT_AT=N        the change to act on, counting from 1 (none when absent)
//   NUTROVEX_FAULT=kill|N      SIGKILL, or fail with errno N (28 is "no space left")
//   NUTROVEX_FAULT_COUNT=FILE  where the number of changes made is written when the process ends
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> g_changes{0};
long g_faultAt = 0;
int g_errno = 0;  // 0: SIGKILL

__attribute__((constructor)) void readSettings() {
    if (const char* at = std::getenv("NUTROVEX_FAULT_AT")) {
        g_faultAt = std::atol(at);
    }
    if (const char* how = std::getenv("NUTROVEX_FAULT"); how && std::strcmp(how, "kill") != 0) {
        g_errno = std::atoi(how);
    }
}

__attribute__((destructor)) void writeCount() {
    if (const char* path = std::getenv("NUTROVEX_FAULT_COUNT")) {
        if (FILE* f = std::fopen(path, "w")) {
            std::fprintf(f, "%ld\n", g_changes.load());
            std::fclose(f);
        }
    }
}

// True when this change is to fail (errno set); does not return when it is to kill.
bool faultHere() {
    const long n = ++g_changes;
    if (n != g_faultAt) {
        return false;
    }
    if (g_errno == 0) {
        ::kill(::getpid(), SIGKILL);
    }
    errno = g_errno;
    return true;
}

template <typename F>
F next(const char* name) {
    return reinterpret_cast<F>(::dlsym(RTLD_NEXT, name));
}

bool writes(int flags) {
    return (flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0;
}

mode_t modeOf(int flags, va_list args) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(args, int)) : 0;
}

}  // namespace

extern "C" {

#define NUTROVEX_OPEN(name)                                                    \
    int name(const char* path, int flags, ...) {                               \
        va_list args;                                                          \
        va_start(args, flags);                                                 \
        const mode_t mode = modeOf(flags, args);                               \
        va_end(args);                                                          \
        if (writes(flags) && faultHere()) {                                    \
            return -1;                                                         \
        }                                                                      \
        return next<int (*)(const char*, int, ...)>(#name)(path, flags, mode); \
    }
NUTROVEX_OPEN(open)
NUTROVEX_OPEN(open64)
#undef NUTROVEX_OPEN

#define NUTROVEX_OPENAT(name)                                                            \
    int name(int dir, const char* path, int flags, ...) {                                \
        va_list args;                                                                    \
        va_start(args, flags);                                                           \
        const mode_t mode = modeOf(flags, args);                                         \
        va_end(args);                                                                    \
        if (writes(flags) && faultHere()) {                                              \
            return -1;                                                                   \
        }                                                                                \
        return next<int (*)(int, const char*, int, ...)>(#name)(dir, path, flags, mode); \
    }
NUTROVEX_OPENAT(openat)
NUTROVEX_OPENAT(openat64)
#undef NUTROVEX_OPENAT

// What a fortified build calls for open without a mode.
int __open_2(const char* path, int flags) {
    return writes(flags) && faultHere() ? -1
                                        : next<int (*)(const char*, int)>("__open_2")(path, flags);
}

int __open64_2(const char* path, int flags) {
    return writes(flags) && faultHere()
               ? -1
               : next<int (*)(const char*, int)>("__open64_2")(path, flags);
}

ssize_t write(int fd, const void* data, size_t size) {
    if (fd > 2 && faultHere()) {
        return -1;
    }
    return next<ssize_t (*)(int, const void*, size_t)>("write")(fd, data, size);
}

int fsync(int fd) {
    return faultHere() ? -1 : next<int (*)(int)>("fsync")(fd);
}

int fdatasync(int fd) {
    return faultHere() ? -1 : next<int (*)(int)>("fdatasync")(fd);
}

int rename(const char* from, const char* to) {
    return faultHere() ? -1 : next<int (*)(const char*, const char*)>("rename")(from, to);
}

int renameat(int fromDir, const char* from, int toDir, const char* to) {
    return faultHere() ? -1
                       : next<int (*)(int, const char*, int, const char*)>("renameat")(
                             fromDir, from, toDir, to);
}

int renameat2(int fromDir, const char* from, int toDir, const char* to, unsigned flags) {
    return faultHere() ? -1
                       : next<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(
                             fromDir, from, toDir, to, flags);
}

int mkdir(const char* path, mode_t mode) {
    return faultHere() ? -1 : next<int (*)(const char*, mode_t)>("mkdir")(path, mode);
}

int mkdirat(int dir, const char* path, mode_t mode) {
    return faultHere() ? -1 : next<int (*)(int, const char*, mode_t)>("mkdirat")(dir, path, mode);
}

int unlink(const char* path) {
    return faultHere() ? -1 : next<int (*)(const char*)>("unlink")(path);
}

int unlinkat(int dir, const char* path, int flags) {
    return faultHere() ? -1 : next<int (*)(int, const char*, int)>("unlinkat")(dir, path, flags);
}

int remove(const char* path) {
    return faultHere() ? -1 : next<int (*)(const char*)>("remove")(path);
}

int rmdir(const char* path) {
    return faultHere() ? -1 : next<int (*)(const char*)>("rmdir")(path);
}

}  // extern "C"
