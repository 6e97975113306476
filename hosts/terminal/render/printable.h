// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/printable.h"

/// Text that comes from a phone's files, made fit for a terminal.
namespace hosts::terminal {

/// The text in quotation marks, for a message; cut when it is long.
std::string inQuotes(std::string_view text);

/// Columns that the text takes on a terminal: wide characters take two, combining ones none.
std::size_t columns(std::string_view text);

/// The text, cut to at most this many columns. Where something was cut, `ellipsis` stands at the end,
/// which takes a column for each of its characters.
std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis = "…");

/// The line as lines of at most this many columns, broken at spaces where there are any.
std::vector<std::string> wrapped(std::string_view line, std::size_t width);

}  // namespace hosts::terminal
