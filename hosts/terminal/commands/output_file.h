// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts::terminal {

/// Writes a file of this machine, whole or not at all. A regular file that stands there, or that a link there leads to,
/// is replaced in one step and keeps its permissions, so that one that is converted in place survives a full disk. A
/// device or pipe is written into, and so is what is open and goes by a name like "/dev/stdout".
platform::Result<platform::Done> writeOutputFile(const std::string& path, std::string_view bytes);

}  // namespace hosts::terminal
