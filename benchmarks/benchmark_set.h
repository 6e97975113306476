// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace benchmarks {

/// Adds a measurement by wall-clock time, under the name "JOB/ours" or "JOB/PEER".
inline benchmark::internal::Benchmark* add(const std::string& name, std::function<void(benchmark::State&)> run) {
    return benchmark::RegisterBenchmark(name.c_str(), std::move(run))->UseRealTime();
}

/// Adds a measurement by processor time: for work that waits for nothing, and whose time in seconds has
/// to come up to a limit, on a machine that does other things too.
inline benchmark::internal::Benchmark* addByProcessorTime(const std::string& name,
                                                          std::function<void(benchmark::State&)> run) {
    return benchmark::RegisterBenchmark(name.c_str(), std::move(run));
}

void addSettingsBenchmarks();
void addPageBenchmarks();
void addApplicationBenchmarks();
void addFindBenchmarks();
void addProcessBenchmarks();
/// Nothing where the window is not built.
void addWindowBenchmarks();

/// Prints how often the settings file is parsed and written in each step on a page: exact numbers,
/// which no run changes.
void printFileCounts();

}  // namespace benchmarks
