// SPDX-License-Identifier: MIT
#include "pages/application_page_controller.h"

namespace trivel3 {
namespace {

constexpr SettingKey sparedApplications = "CloseAllAppsExceptions";

constexpr Row switches[] = {
    group("Remove the confirmation button and close all apps automatically upon swiping up."),
    toggle("Auto-Close All Apps", "CloseAllAppsNoConfirmation"),
    group("Dismiss Multi-Center after closing all apps."),
    toggle("Go Home upon Close All", "CloseAllAppsBackToHomeScreen"),
    group("Do not close app playing background audio."),
    toggle("Exclude Currently Playing", "CloseAllAppsExcludeNowPlaying"),
};

}  // namespace

/// How the gesture that closes all applications behaves, and which applications it spares.
class KavixPreferencesCloseAllAppsController final : public KavixPreferencesApplicationPageController {
public:
    using KavixPreferencesApplicationPageController::KavixPreferencesApplicationPageController;
    static constexpr const char* registeredName = "KavixPreferencesCloseAllAppsController";
    const char* className() const override { return registeredName; }

protected:
    std::span<const Row> ownRows() const override { return switches; }
    std::string_view applicationsTitle() const override { return "Exclude From Close All"; }

    bool isTicked(const std::string& identifier) override {
        const auto spared = store().preferenceForKey(sparedApplications);
        const platform::Dictionary* ticks = spared ? spared->dictionary() : nullptr;
        if (spared && !ticks) removeWhatIsNoDictionary();
        return ticks && platform::boolValue(ticks->valueForKey(identifier));
    }

    void setTicked(bool ticked, const std::string& identifier) override {
        store().changePreferenceForKey(sparedApplications, [ticked, identifier](std::optional<platform::Value> held) {
            platform::Dictionary spared;
            if (held && held->dictionary()) spared = *held->dictionary();
            spared.set(identifier, ticked);
            return platform::Value(std::move(spared));
        });
    }

private:
    void removeWhatIsNoDictionary() {
        store().changePreferenceForKey(sparedApplications, [](std::optional<platform::Value> held) {
            return held && held->dictionary() ? held : std::nullopt;
        });
    }
};

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesCloseAllAppsController>(ClassRegistry& classes);
