// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/system/descriptor.h"

namespace hosts {

/// Waits until no other program of ours has its turn in the open folder, two seconds at most; the turn ends with the
/// folder's descriptor. False when it was not had in that time. Where the file system keeps no such locks nobody waits.
bool waitForTurn(FileCalls& calls, const Descriptor& folder);

}  // namespace hosts
