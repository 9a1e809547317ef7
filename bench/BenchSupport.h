// What every benchmark program with a main of its own ends with.
#pragma once

#include <benchmark/benchmark.h>

namespace zelbench {

// Google Benchmark's own main, after the program's preparations.
inline int runBenchmarks(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace zelbench
