#pragma once

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

namespace nutrovex::test {

// Runs body in a child process with mounts of its own (a user and a mount namespace), where a
// small tmpfs and a read-only bind can be made without privileges. 77: the system does not allow
// it. Otherwise the body's exit code; the body reports what went wrong on stderr.
inline int inPrivateMounts(const std::function<int()>& body) {
    const uid_t uid = ::geteuid();
    const gid_t gid = ::getegid();
    const pid_t pid = ::fork();
    if (pid < 0) {
        return 77;
    }
    if (pid == 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            ::_exit(77);
        }
        auto write = [](const char* path, const std::string& text) {
            const int fd = ::open(path, O_WRONLY | O_CLOEXEC);
            const bool ok = fd >= 0 && ::write(fd, text.data(), text.size()) ==
                                           static_cast<ssize_t>(text.size());
            if (fd >= 0) {
                ::close(fd);
            }
            return ok;
        };
        if (!write("/proc/self/setgroups", "deny") ||
            !write("/proc/self/uid_map", "0 " + std::to_string(uid) + " 1") ||
            !write("/proc/self/gid_map", "0 " + std::to_string(gid) + " 1") ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            ::_exit(77);
        }
        ::_exit(body());
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Runs body in such a child with a tmpfs of `bytes` mounted on `folder`: a disk that fills up.
inline int onSmallDisk(const std::string& folder, std::size_t bytes,
                       const std::function<int()>& body) {
    return inPrivateMounts([&] {
        const std::string options = "size=" + std::to_string(bytes);
        if (::mount("none", folder.c_str(), "tmpfs", 0, options.c_str()) != 0) {
            return 77;
        }
        return body();
    });
}

}  // namespace nutrovex::test
