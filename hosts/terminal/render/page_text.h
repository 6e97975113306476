// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

#include "hosts/session/page_snapshot.h"

namespace hosts::terminal {

/// How a page is to be written.
struct TextStyle {
    std::size_t width = 80;
    bool colour = false;
    /// Whether ✓, › and … may be written; else plain ASCII stands for them. Labels go out as they are.
    bool unicode = true;
};

/// The style that suits standard output: its terminal's width, and colour when it is one that has it
/// and NO_COLOR is not set. Sets the process's locale for character types.
TextStyle styleForStandardOutput();

/// The page as lines of text: title, header, and each section's title, rows and footer.
std::string pageText(platform::UIViewController& page, const PageSnapshot& snapshot, const TextStyle& style);

}  // namespace hosts::terminal
