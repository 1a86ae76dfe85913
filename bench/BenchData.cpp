#include "BenchData.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

#include "core/CalendarDate.h"
#include "storage/CatalogueStorage.h"
#include "storage/UserStorage.h"

extern char** environ;

namespace nutrovex::bench {

namespace fs = std::filesystem;

namespace {

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

}  // namespace

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
    f.serving = {1.5f, ServingUnit::Cup, 0};
    f.ref2 = {1.0f, ServingUnit::Cup, 0};
    f.nutrients = {245.0f, 48.5f, 2.0f, 10.0f, 1.5f, 0.2f};
    f.ratio = 1.5f;
    f.group = static_cast<uint16_t>(group);
    return f;
}

void fillCatalogue(FoodCatalogue& c, int categories) {
    uint32_t serial = 0;
    for (int g = 0; g < kGroups; ++g) {
        for (int k = 0; k < categories; ++k) {
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

void fillLargestCatalogue(FoodCatalogue& c) {
    fillCatalogue(c, kCategories);
}

void fillLogbook(UserStore& store, int days) {
    CalendarDate date = CalendarDate::fromDmy(1, 1, 2000);
    uint32_t serial = 0;
    for (int d = 0; d < days; ++d) {
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

ProcessFigures runFresh(std::vector<std::string> command, const std::string& in,
                        const std::string& out) {
    static int runs = 0;
    const std::string tag = std::to_string(++runs);
    const std::string result = (benchFolder() / ("measured-" + tag + ".txt")).string();
    const std::string output =
        out.empty() ? (benchFolder() / ("output-" + tag + ".txt")).string() : out;
    if (command[0].empty()) {
        command[0] = "/proc/self/exe";
    }
    std::vector<std::string> words = {"/proc/self/exe", "--measure", result, in, output};
    words.insert(words.end(), command.begin(), command.end());
    std::vector<char*> argv;
    for (std::string& w : words) {
        argv.push_back(w.data());
    }
    argv.push_back(nullptr);
    ProcessFigures f;
    pid_t pid = 0;
    int status = 0;
    const bool ran = ::posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) == 0 &&
                     ::waitpid(pid, &status, 0) == pid && WIFEXITED(status) &&
                     WEXITSTATUS(status) == 0;
    int exitCode = -1;
    long maxKb = 0;
    long minor = 0;
    long major = 0;
    if (FILE* r = ran ? std::fopen(result.c_str(), "r") : nullptr) {
        f.ok = std::fscanf(r, "%d %lf %ld %ld %ld", &exitCode, &f.seconds, &maxKb, &minor,
                           &major) == 5 &&
               exitCode == 0;
        std::fclose(r);
    }
    f.maxResidentBytes = static_cast<double>(maxKb) * 1024.0;
    f.minorFaults = static_cast<double>(minor);
    f.majorFaults = static_cast<double>(major);
    std::error_code ec;
    fs::remove(result, ec);
    if (out.empty()) {
        std::ifstream text(output);
        f.output.assign(std::istreambuf_iterator<char>(text), std::istreambuf_iterator<char>());
        fs::remove(output, ec);
        std::istringstream numbers(f.output);
        for (double x = 0; numbers >> x;) {
            f.printed.push_back(x);
        }
    }
    return f;
}

int measureChild(int argc, char** argv) {
    if (argc < 6) {
        return 2;
    }
    const auto start = Clock::now();
    const pid_t pid = ::fork();
    if (pid == 0) {
        const int in = ::open(argv[3], O_RDONLY | O_CLOEXEC);
        const int out = ::open(argv[4], O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        if (in < 0 || out < 0 || ::dup2(in, STDIN_FILENO) < 0 || ::dup2(out, STDOUT_FILENO) < 0) {
            ::_exit(127);
        }
        ::execv(argv[5], argv + 5);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || ::wait4(pid, &status, 0, &usage) != pid) {
        return 1;
    }
    const double seconds = secondsSince(start);
    FILE* f = std::fopen(argv[2], "w");
    if (f == nullptr) {
        return 1;
    }
    std::fprintf(f, "%d %.9f %ld %ld %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1, seconds,
                 usage.ru_maxrss, usage.ru_minflt, usage.ru_majflt);
    std::fclose(f);
    return 0;
}

void reportLoadAverage(benchmark::State& state) {
    double load = 0;
    if (FILE* f = std::fopen("/proc/loadavg", "r")) {
        if (std::fscanf(f, "%lf", &load) != 1) {
            load = 0;
        }
        std::fclose(f);
    }
    state.counters["load_avg"] = load;
}

double minorFaultsSoFar() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_minflt);
}

}  // namespace nutrovex::bench
