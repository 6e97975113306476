// SPDX-License-Identifier: MIT
#include "benchmarks/cell_times.h"

#include <algorithm>

#include "benchmarks/ratio_reporter.h"

namespace benchmarks {

void CellTimes::report(benchmark::State& state) {
    if (_nanoseconds.empty()) return state.SkipWithError("nothing was measured");
    std::ranges::sort(_nanoseconds);
    state.counters["median"] = nanoseconds(_nanoseconds[_nanoseconds.size() / 2]);
    state.counters["99th percentile"] = nanoseconds(_nanoseconds[_nanoseconds.size() * 99 / 100]);
}

}  // namespace benchmarks
