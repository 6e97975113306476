// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace hosts {

/// The name that is spelt most like the text, for a message that asks whether it was meant. Empty when none is spelt
/// like it but for a slip or two, or for more in a long text.
std::string nearestSpelling(std::string_view text, std::span<const std::string> names);

/// "; did you mean 'NAME'?", and nothing for an empty name.
std::string didYouMean(std::string_view name);

}  // namespace hosts
