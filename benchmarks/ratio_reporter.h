// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/result_table.h"

namespace benchmarks {

/// What a job must come up to.
struct Reach {
    enum class Limit { ratio, nanoseconds, bytes };

    std::string job;
    std::string peer;  ///< empty when the limit is not a ratio
    /// Our figure is at most this multiple of the peer's, or this much.
    double atMost;
    Limit limit = Limit::ratio;

    static Reach atMostNanoseconds(std::string job, double most) { return {job, "", most, Limit::nanoseconds}; }
    static Reach atMostBytes(std::string job, double most) { return {job, "", most, Limit::bytes}; }
};

/// What every measurement is to hold against; each file of benchmarks adds its own.
std::vector<Reach>& reaches();

/// Figures that a measurement finds itself, such as a percentile or the memory at the peak, to be set
/// as its counters. Each counts as a job of its own, "JOB, NAME OF THE COUNTER", in place of the
/// measurement's time.
benchmark::Counter nanoseconds(double amount);
benchmark::Counter bytes(double amount);

/// Collects measurements named "JOB/ours" and "JOB/PEER", and prints the medians of their rounds: our
/// figure beside that of each peer, their ratio, and whether it is within reach. A reach for which
/// nothing was measured does not hold; it is counted apart.
class RatioReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Figure {
        std::vector<double> rounds;
        Reach::Limit unit = Reach::Limit::nanoseconds;

        double median() const;
        std::string text() const;
    };
    /// By the side: "ours", or the name of a peer.
    using Job = std::map<std::string, Figure>;

    void addRound(const std::string& job, const std::string& side, Reach::Limit unit, double amount);
    static const Figure* figureOf(const Job& job, const std::string& side);
    std::string judge(const Reach& reach, std::optional<double> amount);
    void addRow(const std::string& name, const Job& job, const std::string& peer);
    void addRows(const std::string& name, const Job& job);

    std::map<std::string, Job> _jobs;
    ResultTable _table;
    std::size_t _held = 0;
    std::size_t _missed = 0;
};

}  // namespace benchmarks
