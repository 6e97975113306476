// SPDX-License-Identifier: MIT
// Whole processes: what a script pays for one setting.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "benchmarks/bench_phone.h"
#include "benchmarks/benchmark_set.h"
#include "benchmarks/ratio_reporter.h"
#include "benchmarks/sample_settings.h"

extern char** environ;

namespace benchmarks {
namespace {

// Runs a program with its output thrown away; gives its exit status, or -1.
int runProcess(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int spawned = ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    if (spawned != 0 || ::waitpid(child, &status, 0) != child) return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void measure(benchmark::State& state, const std::vector<std::string>& words) {
    if (runProcess(words) != 0) {
        const std::string complaint = words[0] + " does not run here";
        return state.SkipWithError(complaint.c_str());
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(runProcess(words));
}

// A schema of the same one setting, for the desktop's own settings program to read.
std::vector<std::string> settingsPeer(const std::string& folder) {
    std::ofstream(folder + "/com.example.trivel3.gschema.xml")
        << R"(<schemalist><schema id="com.example.trivel3" path="/com/example/trivel3/">)"
        << R"(<key name="quick-switcher" type="b"><default>true</default></key></schema></schemalist>)";
    runProcess({"glib-compile-schemas", folder});
    ::setenv("GSETTINGS_SCHEMA_DIR", folder.c_str(), 1);
    ::setenv("GSETTINGS_BACKEND", "memory", 1);
    return {"gsettings", "get", "com.example.trivel3", "quick-switcher"};
}

}  // namespace

void addProcessBenchmarks() {
    static BenchPhone phone(smallSettings().xml);
    const std::string job = "trivel3ctl get, whole process";
    auto addProcess = [&job](const char* side, std::vector<std::string> words) {
        add(job + "/" + side, [words = std::move(words)](benchmark::State& state) {
            measure(state, words);
        })->Unit(benchmark::kMicrosecond);
    };
    addProcess("ours", {TRIVEL3_STAGING "/bin/trivel3ctl", "get", "QuickSwitcher", "--phone", phone.folder()});
    addProcess("true", {"/bin/true"});
    addProcess("plistutil", {"plistutil", "-i", phone.settingsPath()});
    addProcess("gsettings get", settingsPeer(phone.folder()));
    reaches().push_back({job, "true", 2.5});
}

}  // namespace benchmarks
