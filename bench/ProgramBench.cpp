// The whole program on the largest data its files allow, in one run:
//  - the real program started in a fresh process on twenty years of days and 200,000 catalogue
//    foods, to its first painted main menu, beside the loads alone and beside a start on a new
//    user; and the resident memory that data adds, beside the two files' sizes;
//  - every screen the main menu and the logbook open, from the command to its first paint, in a
//    running program (the real frame and openers, offscreen);
//  - how those grow from a tenth of the data to all of it (1x to 10x: 730 to 7,300 days, 20,000
//    to 200,000 foods, the current day holding a tenth of the most foods a day can hold to all).
// Each figure is printed with its reference; the 1x figure is the reference of the scaling.
#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "BenchData.h"
#include "WidgetBenchMain.h"
#include "charts/ChartSettings.h"
#include "core/CalendarDate.h"
#include "core/DayRecord.h"
#include "forms/frame/MainFrameForm.h"
#include "session/Session.h"
#include "session/SessionSettings.h"
#include "storage/CatalogueFile.h"
#include "storage/Chunks.h"
#include "storage/Records.h"
#include "ui/catalogue/CatalogueDialog.h"
#include "ui/charts/BodyMassChartDialog.h"
#include "ui/charts/HistoricChartDialog.h"
#include "ui/exercise/ExerciseLogDialog.h"
#include "ui/foods/FoodGridDialog.h"
#include "ui/foods/MealsDialog.h"
#include "ui/frame/CMainFrame.h"
#include "ui/frame/ProgramOpeners.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/logbook/FoodBudgetDialogs.h"
#include "ui/logbook/LogbookDialog.h"
#include "ui/logbook/SummaryTableDialog.h"
#include "ui/profile/GoalsDialog.h"
#include "ui/profile/PersonalInfoDialog.h"

namespace {

using namespace nutrovex;
using namespace nutrovex::bench;
namespace fs = std::filesystem;

// The most of the benchmark's foods one day can hold: a day is stored in one chunk of the user
// file, whose payload stays below 64 KiB.
int mostFoodsInADay() {
    static const int most = [] {
        DayRecord day(CalendarDate::fromDmy(1, 1, 2030));
        day.rawFields().weight = 180.0f;
        int n = 0;
        for (;; ++n) {
            const int g = n % kGroups;
            day.group(g).push_back(makeFood(static_cast<uint32_t>(900000 + n), g));
            rebuildAllFoods(day);
            if (daySize(day) > kMaxPayloadSize) {
                return n;
            }
        }
    }();
    return most;
}

// The data of a root at `scale` tenths of the largest; `bigDay` fills the current day with
// scale tenths of the most foods a day can hold, else it holds an ordinary day's 20.
struct Scale {
    int tenths;
    bool bigDay;

    [[nodiscard]] int days() const { return kDays * tenths / 10; }
    [[nodiscard]] int categories() const { return kCategories * tenths / 10; }
    [[nodiscard]] int todaysFoods() const {
        return bigDay ? mostFoodsInADay() * tenths / 10 : kFoodsPerDay;
    }
    [[nodiscard]] std::string name() const {
        return std::to_string(tenths) + (bigDay ? "-bigday" : "");
    }
    [[nodiscard]] std::string label() const {
        return std::to_string(days()) + " days, " + std::to_string(categories() * 800) +
               " foods, today " + std::to_string(todaysFoods()) + " foods";
    }
    bool operator<(const Scale& o) const {
        return tenths != o.tenths ? tenths < o.tenths : bigDay < o.bigDay;
    }
};

constexpr Scale kLargest{10, false};

void fail(const std::string& what) {
    std::fprintf(stderr, "nutrovex_bench_Program: %s\n", what.c_str());
    std::exit(1);
}

// A root whose only user, "Zerbu", holds the data of `scale`, written once per run through the
// program's own saves. Today's date is the system's, as in the program started from it.
const fs::path& dataRoot(const Scale& scale) {
    static std::map<Scale, fs::path> made;
    auto found = made.find(scale);
    if (found != made.end()) {
        return found->second;
    }
    const fs::path root = benchFolder() / ("root-" + scale.name());
    const SystemClock clock;
    MemorySettings settings;
    FoodCatalogue empty;
    empty.renumberGroupChunks();
    ByteBuffer emptyBytes;
    (void)writeCatalogueFile(empty, emptyBytes);
    Session session(root, clock, settings,
                    std::span<const uint8_t>(emptyBytes.data(), emptyBytes.size()));
    std::string reason;
    if (session.start(reason) != Session::Start::Running) {
        fail("cannot open " + root.string() + ": " + reason);
    }
    const SessionStatus loaded = session.initialLoad();
    if (!loaded) {
        fail("cannot load " + root.string() + ": " + loaded.message());
    }
    fillLogbook(session.store(), scale.days());
    (void)session.days().ensureCurrentDay();
    DayRecord& today = *session.days().currentRecord();
    // A person with a height, a goal and today's weigh-in, so the charts have what they show.
    UserProfile& profile = session.store().profile;
    (void)profile.setHeight(70.0f);
    (void)profile.setAge(40);
    (void)profile.setStartWeight(190.0f);
    (void)profile.setGoalWeight(170.0f);
    today.rawFields().weight = 180.0f;
    for (int i = 0; i < scale.todaysFoods(); ++i) {
        const int g = i % kGroups;
        today.group(g).push_back(makeFood(static_cast<uint32_t>(900000 + i), g));
    }
    rebuildAllFoods(today);
    fillCatalogue(session.catalogue(), scale.categories());
    session.apply(Notices{.userData = true, .catalogue = true});
    const SessionStatus saved = session.saveAll();
    if (!saved) {
        fail("cannot save the data of " + root.string() + ": " + saved.message());
    }
    return made.emplace(scale, root).first->second;
}

std::uintmax_t userFilesBytes(const fs::path& root) {
    const fs::path user = root / "Users" / "Zerbu";
    return fs::file_size(user / "UserDB.ddb") + fs::file_size(user / "FoodDB.ddb");
}

// ---- The program started in a fresh process ----

struct StartFigures {
    double startMs = 0;
    double loadsMs = 0;
    double residentMb = 0;
    double faults = 0;  // as the system counted them, from the process's start to its end
    double loadFaults = 0;
};

StartFigures startProgram(const fs::path& root) {
    const ProcessFigures p =
        runFresh({NUTROVEX_APP_PATH, "--measure-start", "--root", root.string()});
    StartFigures f;
    double faultsAtPaint = 0;
    if (!p.ok ||
        std::sscanf(p.output.c_str(),
                    "start to first painted main menu: %lf ms; the loads alone: %lf ms; "
                    "resident memory: %lf MB; page faults: %lf, of the loads: %lf",
                    &f.startMs, &f.loadsMs, &f.residentMb, &faultsAtPaint, &f.loadFaults) != 5) {
        fail("unexpected answer from the program started on " + root.string() + ": " + p.output);
    }
    f.faults = p.minorFaults + p.majorFaults;
    return f;
}

// A new person's first start makes their files; the starts measured come after it.
const fs::path& newUserRoot() {
    static const fs::path root = [] {
        const fs::path r = benchFolder() / "root-new-user";
        (void)startProgram(r);
        return r;
    }();
    return root;
}

std::map<bool, double> residentAtStart;

// Arg 0: a new user (the shipped catalogue, an empty logbook); 1: the largest data. One start a
// repetition, each in a process of its own.
void BM_StartToFirstPaintedMainMenu(benchmark::State& state) {
    const bool largest = state.range(0) != 0;
    const fs::path& root = largest ? dataRoot(kLargest) : newUserRoot();
    for (auto _ : state) {
        const StartFigures f = startProgram(root);
        state.SetIterationTime(f.startMs / 1e3);
        state.counters["loads_alone_ms"] = f.loadsMs;
        state.counters["resident_MB"] = f.residentMb;
        state.counters["faults"] = f.faults;
        state.counters["load_faults"] = f.loadFaults;
        double& resident = residentAtStart[largest];
        resident = resident == 0 ? f.residentMb : std::min(resident, f.residentMb);
        reportLoadAverage(state);
    }
    state.SetLabel(largest ? kLargest.label() + "; target: median <= 150 ms, max <= 200 ms"
                           : "reference: a new user");
}
BENCHMARK(BM_StartToFirstPaintedMainMenu)
    ->Arg(0)
    ->Arg(1)
    ->Apply([](benchmark::internal::Benchmark* b) { freshProcesses(b, 15); });

// The least resident memory of the running program on the largest data, above a new user's
// start, beside the two files' sizes (target: at most 3 times).
void BM_ResidentMemoryAboveNewUser(benchmark::State& state) {
    if (residentAtStart.size() != 2) {
        state.SkipWithError("run BM_StartToFirstPaintedMainMenu first");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(residentAtStart);
    }
    const double added = residentAtStart[true] - residentAtStart[false];
    const double files = static_cast<double>(userFilesBytes(dataRoot(kLargest))) / 1e6;
    state.counters["added_MB"] = added;
    state.counters["files_MB"] = files;
    state.counters["ratio"] = added / files;
    state.SetLabel("target: ratio at most 3");
}
BENCHMARK(BM_ResidentMemoryAboveNewUser)->Iterations(1);

// ---- Screens in a running program ----

// The program as a person runs it: the main window on the data, the real openers.
struct Program {
    explicit Program(const fs::path& root) : session(root, clock, settings, {}), notifier(session) {
        std::string reason;
        if (session.start(reason) != Session::Start::Running) {
            fail("cannot open " + root.string() + ": " + reason);
        }
        frame = std::make_unique<CMainFrame>(MainFrameForm(session), notifier,
                                             programOpeners(session, notifier, charts));
        frame->resize(kDefaultWindowWidth, kDefaultWindowHeight);
        frame->show();
        if (!frame->initialLoad()) {
            fail("cannot load " + root.string());
        }
        QApplication::processEvents();
    }

    SystemClock clock;
    MemorySettings settings;
    MemoryChartSettings charts;
    Session session;
    SessionNotifier notifier;
    std::unique_ptr<CMainFrame> frame;
};

// One program at a time: the previous one's data is freed before the next loads. Its windows
// must go before the application does.
std::unique_ptr<Program> runningProgram;

Program& programOn(const Scale& scale) {
    static Scale current{0, false};
    if (!runningProgram || current < scale || scale < current) {
        runningProgram.reset();
        runningProgram = std::make_unique<Program>(dataRoot(scale));
        current = scale;
    }
    return *runningProgram;
}

// Runs `command`, which opens a screen of type Screen, modal or window-modal. At the end of the
// screen's first paint, notes the time since the command, runs `inside` on the screen, then closes
// it. Returns the seconds to that first paint.
template <typename Screen>
double toFirstPaint(const std::function<void()>& command,
                    const std::function<void(Screen&)>& inside = {}) {
    class Watcher : public QObject {
    public:
        explicit Watcher(const std::function<void(Screen&)>& inside) : m_inside(inside) {}
        QElapsedTimer timer;
        qint64 ns = -1;
        bool seen = false;
        bool closed = false;

    protected:
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (!seen && event->type() == QEvent::Paint && watched->isWidgetType()) {
                auto* screen = dynamic_cast<Screen*>(static_cast<QWidget*>(watched)->window());
                if (screen != nullptr) {
                    seen = true;
                    // Runs once the whole window has painted.
                    QTimer::singleShot(0, screen, [this, screen] {
                        ns = timer.nsecsElapsed();
                        if (m_inside) {
                            m_inside(*screen);
                        }
                        screen->close();
                        closed = true;
                    });
                }
            }
            return false;
        }

    private:
        const std::function<void(Screen&)>& m_inside;
    };
    Watcher watcher(inside);
    qApp->installEventFilter(&watcher);
    watcher.timer.start();
    command();
    // A window-modal screen is still open when its command returns.
    QElapsedTimer waited;
    waited.start();
    while (!watcher.closed && waited.elapsed() < 60000) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    qApp->removeEventFilter(&watcher);
    if (watcher.ns < 0) {
        fail("the screen did not open");
    }
    return static_cast<double>(watcher.ns) / 1e9;
}

void trigger(QWidget& screen, const QString& text) {
    for (QAction* action : screen.findChildren<QAction*>()) {
        if (action->text() == text && action->isEnabled()) {
            action->trigger();
            return;
        }
    }
    fail("no enabled command " + text.toStdString());
}

// Times one command of the logbook, opened from the main menu.
template <typename Screen>
double fromLogbook(Program& p, const QString& command) {
    double seconds = 0;
    (void)toFirstPaint<LogbookDialog>(
        [&p] { p.frame->openStep(kLogbookStep); },
        [&](LogbookDialog& logbook) {
            seconds = toFirstPaint<Screen>([&] { trigger(logbook, command); });
        });
    return seconds;
}

struct ScreenCase {
    const char* name;
    std::function<double(Program&)> open;
};

const std::vector<ScreenCase>& screenCases() {
    static const std::vector<ScreenCase> cases = {
        {"PersonalInformation",
         [](Program& p) {
             return toFirstPaint<PersonalInfoDialog>(
                 [&p] { p.frame->openStep(kPersonalInformationStep); });
         }},
        {"Goals",
         [](Program& p) {
             return toFirstPaint<GoalsDialog>([&p] { p.frame->openStep(kSetGoalsStep); });
         }},
        {"Logbook",
         [](Program& p) {
             return toFirstPaint<LogbookDialog>([&p] { p.frame->openStep(kLogbookStep); });
         }},
        {"Meals", [](Program& p) { return fromLogbook<MealsDialog>(p, QStringLiteral("&Meals")); }},
        {"AllFoodsOfTheDay",
         [](Program& p) {
             double seconds = 0;
             (void)toFirstPaint<LogbookDialog>(
                 [&p] { p.frame->openStep(kLogbookStep); },
                 [&](LogbookDialog& logbook) {
                     (void)toFirstPaint<MealsDialog>(
                         [&] { trigger(logbook, QStringLiteral("&Meals")); },
                         [&](MealsDialog& meals) {
                             seconds = toFirstPaint<FoodGridDialog>(
                                 [&] { meals.openGroup(kAllFoodsGroup); });
                         });
                 });
             return seconds;
         }},
        {"SummaryTable",
         [](Program& p) {
             return fromLogbook<SummaryTableDialog>(p, QStringLiteral("&Summary Table"));
         }},
        {"FoodBudget",
         [](Program& p) {
             return fromLogbook<FoodBudgetDialog>(p, QStringLiteral("Food &Budget"));
         }},
        {"ExerciseLog",
         [](Program& p) { return fromLogbook<ExerciseLogDialog>(p, QStringLiteral("&Exercise")); }},
        {"HistoricWeightChart",
         [](Program& p) {
             return fromLogbook<HistoricChartDialog>(p, QStringLiteral("&Historic Weight Chart"));
         }},
        {"WeightChart",
         [](Program& p) {
             return fromLogbook<BodyMassChartDialog>(p, QStringLiteral("&Weight Chart"));
         }},
        {"Catalogue",
         [](Program& p) {
             return fromLogbook<CatalogueDialog>(p, QStringLiteral("Food &Catalogue"));
         }},
    };
    return cases;
}

// The 1x figure of each screen, the reference of its scaling.
std::map<std::string, double> atOneTenth;

void commandToFirstPaint(benchmark::State& state, const ScreenCase& screen, Scale scale) {
    Program& program = programOn(scale);
    // The first opening in the process also sets up what every later screen shares.
    const double first = screen.open(program);
    double total = 0;
    for (auto _ : state) {
        const double seconds = screen.open(program);
        state.SetIterationTime(seconds);
        total += seconds;
    }
    const double mean = total / static_cast<double>(state.iterations());
    state.counters["first_ms"] = first * 1e3;
    if (scale.bigDay) {
        if (scale.tenths == 1) {
            atOneTenth[screen.name] = mean;
        } else if (atOneTenth.count(screen.name) != 0) {
            state.counters["times_1x"] = mean / atOneTenth[screen.name];
        }
    }
    state.SetLabel(scale.label());
}

// The start-up load of both files at a scale, beside reading their bytes; and its growth from 1x.
void loadAtScale(benchmark::State& state, Scale scale) {
    const fs::path& root = dataRoot(scale);
    const fs::path user = root / "Users" / "Zerbu";
    double loads = 0;
    double reads = 0;
    for (auto _ : state) {
        reads += rawReadSeconds(user / "UserDB.ddb") + rawReadSeconds(user / "FoodDB.ddb");
        const SystemClock clock;
        MemorySettings settings;
        Session session(root, clock, settings, {});
        std::string reason;
        if (session.start(reason) != Session::Start::Running) {
            fail("cannot open " + root.string() + ": " + reason);
        }
        const auto start = bench::Clock::now();
        if (!session.initialLoad()) {
            fail("cannot load " + root.string());
        }
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        loads += seconds;
    }
    reportRatio(state, loads, reads, "read");
    static double oneTenth = 0;
    if (scale.tenths == 1) {
        oneTenth = loads / static_cast<double>(state.iterations());
    } else if (oneTenth > 0) {
        state.counters["times_1x"] = loads / static_cast<double>(state.iterations()) / oneTenth;
    }
    state.SetLabel(scale.label());
}

void registerScreens() {
    const Scale scales[] = {kLargest, {1, true}, {2, true}, {5, true}, {10, true}};
    for (const Scale& scale : scales) {
        if (scale.bigDay) {
            benchmark::RegisterBenchmark(
                ("BM_LoadBothFiles/" + scale.name()).c_str(),
                [scale](benchmark::State& state) { loadAtScale(state, scale); })
                ->Iterations(1)
                ->Repetitions(5)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
        for (const ScreenCase& screen : screenCases()) {
            benchmark::RegisterBenchmark(
                ("BM_CommandToFirstPaint/" + std::string(screen.name) + "/" + scale.name()).c_str(),
                [&screen, scale](benchmark::State& state) {
                    commandToFirstPaint(state, screen, scale);
                })
                ->Iterations(1)
                ->Repetitions(5)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
}

}  // namespace

// `--measure ...`: the small process that starts the program (BenchData.h); `--make-root DIR`:
// writes the largest data into a root at DIR, to start the program on by hand; otherwise a
// benchmark run.
int main(int argc, char** argv) {
    if (argc >= 2 && std::string_view(argv[1]) == "--measure") {
        return nutrovex::bench::measureChild(argc, argv);
    }
    if (argc == 3 && std::string_view(argv[1]) == "--make-root") {
        const fs::path made = dataRoot(kLargest);
        const fs::path target = argv[2];
        fs::create_directories(target.parent_path().empty() ? fs::path(".") : target.parent_path());
        fs::copy(made, target, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        return 0;
    }
    return nutrovex::bench::runWidgetBenchmarks(argc, argv, registerScreens,
                                                [] { runningProgram.reset(); });
}
