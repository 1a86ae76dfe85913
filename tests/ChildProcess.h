#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern char** environ;

namespace nutrovex::test {

// How a program run by runProgram ended, with what it wrote.
struct Ended {
    bool exited = false;
    int code = -1;    // when exited
    int signal = 0;   // when a signal ended it
    std::string out;  // standard output
    std::string err;  // standard error
};

// Runs the program with arguments and the environment of this process with `extra`
// ("NAME=value") put in, its output and errors caught in files under `scratch`. No shell is
// involved, so that a preloaded library sees the program alone.
inline Ended runProgram(const std::vector<std::string>& argv, const std::vector<std::string>& extra,
                        const std::filesystem::path& scratch) {
    std::vector<std::string> env = extra;
    for (char** e = environ; *e != nullptr; ++e) {
        const std::string entry(*e);
        const std::string name = entry.substr(0, entry.find('=') + 1);
        if (std::none_of(extra.begin(), extra.end(),
                         [&](const std::string& x) { return x.starts_with(name); })) {
            env.push_back(entry);
        }
    }
    std::vector<char*> envp;
    for (std::string& e : env) {
        envp.push_back(e.data());
    }
    envp.push_back(nullptr);
    std::vector<std::string> args = argv;
    std::vector<char*> argp;
    for (std::string& a : args) {
        argp.push_back(a.data());
    }
    argp.push_back(nullptr);
    const std::string outPath = (scratch / "child.out").string();
    const std::string errPath = (scratch / "child.err").string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t pid = -1;
    Ended ended;
    if (::posix_spawn(&pid, argp[0], &actions, nullptr, argp.data(), envp.data()) == 0) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        ended.exited = WIFEXITED(status);
        ended.code = ended.exited ? WEXITSTATUS(status) : -1;
        ended.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }
    posix_spawn_file_actions_destroy(&actions);
    const auto slurp = [](const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    ended.out = slurp(outPath);
    ended.err = slurp(errPath);
    return ended;
}

// The environment that makes a program's n-th change to the file system (see
// FaultInjection.cpp) kill it ("kill") or fail with an error number ("28").
inline std::vector<std::string> faultAt(long n, const std::string& how) {
    return {std::string("LD_PRELOAD=") + NUTROVEX_FAULT_LIBRARY,
            "NUTROVEX_FAULT_AT=" + std::to_string(n), "NUTROVEX_FAULT=" + how,
            // A sanitized program wants its runtime first; the shim comes first on purpose.
            "ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0"};
}

}  // namespace nutrovex::test
