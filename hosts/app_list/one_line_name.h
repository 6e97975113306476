// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace hosts {

/// A name as it can stand in a row: one line of at most `longestName` bytes, cut between characters,
/// with a space for each control character and line break. Empty when nothing but blanks is left.
std::string oneLineName(std::string_view name);

/// Longer than any name that fits a screen, and short enough to be laid out many times.
inline constexpr std::size_t longestName = 512;

}  // namespace hosts
