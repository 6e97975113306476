// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <optional>
#include <string>
#include <vector>

#include "hosts/desktop/program/desktop_taste.h"
#include "hosts/session/phone_options.h"

namespace hosts::desktop {

/// What the command line asks for.
struct Options : PhoneOptions {
    /// Further phones to open, each in a window of its own.
    std::vector<std::string> further;
    /// Nothing follows the desktop.
    std::optional<bool> dark;
    std::optional<bool> highContrast;
    std::optional<double> textScale;
    /// Of the window, in points.
    std::optional<QSize> size;
    /// The titles of the links that lead to the page to open, with "/" between them; empty for the page that was open
    /// last.
    std::string page;
    /// Where every page is to be drawn to; empty for a window.
    std::string screenshots;

    /// The desktop's taste, but for what the command line asks for.
    Taste over(Taste desktop) const;
    bool asksForTaste() const { return dark || highContrast || textScale; }
};

/// Reads the command line. Nothing when the program has done what was asked, or cannot: it then ends
/// with `status`.
std::optional<Options> parseOptions(int argumentCount, char** arguments, int& status);

}  // namespace hosts::desktop
