// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

namespace hosts {

/// What something of this mode is: "a regular file", "a folder", "a FIFO", "a socket" or "a device".
std::string kindName(mode_t mode);

/// Whether the path leads to what a process has open, as "/dev/stdin" and "/dev/fd/3" do: whoever gives such a path
/// means what is there, a pipe too, and it is the process's own and not the path's to replace.
bool namesOpenFile(const std::string& path);

/// What goes by that name where a file should be, in words, when reading it may wait for ever or come to no end: a
/// FIFO, a device or a socket. Nothing for what a process has open.
std::optional<std::string> namedInPlaceOfFile(const std::string& path);

}  // namespace hosts
