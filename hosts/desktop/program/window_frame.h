// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWindow>

namespace hosts::desktop {

/// Gives the frame these colours, where the program draws it itself: on Wayland where the desktop draws none.
void colourFrame(QWindow& window, const QColor& ground, const QColor& text);

}  // namespace hosts::desktop
