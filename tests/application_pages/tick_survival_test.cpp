// SPDX-License-Identifier: MIT
// A process that dies while it stores ticks loses none that it has told of, and spoils nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "pane.h"
#include "tests/kit/forked.h"

namespace application_pages_test {
namespace {

using kit::SharedCounter;
using platform::Dictionary;
using platform::Value;

constexpr int applications = 7;

std::string identifierOf(int application) {
    return "com.example.application" + std::to_string(application);
}

/// The ticks after so many taps, which go round the applications.
Value ticksAfter(int tapCount) {
    Dictionary ticks;
    for (int tap = std::max(0, tapCount - applications); tap < tapCount; ++tap)
        ticks.set(identifierOf(tap % applications), tap / applications % 2 == 0);
    return ticks.empty() ? Value() : Value(ticks);
}

/// Taps rows until somebody kills this process, and counts the taps that are done.
[[noreturn]] void tapRowsForEver(Pane& pane, const TickPage& page, std::atomic<int>& done) {
    while (true) {
        pane.screen.tap({page.firstApplicationSection, static_cast<std::size_t>(done % applications)});
        ++done;
    }
}

/// The signal that ended a child which tapped rows for so long; 0 when none did.
int deathAfter(std::chrono::microseconds lifetime, Pane& pane, const TickPage& page, std::atomic<int>& done) {
    const pid_t child = ::fork();
    if (child == 0) tapRowsForEver(pane, page, done);
    if (child < 0) return 0;
    std::this_thread::sleep_for(lifetime);
    ::kill(child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

class TickSurvival : public testing::TestWithParam<TickPage> {
protected:
    TickSurvival() {
        EXPECT_TRUE(app_list_test::loadAppList(pane));
        for (int application = 0; application < applications; ++application)
            app_list_test::installSystem(pane.phone, identifierOf(application), "App " + std::to_string(application));
        if (GetParam().file == settingsFile) pane.phone.put(settingsFile, Dictionary{{"MultiCenter", false}});
        pane.openQuietly(GetParam().className);
    }

    Pane pane;
};

INSTANTIATE_TEST_SUITE_P(OnBothPages, TickSurvival, testing::Values(closeAllApps, exceptions));

TEST_P(TickSurvival, leavesTheOldStateOrTheNewOneWheneverTheProcessDies) {
    constexpr int fewestTaps = 1000;
    constexpr int fewestDeaths = 100;
    std::mt19937 random{20261121};
    std::uniform_int_distribution<int> lifetimes{0, 5000};
    SharedCounter done;
    for (int deaths = 0; deaths < fewestDeaths || *done < fewestTaps; ++deaths) {
        ASSERT_EQ(deathAfter(std::chrono::microseconds(lifetimes(random)), pane, GetParam(), *done), SIGKILL);
        const Value found = pane.ticks(GetParam());
        const int toldOf = *done;
        ASSERT_TRUE(found == ticksAfter(toldOf) || found == ticksAfter(toldOf + 1)) << toldOf << " taps:\n" << found;
        if (found != ticksAfter(toldOf)) *done = toldOf + 1;
    }
    if (GetParam().file == settingsFile) {
        EXPECT_EQ(*pane.content(settingsFile).dictionary()->find("MultiCenter"), Value(false));
    }
}

TEST_P(TickSurvival, leavesNoLitterBehindOnceATickSucceeds) {
    SharedCounter done;
    for (int death = 0; death < 30; ++death)
        deathAfter(std::chrono::microseconds(death * 100), pane, GetParam(), *done);
    pane.screen.tap("App 0");
    std::vector<std::string> names;
    const auto folder = pane.phone.machinePath(GetParam().file).parent_path();
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    EXPECT_THAT(names, testing::ElementsAre(std::filesystem::path(GetParam().file).filename().string()));
}

}  // namespace
}  // namespace application_pages_test
