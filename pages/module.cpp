// SPDX-License-Identifier: MIT
// The pane's classes, for the Settings application that has loaded its bundle.
#include "pages/root_page.h"
#include "platform/services/platform.h"
#include "store/settings_access.h"

namespace {

template <class T>
void addClass(platform::ClassRegistry& classes, const char* name) {
    classes.add({name, [](platform::Platform& platform) { return std::make_shared<T>(platform); }});
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    addClass<trivel3::KavixPreferencesController>(classes, "KavixPreferencesController");
    addClass<trivel3::KavixPreferencesSettingsAccess>(classes, trivel3::KavixPreferencesSettingsAccess::className);
}
