// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <ctime>
#include <vector>

namespace benchmarks {

/// The processor time of each of many short pieces of work. Not the wall-clock time: on a machine that
/// does other things too, its 99th percentile says how long those took.
class CellTimes {
public:
    template <class Work>
    void measure(Work work) {
        const double before = now();
        work();
        _nanoseconds.push_back(now() - before);
    }

    std::size_t count() const { return _nanoseconds.size(); }

    /// Sets the figures "median" and "99th percentile".
    void report(benchmark::State& state);

private:
    static double now() {
        timespec time;
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
    }

    std::vector<double> _nanoseconds;
};

}  // namespace benchmarks
