// SPDX-License-Identifier: MIT
// The window, measured from outside by a program of its own: this one has none of the libraries that
// a window needs.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "benchmarks/application_phone.h"
#include "benchmarks/bench_phone.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_applications.h"
#include "benchmarks/sample_settings.h"

namespace benchmarks {
namespace {

constexpr double oneFrame = 1e9 / 60;
constexpr int rounds = 9;
constexpr int roundsOfLongJobs = 3;

const std::string folder = TRIVEL3_STAGING "/benchmarks/";

/// What the meter prints, in its order.
struct Figure {
    const char* name;
    benchmark::Counter (*unit)(double);
};
using Figures = std::vector<Figure>;

bool takeFigures(benchmark::State& state, const std::string& command, const Figures& figures) {
    FILE* meter = ::popen(command.c_str(), "r");
    if (!meter) return false;
    bool isWhole = true;
    for (const Figure& figure : figures) {
        double amount = 0;
        isWhole = isWhole && std::fscanf(meter, "%lf", &amount) == 1;
        state.counters[figure.name] = figure.unit(amount);
    }
    return ::pclose(meter) == 0 && isWhole;
}

void measure(benchmark::State& state, const std::string& command, const Figures& figures) {
    for (auto _ : state) {
        if (!takeFigures(state, command, figures)) return state.SkipWithError((command + " failed").c_str());
    }
}

void addFirstFrame(const std::string& side, const std::string& environment, const std::string& program) {
    const std::string command = environment + "'" + folder + "window_meter' first-frame " + program;
    add("window, first frame/" + side,
        [command](benchmark::State& state) {
            measure(state, command, {{"time", nanoseconds}, {"processor time", nanoseconds}, {"memory", bytes}});
        })
        ->Iterations(1)
        ->Repetitions(rounds);
}

// `phone` is made when it is first needed.
void addMeter(const std::string& job, const Figures& figures, const std::string& what, std::string (*phone)()) {
    add(job + "/ours",
        [what, phone, figures](benchmark::State& state) {
            const std::string command = "'" + folder + "window_meter' " + what + " '" + phone() + "'";
            measure(state, command, figures);
        })
        ->Iterations(1)
        ->Repetitions(roundsOfLongJobs);
}

std::string usualPhone() {
    static const BenchPhone phone(smallSettings().xml);
    return phone.folder();
}

std::string largestPhone() {
    return ApplicationPhone::shared(manyApplications).folder();
}

}  // namespace

void addWindowBenchmarks() {
    if (!std::filesystem::exists(folder + "window_meter")) return;
    const std::string empty = "'" + folder + "empty_window'";
    addFirstFrame("ours", "",
                  "'" TRIVEL3_STAGING "/bin/trivel3-settings' --appearance light --phone '" + usualPhone() + "'");
    addFirstFrame("empty window", "", empty);
    addFirstFrame("empty window, no graphics library", "QT_QUICK_BACKEND=software ", empty);
    addMeter("window, tap to redrawn row", {{"median", nanoseconds}, {"99th percentile of our work", nanoseconds}},
             "tap", usualPhone);
    addMeter("window, frame of 10,000 applications", {{"median", nanoseconds}, {"99th percentile", nanoseconds}},
             "scroll", largestPhone);
    for (const char* figure : {"time", "processor time"}) {
        for (const char* peer : {"empty window", "empty window, no graphics library"})
            reaches().push_back({std::string("window, first frame, ") + figure, peer, 1.25});
    }
    reaches().push_back(Reach::atMostNanoseconds("window, tap to redrawn row, 99th percentile of our work", oneFrame));
    reaches().push_back(Reach::atMostNanoseconds("window, tap to redrawn row, median", oneFrame));
    reaches().push_back(Reach::atMostNanoseconds("window, frame of 10,000 applications, 99th percentile", oneFrame));
}

}  // namespace benchmarks
