// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <cstdio>

#include "benchmarks/application_memory.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/machine.h"
#include "benchmarks/ratio_reporter.h"

int main(int argumentCount, char** arguments) {
    if (const auto status = benchmarks::runAsMemoryProcess(argumentCount, arguments)) return *status;
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments)) return 2;
    std::printf("%s; medians of interleaved rounds\n\n", benchmarks::machineText().c_str());
    benchmarks::printFileCounts();
    benchmarks::addSettingsBenchmarks();
    benchmarks::addPageBenchmarks();
    benchmarks::addApplicationBenchmarks();
    benchmarks::addFindBenchmarks();
    benchmarks::addProcessBenchmarks();
    benchmarks::addWindowBenchmarks();
    benchmarks::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
