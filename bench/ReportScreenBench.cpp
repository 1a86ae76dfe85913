// The report screen over a twenty-year logbook (20 foods and 2 exercises a day, a weigh-in every
// day): from the command to the first painted screen on the week it opens with, and a month and a
// year picked, each until the preview shows the new pages. The target is under a second for a
// year, as for the tool's report of a year; twenty years only have to show.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <QApplication>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QRadioButton>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "WidgetBenchMain.h"
#include "calc/Bmr.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "forms/logbook/ReportForm.h"
#include "session/Session.h"
#include "ui/controls/CalendarPickerDialog.h"
#include "ui/frame/SessionNotifier.h"
#include "ui/frame/Tour.h"
#include "ui/logbook/ReportDialog.h"

namespace {

using namespace nutrovex;
namespace fs = std::filesystem;

constexpr int kDays = 7300;
constexpr int kFoodsPerDay = 20;
constexpr int kExercisesPerDay = 2;

// A session on a throw-away root whose open user holds the twenty years and a goal.
struct BigLogbook {
    BigLogbook()
        : root(fs::temp_directory_path() / ("nutrovex-bench-report-" + std::to_string(::getpid()))),
          session(root, clock, settings, {}),
          notifier(session) {
        std::string reason;
        (void)session.start(reason);
        (void)session.initialLoad();
        UserProfile& p = session.store().profile;
        p.setHeight(70.0f);
        p.setAge(40);
        p.setStartWeight(190.0f);
        p.setStartDate(CalendarDate::fromDmy(1, 1, 2000));
        p.setGoalWeight(170.0f);
        p.setGoalDate(CalendarDate::fromDmy(1, 1, 2001));
        CalendarDate date = CalendarDate::fromDmy(1, 1, 2000);
        for (int d = 0; d < kDays; ++d) {
            auto day = std::make_unique<DayRecord>(date);
            for (int f = 0; f < kFoodsPerDay; ++f) {
                FoodItem food;
                food.name = "Food";
                food.group = static_cast<uint16_t>(f % 8);
                food.ratio = 1.0f;
                food.nutrients = {95.0f + static_cast<float>(f), 12.5f, 2.1f, 4.4f, 3.3f, 1.1f};
                day->group(f % 8).push_back(food);
            }
            rebuildAllFoods(*day);
            for (int e = 0; e < kExercisesPerDay; ++e) {
                ExerciseEntry entry;
                entry.minutes = 30;
                entry.calories = static_cast<uint16_t>(150 + d % 100);
                (void)day->appendExercise(entry);
            }
            setDayWeight(*day, 190.0f - static_cast<float>(d % 300) / 30.0f, p);
            (void)dayTotals(*day);
            (void)session.store().insertDay(std::move(day));
            date = steppedDate(date, 1);
        }
        (void)session.days().setCurrentDate(CalendarDate::fromDmy(31, 12, 2019));
    }
    ~BigLogbook() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }

    fs::path root;
    FixedClock clock{CalendarDate::fromDmy(31, 12, 2019)};
    MemorySettings settings;
    Session session;
    SessionNotifier notifier;
};

BigLogbook& bigLogbook() {
    static BigLogbook logbook;
    return logbook;
}

std::unique_ptr<ReportDialog> openReport(BigLogbook& big) {
    auto dialog = std::make_unique<ReportDialog>(
        ReportForm(big.session.days(), big.session.targets()), big.notifier, nullptr);
    dialog->resize(kDefaultWindowWidth, kDefaultWindowHeight);
    dialog->show();
    QApplication::processEvents();
    return dialog;
}

void BM_ReportOpenToFirstPaint(benchmark::State& state) {
    BigLogbook& big = bigLogbook();
    for (auto _ : state) {
        const std::unique_ptr<ReportDialog> dialog = openReport(big);
        benchmark::DoNotOptimize(dialog->grab());
    }
    state.SetLabel("the week to the logbook's day");
}
BENCHMARK(BM_ReportOpenToFirstPaint)->Unit(benchmark::kMillisecond);

// Range 0: a month, ending on the logbook's day; 1: the year to it, its first day picked in the
// calendar as a custom range; 2: all twenty years, picked so.
void BM_ReportRangePicked(benchmark::State& state) {
    BigLogbook& big = bigLogbook();
    const bool year = state.range(0) >= 1;
    const int firstYear = state.range(0) == 2 ? 2000 : 2019;
    int pages = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::unique_ptr<ReportDialog> dialog = openReport(big);
        if (year) {
            dialog->setFromButton()->click();
        }
        state.ResumeTiming();
        if (year) {
            auto* picker = dialog->findChild<CalendarPickerDialog*>();
            picker->setDate(firstYear, 0, 1);
            picker->okButton()->click();
        } else {
            dialog->spanButton(ReportSpan::Month)->click();
        }
        QApplication::processEvents();
        benchmark::DoNotOptimize(dialog->grab());
        pages = dialog->preview()->pageCount();
    }
    state.counters["pages"] = pages;
    state.SetLabel(!year ? "a month" : firstYear == 2019 ? "a year" : "twenty years");
}
BENCHMARK(BM_ReportRangePicked)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return nutrovex::bench::runWidgetBenchmarks(argc, argv);
}
