// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "tests/kit/child_process.h"
#include "tests/property_lists/peer_reading.h"

namespace peers {

/// Python's plistlib in a process of its own, which reads one property list after another.
class PlistlibPeer {
public:
    PlistlibPeer();

    /// What plistlib reads, and what it then writes.
    PeerReading read(std::string_view bytes);

private:
    kit::ChildProcess _python;
};

}  // namespace peers
