// SPDX-License-Identifier: MIT
#include "tests/app_list/phone_applications.h"

namespace app_list_test {

bool loadAppList(kit::TestPlatform& platform) {
    const auto bundle = platform.system.bundleWithPath("/System/Library/PreferenceBundles/AppList.bundle");
    return bundle && bundle->load();
}

std::shared_ptr<platform::ALApplicationList> appList(kit::TestPlatform& platform) {
    return platform.classes.shared<platform::ALApplicationList>(platform::ALApplicationList::className,
                                                                platform.services());
}

platform::Dictionary info(std::string_view identifier, std::string_view displayName) {
    return {{"CFBundleIdentifier", platform::Value(identifier)}, {"CFBundleDisplayName", platform::Value(displayName)}};
}

std::string install(kit::TestPhone& phone, const std::string& folder, const platform::Dictionary& info) {
    phone.put(folder + "/Info.plist", info);
    return folder;
}

std::string installSystem(kit::TestPhone& phone, std::string_view identifier, std::string_view displayName) {
    return install(phone, std::string(systemFolder).append("/").append(identifier).append(".app"),
                   info(identifier, displayName));
}

std::string installUser(kit::TestPhone& phone, std::string_view identifier, std::string_view displayName) {
    return install(phone, std::string(userFolder).append("/").append(identifier).append("/Installed.app"),
                   info(identifier, displayName));
}

}  // namespace app_list_test
