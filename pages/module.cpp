// SPDX-License-Identifier: MIT
// The pane's classes, for the Settings application that has loaded its bundle.
#include "pages/features/album_artwork_page.h"
#include "pages/features/close_all_apps_page.h"
#include "pages/features/exceptions_page.h"
#include "pages/features/options_page.h"
#include "pages/features/quick_launcher_page.h"
#include "pages/features/slider_actions_page.h"
#include "pages/root_page.h"
#include "platform/services/platform.h"
#include "store/settings_access.h"
#include "support/creators_page.h"

namespace {

template <class T>
void addClass(platform::ClassRegistry& classes, const char* name,
              std::function<void(platform::Platform&)> initialize = {}) {
    classes.add(
        {name, [](platform::Platform& platform) { return std::make_shared<T>(platform); }, std::move(initialize)});
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    addClass<trivel3::KavixPreferencesController>(classes, "KavixPreferencesController");
    addClass<trivel3::KavixPreferencesOptionsController>(classes, "KavixPreferencesOptionsController",
                                                         &trivel3::KavixPreferencesOptionsController::initialize);
    addClass<trivel3::KavixPreferencesQuickLauncherController>(classes, "KavixPreferencesQuickLauncherController");
    addClass<trivel3::KavixPreferencesSliderActionsController>(classes, "KavixPreferencesSliderActionsController");
    addClass<trivel3::KavixPreferencesAlbumArtworkController>(classes, "KavixPreferencesAlbumArtworkController");
    addClass<trivel3::KavixPreferencesCloseAllAppsController>(classes, "KavixPreferencesCloseAllAppsController");
    addClass<trivel3::KavixPreferencesExceptionsController>(classes, "KavixPreferencesExceptionsController");
    addClass<trivel3::KavixPreferencesProfileController>(classes, "KavixPreferencesProfileController");
    addClass<trivel3::KavixPreferencesSettingsAccess>(classes, trivel3::KavixPreferencesSettingsAccess::className);
}
