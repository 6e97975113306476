// SPDX-License-Identifier: MIT
#pragma once

#include <climits>
#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"

namespace hosts {

/// A path as the kernel takes it, ended by a NUL byte and kept on the stack.
class PathText {
public:
    explicit PathText(std::string_view path);

    /// Null, with errno set, when the path is longer than the kernel takes or has a NUL byte in it.
    const char* get() const;

private:
    char _text[PATH_MAX];
    int _error = 0;
};

/// Opens what `path` leads to when the folder `root` is the root of the file system: absolute links
/// and ".." stay below it. Nothing, with errno set, on failure. Close-on-exec is added to `flags`.
Descriptor openConfined(FileCalls& calls, int root, std::string_view path, int flags);

/// Opens the entry `name` of an open folder, likewise. A file that is made gets the permissions `mode`.
Descriptor openEntry(FileCalls& calls, const Descriptor& folder, const std::string& name, int flags, mode_t mode = 0);

/// The path on this machine of what is open. Empty when none can be told.
std::string machinePath(int file);

}  // namespace hosts
