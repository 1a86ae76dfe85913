// Saves of the largest files the formats allow, each beside its reference measured in the same
// run: writing and fsyncing the same bytes (target: ratio <= 2). The loads are measured in fresh
// processes (FreshLoadBench.cpp).
#include <benchmark/benchmark.h>

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
    reportLoadAverage(state);
    state.SetLabel("target: ratio <= 2");
}
BENCHMARK(BM_CatalogueSave)->Unit(benchmark::kMillisecond)->MinTime(0.5);

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
    reportLoadAverage(state);
    state.SetLabel("target: ratio <= 2");
    state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK(BM_LogbookSave)->Unit(benchmark::kMillisecond)->MinTime(0.5);

}  // namespace
