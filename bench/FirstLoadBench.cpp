// The twenty-year logbook's first load in a process just started, beside the raw read of the same
// file in that same process (target: load <= 2 x read). Each iteration starts this program
// afresh, so the load meets a heap that has never held anything, as the desktop program does.
#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>

#include "BenchData.h"
#include "storage/UserStorage.h"

extern char** environ;

namespace nutrovex::bench {

int firstLoadChild(const char* path, bool tuned) {
    if (tuned) {
        tuneHeapForLargeLoads();  // as the program and the tool do at start
    }
    const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    const double read = rawReadSeconds(path);
    auto store = std::make_unique<UserStore>(clock);
    store->dataFilePath = path;
    const auto start = Clock::now();
    if (!loadUser(*store).ok() || store->days().size() != kDays) {
        return 1;
    }
    const double load = secondsSince(start);
    std::printf("%.9f %.9f\n", read, load);
    return 0;
}

namespace {

// Runs `this program --first-load-child FILE tuned|plain`; false when it failed.
bool runChild(const std::string& file, bool tuned, double& read, double& load) {
    int out[2];
    if (::pipe(out) != 0) {
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    std::string self = "/proc/self/exe";
    std::string flag = "--first-load-child";
    std::string arg = file;
    std::string heap = tuned ? "tuned" : "plain";
    char* argv[] = {self.data(), flag.data(), arg.data(), heap.data(), nullptr};
    pid_t pid = 0;
    const int spawned = ::posix_spawn(&pid, "/proc/self/exe", &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    if (spawned != 0) {
        ::close(out[0]);
        return false;
    }
    char text[128] = {};
    std::size_t got = 0;
    for (ssize_t n;
         got + 1 < sizeof text && (n = ::read(out[0], text + got, sizeof text - 1 - got)) > 0;) {
        got += static_cast<std::size_t>(n);
    }
    ::close(out[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 &&
           std::sscanf(text, "%lf %lf", &read, &load) == 2;
}

// Argument 1: the heap tuned as the program tunes it; 0: the allocator's defaults.
void BM_LogbookFirstLoadInFreshProcess(benchmark::State& state) {
    const std::string file = logbookFile().string();
    const bool tuned = state.range(0) != 0;
    double read = 0;
    double load = 0;
    for (auto _ : state) {
        double r = 0;
        double l = 0;
        if (!runChild(file, tuned, r, l)) {
            state.SkipWithError("the child process failed");
            return;
        }
        read += r;
        load += l;
    }
    reportRatio(state, load, read, "read");
    state.counters["days"] = kDays;
}
BENCHMARK(BM_LogbookFirstLoadInFreshProcess)
    ->Arg(1)
    ->Arg(0)
    ->Iterations(30)
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace nutrovex::bench
