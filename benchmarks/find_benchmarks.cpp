// SPDX-License-Identifier: MIT
// Finding on all pages, on a phone with many applications.
#include <benchmark/benchmark.h>

#include <stdexcept>
#include <string>

#include "benchmarks/application_phone.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/ratio_reporter.h"
#include "hosts/session/finder.h"
#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"

namespace benchmarks {
namespace {

constexpr std::size_t applications = 10'000;
constexpr std::size_t mostHits = 30;

/// A program with a page open that lists the applications.
struct Finding {
    Finding() : opened(open()), services(opened), navigation(screen) {
        auto loaded =
            hosts::SettingsSession::load(services.forSession(), opened.installation.systemImage, opened.shape);
        if (!loaded) throw std::runtime_error(loaded.error().text());
        session = *std::move(loaded);
        navigation.pushViewController_animated(*session->makeRootPage(), false);
        for (const std::string& title : titles) {
            if (!hosts::openPage(navigation, title)) throw std::runtime_error("no page " + title);
        }
    }

    static hosts::OpenedPhone open() {
        hosts::PhoneOptions options;
        options.phone = ApplicationPhone::shared(applications).folder();
        auto opened = hosts::OpenedPhone::open(options, "benchmarks");
        if (!opened) throw std::runtime_error(opened.error().text());
        opened->installation.systemImage = TRIVEL3_STAGING "/lib/trivel3/system";
        return *std::move(opened);
    }

    void find(benchmark::State& state, const char* text) {
        auto hits = finder.find(text, mostHits, {*navigation.topViewController(), titles});
        if (hits.empty()) state.SkipWithError("nothing was found");
        benchmark::DoNotOptimize(hits);
    }

    std::vector<std::string> titles{"Advanced Options", "Close All Apps"};
    hosts::OpenedPhone opened;
    hosts::QuietServices services;
    std::unique_ptr<hosts::SettingsSession> session;
    hosts::QuietScreen screen;
    platform::UINavigationController navigation;
    hosts::Finder finder{opened};
};

void findFirst(benchmark::State& state) {
    Finding finding;
    for (auto _ : state) {
        finding.finder.forget();
        finding.find(state, "a");
    }
}

void findNext(benchmark::State& state, const char* text) {
    Finding finding;
    finding.find(state, text);
    for (auto _ : state)
        finding.find(state, text);
}

}  // namespace

void addFindBenchmarks() {
    const auto addFind = [](const std::string& what, std::function<void(benchmark::State&)> run) {
        const std::string job = "find, 10,000 applications, " + what;
        addByProcessorTime(job + "/ours", std::move(run));
        reaches().push_back(Reach::atMostNanoseconds(job, 20e6));
    };
    addFind("first letter", findFirst);
    addFind("one letter more", [](benchmark::State& state) { findNext(state, "ap"); });
    addFind("a setting's name", [](benchmark::State& state) { findNext(state, "SliderActionsVolume"); });
}

}  // namespace benchmarks
