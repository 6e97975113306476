// SPDX-License-Identifier: MIT
#include "benchmarks/ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace benchmarks {
namespace {

std::string timeText(double nanoseconds) {
    char text[32];
    if (nanoseconds < 1e4) {
        std::snprintf(text, sizeof text, "%.0f ns", nanoseconds);
    } else if (nanoseconds < 1e7) {
        std::snprintf(text, sizeof text, "%.1f us", nanoseconds / 1e3);
    } else {
        std::snprintf(text, sizeof text, "%.1f ms", nanoseconds / 1e6);
    }
    return text;
}

const Reach* findReach(const std::string& job, const std::string& peer) {
    auto found =
        std::ranges::find_if(reaches(), [&](const Reach& reach) { return reach.job == job && reach.peer == peer; });
    return found == reaches().end() ? nullptr : &*found;
}

}  // namespace

std::vector<Reach>& reaches() {
    static std::vector<Reach> all;
    return all;
}

bool RatioReporter::ReportContext(const Context& context) {
    std::printf("%d processors at %.0f MHz; medians of interleaved rounds\n\n", context.cpu_info.num_cpus,
                context.cpu_info.cycles_per_second / 1e6);
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.error_occurred) std::printf("%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") continue;
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string job = name.substr(0, slash);
        const std::string side = name.substr(slash + 1);
        const double time = run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
        if (side == "ours") {
            _jobs[job].ours = time;
        } else {
            _jobs[job].peers.emplace_back(side, time);
        }
    }
}

bool RatioReporter::printRow(const std::string& name, const Job& job, const std::string& peer, double peerTime) {
    const double ratio = job.ours / peerTime;
    const Reach* reach = findReach(name, peer);
    const bool holds = !reach || ratio <= reach->atMost;
    std::string wanted = "-";
    if (reach) {
        char text[32];
        std::snprintf(text, sizeof text, "<= %.2f", reach->atMost);
        wanted = text;
    }
    std::printf("| %-38s | %10s | %-30s | %10s | %6.2f | %-7s | %-5s |\n", name.c_str(), timeText(job.ours).c_str(),
                peer.c_str(), timeText(peerTime).c_str(), ratio, wanted.c_str(),
                !reach  ? "-"
                : holds ? "yes"
                        : "NO");
    return holds;
}

void RatioReporter::Finalize() {
    std::printf("| %-38s | %10s | %-30s | %10s | %6s | %-7s | %-5s |\n", "job", "ours", "peer", "peer", "ratio",
                "reach", "holds");
    std::printf("|%s|%s|%s|%s|%s|%s|%s|\n", std::string(40, '-').c_str(), std::string(12, '-').c_str(),
                std::string(32, '-').c_str(), std::string(12, '-').c_str(), std::string(8, '-').c_str(),
                std::string(9, '-').c_str(), std::string(7, '-').c_str());
    int missed = 0;
    for (const auto& [name, job] : _jobs) {
        for (const auto& [peer, time] : job.peers)
            missed += printRow(name, job, peer, time) ? 0 : 1;
    }
    std::printf("\n%s\n", missed == 0
                              ? "Every reach holds."
                              : (std::to_string(missed) + " reach(es) do NOT hold: see the column 'holds'.").c_str());
}

}  // namespace benchmarks
