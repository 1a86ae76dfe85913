// The summary table over the largest logbook the format allows (twenty years of days, 20 foods and
// 2 exercises a day): painting one screenful of the grid at the default window size, beside the
// engine computing the texts of the same rows. The target is at most 2 ms a screenful.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "WidgetBenchMain.h"
#include "calc/Totals.h"
#include "core/DayRecord.h"
#include "logbook/SummaryTable.h"
#include "session/Session.h"
#include "ui/frame/Tour.h"
#include "ui/logbook/SummaryTableDialog.h"

namespace {

using namespace nutrovex;
namespace fs = std::filesystem;

constexpr int kDays = 7300;
constexpr int kFoodsPerDay = 20;
constexpr int kExercisesPerDay = 2;

// A session on a throw-away root whose open user holds the twenty years.
struct BigLogbook {
    BigLogbook()
        : root(fs::temp_directory_path() /
               ("nutrovex-bench-summary-" + std::to_string(::getpid()))),
          session(root, clock, settings, {}) {
        std::string reason;
        (void)session.start(reason);
        (void)session.initialLoad();
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
            (void)dayTotals(*day);
            (void)session.store().insertDay(std::move(day));
            date = steppedDate(date, 1);
        }
        (void)session.days().setCurrentDate(CalendarDate::fromDmy(1, 6, 2010));
    }
    ~BigLogbook() {
        std::error_code ec;
        fs::remove_all(root, ec);
    }

    fs::path root;
    FixedClock clock{CalendarDate::fromDmy(31, 12, 2019)};
    MemorySettings settings;
    Session session;
};

BigLogbook& bigLogbook() {
    static BigLogbook logbook;
    return logbook;
}

// The engine: the texts of one screenful of rows (the grid's visible rows at the default size).
void BM_SummaryRowsComputed(benchmark::State& state) {
    BigLogbook& big = bigLogbook();
    SummaryTableGrid grid(SummaryTableForm(big.session.days()));
    grid.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    const auto rows = grid.grid().visibleScrollingRows();
    const int screenful = std::max(rows.second - rows.first, 1);
    const auto& days = big.session.store().days();
    int first = 0;
    for (auto _ : state) {
        for (int r = 0; r < screenful; ++r) {
            const DayRecord& day = *days[static_cast<std::size_t>((first + r) % kDays)];
            for (int c = 0; c < kSummaryColumnCount; ++c) {
                benchmark::DoNotOptimize(summaryCell(day, c));
            }
        }
        first = (first + 997) % kDays;
    }
    state.counters["rows"] = screenful;
}
BENCHMARK(BM_SummaryRowsComputed)->Unit(benchmark::kMicrosecond);

// The screen: one screenful painted after a scroll, into an image the size of the window.
void BM_SummaryScreenfulPainted(benchmark::State& state) {
    BigLogbook& big = bigLogbook();
    SummaryTableGrid grid(SummaryTableForm(big.session.days()));
    grid.resize(kDefaultWindowWidth, kDefaultWindowHeight);
    QImage image(grid.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    const int limit = grid.grid().scrollLimit(Orientation::Vertical);
    int position = 0;
    for (auto _ : state) {
        position = (position + 7919 * 23) % std::max(limit, 1);
        (void)grid.grid().setScrollPosition(Orientation::Vertical, position);
        grid.viewport()->render(&image);
    }
    state.counters["scroll_limit_px"] = limit;
}
BENCHMARK(BM_SummaryScreenfulPainted)->Unit(benchmark::kMicrosecond);

// Opening: the table built over the twenty years and painted the first time (target 50 ms).
void BM_SummaryTableOpened(benchmark::State& state) {
    BigLogbook& big = bigLogbook();
    QImage image(QSize(kDefaultWindowWidth, kDefaultWindowHeight),
                 QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        SummaryTableGrid grid(SummaryTableForm(big.session.days()));
        grid.resize(kDefaultWindowWidth, kDefaultWindowHeight);
        grid.viewport()->render(&image);
    }
}
BENCHMARK(BM_SummaryTableOpened)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return nutrovex::bench::runWidgetBenchmarks(argc, argv);
}
