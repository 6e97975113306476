// SPDX-License-Identifier: MIT
// Pages as a screen uses them.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "benchmarks/bench_phone.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/page_use.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_settings.h"
#include "platform/list/list_controller.h"

namespace benchmarks {
namespace {

constexpr const char* optionsClass = "KavixPreferencesOptionsController";

void openOurs(benchmark::State& state, const std::string& content, Durability durability) {
    BenchPhone phone(content, durability);
    for (auto _ : state)
        openPage(phone, optionsClass);
}

// What opening the page must do to the file at the least: read it as often as the page does, and
// write it as often, with nothing in between.
void openBare(benchmark::State& state, const std::string& content) {
    BenchPhone phone(content, Durability::inMemory);
    openPage(phone, optionsClass);
    phone.files().startCounting();
    openPage(phone, optionsClass);
    const auto [looks, reads, parsings, writes] = phone.files().counts();
    std::string bytes(content.size() + 4096, 'x');
    const std::string path = phone.settingsPath();
    const std::string temporary = path + ".tmp";
    for (auto _ : state) {
        for (std::size_t i = 0; i < reads; ++i) {
            const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
            benchmark::DoNotOptimize(::read(file, bytes.data(), bytes.size()));
            ::close(file);
        }
        for (std::size_t i = 0; i < writes; ++i) {
            const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
            benchmark::DoNotOptimize(::write(file, content.data(), content.size()));
            ::close(file);
            ::rename(temporary.c_str(), path.c_str());
        }
    }
}

std::shared_ptr<platform::PSTableCell> switchCell(platform::PSListController& page, std::size_t section) {
    return std::dynamic_pointer_cast<platform::PSTableCell>(page.table().produceCellForRowAtIndexPath({section, 0}));
}

// A screen tall enough for every row: what the page redraws or inserts is produced at once.
class TallScreen final : public platform::TableHost {
public:
    void reloadTable(platform::PSListController&) override {}
    void reloadRow(platform::PSListController& page, std::size_t position, bool) override { produce(page, position); }
    void insertRows(platform::PSListController& page, std::size_t position, Rows rows, bool) override {
        for (std::size_t i = 0; i < rows.size(); ++i)
            produce(page, position + i);
    }
    void removeRows(platform::PSListController&, std::size_t, Rows, bool) override {}

private:
    static void produce(platform::PSListController& page, std::size_t position) {
        auto path = page.indexPathForIndex(position);
        if (path) benchmark::DoNotOptimize(page.table().produceCellForRowAtIndexPath(*path));
    }
};

// From the setter of "Minimal Display", on which most other rows depend, to the last redraw.
void moveSwitch(benchmark::State& state, const std::string& content, Durability durability) {
    BenchPhone phone(content, durability);
    TallScreen screen;
    auto page = makePage(phone, optionsClass);
    page->setTableHost(&screen);
    page->view();
    page->viewWillAppear(false);
    auto cell = switchCell(*page, 1);
    bool on = false;
    for (auto _ : state)
        cell->userMovedSwitch(on = !on), phone.drawn();
}

void addOpening(const SampleSettings& settings, double reach) {
    const std::string job = "open Advanced Options, " + settings.name;
    add(job + ", no flush/ours",
        [&settings](benchmark::State& state) { openOurs(state, settings.xml, Durability::inMemory); });
    add(job + ", no flush/bare reads and writes",
        [&settings](benchmark::State& state) { openBare(state, settings.xml); });
    if (reach > 0) reaches().push_back({job + ", no flush", "bare reads and writes", reach});
}

void addSwitching(const SampleSettings& settings) {
    const std::string job = "switch to last redraw, " + settings.name;
    add(job + "/ours", [&settings](benchmark::State& state) { moveSwitch(state, settings.xml, Durability::inMemory); });
    add(job + "/with flush",
        [&settings](benchmark::State& state) { moveSwitch(state, settings.xml, Durability::flushed); });
}

void printCounts(const char* step, BenchPhone& phone, const std::function<void()>& run) {
    // As long after the one before as a user takes at the least: a file that was written this very moment is read
    // again, since a second write could bear the same times.
    std::this_thread::sleep_for(std::chrono::milliseconds{100});
    phone.drawn();
    phone.files().startCounting();
    run();
    const auto& [looks, readings, parsings, writes] = phone.files().counts();
    std::printf("| %-44s | %8zu | %8zu | %8zu | %8zu |\n", step, looks, readings, parsings, writes);
}

}  // namespace

void printFileCounts() {
    BenchPhone phone(smallSettings().xml, Durability::inMemory);
    auto root = makePage(phone, "KavixPreferencesController");
    auto options = makePage(phone, optionsClass);
    std::printf("| %-44s | %8s | %8s | %8s | %8s |\n", "turn, on a tall phone", "looks", "readings", "parsings",
                "writes");
    std::printf("|%s|%s\n", std::string(46, '-').c_str(), "----------|----------|----------|----------|");
    const auto open = [](platform::PSListController& page) {
        page.view();
        page.viewWillAppear(false);
        produceScreen(page);
    };
    printCounts("root page: open, with the cells of one screen", phone, [&] { open(*root); });
    printCounts("root page: move Multi-Center", phone, [&] { switchCell(*root, 0)->userMovedSwitch(true); });
    if (!options) return;
    printCounts("Advanced Options: open, with one screen", phone, [&] { open(*options); });
    printCounts("Advanced Options: appear again", phone, [&] { options->viewWillAppear(false); });
    printCounts("Advanced Options: move Minimal Display", phone,
                [&] { switchCell(*options, 1)->userMovedSwitch(true); });
    printCounts("Advanced Options: tap a condition", phone, [&] { options->table().touchRowAtIndexPath({1, 2}); });
    std::printf("\n");
}

void addPageBenchmarks() {
    addSwitching(smallSettings());
    addSwitching(largeSettings());
    addOpening(smallSettings(), 2);
    addOpening(largeSettings(), 0);
}

}  // namespace benchmarks
