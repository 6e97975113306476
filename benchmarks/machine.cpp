// SPDX-License-Identifier: MIT
#include "benchmarks/machine.h"

#include <sys/utsname.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace benchmarks {
namespace {

std::string processorModel() {
    std::ifstream processors("/proc/cpuinfo");
    for (std::string line; std::getline(processors, line);) {
        const std::size_t colon = line.find(": ");
        if (line.starts_with("model name") && colon != line.npos) return line.substr(colon + 2);
    }
    return "unknown processor";
}

std::string kernel() {
    utsname name;
    if (::uname(&name) != 0) return "unknown kernel";
    return std::string(name.sysname) + " " + name.release;
}

std::string compiler() {
#if defined(__clang__)
    return "clang++ " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

std::string loadAverage() {
    double minute = 0;
    if (::getloadavg(&minute, 1) != 1) return "unknown";
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", minute);
    return text;
}

}  // namespace

std::string machineText() {
    return std::to_string(std::thread::hardware_concurrency()) + " x " + processorModel() + ", " + kernel() + ", " +
           compiler() + ", load average " + loadAverage();
}

}  // namespace benchmarks
