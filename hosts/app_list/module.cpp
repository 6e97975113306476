// SPDX-License-Identifier: MIT
// The app-list service's class, for whoever has loaded its bundle.
#include <memory>

#include "hosts/app_list/application_list.h"
#include "platform/foundation/class_registry.h"

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    classes.add({platform::ALApplicationList::className, [](platform::Platform& platform) {
                     return std::make_shared<hosts::InstalledApplicationList>(platform);
                 }});
}
