// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/value.h"
#include "platform/services/app_list.h"
#include "tests/kit/test_platform.h"

namespace app_list_test {

inline constexpr std::string_view systemFolder = "/Applications";
inline constexpr std::string_view userFolder = "/var/mobile/Containers/Bundle/Application";

/// Loads the staged AppList.bundle, as the pane does. False when the system image has none.
bool loadAppList(kit::TestPlatform& platform);

/// The service of the loaded bundle; null when none is loaded.
std::shared_ptr<platform::ALApplicationList> appList(kit::TestPlatform& platform);

/// An Info.plist of these two entries.
platform::Dictionary info(std::string_view identifier, std::string_view displayName);

/// Installs an application of the system, or of the user in a folder named by the identifier, and
/// returns the phone's path of its ".app" folder.
std::string installSystem(kit::TestPhone& phone, std::string_view identifier, std::string_view displayName);
std::string installUser(kit::TestPhone& phone, std::string_view identifier, std::string_view displayName);
/// Puts an Info.plist into the folder.
std::string install(kit::TestPhone& phone, const std::string& folder, const platform::Dictionary& info);

}  // namespace app_list_test
