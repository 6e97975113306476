// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include "platform/ui/device.h"

namespace hosts {

/// A phone or tablet that a Settings application can stand in for.
struct DeviceShape {
    std::string_view name;
    platform::UIDevice device;
    platform::UIScreen screen;
};

/// Every shape, the smallest first.
std::span<const DeviceShape> deviceShapes();

/// The shape that stands in when the user names none.
const DeviceShape& usualDeviceShape();

/// The shape of a model by its public identifier ("iPhone6,1"); a null pointer for one that is not known.
const DeviceShape* shapeOfModel(std::string_view model);

/// A null pointer when no shape has that name.
const DeviceShape* findDeviceShape(std::string_view name);

}  // namespace hosts
