// SPDX-License-Identifier: MIT
#include "benchmarks/application_scrolling.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <memory>

#include "benchmarks/benchmark_set.h"
#include "benchmarks/cell_times.h"
#include "benchmarks/page_use.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_applications.h"
#include "platform/foundation/property_list.h"

namespace benchmarks {
namespace {

using platform::PSListController;

/// Enough for a 99th percentile. Small phones are scrolled through many times.
constexpr std::size_t fewestCells = 1'000;
/// A peer takes milliseconds for each cell of the largest phone.
constexpr std::size_t mostPeerCells = 200;
constexpr int usualRounds = 3;

enum class Icons { atHand, fetched };

/// The cells of the rows that a screen shows, which the host keeps.
class Screen {
public:
    void show(std::shared_ptr<platform::UITableViewCell> cell) { _cells[_next++ % _cells.size()] = std::move(cell); }

private:
    std::array<std::shared_ptr<platform::UITableViewCell>, rowsOfOneScreen> _cells;
    std::size_t _next = 0;
};

template <class Produce>
void scroll(PSListController& page, const TickPage& kind, Produce produce) {
    Screen screen;
    for (std::size_t section = kind.firstApplicationSection; section <= kind.userSection(); ++section) {
        const std::size_t rows = page.tableView_numberOfRowsInSection(page.table(), section);
        for (std::size_t row = 0; row < rows; ++row)
            produce(screen, platform::NSIndexPath{section, row});
    }
}

std::shared_ptr<PSListController> loadPage(BenchPhone& program, const TickPage& kind) {
    auto page = makePage(program, kind.className);
    page->view();
    page->viewWillAppear(false);
    return page;
}

// Rows keep their icons, so a page that has been scrolled through once has them all.
void scrollOurs(benchmark::State& state, const TickPage& kind, std::size_t applications, Icons icons) {
    BenchPhone& program = ApplicationPhone::shared(applications).running();
    CellTimes times;
    auto page = loadPage(program, kind);
    const auto produce = [&](Screen& screen, platform::NSIndexPath path) {
        screen.show(page->table().produceCellForRowAtIndexPath(path));
    };
    if (icons == Icons::atHand) scroll(*page, kind, produce);
    for (auto _ : state) {
        do {
            if (icons == Icons::fetched) page = loadPage(program, kind);
            scroll(*page, kind,
                   [&](Screen& screen, platform::NSIndexPath path) { times.measure([&] { produce(screen, path); }); });
        } while (times.count() < fewestCells);
    }
    times.report(state);
}

// Some identifiers all over the phone.
std::vector<std::string> peerIdentifiers(std::size_t applications) {
    std::vector<std::string> identifiers;
    const std::size_t step = std::max<std::size_t>(1, applications / mostPeerCells);
    for (std::size_t number = 0; number < applications; number += step)
        identifiers.push_back(sampleIdentifier(number));
    return identifiers;
}

void readWithLibplist(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications).folder());
    CellTimes times;
    for (auto _ : state) {
        for (const std::string& identifier : peerIdentifiers(applications))
            times.measure([&] { benchmark::DoNotOptimize(readTickWithLibplist(place, identifier)); });
    }
    times.report(state);
}

void readWithBareCalls(benchmark::State& state, const TickPage& kind, std::size_t applications) {
    const TickPlace place = kind.placeOn(ApplicationPhone::shared(applications).folder());
    std::vector<char> bytes;
    CellTimes times;
    for (auto _ : state) {
        for (std::size_t cell = 0; cell < fewestCells; ++cell)
            times.measure([&] { benchmark::DoNotOptimize(readBare(place.file, bytes)); });
    }
    times.report(state);
}

// The largest phone takes seconds, and has cells enough for one round to tell.
void addOnce(const std::string& name, std::size_t applications, std::function<void(benchmark::State&)> run) {
    const int rounds = applications == manyApplications ? 1 : usualRounds;
    add(name, std::move(run))->Iterations(1)->Repetitions(rounds);
}

double sizeOf(const TickPage& kind, std::size_t ticks) {
    return static_cast<double>(platform::writeXmlPropertyList(platform::Value(kind.content(ticks))).bytes->size());
}

}  // namespace

void addScrolling(const TickPage& kind, std::size_t applications, const std::string& phone) {
    const auto addOurs = [&](const std::string& name, std::size_t count, Icons icons) {
        addOnce(name, count, [=, &kind](benchmark::State& state) { scrollOurs(state, kind, count, icons); });
    };
    const std::string job = phone + ", a cell";
    addOurs(job + "/ours", applications, Icons::atHand);
    addOnce(job + "/libplist", applications,
            [=, &kind](benchmark::State& state) { readWithLibplist(state, kind, applications); });
    addOnce(job + "/open+read+close", applications,
            [=, &kind](benchmark::State& state) { readWithBareCalls(state, kind, applications); });
    addOurs(phone + ", a cell and its icon/ours", applications, Icons::fetched);
    if (applications != manyApplications) return;

    // A cell looks its tick up in the file, and nothing else of it may grow with the file.
    constexpr std::size_t fewer = manyApplications / 10;
    addOurs(job + "/1,000 applications", fewer, Icons::atHand);
    reaches().push_back({job + ", median", "1,000 applications", sizeOf(kind, applications) / sizeOf(kind, fewer)});
    for (const char* cell : {", a cell", ", a cell and its icon"})
        reaches().push_back(Reach::atMostNanoseconds(phone + cell + ", 99th percentile", 1e6));
}

}  // namespace benchmarks
