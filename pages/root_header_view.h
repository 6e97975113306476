// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/ui/view.h"

namespace trivel3 {

/// The name and the makers above the root page's rows, for a page of the given width. It follows
/// later changes of width.
std::shared_ptr<platform::UIView> makeRootHeaderView(double width);

}  // namespace trivel3
