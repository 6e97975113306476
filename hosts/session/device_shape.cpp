// SPDX-License-Identifier: MIT
#include "hosts/session/device_shape.h"

#include <algorithm>

namespace hosts {
namespace {

constexpr platform::UIDevice phoneKind{platform::UIDevice::idiomPhone};
constexpr platform::UIDevice padKind{platform::UIDevice::idiomPad};

constexpr DeviceShape shapes[] = {
    {"phone-3.5", phoneKind, {{0, 0, 320, 480}, 2}}, {"phone-4", phoneKind, {{0, 0, 320, 568}, 2}},
    {"phone-4.7", phoneKind, {{0, 0, 375, 667}, 2}}, {"phone-5.5", phoneKind, {{0, 0, 414, 736}, 3}},
    {"tablet", padKind, {{0, 0, 768, 1024}, 2}},
};

/// Models whose identifiers begin so, or are that.
struct ModelShape {
    std::string_view beginning;
    std::string_view shape;
};

constexpr ModelShape models[] = {
    {"iPhone3,", "phone-3.5"},   {"iPhone4,", "phone-3.5"},   {"iPhone5,", "phone-4"},     {"iPhone6,", "phone-4"},
    {"iPhone7,1", "phone-5.5"},  {"iPhone7,2", "phone-4.7"},  {"iPhone8,1", "phone-4.7"},  {"iPhone8,2", "phone-5.5"},
    {"iPhone8,4", "phone-4"},    {"iPhone9,1", "phone-4.7"},  {"iPhone9,2", "phone-5.5"},  {"iPhone9,3", "phone-4.7"},
    {"iPhone9,4", "phone-5.5"},  {"iPhone10,1", "phone-4.7"}, {"iPhone10,2", "phone-5.5"}, {"iPhone10,4", "phone-4.7"},
    {"iPhone10,5", "phone-5.5"}, {"iPhone12,8", "phone-4.7"}, {"iPod4,", "phone-3.5"},     {"iPod5,", "phone-4"},
    {"iPod7,", "phone-4"},       {"iPod9,", "phone-4"},       {"iPad", "tablet"},
};

}  // namespace

std::span<const DeviceShape> deviceShapes() {
    return shapes;
}

const DeviceShape& usualDeviceShape() {
    return *findDeviceShape("phone-4");
}

const DeviceShape* shapeOfModel(std::string_view model) {
    const auto known = std::ranges::find_if(models, [model](const ModelShape& each) {
        const bool isWhole = !each.beginning.ends_with(',') && each.beginning.find(',') != each.beginning.npos;
        return isWhole ? model == each.beginning : model.starts_with(each.beginning);
    });
    return known == std::end(models) ? nullptr : findDeviceShape(known->shape);
}

const DeviceShape* findDeviceShape(std::string_view name) {
    auto found = std::ranges::find(shapes, name, &DeviceShape::name);
    return found == std::end(shapes) ? nullptr : found;
}

}  // namespace hosts
