// SPDX-License-Identifier: MIT
#include "pages/features/options_state.h"

namespace trivel3::options {
namespace {

constexpr double leastTallHeight = 568;

bool isPhone(const platform::UIDevice& device) {
    return device.userInterfaceIdiom.value_or(platform::UIDevice::idiomPhone) == platform::UIDevice::idiomPhone;
}

}  // namespace

State currentState(const platform::Platform& platform, const PreferenceStore& store) {
    const auto isOn = [&store](std::string_view key) { return platform::boolValue(store.preferenceForKey(key)); };
    State state{};
    state.isPhone = isPhone(platform.device);
    state.isTall = state.isPhone && platform.screen.bounds.height >= leastTallHeight;
    state.multiCenter = isOn("MultiCenter");
    state.quickSwitcher = isOn("QuickSwitcher");
    state.hotCorners = isOn("HotCorners");
    state.minimal = state.isTall ? isOn("MinimalControlCenterEnabled") : true;
    state.reachable = state.isTall ? isOn("ReachabilityMode") : false;
    state.opensToLastApp = isOn("OpenToLastApp");
    return state;
}

}  // namespace trivel3::options
