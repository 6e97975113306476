// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hosts {

/// The text, which may come from a phone's files, with every control character (C0, DEL, C1), line
/// break, character that reorders what follows it and byte that is no UTF-8 replaced by U+FFFD, so
/// that nothing in it can steer a terminal.
std::string printable(std::string_view text);

/// The same for text of several lines: its line breaks and tabs stay.
std::string printableLines(std::string_view text);

/// Whether the character steers a terminal or reorders what follows it.
bool isSteering(char32_t code);

/// The text in quotation marks, for a message; cut when it is long.
std::string inQuotes(std::string_view text);

/// Columns that the text takes on a terminal: wide characters take two, combining ones none.
std::size_t columns(std::string_view text);

/// The longest start of the text that fits into so many columns, in bytes.
std::size_t fittingLength(std::string_view text, std::size_t width);

/// The text, cut to at most this many columns. Where something was cut, `ellipsis` stands at the end,
/// which takes a column for each of its characters.
std::string shortened(std::string_view text, std::size_t most, std::string_view ellipsis = "…");

}  // namespace hosts
