// nutrovex-tool report, run as the real program in fresh processes on the twenty-year logbook
// (7,300 days of 20 foods and 2 exercises): the report of its last year and of all of it, as a PDF
// and as HTML, each beside the engine's load of the same logbook in a process of its own. Targets:
// a year in under a second; twenty years made at all, with the peak memory it took beside the
// file's size. $NUTROVEX_TOOL names another build of the tool to measure.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "BenchData.h"
#include "FreshLoad.h"
#include "core/DayRecord.h"
#include "storage/UserList.h"
#include "storage/UserStorage.h"

namespace nutrovex::bench {

namespace fs = std::filesystem;

namespace {

std::string reportTool() {
    const char* env = std::getenv("NUTROVEX_TOOL");
    return env != nullptr ? env : NUTROVEX_TOOL_PATH;
}

std::string dateText(const CalendarDate& d) {
    return std::to_string(d.month) + "/" + std::to_string(d.day) + "/" + std::to_string(d.year);
}

// A data root whose user "Bench" has the twenty-year logbook, a profile and a goal, and a BMR on
// every day, so that every column of the report has its figures.
struct ReportRoot {
    fs::path root;
    fs::path userFile;
    CalendarDate first;
    CalendarDate last;
};

const ReportRoot& reportRoot() {
    static const ReportRoot made = [] {
        ReportRoot r;
        r.root = benchFolder() / "report-root";
        const fs::path folder = r.root / "Users" / "Bench";
        fs::create_directories(folder);
        static const FixedClock clock(CalendarDate::fromDmy(1, 1, 2020));
        UserStore store(clock);
        fillLogbook(store);
        UserProfile& p = store.profile;
        (void)p.setDisplayName("Bench");
        p.setUserName("Bench");
        p.setHeight(70.0f);
        p.setAge(40);
        p.setStartWeight(190.0f);
        p.setStartDate(CalendarDate::fromDmy(1, 1, 2000));
        p.setGoalWeight(170.0f);
        p.setGoalDate(CalendarDate::fromDmy(1, 1, 2001));
        for (const auto& day : store.days()) {
            day->rawFields().level = 2;
            day->rawFields().bmr = 1800;
        }
        store.userFolderPath = folder;
        store.dataFilePath = folder / "UserDB.ddb";
        UserList users(r.root);
        users.setNames({Text("Bench")});
        if (!saveUser(store).ok() || !users.write().ok()) {
            std::abort();
        }
        r.userFile = store.dataFilePath;
        r.first = store.days().front()->date();
        r.last = store.days().back()->date();
        return r;
    }();
    return made;
}

void measureReport(benchmark::State& state, const CalendarDate& from, const char* format) {
    const ReportRoot& r = reportRoot();
    const fs::path out = benchFolder() / (std::string("report.") +
                                          (std::string(format) == "--pdf" ? "pdf" : "html"));
    const double size = static_cast<double>(fs::file_size(r.userFile));
    for (auto _ : state) {
        const ProcessFigures tool =
            runFresh({reportTool(), "--root", r.root.string(), "report", "--user", "Bench",
                      "--from", dateText(from), "--to", dateText(r.last), format, out.string()});
        const FreshLoadFigures load = runFreshLoad("logbook", r.userFile.string());
        if (!tool.ok || !load.ok) {
            state.SkipWithError("the report failed");
            return;
        }
        state.SetIterationTime(tool.seconds);
        state.counters["load_ms"] = load.loadSeconds * 1e3;
        state.counters["ratio"] = tool.seconds / load.loadSeconds;
        state.counters["peak_MB"] = tool.maxResidentBytes / 1e6;
        state.counters["file_MB"] = size / 1e6;
        state.counters["out_MB"] = static_cast<double>(fs::file_size(out)) / 1e6;
        reportLoadAverage(state);
    }
}

void BM_ReportOfAYearPdf(benchmark::State& state) {
    measureReport(state, steppedDate(reportRoot().last, -364), "--pdf");
    state.SetLabel("target: < 1 s");
}
BENCHMARK(BM_ReportOfAYearPdf)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

void BM_ReportOfAYearHtml(benchmark::State& state) {
    measureReport(state, steppedDate(reportRoot().last, -364), "--html");
    state.SetLabel("target: < 1 s");
}
BENCHMARK(BM_ReportOfAYearHtml)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 5);
});

void BM_ReportOfTwentyYearsPdf(benchmark::State& state) {
    measureReport(state, reportRoot().first, "--pdf");
    state.SetLabel("target: made, peak memory a few x the file");
}
BENCHMARK(BM_ReportOfTwentyYearsPdf)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 3);
});

void BM_ReportOfTwentyYearsHtml(benchmark::State& state) {
    measureReport(state, reportRoot().first, "--html");
    state.SetLabel("target: made, peak memory a few x the file");
}
BENCHMARK(BM_ReportOfTwentyYearsHtml)->Apply([](benchmark::internal::Benchmark* b) {
    freshProcesses(b, 3);
});

}  // namespace

}  // namespace nutrovex::bench
