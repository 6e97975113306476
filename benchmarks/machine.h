// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace benchmarks {

/// What the figures were measured on, for the head of the output: processors, kernel, compiler and
/// how busy the machine was.
std::string machineText();

}  // namespace benchmarks
