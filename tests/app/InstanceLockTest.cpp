// The single-instance lock with the real program: a second copy on a live root brings the first
// forward and ends with status 0, a lock left by a killed copy is taken over, and two roots run
// side by side.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;

constexpr const char* kLockFileName = "Nutrovex.lock";

// A copy of the program on a root, killed when the object goes if it still runs.
class Program {
public:
    explicit Program(const fs::path& root, const fs::path& out = "/dev/null") {
        std::string program = NUTROVEX_PROGRAM_PATH;
        std::string option = "--root";
        std::string dir = root.string();
        char* argv[] = {program.data(), option.data(), dir.data(), nullptr};
        std::vector<std::string> env = {"QT_QPA_PLATFORM=offscreen", "HOME=" + dir};
        std::vector<char*> envp;
        for (std::string& e : env) {
            envp.push_back(e.data());
        }
        envp.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (::posix_spawn(&m_pid, program.c_str(), &actions, nullptr, argv, envp.data()) != 0) {
            m_pid = -1;
        }
        posix_spawn_file_actions_destroy(&actions);
    }
    ~Program() {
        if (running()) {
            kill(SIGKILL);
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] pid_t pid() const { return m_pid; }
    [[nodiscard]] bool running() {
        if (m_pid < 0 || m_exited) {
            return false;
        }
        if (::waitpid(m_pid, &m_status, WNOHANG) == m_pid) {
            m_exited = true;
        }
        return !m_exited;
    }
    void kill(int signal) {
        ::kill(m_pid, signal);
        ::waitpid(m_pid, &m_status, 0);
        m_exited = true;
    }
    // The exit status once it has ended by itself; -1 while it runs or when a signal ended it.
    [[nodiscard]] int exitStatus() {
        return !running() && WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -1;
    }

private:
    pid_t m_pid = -1;
    int m_status = 0;
    bool m_exited = false;
};

// Polls until done; the limit only keeps a broken program from hanging the suite.
bool eventually(const std::function<bool()>& done) {
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!done()) {
        if (std::chrono::steady_clock::now() > giveUp) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

// Whether the process holds a lock on the root's lock file, as the system's lock table says
// (looking does not disturb the lock, as trying to take it would).
bool holdsLock(const fs::path& root, pid_t pid) {
    struct stat st {};
    if (::stat((root / kLockFileName).c_str(), &st) != 0) {
        return false;
    }
    std::ifstream locks("/proc/locks");
    std::string line;
    while (std::getline(locks, line)) {
        std::istringstream in(line);
        std::string number, kind, mode, access, device;
        pid_t holder = 0;
        in >> number >> kind;
        if (kind == "->") {
            continue;  // a waiter, not a holder
        }
        in >> mode >> access >> holder >> device;
        const std::size_t colon = device.rfind(':');
        if (holder == pid && colon != std::string::npos &&
            std::stoull(device.substr(colon + 1)) == st.st_ino) {
            return true;
        }
    }
    return false;
}

class InstanceLock : public ::testing::Test {
protected:
    InstanceLock() {
        std::random_device rd;
        base = fs::temp_directory_path() / ("nutrovex-lock-" + std::to_string(rd()));
        fs::create_directories(base);
    }
    ~InstanceLock() override {
        std::error_code ec;
        fs::remove_all(base, ec);
    }
    fs::path base;
};

TEST_F(InstanceLock, ASecondCopyOnALiveRootEndsAtOnceWithStatusZero) {
    Program first(base / "root");
    ASSERT_TRUE(eventually([&] { return holdsLock(base / "root", first.pid()); }));
    Program second(base / "root", base / "second.out");
    ASSERT_TRUE(eventually([&] { return !second.running(); }));
    EXPECT_EQ(second.exitStatus(), 0);
    EXPECT_TRUE(first.running());
    EXPECT_TRUE(holdsLock(base / "root", first.pid()));
    // It ended only once the first had answered that it came forward.
    std::ifstream out(base / "second.out");
    const std::string said((std::istreambuf_iterator<char>(out)), std::istreambuf_iterator<char>());
    EXPECT_NE(said.find("its window was brought forward"), std::string::npos) << said;
}

TEST_F(InstanceLock, ALockLeftByAKilledCopyIsTakenOver) {
    Program killed(base / "root");
    ASSERT_TRUE(eventually([&] { return holdsLock(base / "root", killed.pid()); }));
    killed.kill(SIGKILL);
    ASSERT_TRUE(fs::exists(base / "root" / kLockFileName));  // left behind

    Program next(base / "root");
    ASSERT_TRUE(
        eventually([&] { return holdsLock(base / "root", next.pid()) || !next.running(); }));
    EXPECT_TRUE(next.running());
    EXPECT_TRUE(holdsLock(base / "root", next.pid()));
}

TEST_F(InstanceLock, DeletingTheLockFileLetsNoSecondCopyIn) {
    Program first(base / "root");
    ASSERT_TRUE(eventually([&] { return holdsLock(base / "root", first.pid()); }));
    ASSERT_TRUE(fs::remove(base / "root" / kLockFileName));
    Program second(base / "root");
    ASSERT_TRUE(eventually([&] { return !second.running(); }));
    EXPECT_EQ(second.exitStatus(), 0);
    EXPECT_TRUE(first.running());
}

TEST_F(InstanceLock, TwoRootsRunSideBySide) {
    Program one(base / "one");
    Program two(base / "two");
    ASSERT_TRUE(eventually([&] {
        return (holdsLock(base / "one", one.pid()) && holdsLock(base / "two", two.pid())) ||
               !one.running() || !two.running();
    }));
    EXPECT_TRUE(one.running());
    EXPECT_TRUE(two.running());
}

}  // namespace
