// The loads of the largest files, each in a process just started as the program's is: its heap
// has never held anything, so every page of the records is new to it. Beside each, the reference
// measured in the same process: read() of the same file into fresh pages (targets: the catalogue
// <= 3 x, the logbook <= 2 x), and the resident memory the load adds beside the file's size.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "BenchData.h"
#include "FreshLoad.h"
#include "storage/CatalogueStorage.h"
#include "storage/UserFile.h"
#include "storage/UserStorage.h"

namespace nutrovex::bench {

std::map<std::string, FreshLoad>& freshLoads() {
    static std::map<std::string, FreshLoad> loads;
    return loads;
}

namespace {

bool loadCatalogueFile(const char* path) {
    auto c = std::make_unique<FoodCatalogue>();
    c->filePath = path;
    const bool read = loadCatalogue(*c, path).outcome == CatalogueLoad::Read;
    benchmark::DoNotOptimize(c);
    (void)c.release();  // the process ends here: freeing is not part of the load
    return read;
}

bool loadLogbookFile(const char* path) {
    static const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    auto store = std::make_unique<UserStore>(clock);
    store->dataFilePath = path;
    const bool read = loadUser(*store).ok();
    (void)store.release();
    return read;
}

// The tool's reading of a user file of any size: the file a window at a time into its records.
bool readUserFileAsTheToolDoes(const char* path) {
    auto file = std::make_unique<UserFile>();
    FileSource source;
    StorageError error;
    const bool read = source.open(path, error) == ReadFile::Read &&
                      readUserFile(source, *file, CalendarDate(), {"UserDB.ddb"}).ok();
    (void)file.release();
    return read;
}

const bool registered = [] {
    freshLoads()["catalogue"] = loadCatalogueFile;
    freshLoads()["logbook"] = loadLogbookFile;
    freshLoads()["user-file"] = readUserFileAsTheToolDoes;
    return true;
}();

void BM_CatalogueLoad(benchmark::State& state) {
    const std::string file = catalogueFile().string();
    for (auto _ : state) {
        const FreshLoadFigures f = runFreshLoad("catalogue", file);
        if (!f.ok) {
            state.SkipWithError("the load failed");
            return;
        }
        state.SetIterationTime(f.loadSeconds);
        reportFreshLoad(state, f, file);
    }
    state.SetLabel("target: ratio <= 3, mem_ratio <= 2");
}
BENCHMARK(BM_CatalogueLoad)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 15);
});

void BM_LogbookLoad(benchmark::State& state) {
    const std::string file = logbookFile().string();
    for (auto _ : state) {
        const FreshLoadFigures f = runFreshLoad("logbook", file);
        if (!f.ok) {
            state.SkipWithError("the load failed");
            return;
        }
        state.SetIterationTime(f.loadSeconds);
        reportFreshLoad(state, f, file);
    }
    state.counters["days"] = kDays;
    state.SetLabel("target: ratio <= 2");
}
BENCHMARK(BM_LogbookLoad)->Apply([](benchmark::internal::Benchmark* b) { freshProcesses(b, 15); });

}  // namespace

FreshLoadFigures runFreshLoad(const std::string& kind, const std::string& file) {
    const ProcessFigures p = runFresh({"", "--fresh-load", kind, file});
    FreshLoadFigures f;
    if (!p.ok || p.printed.size() != 4) {
        return f;
    }
    f.ok = true;
    f.readSeconds = p.printed[0];
    f.loadSeconds = p.printed[1];
    f.loadFaults = p.printed[2];
    f.addedBytes = p.printed[3];
    f.process = p;
    return f;
}

void reportFreshLoad(benchmark::State& state, const FreshLoadFigures& f, const std::string& file) {
    const double size = static_cast<double>(std::filesystem::file_size(file));
    state.counters["read_ms"] = f.readSeconds * 1e3;
    state.counters["ratio"] = f.loadSeconds / f.readSeconds;
    state.counters["load_faults"] = f.loadFaults;
    state.counters["added_MB"] = f.addedBytes / 1e6;
    state.counters["mem_ratio"] = f.addedBytes / size;
    reportLoadAverage(state);
}

// `--fresh-load KIND FILE`: the process a fresh load runs in. Prints the read's seconds, the
// load's, the page faults the load took and the resident bytes it added.
int freshLoadChild(const char* kind, const char* path) {
    const auto found = freshLoads().find(kind);
    if (found == freshLoads().end()) {
        return 2;
    }
    const double read = rawReadSeconds(path);
    const long before = residentBytes();
    const double faults = minorFaultsSoFar();
    const auto start = Clock::now();
    if (!found->second(path)) {
        return 1;
    }
    const double load = secondsSince(start);
    std::printf("%.9f %.9f %.0f %ld\n", read, load, minorFaultsSoFar() - faults,
                residentBytes() - before);
    return 0;
}

}  // namespace nutrovex::bench
