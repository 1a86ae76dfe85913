// The largest data the files allow, made once per run in a scratch folder, and the references
// every figure is measured beside.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/FoodCatalogue.h"
#include "core/UserStore.h"
#include "storage/FileIo.h"

namespace nutrovex::bench {

using Clock = std::chrono::steady_clock;

inline constexpr int kGroups = 8;
inline constexpr int kCategories = 250;
inline constexpr int kFoods = 100;
inline constexpr int kDays = 7300;
inline constexpr int kFoodsPerDay = 20;
inline constexpr int kExercisesPerDay = 2;

// $NUTROVEX_BENCH_DIR (else the temporary folder); removed when the run ends.
const std::filesystem::path& benchFolder();

FoodItem makeFood(uint32_t serial, int group);
// 8 groups of `categories` categories of 100 foods each; 250 makes the largest catalogue.
void fillCatalogue(FoodCatalogue& c, int categories);
void fillLargestCatalogue(FoodCatalogue& c);
// `days` consecutive days from 1 January 2000, 20 foods and 2 exercises each.
void fillLogbook(UserStore& store, int days = kDays);

// FoodDB.ddb of 8 x 250 x 100 foods and UserDB.ddb of twenty years, written on first use.
const std::filesystem::path& catalogueFile();
const std::filesystem::path& logbookFile();

// The reference for loads: read() of the whole file into fresh pages from the system.
double rawReadSeconds(const std::filesystem::path& path);
// The reference for saves: write the same bytes to a new file and fsync it.
double writeAndSyncSeconds(const std::filesystem::path& path, const ByteBuffer& bytes);

ByteBuffer fileBytes(const std::filesystem::path& path);
long residentBytes();

inline double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Sets the counters ms, <what>_ms and ratio from totals over every iteration.
void reportRatio(benchmark::State& state, double measured, double reference, const char* what);

// ---- Fresh processes ----
// The figures that matter are taken as the program meets them: in a process just started, with
// the allocator as the program has it. Such benchmarks run one process an iteration and repeat
// (min, median and max come from the repetitions, see bench/run-all.sh).

// What one process measured: the numbers it printed, and what the system counted for it.
struct ProcessFigures {
    bool ok = false;
    std::vector<double> printed;  // every number on its standard output, in order
    std::string output;
    double seconds = 0;  // from its start to its end
    double maxResidentBytes = 0;
    double minorFaults = 0;
    double majorFaults = 0;
};

// Runs `command` (a program and its arguments; "" as the program is this program) with its
// standard input from `in` and its output to `out` ("" keeps it in `output` and `printed`). It
// is started by a small fresh copy of this program, so that what the system counts is its own:
// a process made straight from this one would count this one's memory as its own.
ProcessFigures runFresh(std::vector<std::string> command, const std::string& in = "/dev/null",
                        const std::string& out = "");
// The fresh copy's side: `--measure RESULT IN OUT PROGRAM ARGS...` runs PROGRAM and writes its
// exit status, seconds, peak resident kilobytes and page faults to RESULT.
int measureChild(int argc, char** argv);

// Repeated `repetitions` times, one process an iteration, its time set by the benchmark.
inline benchmark::internal::Benchmark* freshProcesses(benchmark::internal::Benchmark* b,
                                                      int repetitions) {
    return b->Iterations(1)
        ->Repetitions(repetitions)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

// The system's load average over the last minute, as a counter beside the figures: the
// machines here are shared and busy.
void reportLoadAverage(benchmark::State& state);

// Page faults of this process so far (minor, as a load takes them).
double minorFaultsSoFar();

}  // namespace nutrovex::bench
