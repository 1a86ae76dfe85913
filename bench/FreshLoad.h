// Loads measured in processes of their own (FreshLoadBench.cpp): each kind of load is a function
// the fresh process runs on a file.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

#include "BenchData.h"

namespace nutrovex::bench {

// Loads the file into records that stay; false when it could not.
using FreshLoad = bool (*)(const char* path);
// Every kind by name ("catalogue", "logbook", "user-file", "sqlite" where it is built).
std::map<std::string, FreshLoad>& freshLoads();

struct FreshLoadFigures {
    bool ok = false;
    double readSeconds = 0;  // read() of the file into fresh pages, in the same process
    double loadSeconds = 0;
    double loadFaults = 0;  // page faults the load took
    double addedBytes = 0;  // resident memory the load added
    ProcessFigures process;
};

// Loads `file` as `kind` in a process just started.
FreshLoadFigures runFreshLoad(const std::string& kind, const std::string& file);
// Sets the counters read_ms, ratio (load / read), load_faults, added_MB and mem_ratio (added /
// the file's size), with the load average.
void reportFreshLoad(benchmark::State& state, const FreshLoadFigures& f, const std::string& file);

int freshLoadChild(const char* kind, const char* path);

}  // namespace nutrovex::bench
