// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace hosts::terminal {

/// How text is to be written for people.
struct TextStyle {
    std::size_t width = 80;
    bool colour = false;
    /// Whether ✓, › and … may be written; else plain ASCII stands for them. Labels go out as they are.
    bool unicode = true;
};

/// The style that suits standard output: its terminal's width, and colour when it is one that has it
/// and NO_COLOR is not set. Sets the process's locale for character types.
TextStyle styleForStandardOutput();

}  // namespace hosts::terminal
