// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hosts {

/// The address of the social network's own composer, on the web, with the text in it. Nothing for a
/// service that is none of ours.
std::optional<std::string> postLink(std::string_view serviceType, std::string_view text);

}  // namespace hosts
