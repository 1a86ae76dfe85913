// nutrovex-tool on the largest files, run as the real program: dump-user and write-user on the
// largest user file the day index allows (65,535 days), dump-catalogue and write-catalogue on the
// largest catalogue (8 x 250 x 100 foods), each beside the engine's load of the same file in a
// process of its own (time; target for the writes: ratio <= 10) and the file's size (peak
// memory; target: a few times). $NUTROVEX_TOOL names another build of the tool to measure.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchData.h"
#include "FreshLoad.h"
#include "storage/UserFile.h"

namespace nutrovex::bench {

namespace fs = std::filesystem;

namespace {

constexpr int kMostDays = 65535;

std::string toolPath() {
    const char* env = std::getenv("NUTROVEX_TOOL");
    return env != nullptr ? env : NUTROVEX_TOOL_PATH;
}

}  // namespace

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

namespace {

// Runs the tool once an iteration, each beside one fresh load of `file` as `kind`.
void measureTool(benchmark::State& state, const std::vector<std::string>& args,
                 const std::string& in, const fs::path& file, const char* kind) {
    const double size = static_cast<double>(fs::file_size(file));
    for (auto _ : state) {
        std::vector<std::string> command = {toolPath()};
        command.insert(command.end(), args.begin(), args.end());
        const ProcessFigures tool = runFresh(command, in, "/dev/null");
        const FreshLoadFigures load = runFreshLoad(kind, file.string());
        if (!tool.ok || !load.ok) {
            state.SkipWithError((args[0] + " failed").c_str());
            return;
        }
        state.SetIterationTime(tool.seconds);
        state.counters["load_ms"] = load.loadSeconds * 1e3;
        state.counters["ratio"] = tool.seconds / load.loadSeconds;
        state.counters["peak_MB"] = tool.maxResidentBytes / 1e6;
        state.counters["file_MB"] = size / 1e6;
        state.counters["mem_ratio"] = tool.maxResidentBytes / size;
        reportLoadAverage(state);
    }
}

// The tool's dump of `file` as a JSON file in the bench folder, for the writes to read.
std::string dumpOf(benchmark::State& state, const char* command, const fs::path& file,
                   const char* name) {
    const std::string json = (benchFolder() / name).string();
    if (!fs::exists(json) &&
        !runFresh({toolPath(), command, file.string()}, "/dev/null", json).ok) {
        state.SkipWithError((std::string(command) + " failed").c_str());
        return {};
    }
    state.counters["json_MB"] = static_cast<double>(fs::file_size(json)) / 1e6;
    return json;
}

void BM_ToolDumpUserOfTheMostDays(benchmark::State& state) {
    const fs::path& file = largestUserFile();
    measureTool(state, {"dump-user", file.string()}, "/dev/null", file, "user-file");
}
BENCHMARK(BM_ToolDumpUserOfTheMostDays)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

void BM_ToolWriteUserOfTheMostDays(benchmark::State& state) {
    const fs::path& file = largestUserFile();
    const std::string json = dumpOf(state, "dump-user", file, "largest-user.json");
    if (json.empty()) {
        return;
    }
    const std::string out = (benchFolder() / "written.ddb").string();
    measureTool(state, {"write-user", "-", out}, json, file, "user-file");
    state.SetLabel("target: ratio <= 10, mem_ratio a few");
}
BENCHMARK(BM_ToolWriteUserOfTheMostDays)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

void BM_ToolDumpCatalogueOfTheMostFoods(benchmark::State& state) {
    const fs::path& file = catalogueFile();
    measureTool(state, {"dump-catalogue", file.string()}, "/dev/null", file, "catalogue");
}
BENCHMARK(BM_ToolDumpCatalogueOfTheMostFoods)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

void BM_ToolWriteCatalogueOfTheMostFoods(benchmark::State& state) {
    const fs::path& file = catalogueFile();
    const std::string json = dumpOf(state, "dump-catalogue", file, "largest-catalogue.json");
    if (json.empty()) {
        return;
    }
    const std::string out = (benchFolder() / "written-catalogue.ddb").string();
    measureTool(state, {"write-catalogue", "-", out}, json, file, "catalogue");
    state.SetLabel("target: ratio <= 10, mem_ratio a few");
}
BENCHMARK(BM_ToolWriteCatalogueOfTheMostFoods)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

}  // namespace

}  // namespace nutrovex::bench
