// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"
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

/// The report that the bytes are, in either encoding of a property list, or else the first one among the parts of the
/// e-mail that they are. `mailModule` is the path of the module that reads e-mail. The problem, which has no path, is
/// one line without a word of what the e-mail says. For at most 64 MB, no more than 1 GB of memory is taken.
platform::Result<SupportReport> readSupportReport(std::string_view bytes, const std::string& mailModule);

}  // namespace hosts
