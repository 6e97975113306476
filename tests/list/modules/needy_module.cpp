// SPDX-License-Identifier: MIT
// A module that needs a function that nobody has, though only once a page is made.
#include "platform/list/list_controller.h"
#include "platform/services/platform.h"

extern "C" void somethingThatNobodyHas();

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    classes.add({"NeedyPage", [](platform::Platform& platform) {
                     somethingThatNobodyHas();
                     return std::make_shared<platform::PSListController>(platform);
                 }});
}
