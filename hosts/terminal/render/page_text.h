// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/session/page_snapshot.h"
#include "hosts/terminal/render/screen_text.h"

namespace hosts::terminal {

/// The page as lines of text: title, header, and each section's title, rows and footer.
std::string pageText(platform::UIViewController& page, const PageSnapshot& snapshot, const TextStyle& style);

}  // namespace hosts::terminal
