// SPDX-License-Identifier: MIT
// The pane and its platform rest on the language's run-time alone, so that they can be carried anywhere.
#include <algorithm>
#include <sstream>

#include "tests/kit/child_process.h"
#include "tests/kit/expectations.h"

namespace terminal_test {

using namespace kit;

namespace {

// What the dynamic linker would load for the file, by name.
std::vector<std::string> librariesOf(const std::string& file) {
    ChildProcess ldd({"/usr/bin/ldd", file}, {{"PATH", "/usr/bin:/bin"}, {"LC_ALL", "C"}});
    const Outcome outcome = ldd.finish();
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    std::vector<std::string> names;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line);) {
        const std::string path = line.substr(line.find_first_not_of(" \t"));
        const std::string name = path.substr(0, path.find(' '));
        names.push_back(name.substr(name.rfind('/') + 1));
    }
    return names;
}

bool isOfTheRunTime(const std::string& name) {
    for (const char* start : {"linux-vdso.so", "ld-linux", "libstdc++.so", "libm.so", "libgcc_s.so", "libc.so"}) {
        if (name.starts_with(start)) return true;
    }
    return false;
}

TEST(Dependencies, platformNeedsTheLanguagesRunTimeAlone) {
#ifdef TRIVEL3_SANITIZED
    GTEST_SKIP() << "sanitizers bring libraries of their own";
#endif
    for (const std::string& name : librariesOf(TRIVEL3_PLATFORM))
        EXPECT_TRUE(isOfTheRunTime(name)) << name;
}

TEST(Dependencies, paneNeedsThePlatformAndTheLanguagesRunTimeAlone) {
#ifdef TRIVEL3_SANITIZED
    GTEST_SKIP() << "sanitizers bring libraries of their own";
#endif
    const auto names = librariesOf(TRIVEL3_BUNDLE "/Trivel3Preferences");
    for (const std::string& name : names)
        EXPECT_TRUE(isOfTheRunTime(name) || name == TRIVEL3_PLATFORM_NAME) << name;
    EXPECT_TRUE(std::ranges::count(names, "libc.so.6") > 0);
}

TEST(Dependencies, commandThatOpensNoScreenLoadsNoLibraryForOne) {
    const auto names = librariesOf(TRIVEL3_PROGRAM);
    EXPECT_TRUE(std::ranges::count(names, TRIVEL3_PLATFORM_NAME) > 0);
    for (const std::string& name : names)
        EXPECT_FALSE(name.starts_with("libncurses") || name.starts_with("libtinfo")) << name;
}

}  // namespace
}  // namespace terminal_test
