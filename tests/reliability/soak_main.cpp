// SPDX-License-Identifier: MIT
// soak STEPS [SEED]: so many random steps of `trivel3ctl drive`, and what it has of the machine meanwhile.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "soak.h"

namespace {

constexpr unsigned long usualSeed = 20261121;

void printLine(unsigned long steps, std::chrono::steady_clock::time_point begin, const reliability_test::Soak& soak) {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    const auto has = soak.footprint();
    std::printf("| %7lu | %7.0f | %6zu | %7zu | %10zu |\n", steps, passed.count(), has.memory / 1024, has.threads,
                has.openFiles);
    std::fflush(stdout);
}

int runSoak(unsigned long steps, unsigned long seed) {
    std::printf("| steps   | seconds | KB     | threads | open files |\n");
    std::printf("|---------|---------|--------|---------|------------|\n");
    const auto begin = std::chrono::steady_clock::now();
    reliability_test::Soak soak(seed);
    unsigned long done = 0;
    for (const unsigned long percent : {1, 10, 25, 50, 75, 100}) {
        const unsigned long wanted = steps * percent / 100;
        soak.run(wanted - done);
        done = wanted;
        printLine(done, begin, soak);
    }
    const auto outcome = soak.finish();
    if (outcome.status == 0 && outcome.errors.empty()) return EXIT_SUCCESS;
    std::fprintf(stderr, "soak: the program ended with %d: %s\n", outcome.status, outcome.errors.c_str());
    return EXIT_FAILURE;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fprintf(stderr, "usage: soak STEPS [SEED]\n");
        return 2;
    }
    try {
        return runSoak(std::strtoul(arguments[1], nullptr, 10),
                       argumentCount > 2 ? std::strtoul(arguments[2], nullptr, 10) : usualSeed);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "soak: %s\n", problem.what());
        return EXIT_FAILURE;
    }
}
