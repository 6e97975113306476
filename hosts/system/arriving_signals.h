// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <initializer_list>
#include <optional>

#include "hosts/system/descriptor.h"

namespace hosts {

/// While it lives, the signals that it was made for have no effect: they arrive through a descriptor
/// instead, so that a wait can be left in good order. Made before the process has other threads.
class ArrivingSignals {
public:
    explicit ArrivingSignals(std::initializer_list<int> numbers);
    ArrivingSignals(const ArrivingSignals&) = delete;
    ArrivingSignals& operator=(const ArrivingSignals&) = delete;
    ~ArrivingSignals();

    /// Readable when a signal has arrived; -1, and the signals do as they always do, when the system
    /// has no descriptor left to give.
    int descriptor() const { return _descriptor.isOpen() ? _descriptor.get() : -1; }

    /// The number of a signal that has arrived; nothing when none has.
    std::optional<int> next();

private:
    sigset_t _before{};
    Descriptor _descriptor;
};

/// The signals that ask a program to end.
class StopSignals : public ArrivingSignals {
public:
    StopSignals() : ArrivingSignals({SIGINT, SIGTERM, SIGHUP}) {}
};

}  // namespace hosts
