// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"
#include "platform/list/specifier.h"
#include "platform/ui/navigation_controller.h"

namespace hosts {

/// Whether all that a tap on the row does is to open a page.
bool isPageLink(const platform::PSSpecifier& row);

/// Whether a link that the settings grey now leads somewhere all the same.
enum class GreyedLinks { followed, left };

/// Opens the page that a link of this title leads to. False when there is none on the page.
bool openPageTitled(platform::UIViewController& page, std::string_view title, GreyedLinks greyed);

/// Opens the page that a link of this title leads to from the page on top, greyed or not. The problem, when there is
/// none, is one line.
platform::Result<platform::Done> openPage(platform::UINavigationController& navigation, std::string_view title);

/// Opens page after page by the titles of the links that lead there, with "/" between them. A title
/// may itself hold a "/": the longest one that fits counts. Links that are greyed are followed. The
/// problem, when a title leads to no page, is one line; what was opened by then stays open.
platform::Result<platform::Done> followTitlePath(platform::UINavigationController& navigation, std::string_view path);

/// Such a path of these titles.
std::string titlePath(std::span<const std::string> titles);

}  // namespace hosts
