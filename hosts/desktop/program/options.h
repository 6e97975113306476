// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/session/phone_options.h"

namespace hosts::desktop {

/// What the command line asks for.
struct Options : PhoneOptions {
    /// Nothing follows the desktop.
    std::optional<bool> dark;
    /// Where every page is to be drawn to; empty for a window.
    std::string screenshots;
};

/// Reads the command line. Nothing when the program has done what was asked, or cannot: it then ends
/// with `status`.
std::optional<Options> parseOptions(int argumentCount, char** arguments, int& status);

}  // namespace hosts::desktop
