// SPDX-License-Identifier: MIT
// The pages on which installed applications are ticked: opening one, its cells, and a tick.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/application_memory.h"
#include "benchmarks/application_peers.h"
#include "benchmarks/application_phone.h"
#include "benchmarks/application_scrolling.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/page_use.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_applications.h"

namespace benchmarks {
namespace {

using platform::PSListController;

/// The shortest of a few rounds would be luck, and the long ones are long enough.
constexpr int roundsOfLongJobs = 5;

std::size_t applicationRows(PSListController& page, const TickPage& kind) {
    std::size_t rows = 0;
    for (std::size_t section = kind.firstApplicationSection; section <= kind.userSection(); ++section)
        rows += page.tableView_numberOfRowsInSection(page.table(), section);
    return rows;
}

std::vector<std::string> firstIdentifiers() {
    std::vector<std::string> identifiers;
    for (std::size_t number = 0; number < rowsOfOneScreen; ++number)
        identifiers.push_back(sampleIdentifier(number));
    return identifiers;
}

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// -- Opening -------------------------------------------------------------------------------------

// The program before, with its page, is taken down while nothing is measured.
void openFirst(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const ApplicationPhone& phone = ApplicationPhone::shared(applications);
    std::unique_ptr<BenchPhone> program;
    std::shared_ptr<PSListController> page;
    for (auto _ : state) {
        state.PauseTiming();
        page.reset();
        program = phone.start();
        state.ResumeTiming();
        page = openPage(*program, kind.className);
    }
    if (applicationRows(*page, kind) != applications) state.SkipWithError("the page lacks applications");
}

void openLater(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    BenchPhone& program = ApplicationPhone::shared(applications).running();
    std::shared_ptr<PSListController> page;
    for (auto _ : state) {
        state.PauseTiming();
        page.reset();
        state.ResumeTiming();
        page = openPage(program, kind.className);
    }
    if (applicationRows(*page, kind) != applications) state.SkipWithError("the page lacks applications");
}

void openWithLibplist(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const std::string& phone = ApplicationPhone::shared(applications).folder();
    const TickPlace place = kind.placeOn(phone);
    const std::vector<std::string> identifiers = firstIdentifiers();
    PeerApplications found;
    for (auto _ : state) {
        found = findWithLibplist(phone);
        benchmark::DoNotOptimize(readTicksWithLibplist(place, identifiers));
    }
    if (found.size() != applications) state.SkipWithError("libplist does not find the applications");
}

void openBare(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const std::string& phone = ApplicationPhone::shared(applications).folder();
    const TickPlace place = kind.placeOn(phone);
    std::vector<char> bytes;
    for (auto _ : state) {
        benchmark::DoNotOptimize(findWithBareCalls(phone));
        benchmark::DoNotOptimize(readBare(place.file, bytes));
    }
}

void listBare(benchmark::State& state, std::size_t applications) {
    const std::string& phone = ApplicationPhone::shared(applications).folder();
    for (auto _ : state)
        benchmark::DoNotOptimize(listWithBareCalls(phone));
}

void addOpening(const TickPage& kind, std::size_t applications, const std::string& phone) {
    const std::string first = phone + ", first opening";
    addByProcessorTime(first + "/ours", [=, &kind](benchmark::State& state) { openFirst(state, kind, applications); });
    auto* peer = addByProcessorTime(
        first + "/libplist", [=, &kind](benchmark::State& state) { openWithLibplist(state, kind, applications); });
    if (applications == manyApplications) peer->Repetitions(roundsOfLongJobs);
    addByProcessorTime(first + "/list+open+read+close",
                       [=, &kind](benchmark::State& state) { openBare(state, kind, applications); });
    if (applications == manyApplications) reaches().push_back(Reach::atMostNanoseconds(first, 150e6));

    const std::string later = phone + ", later opening";
    addByProcessorTime(later + "/ours", [=, &kind](benchmark::State& state) { openLater(state, kind, applications); });
    addByProcessorTime(later + "/list", [=](benchmark::State& state) { listBare(state, applications); });
}

// -- One screen, one tick --------------------------------------------------------------------------

void produceOneScreen(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const auto page = openPage(ApplicationPhone::shared(applications).running(), kind.className);
    produceScreen(*page, kind.userSection());
    for (auto _ : state)
        benchmark::DoNotOptimize(produceScreen(*page, kind.userSection()));
}

void readScreenWithLibplist(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications).folder());
    const std::vector<std::string> identifiers = firstIdentifiers();
    for (auto _ : state) {
        for (const std::string& identifier : identifiers)
            benchmark::DoNotOptimize(readTickWithLibplist(place, identifier));
    }
}

void readScreenBare(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications).folder());
    std::vector<char> bytes;
    for (auto _ : state) {
        for (std::size_t row = 0; row < rowsOfOneScreen; ++row)
            benchmark::DoNotOptimize(readBare(place.file, bytes));
    }
}

void addScreen(const TickPage& kind, std::size_t applications, const std::string& phone) {
    const std::string job = phone + ", one screen";
    addByProcessorTime(job + "/ours",
                       [=, &kind](benchmark::State& state) { produceOneScreen(state, kind, applications); });
    auto* peer = addByProcessorTime(
        job + "/libplist", [=, &kind](benchmark::State& state) { readScreenWithLibplist(state, kind, applications); });
    if (applications == manyApplications) peer->Repetitions(roundsOfLongJobs);
    addByProcessorTime(job + "/open+read+close",
                       [=, &kind](benchmark::State& state) { readScreenBare(state, kind, applications); });
}

TickFlush flushOf(Durability durability) {
    return durability == Durability::flushed ? TickFlush::fileAndFolder : TickFlush::nothing;
}

// From the tap to when the add-on has been told.
void tick(benchmark::State& state, const TickPage& kind, std::size_t applications, Durability durability) {
    ApplicationPhone& phone = ApplicationPhone::shared(applications, durability);
    const auto page = openPage(phone.running(), kind.className);
    const platform::NSIndexPath path = {kind.userSection(), 0};
    const std::string identifier = *page->specifierAtIndexPath(path)->identifier();
    const TickPlace place = kind.placeOn(phone.folder());
    const bool before = readTickWithLibplist(place, identifier);
    page->table().touchRowAtIndexPath(path);
    if (readTickWithLibplist(place, identifier) == before) return state.SkipWithError("the tick is not stored");
    for (auto _ : state)
        page->table().touchRowAtIndexPath(path);
}

void tickWithLibplist(benchmark::State& state, const TickPage& kind, std::size_t applications, Durability durability) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications, durability).folder());
    bool flag = false;
    for (auto _ : state) {
        if (!writeTickWithLibplist(place, sampleIdentifier(1), flag = !flag, flushOf(durability))) {
            state.SkipWithError("libplist does not store the tick");
        }
    }
}

void replaceBare(benchmark::State& state, const TickPage& kind, std::size_t applications, Durability durability) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications, durability).folder());
    const std::string content = contentOf(place.file);
    for (auto _ : state) {
        if (!replaceFile(place.file, content.data(), content.size(), flushOf(durability))) {
            state.SkipWithError("the file cannot be written");
        }
    }
}

void addTick(const TickPage& kind, std::size_t applications, const std::string& phone, Durability durability) {
    const bool flushed = durability == Durability::flushed;
    const std::string job = phone + (flushed ? ", a tick" : ", a tick, no flush");
    const std::string replacing = flushed ? "temp+fsync+rename+folder fsync" : "temp+rename";
    const auto addTimed = flushed ? add : addByProcessorTime;
    addTimed(job + "/ours", [=, &kind](benchmark::State& state) { tick(state, kind, applications, durability); });
    addTimed(job + "/libplist+" + replacing,
             [=, &kind](benchmark::State& state) { tickWithLibplist(state, kind, applications, durability); });
    addTimed(job + "/" + replacing,
             [=, &kind](benchmark::State& state) { replaceBare(state, kind, applications, durability); });
}

}  // namespace

void addApplicationBenchmarks() {
    const std::pair<std::size_t, const char*> phones[] = {{10, "10"}, {1'000, "1,000"}, {manyApplications, "10,000"}};
    for (const TickPage* kind : {&closeAllAppsPage, &exceptionsPage}) {
        for (const auto& [applications, number] : phones) {
            const std::string phone = std::string(kind->name) + ", " + number;
            addOpening(*kind, applications, phone);
            addScreen(*kind, applications, phone);
            addTick(*kind, applications, phone, Durability::inMemory);
            addTick(*kind, applications, phone, Durability::flushed);
            addScrolling(*kind, applications, phone);
            if (applications == manyApplications) addMemory(*kind, applications, phone);
        }
    }
}

}  // namespace benchmarks
