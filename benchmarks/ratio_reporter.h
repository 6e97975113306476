// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace benchmarks {

/// How a job must compare with a peer: our time is at most this multiple of the peer's.
struct Reach {
    std::string job;
    std::string peer;
    double atMost;
};

/// What every measurement is to hold against; each file of benchmarks adds its own.
std::vector<Reach>& reaches();

/// Collects the medians of measurements named "JOB/ours" and "JOB/PEER", and prints, for each peer,
/// both times, their ratio and whether it is within reach.
class RatioReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Job {
        double ours = 0;
        std::vector<std::pair<std::string, double>> peers;
    };

    /// One row for each peer; true when the ratio is within its reach, or has none.
    bool printRow(const std::string& name, const Job& job, const std::string& peer, double peerTime);

    std::map<std::string, Job> _jobs;
};

}  // namespace benchmarks
