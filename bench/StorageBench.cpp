// Load and save of the largest files the formats allow, each beside its reference measured in the
// same run: reading the file's bytes into a fresh buffer, and writing and fsyncing the same bytes.
// The ratio counters are the figures to compare with the targets (load <= 3x, save <= 2x).
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <filesystem>
#include <memory>

#include "BenchData.h"
#include "core/CalendarDate.h"
#include "storage/CatalogueStorage.h"
#include "storage/UserStorage.h"

namespace {

using namespace nutrovex;
using namespace nutrovex::bench;
using Clock = nutrovex::bench::Clock;
namespace fs = std::filesystem;

// Resident memory that loading the largest catalogue adds, beside the file's size (target <= 2).
void BM_CatalogueLoadMemory(benchmark::State& state) {
    const fs::path& path = catalogueFile();
    const double fileSize = static_cast<double>(fs::file_size(path));
    double added = 0;
    for (auto _ : state) {
        ::malloc_trim(0);
        const long before = residentBytes();
        auto c = std::make_unique<FoodCatalogue>();
        c->filePath = path;
        if (loadCatalogue(*c, path).outcome != CatalogueLoad::Read) {
            state.SkipWithError("load failed");
            return;
        }
        added = static_cast<double>(residentBytes() - before);
        state.PauseTiming();
        c.reset();
        state.ResumeTiming();
    }
    state.counters["file_MB"] = fileSize / 1e6;
    state.counters["added_MB"] = added / 1e6;
    state.counters["ratio"] = added / fileSize;
}
BENCHMARK(BM_CatalogueLoadMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_CatalogueLoad(benchmark::State& state) {
    const fs::path& path = catalogueFile();
    double load = 0;
    double read = 0;
    for (auto _ : state) {
        state.PauseTiming();
        read += rawReadSeconds(path);
        auto c = std::make_unique<FoodCatalogue>();
        c->filePath = path;
        state.ResumeTiming();
        const auto start = Clock::now();
        if (loadCatalogue(*c, path).outcome != CatalogueLoad::Read) {
            state.SkipWithError("load failed");
            return;
        }
        load += std::chrono::duration<double>(Clock::now() - start).count();
        state.PauseTiming();
        c.reset();
        state.ResumeTiming();
    }
    reportRatio(state, load, read, "read");
    state.counters["foods"] = kGroups * kCategories * kFoods;
}
BENCHMARK(BM_CatalogueLoad)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_CatalogueSave(benchmark::State& state) {
    FoodCatalogue c;
    fillLargestCatalogue(c);
    c.filePath = benchFolder() / "SaveFoodDB.ddb";
    const ByteBuffer bytes = fileBytes(catalogueFile());
    const fs::path reference = benchFolder() / "reference.bin";
    double save = 0;
    double write = 0;
    for (auto _ : state) {
        state.PauseTiming();
        write += writeAndSyncSeconds(reference, bytes);
        state.ResumeTiming();
        const auto start = Clock::now();
        if (!saveCatalogue(c).ok()) {
            state.SkipWithError("save failed");
            return;
        }
        save += std::chrono::duration<double>(Clock::now() - start).count();
    }
    reportRatio(state, save, write, "write_fsync");
}
BENCHMARK(BM_CatalogueSave)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// With coldHeap, the memory that earlier iterations freed goes back to the system before each
// load, which then takes a page fault for every page of its records, as in a program just
// started; otherwise the load reuses part of what the previous iteration freed.
void logbookLoad(benchmark::State& state, bool coldHeap) {
    const fs::path& path = logbookFile();
    const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    double load = 0;
    double read = 0;
    for (auto _ : state) {
        state.PauseTiming();
        if (coldHeap) {
            ::malloc_trim(0);
        }
        read += rawReadSeconds(path);
        auto store = std::make_unique<UserStore>(clock);
        store->dataFilePath = path;
        state.ResumeTiming();
        const auto start = Clock::now();
        if (!loadUser(*store).ok() || store->days().size() != kDays) {
            state.SkipWithError("load failed");
            return;
        }
        load += std::chrono::duration<double>(Clock::now() - start).count();
        state.PauseTiming();
        store.reset();
        state.ResumeTiming();
    }
    reportRatio(state, load, read, "read");
    state.counters["days"] = kDays;
}

void BM_LogbookLoad(benchmark::State& state) {
    logbookLoad(state, false);
}
BENCHMARK(BM_LogbookLoad)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_LogbookLoadColdHeap(benchmark::State& state) {
    logbookLoad(state, true);
}
BENCHMARK(BM_LogbookLoadColdHeap)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void BM_LogbookSave(benchmark::State& state) {
    const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
    UserStore store(clock);
    fillLogbook(store);
    store.userFolderPath = benchFolder();
    store.dataFilePath = benchFolder() / "SaveUserDB.ddb";
    const ByteBuffer bytes = fileBytes(logbookFile());
    const fs::path reference = benchFolder() / "reference.bin";
    double save = 0;
    double write = 0;
    for (auto _ : state) {
        state.PauseTiming();
        write += writeAndSyncSeconds(reference, bytes);
        state.ResumeTiming();
        const auto start = Clock::now();
        if (!saveUser(store).ok()) {
            state.SkipWithError("save failed");
            return;
        }
        save += std::chrono::duration<double>(Clock::now() - start).count();
    }
    reportRatio(state, save, write, "write_fsync");
    state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK(BM_LogbookSave)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
