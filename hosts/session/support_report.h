// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/value.h"

namespace hosts {

/// What a support report tells. What it says is not to be had stands as null in it, and is not here.
struct SupportReport {
    platform::Dictionary device;  ///< answers about the device, by their keys
    std::optional<std::string> packages;
    std::optional<platform::Dictionary> settings;
};

/// What a report asks the device, in its order. Beside these it has "Packages" and "Preferences".
std::span<const std::string_view> deviceKeysOfReport();

/// Nothing for a property list that is no report.
std::optional<SupportReport> supportReportIn(const platform::Dictionary& root);

}  // namespace hosts
