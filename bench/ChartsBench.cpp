// The weight trend and the measured maintenance over a twenty-year logbook (7,300 days, 20 foods a
// day), beside a reference in the same run: one pass reading every day's date and weight.

#include <benchmark/benchmark.h>

#include <memory>

#include "charts/MeasuredMaintenance.h"
#include "charts/WeightTrend.h"
#include "core/UserStore.h"

namespace {

using namespace nutrovex;

constexpr int kDays = 7300;
constexpr int kFoodsPerDay = 20;

struct TwentyYears {
    FixedClock clock{CalendarDate::fromDmy(1, 1, 2020)};
    UserStore store{clock};
    CalendarDate last;

    TwentyYears() {
        const CalendarDate first = CalendarDate::fromDmy(1, 1, 2000);
        for (int d = 0; d < kDays; ++d) {
            auto day = std::make_unique<DayRecord>(steppedDate(first, d));
            day->rawFields().weight = d % 5 == 0 ? -1.0f : 180.0f - static_cast<float>(d % 37);
            for (int i = 0; i < kFoodsPerDay; ++i) {
                FoodItem f;
                f.nutrients[kCalories] = 100.0f;
                f.ratio = 1.0f;
                day->group(i % kFoodGroupCount).push_back(f);
            }
            last = day->date();
            store.insertDay(std::move(day));
        }
    }
};

const TwentyYears& logbook() {
    static const TwentyYears data;
    return data;
}

void BM_ReadEveryDayOnce(benchmark::State& state) {
    const TwentyYears& data = logbook();
    for (auto _ : state) {
        double sum = 0.0;
        for (const auto& day : data.store.days()) {
            sum += dayNumber(day->date()) + static_cast<double>(day->weight());
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(BM_ReadEveryDayOnce)->Unit(benchmark::kMicrosecond);

void BM_WeightTrend(benchmark::State& state) {
    const TwentyYears& data = logbook();
    for (auto _ : state) {
        const WeightTrend trend = WeightTrend::ofDays(data.store.days());
        benchmark::DoNotOptimize(trend.at(dayNumber(data.last)));
    }
}
BENCHMARK(BM_WeightTrend)->Unit(benchmark::kMicrosecond);

void BM_MeasuredMaintenance(benchmark::State& state) {
    const TwentyYears& data = logbook();
    for (auto _ : state) {
        const Maintenance m = measureMaintenance(data.store.days(), data.last);
        benchmark::DoNotOptimize(m.calories);
    }
}
BENCHMARK(BM_MeasuredMaintenance)->Unit(benchmark::kMicrosecond);

}  // namespace
