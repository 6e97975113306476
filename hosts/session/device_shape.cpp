// SPDX-License-Identifier: MIT
#include "hosts/session/device_shape.h"

#include <algorithm>

namespace hosts {
namespace {

constexpr platform::UIDevice phone{platform::UIDevice::idiomPhone};
constexpr platform::UIDevice pad{platform::UIDevice::idiomPad};

constexpr DeviceShape shapes[] = {
    {"phone-3.5", phone, {{0, 0, 320, 480}, 2}}, {"phone-4", phone, {{0, 0, 320, 568}, 2}},
    {"phone-4.7", phone, {{0, 0, 375, 667}, 2}}, {"phone-5.5", phone, {{0, 0, 414, 736}, 3}},
    {"tablet", pad, {{0, 0, 768, 1024}, 2}},
};

}  // namespace

std::span<const DeviceShape> deviceShapes() {
    return shapes;
}

const DeviceShape& usualDeviceShape() {
    return *findDeviceShape("phone-4");
}

const DeviceShape* findDeviceShape(std::string_view name) {
    auto found = std::ranges::find(shapes, name, &DeviceShape::name);
    return found == std::end(shapes) ? nullptr : found;
}

}  // namespace hosts
