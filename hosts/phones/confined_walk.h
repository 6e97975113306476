// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "hosts/system/descriptor.h"

namespace hosts {

/// Opens what `path` leads to when the folder `root` is the root of the file system, one call for each step, where the
/// kernel does not do it by openat2. `path` has no NUL byte in it, `flags` make no file. Nothing, with errno set, on
/// failure.
///
/// The file is the one that the kernel would find, and the errno its own, but that
/// - no link of procfs is followed (ELOOP): some lead to what they do not name, and it is not told which;
/// - each folder on the way takes a descriptor until the end, and one too many is EMFILE;
/// - the machine's rules about other people's links in folders that all may write to are not looked at.
/// Whatever is renamed meanwhile, a step is only ever taken from a folder that was found below the root.
Descriptor walkConfined(FileCalls& calls, int root, std::string_view path, int flags);

}  // namespace hosts
