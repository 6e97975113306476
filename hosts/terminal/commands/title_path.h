// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/ui/navigation_controller.h"

namespace hosts::terminal {

/// Opens page after page by the titles of the links that lead there, with "/" between them. A title
/// may itself hold a "/": the longest one that fits counts. A link that is greyed now is followed all
/// the same. False, with one line in `error`, when a title leads to no page.
bool followTitlePath(platform::UINavigationController& navigation, std::string_view path, std::string& error);

}  // namespace hosts::terminal
