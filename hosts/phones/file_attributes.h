// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/system/descriptor.h"

namespace hosts {

/// These give an open file permissions, or an owner and group, as far as the file system and the
/// process's rights go: what they refuse stays as it was, and counts as done. False, with errno set,
/// for any other failure.
bool giveMode(FileCalls& calls, const Descriptor& file, mode_t mode);
bool giveOwner(FileCalls& calls, const Descriptor& file, uid_t owner, gid_t group);

}  // namespace hosts
