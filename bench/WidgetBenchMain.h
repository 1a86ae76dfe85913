// The main of a benchmark program that drives Qt widgets: the offscreen platform unless another
// is asked for, one application for the whole run, and Google Benchmark's own arguments.
#pragma once

#include <benchmark/benchmark.h>

#include <QApplication>
#include <functional>

namespace nutrovex::bench {

// `before` runs once the application exists, `after` while it still does: they make and free
// what the benchmarks share, such as windows.
inline int runWidgetBenchmarks(int argc, char** argv, const std::function<void()>& before = {},
                               const std::function<void()>& after = {}) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    if (before) {
        before();
    }
    benchmark::RunSpecifiedBenchmarks();
    if (after) {
        after();
    }
    benchmark::Shutdown();
    return 0;
}

}  // namespace nutrovex::bench
