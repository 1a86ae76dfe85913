// The benchmarks' main. Started as `nutrovex_bench --first-load-child FILE tuned|plain` it is the
// fresh process that a first-load benchmark measures, and as `--measure ...` the small process
// that starts the tool for the tool benchmarks; otherwise a benchmark run.
#include <benchmark/benchmark.h>

#include <string_view>

namespace nutrovex::bench {
int firstLoadChild(const char* path, bool tuned);
int measureChild(int argc, char** argv);
}  // namespace nutrovex::bench

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == "--first-load-child") {
        return nutrovex::bench::firstLoadChild(argv[2], std::string_view(argv[3]) == "tuned");
    }
    if (argc >= 2 && std::string_view(argv[1]) == "--measure") {
        return nutrovex::bench::measureChild(argc, argv);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
