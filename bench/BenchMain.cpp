// The benchmarks' main. Started as `nutrovex_bench --first-load-child FILE`, it is the fresh
// process that a first-load benchmark measures, not a benchmark run.
#include <benchmark/benchmark.h>

#include <string_view>

namespace nutrovex::bench {
int firstLoadChild(const char* path);
}

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--first-load-child") {
        return nutrovex::bench::firstLoadChild(argv[2]);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
