// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/ui/index_path.h"
#include "platform/ui/view_controller.h"

namespace hosts::terminal::screen {

enum class SearchFrom { here, next, before };

/// The row whose label holds the text, in small or capital letters: the nearest one from the row at
/// `start` on (`here`: that row itself can be the one), downwards or, for `before`, upwards, and round
/// the page's end. Nothing when no row's label does.
std::optional<platform::NSIndexPath> searchRow(platform::UIViewController& page, std::string_view text,
                                               platform::NSIndexPath start, SearchFrom from);

}  // namespace hosts::terminal::screen
