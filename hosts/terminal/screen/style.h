// SPDX-License-Identifier: MIT
#pragma once

namespace hosts::terminal::screen {

/// What the terminal can show.
struct Style {
    bool colour = false;
    /// Whether characters beyond ASCII may be written.
    bool unicode = true;
};

}  // namespace hosts::terminal::screen
