// SPDX-License-Identifier: MIT
#include "benchmarks/application_memory.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string_view>
#include <vector>

#include "benchmarks/benchmark_set.h"
#include "benchmarks/page_use.h"
#include "benchmarks/ratio_reporter.h"
#include "hosts/app_list/picture.h"
#include "hosts/app_list/png_picture.h"

namespace benchmarks {
namespace {

constexpr std::string_view role = "--memory-process";

// Of this process and no other: what a parent is told of a child counts what the parent itself had
// when it started the child.
std::size_t peakBytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stoul(line.substr(6)) * 1024;
    }
    return 0;
}

void printPeak() {
    std::printf("%zu\n", peakBytes());
}

void useOurPage(const TickPage& kind, const std::string& phone) {
    const auto program = startOn(phone, Durability::inMemory);
    const auto page = openPage(*program, kind.className);
    printPeak();
    platform::UITableView& table = page->table();
    for (std::size_t section = kind.firstApplicationSection; section <= kind.userSection(); ++section) {
        const std::size_t rows = page->tableView_numberOfRowsInSection(table, section);
        for (std::size_t row = 0; row < rows; ++row)
            table.produceCellForRowAtIndexPath({section, row});
    }
    printPeak();
}

// The phone's own form of PNG files is beyond libpng, so the icons are decoded as ours are.
std::optional<hosts::Picture> readIcon(const PeerApplication& application, std::vector<char>& bytes) {
    constexpr std::uint32_t side = 58;
    for (const std::string& name : application.iconNames) {
        const std::size_t length = readBare(application.folder + "/" + name + "@2x.png", bytes);
        auto picture = hosts::decodePng({bytes.data(), length});
        if (picture) return hosts::fitIntoSquare(*std::move(picture), side);
    }
    return std::nullopt;
}

void useLibplist(const TickPage& kind, const std::string& phone) {
    const PeerApplications found = findWithLibplist(phone);
    std::vector<std::string> identifiers;
    for (const auto& [identifier, application] : found)
        identifiers.push_back(identifier);
    benchmark::DoNotOptimize(readTicksWithLibplist(kind.placeOn(phone), identifiers));
    printPeak();
    std::vector<char> bytes;
    std::vector<std::optional<hosts::Picture>> icons;
    for (const auto& [identifier, application] : found)
        icons.push_back(readIcon(application, bytes));
    printPeak();
}

std::string ownPath() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

void measure(benchmark::State& state, const TickPage& kind, const char* side, std::size_t applications) {
    const std::string command = "'" + ownPath() + "' " + std::string(role) + " " + side + " " + kind.className + " '" +
                                ApplicationPhone::shared(applications).folder() + "'";
    double opened = 0;
    double scrolled = 0;
    for (auto _ : state) {
        FILE* process = ::popen(command.c_str(), "r");
        const int figures = process ? std::fscanf(process, "%lf %lf", &opened, &scrolled) : 0;
        if (!process || ::pclose(process) != 0 || figures != 2) return state.SkipWithError("the process failed");
    }
    state.counters["opened"] = bytes(opened);
    state.counters["every icon shown"] = bytes(scrolled);
}

}  // namespace

void addMemory(const TickPage& kind, std::size_t applications, const std::string& phone) {
    for (const char* side : {"ours", "libplist"}) {
        add(phone + ", memory/" + side,
            [=, &kind](benchmark::State& state) { measure(state, kind, side, applications); })
            ->Iterations(1)
            ->Repetitions(1);
    }
}

std::optional<int> runAsMemoryProcess(int argumentCount, char** arguments) {
    if (argumentCount != 5 || arguments[1] != role) return std::nullopt;
    const std::string_view className = arguments[3];
    const TickPage& kind = className == exceptionsPage.className ? exceptionsPage : closeAllAppsPage;
    (arguments[2] == std::string_view("ours") ? useOurPage : useLibplist)(kind, arguments[4]);
    return 0;
}

}  // namespace benchmarks
