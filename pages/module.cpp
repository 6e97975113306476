// SPDX-License-Identifier: MIT
// The pane's classes, for the Settings application that has loaded its bundle.
#include "platform/foundation/class_registry.h"

namespace trivel3 {

static constexpr platform::RegisterClasses* classesOfThePane[] = {
    platform::addClass<class KavixPreferencesController>,
    platform::addClass<class KavixPreferencesOptionsController>,
    platform::addClass<class KavixPreferencesQuickLauncherController>,
    platform::addClass<class KavixPreferencesSliderActionsController>,
    platform::addClass<class KavixPreferencesAlbumArtworkController>,
    platform::addClass<class KavixPreferencesCloseAllAppsController>,
    platform::addClass<class KavixPreferencesExceptionsController>,
    platform::addClass<class KavixPreferencesProfileController>,
    platform::addClass<class KavixPreferencesSettingsAccess>,
};

}  // namespace trivel3

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    for (platform::RegisterClasses* add : trivel3::classesOfThePane)
        add(classes);
}
