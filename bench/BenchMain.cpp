// The benchmarks' main. Started as `nutrovex_bench --fresh-load KIND FILE` it is the process a
// fresh load is measured in; as `--measure ...` the small process that starts another one and
// counts what it used (BenchData.h); as `--make-data DIR` it writes the largest files into DIR
// for measuring by hand; otherwise a benchmark run.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string_view>

#include "BenchData.h"
#include "FreshLoad.h"

namespace nutrovex::bench {
const std::filesystem::path& largestUserFile();
}  // namespace nutrovex::bench

int main(int argc, char** argv) {
    using namespace nutrovex::bench;
    if (argc == 4 && std::string_view(argv[1]) == "--fresh-load") {
        return freshLoadChild(argv[2], argv[3]);
    }
    if (argc >= 2 && std::string_view(argv[1]) == "--measure") {
        return measureChild(argc, argv);
    }
    if (argc == 3 && std::string_view(argv[1]) == "--make-data") {
        namespace fs = std::filesystem;
        const fs::path dir = argv[2];
        fs::create_directories(dir);
        for (const fs::path& file : {catalogueFile(), logbookFile(), largestUserFile()}) {
            fs::copy_file(file, dir / file.filename(), fs::copy_options::overwrite_existing);
        }
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
