// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <cstdio>

#include "benchmarks/benchmark_set.h"
#include "benchmarks/machine.h"
#include "benchmarks/ratio_reporter.h"

int main(int argumentCount, char** arguments) {
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments)) return 2;
    std::printf("%s; medians of interleaved rounds\n\n", benchmarks::machineText().c_str());
    benchmarks::printFileCounts();
    benchmarks::addSettingsBenchmarks();
    benchmarks::addPageBenchmarks();
    benchmarks::addProcessBenchmarks();
    benchmarks::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
