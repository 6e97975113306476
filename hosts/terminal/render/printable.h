// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/printable.h"

/// Text that comes from a phone's files, made fit for a terminal.
namespace hosts::terminal {

// By its full name it is at hand where a member of the same name hides it.
using hosts::columns;

/// The line as lines of at most this many columns, broken at spaces where there are any.
std::vector<std::string> wrapped(std::string_view line, std::size_t width);

}  // namespace hosts::terminal
