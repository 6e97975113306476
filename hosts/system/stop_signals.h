// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/system/arriving_signals.h"

namespace hosts {

/// The signals that ask a program to end.
class StopSignals : public ArrivingSignals {
public:
    StopSignals() : ArrivingSignals({SIGINT, SIGTERM, SIGHUP}) {}
};

}  // namespace hosts
