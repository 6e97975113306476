// SPDX-License-Identifier: MIT
#include "hosts/session/support_report.h"

#include <string_view>

namespace hosts {
namespace {

constexpr std::string_view settingsKey = "Preferences";
constexpr std::string_view packagesKey = "Packages";
constexpr std::string_view modelKey = "ProductType";
constexpr std::string_view deviceKeys[] = {"UniqueDeviceID", "ProductVersion", modelKey,
                                           "DiskUsage",      "DeviceColor",    "CPUArchitecture"};

}  // namespace

std::span<const std::string_view> deviceKeysOfReport() {
    return deviceKeys;
}

std::optional<SupportReport> supportReportIn(const platform::Dictionary& root) {
    const platform::Value* const settings = root.find(settingsKey);
    const platform::Value* const packages = root.find(packagesKey);
    if (!settings || !packages || !root.contains(modelKey)) return std::nullopt;
    if (!settings->dictionary() && !settings->isNull()) return std::nullopt;
    SupportReport report;
    if (settings->dictionary()) report.settings = *settings->dictionary();
    if (packages->string()) report.packages = *packages->string();
    for (const auto& [key, value] : root) {
        if (key != settingsKey && key != packagesKey && !value.isNull()) report.device.set(key, value);
    }
    return report;
}

}  // namespace hosts
