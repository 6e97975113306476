// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace hosts::desktop {

/// Whether there is a graphics processor to draw with, going by the machine's device files.
bool hasGraphicsProcessor(const std::string& deviceFolder = "/dev");

/// Picks what draws the window, and how its letters are drawn. To be called once there is an
/// application object, before the first window is made. What the user has set in Qt's environment
/// variables stays.
void chooseRenderer();

}  // namespace hosts::desktop
