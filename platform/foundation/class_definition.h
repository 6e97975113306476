// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/foundation/class_registry.h"

namespace platform {

/// Included where a class is defined, with `template void platform::addClass<TheClass>(ClassRegistry&);`
/// after it. The class says its name in a static `registeredName`, and may have a static
/// `initialize(Platform&)`, its class-load step.
template <class T>
void addClass(ClassRegistry& classes) {
    Class added{T::registeredName, [](Platform& platform) { return std::make_shared<T>(platform); }};
    if constexpr (requires(Platform & platform) { T::initialize(platform); }) added.initialize = &T::initialize;
    classes.add(std::move(added));
}

}  // namespace platform
