// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/system/descriptor.h"

namespace hosts {

/// What became of something that a file system, or the process's rights, may refuse to keep.
enum class Given {
    kept,
    refused,  ///< it stays as it was, and nothing is wrong
    failed,   ///< with errno set
};

Given giveMode(FileCalls& calls, const Descriptor& file, mode_t mode);
Given giveOwner(FileCalls& calls, const Descriptor& file, uid_t owner, gid_t group);

/// Gives `to` the extended attributes of `from`, access lists among them, as far as they are not refused. False, with
/// errno set, when that fails.
bool copyAttributes(FileCalls& calls, const Descriptor& from, const Descriptor& to);

}  // namespace hosts
