// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

#include "hosts/linux/descriptor.h"

namespace hosts {

/// While it lives, the signals that ask a program to end (SIGINT, SIGTERM, SIGHUP) end nothing:
/// they make a descriptor readable instead, so that a wait can be left in good order. Made before
/// the process has other threads.
class StopSignals {
public:
    StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;
    ~StopSignals();

    /// Readable from the first such signal on; -1, and the signals do as they always do, when the
    /// system has no descriptor left to give.
    int descriptor() const { return _descriptor.isOpen() ? _descriptor.get() : -1; }

private:
    sigset_t _before{};
    Descriptor _descriptor;
};

}  // namespace hosts
