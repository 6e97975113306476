// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QImage>

#include "platform/ui/font.h"
#include "platform/ui/image.h"

namespace hosts::desktop {

/// The face that stands in for the phone's own: the first of these families that the system has.
QFont systemFont(double pointSize);

/// A view's font. Names of the phone's faces ("HelveticaNeue-UltraLight") keep their weight; a point
/// is a logical pixel, times the text scale.
QFont fontOf(const platform::UIFont& font, double textScale = 1);

/// The picture, decoded; its device pixel ratio is the image's scale. Null when the file is gone.
QImage decoded(const platform::UIImage& image);

}  // namespace hosts::desktop
