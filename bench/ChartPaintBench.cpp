// The historic chart over a twenty-year logbook (7,300 days), every span: collecting the history
// with the trend, laying it out and painting it at the default size, beside a reference in the
// same run: filling an image of that size once. Target: at most 5 ms a paint.

#include <benchmark/benchmark.h>

#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <memory>

#include "core/UserStore.h"
#include "forms/charts/HistoricChartForm.h"
#include "logbook/DayCursor.h"
#include "render/ChartPainter.h"

namespace {

using namespace nutrovex;

constexpr int kDays = 7300;
const QSize kChartSize(440, 220);

struct TwentyYears {
    FixedClock clock{CalendarDate::fromDmy(1, 1, 2020)};
    UserStore store{clock};
    DayCursor days{store};

    TwentyYears() {
        const CalendarDate first = CalendarDate::fromDmy(1, 1, 2000);
        for (int d = 0; d < kDays; ++d) {
            auto day = std::make_unique<DayRecord>(steppedDate(first, d));
            day->rawFields().weight = d % 5 == 0 ? -1.0f : 180.0f - static_cast<float>(d % 37);
            store.insertDay(std::move(day));
        }
    }
};

TwentyYears& logbook() {
    static TwentyYears data;
    return data;
}

void BM_FillImageReference(benchmark::State& state) {
    QImage image(kChartSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        image.fill(Qt::white);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_FillImageReference)->Unit(benchmark::kMicrosecond);

// Collect, lay out and paint one span, as opening the chart or choosing a span does.
void BM_HistoricChart(benchmark::State& state) {
    TwentyYears& data = logbook();
    MemoryChartSettings settings;
    settings.setSpan(static_cast<uint16_t>(state.range(0)));
    settings.setTrendShown(true);
    QImage image(kChartSize, QImage::Format_ARGB32_Premultiplied);
    const QPalette palette;
    const QFont font;
    const ChartColours colours = chartColours(palette);
    for (auto _ : state) {
        const HistoricChartView chart = HistoricChartForm(data.days, settings).view();
        QPainter painter(&image);
        paintHistoricChart(painter,
                           historicChartLayout(chart.history, kChartSize, font, &chart.trend),
                           colours, font);
    }
}
BENCHMARK(BM_HistoricChart)->DenseRange(0, 6)->Unit(benchmark::kMicrosecond);

// Painting alone, the history already held by the chart, as a resize or an expose does.
void BM_HistoricChartPaintOnly(benchmark::State& state) {
    TwentyYears& data = logbook();
    MemoryChartSettings settings;
    settings.setSpan(static_cast<uint16_t>(state.range(0)));
    settings.setTrendShown(true);
    const HistoricChartView chart = HistoricChartForm(data.days, settings).view();
    QImage image(kChartSize, QImage::Format_ARGB32_Premultiplied);
    const QFont font;
    const ChartColours colours = chartColours(QPalette());
    for (auto _ : state) {
        QPainter painter(&image);
        paintHistoricChart(painter,
                           historicChartLayout(chart.history, kChartSize, font, &chart.trend),
                           colours, font);
    }
}
BENCHMARK(BM_HistoricChartPaintOnly)->DenseRange(0, 6)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
