// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// What the title bar tells; texts as the phone has them.
struct TitleBar {
    std::string back;  ///< where the way back leads; empty when there is none
    std::string title;
    bool hasRightButton = false;

    Line compose(std::size_t width, const ScreenText& text) const;
    /// What a click on this column of the bar is for.
    enum class Part { back, title, rightButton };
    Part partAt(std::size_t column, std::size_t width, const ScreenText& text) const;

private:
    std::string backText(std::size_t width, const ScreenText& text) const;
    std::string rightButtonText(const ScreenText& text) const;
};

/// As many of the hints as fit.
Line keyLine(const std::vector<KeyHint>& hints, std::size_t width);

}  // namespace hosts::terminal::screen
