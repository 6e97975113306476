// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace hosts {

/// The name that is spelt most like the text, for a message that asks whether it was meant. Empty when
/// there are no names.
std::string nearestSpelling(std::string_view text, std::span<const std::string> names);

}  // namespace hosts
