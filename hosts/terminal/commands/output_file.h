// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts::terminal {

/// Writes a file of this machine, whole or not at all. A regular file that stands there, or that a link there leads to,
/// is replaced in one step and keeps its permissions, so that one that is converted in place survives a full disk. A
/// device or pipe is written into, and so is what is open and goes by a name like "/dev/stdout". A new file gets the
/// mode, as far as the user's mask lets it.
platform::Result<platform::Done> writeOutputFile(const std::string& path, std::string_view bytes, mode_t mode = 0666);

/// The same for the option of a command: "-" is standard output, on which nothing steers a terminal.
platform::Result<platform::Done> writeOutput(const std::string& output, std::string_view bytes, mode_t mode = 0666);

}  // namespace hosts::terminal
