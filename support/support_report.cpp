// SPDX-License-Identifier: MIT
#include "support/support_report.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"
#include "store/preference_store.h"

namespace trivel3 {
namespace {

constexpr std::string_view deviceKeys[] = {"UniqueDeviceID", "ProductVersion", "ProductType",
                                           "DiskUsage",      "DeviceColor",    "CPUArchitecture"};

constexpr std::string_view packageDatabase = "/var/lib/dpkg/status";
// Far above the largest database that a package manager keeps.
constexpr std::size_t packageDatabaseLimit = std::size_t{512} << 20;

platform::Value valueOrNull(std::optional<platform::Value> value) {
    return value ? *std::move(value) : platform::Value(platform::Null());
}

platform::Value packages(const platform::FileSystem& files) {
    std::string text;
    if (!files.readFile(packageDatabase, text, packageDatabaseLimit) || !platform::isValidUtf8(text)) {
        return platform::Null();
    }
    return platform::Value(std::move(text));
}

platform::Value storedPreferences(platform::Platform& platform) {
    // A null pointer gives the null object.
    return platform::Value(platform.dictionaries.read(PreferenceStore::settingsFile));
}

}  // namespace

std::optional<std::string> encodedSupportReport(platform::Platform& platform) {
    platform::Dictionary report;
    for (std::string_view key : deviceKeys)
        report.set(key, valueOrNull(platform.deviceQuery.copyAnswer(key)));
    report.set("Packages", packages(platform.files));
    report.set("Preferences", storedPreferences(platform));
    return platform::writeBinaryPropertyList(platform::Value(std::move(report))).bytes;
}

}  // namespace trivel3
