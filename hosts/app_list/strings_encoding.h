// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hosts {

/// The text of a strings file as UTF-8, without its byte order mark: a file in UTF-8, or in UTF-16
/// of either byte order, told by the mark or, without one, by where the zero byte of the first
/// character stands. Half a surrogate pair becomes U+FFFD. Nothing for bytes that are neither.
std::optional<std::string> decodeStringsText(std::string_view bytes);

}  // namespace hosts
