// SPDX-License-Identifier: MIT
#pragma once

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

}  // namespace hosts
