// SPDX-License-Identifier: MIT
#include "benchmarks/ratio_reporter.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <utility>

namespace benchmarks {
namespace {

using Limit = Reach::Limit;

constexpr const char* ourSide = "ours";
constexpr const char* nothing = "-";

// Of a reach without a peer when `peer` is empty.
const Reach* findReach(const std::string& job, const std::string& peer) {
    auto found =
        std::ranges::find_if(reaches(), [&](const Reach& reach) { return reach.job == job && reach.peer == peer; });
    return found == reaches().end() ? nullptr : &*found;
}

std::string amountText(double amount, Limit limit) {
    if (limit == Limit::nanoseconds) return timeText(amount);
    if (limit == Limit::bytes) return sizeText(amount);
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", amount);
    return text;
}

// By the clock that the measurement was registered for.
double nanosecondsOf(const benchmark::BenchmarkReporter::Run& run) {
    const bool isWallClock = !run.run_name.time_type.empty();
    const double time = isWallClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    return time * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
}

void printVerdict(std::size_t held, std::size_t missed) {
    const std::size_t unmeasured = reaches().size() - held - missed;
    if (missed == 0 && unmeasured == 0) {
        std::printf("\nEvery reach holds, of %zu.\n", held);
        return;
    }
    std::printf("\n%zu reach(es) do NOT hold, %zu hold, %zu were not measured: see the column 'holds'.\n", missed, held,
                unmeasured);
}

}  // namespace

std::vector<Reach>& reaches() {
    static std::vector<Reach> all;
    return all;
}

// The library keeps a counter's base and does nothing else with it.
benchmark::Counter nanoseconds(double amount) {
    return {amount, benchmark::Counter::kDefaults, benchmark::Counter::kIs1000};
}

benchmark::Counter bytes(double amount) {
    return {amount, benchmark::Counter::kDefaults, benchmark::Counter::kIs1024};
}

const RatioReporter::Figure* RatioReporter::figureOf(const Job& job, const std::string& side) {
    const auto found = job.find(side);
    return found == job.end() ? nullptr : &found->second;
}

double RatioReporter::Figure::median() const {
    std::vector<double> sorted = rounds;
    std::ranges::sort(sorted);
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

std::string RatioReporter::Figure::text() const {
    return amountText(median(), unit);
}

void RatioReporter::addRound(const std::string& job, const std::string& side, Limit unit, double amount) {
    Figure& figure = _jobs[job][side];
    figure.unit = unit;
    figure.rounds.push_back(amount);
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.error_occurred) std::printf("%s: %s\n\n", run.benchmark_name().c_str(), run.error_message.c_str());
        if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string job = name.substr(0, slash);
        const std::string side = name.substr(slash + 1);
        for (const auto& [figure, counter] : run.counters) {
            const bool isTime = counter.oneK == benchmark::Counter::kIs1000;
            addRound(job + ", " + figure, side, isTime ? Limit::nanoseconds : Limit::bytes, counter.value);
        }
        if (!run.counters.empty()) continue;
        addRound(job, side, Limit::nanoseconds, nanosecondsOf(run));
    }
}

// The answer in the column "holds"; counts it.
std::string RatioReporter::judge(const Reach& reach, std::optional<double> amount) {
    if (!amount) return "not measured";
    const bool holds = *amount <= reach.atMost;
    ++(holds ? _held : _missed);
    return holds ? "yes" : "NO";
}

// Our figure beside the peer's, or alone.
void RatioReporter::addRow(const std::string& name, const Job& job, const std::string& peer) {
    const Figure* ours = figureOf(job, ourSide);
    const Figure* theirs = figureOf(job, peer);
    std::optional<double> amount;
    if (ours && peer.empty()) amount = ours->median();
    if (ours && theirs) amount = ours->median() / theirs->median();

    ResultTable::Row row = {name, nothing, nothing, nothing, nothing, nothing, nothing};
    if (ours) row[1] = ours->text();
    if (!peer.empty()) row[2] = peer;
    if (theirs) row[3] = theirs->text();
    if (amount && theirs) row[4] = amountText(*amount, Limit::ratio);
    if (const Reach* reach = findReach(name, peer)) {
        row[5] = "<= " + amountText(reach->atMost, reach->limit);
        row[6] = judge(*reach, amount);
    }
    _table.add(std::move(row));
}

void RatioReporter::addRows(const std::string& name, const Job& job) {
    std::set<std::string> peers;
    for (const auto& [side, figure] : job)
        peers.insert(side);
    for (const Reach& reach : reaches()) {
        if (reach.job == name) peers.insert(reach.peer);
    }
    peers.erase(ourSide);
    if (peers.empty()) addRow(name, job, "");
    for (const std::string& peer : peers)
        addRow(name, job, peer);
}

void RatioReporter::Finalize() {
    for (const auto& [name, job] : _jobs)
        addRows(name, job);
    std::printf("%s", _table.text().c_str());
    printVerdict(_held, _missed);
}

}  // namespace benchmarks
