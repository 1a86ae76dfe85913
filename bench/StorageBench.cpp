// Load and save of the largest files the formats allow, each beside its reference measured in the
// same run: reading the file's bytes into a fresh buffer, and writing and fsyncing the same bytes.
// The ratio counters are the figures to compare with the targets (load <= 3x, save <= 2x).
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "core/CalendarDate.h"
#include "core/FoodCatalogue.h"
#include "core/UserStore.h"
#include "storage/CatalogueFile.h"
#include "storage/CatalogueStorage.h"
#include "storage/FileIo.h"
#include "storage/UserFile.h"
#include "storage/UserStorage.h"

namespace {

using namespace nutrovex;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kGroups = 8;
constexpr int kCategories = 250;
constexpr int kFoods = 100;
constexpr int kDays = 7300;
constexpr int kFoodsPerDay = 20;
constexpr int kExercisesPerDay = 2;

// The files live in $NUTROVEX_BENCH_DIR (else the temporary folder) and go when the run ends.
class BenchFolder {
public:
    BenchFolder() {
        const char* env = std::getenv("NUTROVEX_BENCH_DIR");
        const fs::path base = env != nullptr ? fs::path(env) : fs::temp_directory_path();
        m_path = base / ("nutrovex-bench-" + std::to_string(::getpid()));
        fs::create_directories(m_path);
    }
    ~BenchFolder() {
        std::error_code ec;
        fs::remove_all(m_path, ec);
    }
    BenchFolder(const BenchFolder&) = delete;
    BenchFolder& operator=(const BenchFolder&) = delete;
    [[nodiscard]] const fs::path& path() const { return m_path; }

private:
    fs::path m_path;
};

const fs::path& benchFolder() {
    static const BenchFolder folder;
    return folder.path();
}

FoodItem makeFood(uint32_t serial, int group) {
    FoodItem f;
    f.key.value = serial;
    f.loggedFlag = 1;
    char name[32];
    std::snprintf(name, sizeof name, "Sample food no. %06u", serial % 1000000);  // 21 characters
    f.name = name;
    f.text2 = name;
    f.serving = {1.5f, 3, 0};
    f.ref2 = {1.0f, 3, 0};
    f.nutrients = {245.0f, 48.5f, 2.0f, 10.0f, 1.5f, 0.2f};
    f.ratio = 1.5f;
    f.group = static_cast<uint16_t>(group);
    return f;
}

void fillLargestCatalogue(FoodCatalogue& c) {
    uint32_t serial = 0;
    for (int g = 0; g < kGroups; ++g) {
        for (int k = 0; k < kCategories; ++k) {
            FoodCategory& cat = c.groups[static_cast<std::size_t>(g)].emplace_back();
            cat.key.value = ++serial;
            cat.name = "Category " + std::to_string(k);
            cat.foods.reserve(kFoods);
            for (int i = 0; i < kFoods; ++i) {
                cat.foods.push_back(makeFood(++serial, g));
            }
        }
    }
    c.renumberGroupChunks();
}

void fillLogbook(UserStore& store) {
    CalendarDate date = CalendarDate::fromDmy(1, 1, 2000);
    uint32_t serial = 0;
    for (int d = 0; d < kDays; ++d) {
        auto day = std::make_unique<DayRecord>(date);
        day->rawFields().weight = 180.0f;
        day->rawFields().note = "Twenty years of days";
        for (int i = 0; i < kFoodsPerDay; ++i) {
            const int g = i % kGroups;
            day->group(g).push_back(makeFood(++serial, g));
        }
        for (int e = 0; e < kExercisesPerDay; ++e) {
            ExerciseEntry entry;
            entry.key.value = ++serial;
            entry.name = "Running";
            entry.minutes = 30;
            entry.calories = 360;
            (void)day->appendExercise(entry);
        }
        store.insertDay(std::move(day));
        // The next date in order; 28-day months are all a benchmark needs.
        date.day = static_cast<int16_t>(date.day + 1);
        if (date.day > 28) {
            date.day = 1;
            date.month = static_cast<int16_t>(date.month + 1);
            if (date.month > 12) {
                date.month = 1;
                date.year = static_cast<int16_t>(date.year + 1);
            }
        }
    }
}

const fs::path& catalogueFile() {
    static const fs::path path = [] {
        const fs::path p = benchFolder() / "FoodDB.ddb";
        FoodCatalogue c;
        fillLargestCatalogue(c);
        c.filePath = p;
        if (!saveCatalogue(c).ok()) {
            std::abort();
        }
        return p;
    }();
    return path;
}

const fs::path& logbookFile() {
    static const fs::path path = [] {
        static const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
        UserStore store(clock);
        fillLogbook(store);
        store.userFolderPath = benchFolder();
        store.dataFilePath = benchFolder() / "UserDB.ddb";
        if (!saveUser(store).ok()) {
            std::abort();
        }
        return store.dataFilePath;
    }();
    return path;
}

// The reference: read() of the whole file into a freshly allocated buffer.
double rawReadSeconds(const fs::path& path) {
    const auto start = Clock::now();
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat st {};
    ::fstat(fd, &st);
    const auto size = static_cast<std::size_t>(st.st_size);
    // Fresh pages from the system, whatever the allocator kept from earlier runs.
    void* mapped =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    auto* buffer = static_cast<uint8_t*>(mapped);
    std::size_t got = 0;
    while (got < size) {
        const ssize_t n = ::read(fd, buffer + got, size - got);
        if (n <= 0) {
            break;
        }
        got += static_cast<std::size_t>(n);
    }
    ::close(fd);
    benchmark::DoNotOptimize(buffer);
    const auto end = Clock::now();
    // Freeing is not part of reading.
    ::munmap(mapped, size);
    return std::chrono::duration<double>(end - start).count();
}

// The reference: write the same bytes to a new file and fsync it.
double writeAndSyncSeconds(const fs::path& path, const ByteBuffer& bytes) {
    const auto start = Clock::now();
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n <= 0) {
            break;
        }
        done += static_cast<std::size_t>(n);
    }
    ::fsync(fd);
    ::close(fd);
    return std::chrono::duration<double>(Clock::now() - start).count();
}

ByteBuffer fileBytes(const fs::path& path) {
    ByteBuffer bytes;
    StorageError error;
    if (readWholeFile(path, bytes, error) != ReadFile::Read) {
        std::abort();
    }
    return bytes;
}

long residentBytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    statm >> pages >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

void reportRatio(benchmark::State& state, double measured, double reference, const char* what) {
    const auto n = static_cast<double>(state.iterations());
    state.counters["ms"] = measured / n * 1e3;
    state.counters[std::string(what) + "_ms"] = reference / n * 1e3;
    state.counters["ratio"] = measured / reference;
}

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
