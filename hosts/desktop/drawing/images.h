// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

#include "platform/ui/image.h"

namespace hosts::desktop {

/// The picture, decoded; its device pixel ratio is the image's scale. Null when the file is gone.
QImage decoded(const platform::UIImage& image);

}  // namespace hosts::desktop
