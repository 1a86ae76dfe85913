// nutrovex-tool on the largest files, run as the real program: dump-user and write-user on the
// largest user file the day index allows (65,535 days), dump-catalogue and write-catalogue on the
// largest catalogue (8 x 250 x 100 foods), each beside the engine's load of the same file (time)
// and the file's size (memory). $NUTROVEX_TOOL names another build of the tool to measure.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "BenchData.h"
#include "storage/CatalogueStorage.h"
#include "storage/UserFile.h"

extern char** environ;

namespace nutrovex::bench {

namespace {

namespace fs = std::filesystem;

constexpr int kMostDays = 65535;

std::string toolPath() {
    const char* env = std::getenv("NUTROVEX_TOOL");
    return env != nullptr ? env : NUTROVEX_TOOL_PATH;
}

// Five foods, an exercise and a note a day: about 38 MB.
const fs::path& largestUserFile() {
    static const fs::path path = [] {
        UserFile file;
        uint32_t serial = 0;
        for (int d = 0; d < kMostDays; ++d) {
            CalendarDate date;
            date.day = static_cast<int16_t>(1 + d % 28);
            date.month = static_cast<int16_t>(1 + (d / 28) % 12);
            date.year = static_cast<int16_t>(1900 + d / (28 * 12));
            auto day = std::make_unique<DayRecord>(date);
            day->rawFields().weight = 180.0f;
            day->rawFields().note = "A day of two centuries";
            for (int i = 0; i < 5; ++i) {
                day->rawFields().groups[static_cast<std::size_t>(i)].push_back(
                    makeFood(++serial, i));
            }
            ExerciseEntry e;
            e.key.value = ++serial;
            e.name = "Running";
            e.minutes = 30;
            e.calories = 360;
            day->rawFields().exercises.push_back(e);
            file.days.push_back(std::move(day));
        }
        file.dayCount = kMostDays;
        ByteBuffer bytes;
        const fs::path p = benchFolder() / "LargestUserDB.ddb";
        if (!writeUserFile(file.header, file.profile.fields(), 3, kMostDays, file.days, bytes) ||
            !writeFileAtomically(p, bytes.bytes())) {
            std::abort();
        }
        return p;
    }();
    return path;
}

struct RunResult {
    bool ok = false;
    double seconds = 0;
    double maxResidentBytes = 0;
};

// Runs the tool with stdin and stdout redirected; its time and peak resident memory. It is started
// by a fresh copy of this program, whose own memory is small: a process made straight from this
// one would count this one's peak (the files were made here) as its own.
RunResult runTool(const std::vector<std::string>& args, const std::string& in,
                  const std::string& out) {
    const std::string result = (benchFolder() / "measured.txt").string();
    std::vector<std::string> words = {"/proc/self/exe", "--measure", result, in, out, toolPath()};
    words.insert(words.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& w : words) {
        argv.push_back(w.data());
    }
    argv.push_back(nullptr);
    RunResult r;
    pid_t pid = 0;
    int status = 0;
    if (::posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0 ||
        ::waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        return r;
    }
    int exitCode = -1;
    long maxKb = 0;
    FILE* f = std::fopen(result.c_str(), "r");
    if (f != nullptr) {
        r.ok = std::fscanf(f, "%d %lf %ld", &exitCode, &r.seconds, &maxKb) == 3 && exitCode == 0;
        std::fclose(f);
    }
    r.maxResidentBytes = static_cast<double>(maxKb) * 1024.0;
    return r;
}

}  // namespace

// `--measure RESULT IN OUT PROGRAM ARGS...`: runs PROGRAM and writes its exit code, seconds and
// peak resident kilobytes to RESULT.
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
    std::fprintf(f, "%d %.9f %ld\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1, seconds,
                 usage.ru_maxrss);
    std::fclose(f);
    return 0;
}

namespace {

double engineLoadSeconds(const fs::path& path) {
    const auto start = Clock::now();
    FileSource source;
    StorageError error;
    UserFile file;
    if (source.open(path, error) != ReadFile::Read ||
        !readUserFile(source, file, CalendarDate(), {"UserDB.ddb"}).ok()) {
        std::abort();
    }
    return secondsSince(start);
}

void report(benchmark::State& state, const RunResult& total, double load, const fs::path& file) {
    const auto n = static_cast<double>(state.iterations());
    const double size = static_cast<double>(fs::file_size(file));
    state.counters["ms"] = total.seconds / n * 1e3;
    state.counters["load_ms"] = load / n * 1e3;
    state.counters["ratio"] = total.seconds / load;
    state.counters["peak_MB"] = total.maxResidentBytes / 1e6;
    state.counters["file_MB"] = size / 1e6;
    state.counters["mem_ratio"] = total.maxResidentBytes / size;
}

double engineCatalogueLoadSeconds(const fs::path& path) {
    auto catalogue = std::make_unique<FoodCatalogue>();
    catalogue->filePath = path;
    const auto start = Clock::now();
    if (loadCatalogue(*catalogue, path).outcome != CatalogueLoad::Read) {
        std::abort();
    }
    return secondsSince(start);
}

// Runs the tool once an iteration, each beside one engine load of `file`.
template <typename Load>
void measureTool(benchmark::State& state, const std::vector<std::string>& args,
                 const std::string& in, const fs::path& file, Load&& engineLoad) {
    RunResult total;
    double load = 0;
    for (auto _ : state) {
        const RunResult r = runTool(args, in, "/dev/null");
        if (!r.ok) {
            state.SkipWithError((args[0] + " failed").c_str());
            return;
        }
        total.seconds += r.seconds;
        total.maxResidentBytes = std::max(total.maxResidentBytes, r.maxResidentBytes);
        load += engineLoad(file);
    }
    report(state, total, load, file);
}

// The tool's dump of `file` as a JSON file in the bench folder, for the writes to read.
std::string dumpOf(benchmark::State& state, const char* command, const fs::path& file,
                   const char* name) {
    const std::string json = (benchFolder() / name).string();
    if (!fs::exists(json) && !runTool({command, file.string()}, "/dev/null", json).ok) {
        state.SkipWithError((std::string(command) + " failed").c_str());
        return {};
    }
    state.counters["json_MB"] = static_cast<double>(fs::file_size(json)) / 1e6;
    return json;
}

void BM_ToolDumpUserOfTheMostDays(benchmark::State& state) {
    const fs::path& file = largestUserFile();
    measureTool(state, {"dump-user", file.string()}, "/dev/null", file, engineLoadSeconds);
}
BENCHMARK(BM_ToolDumpUserOfTheMostDays)->Iterations(3)->Unit(benchmark::kMillisecond);

// The least reading a JSON text can cost with the JSON library the tool uses: its parser run
// over the whole text with a handler that keeps nothing. The writes' second reference.
struct KeepNothing : nlohmann::json_sax<nlohmann::json> {
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return true; }
    bool key(string_t&) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return false;
    }
};

void reportJsonLex(benchmark::State& state, const std::string& json) {
    std::ifstream in(json, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    KeepNothing handler;
    const auto start = Clock::now();
    if (!nlohmann::json::sax_parse(text, &handler)) {
        std::abort();
    }
    const double lex = secondsSince(start);
    state.counters["json_lex_ms"] = lex * 1e3;
    state.counters["ratio_to_lex"] = state.counters["ms"] / (lex * 1e3);
}

void BM_ToolWriteUserOfTheMostDays(benchmark::State& state) {
    const fs::path& file = largestUserFile();
    const std::string json = dumpOf(state, "dump-user", file, "largest-user.json");
    if (json.empty()) {
        return;
    }
    const std::string out = (benchFolder() / "written.ddb").string();
    measureTool(state, {"write-user", "-", out}, json, file, engineLoadSeconds);
    reportJsonLex(state, json);
}
BENCHMARK(BM_ToolWriteUserOfTheMostDays)->Iterations(3)->Unit(benchmark::kMillisecond);

void BM_ToolDumpCatalogueOfTheMostFoods(benchmark::State& state) {
    const fs::path& file = catalogueFile();
    measureTool(state, {"dump-catalogue", file.string()}, "/dev/null", file,
                engineCatalogueLoadSeconds);
}
BENCHMARK(BM_ToolDumpCatalogueOfTheMostFoods)->Iterations(3)->Unit(benchmark::kMillisecond);

void BM_ToolWriteCatalogueOfTheMostFoods(benchmark::State& state) {
    const fs::path& file = catalogueFile();
    const std::string json = dumpOf(state, "dump-catalogue", file, "largest-catalogue.json");
    if (json.empty()) {
        return;
    }
    const std::string out = (benchFolder() / "written-catalogue.ddb").string();
    measureTool(state, {"write-catalogue", "-", out}, json, file, engineCatalogueLoadSeconds);
    reportJsonLex(state, json);
}
BENCHMARK(BM_ToolWriteCatalogueOfTheMostFoods)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace nutrovex::bench
