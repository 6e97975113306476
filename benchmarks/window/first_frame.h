// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace benchmarks {

/// Starts the program on an X display of its own and prints, in nanoseconds, when its window's first
/// frame is seen there and the processor time until then and, in bytes, the memory that the process
/// then has. Gives an exit status.
int meterFirstFrame(const QStringList& command);

}  // namespace benchmarks
