/// Runs all benchmarks over a folder of scenes (written when missing) and prints times as multiples of a plain copy.
///   vo_abc_bench SCENES [google benchmark options]
#include "benchmarks.h"
#include "ratio_reporter.h"
#include "scenes.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 2 || argv[1][0] == '-') {
        std::fprintf(stderr, "usage: vo_abc_bench SCENES [--benchmark_filter=REGEX ...]\n");
        return 2;
    }
    const std::string scenes = argv[1];
    argv[1] = argv[0];
    ++argv;
    --argc;
    benchmark::Initialize(&argc, argv);
    write_missing_scenes(scenes);
    register_reading_benchmarks(scenes);
    register_writing_benchmarks(scenes);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
