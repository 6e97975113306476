// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/window_size.h"

#include <algorithm>

namespace hosts::desktop {
namespace {

constexpr int highestAtFirst = 1000;
// A desktop tells how large its frames are once it has put one around the window, which would then change its size
// before the user's eyes. None is known that is higher.
constexpr int frameHeight = 40;

bool fitsInto(QSize size, QSize room) {
    return size.width() <= room.width() && size.height() <= room.height();
}

}  // namespace

QSize screenSize(const DeviceShape& device) {
    const platform::CGSize size = device.screen.bounds.size();
    return {static_cast<int>(size.width), static_cast<int>(size.height)};
}

QSize startingSize(const DeviceShape& device, QSize remembered, QSize room) {
    if (!remembered.isEmpty() && fitsInto(remembered, room)) return remembered;
    const int height = std::min(room.height() - frameHeight, highestAtFirst);
    return QSize(screenSize(device).width(), height).boundedTo(room).expandedTo(smallestWindow);
}

}  // namespace hosts::desktop
