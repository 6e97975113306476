// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "benchmarks/application_phone.h"

namespace benchmarks {

/// Adds the measurement of the memory at the peak, ours and a peer's, each in a process of its own.
/// `phone` begins the names of the jobs.
void addMemory(const TickPage& kind, std::size_t applications, const std::string& phone);

/// When the program was started as such a process, does its work, prints what it took and gives the
/// exit status; else nothing.
std::optional<int> runAsMemoryProcess(int argumentCount, char** arguments);

}  // namespace benchmarks
