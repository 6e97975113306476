// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// The file in which the applications without hot corners are ticked: bundle identifier to boolean,
/// and nothing else.
namespace trivel3::exceptions {

inline constexpr std::string_view file = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";
inline constexpr std::string_view changeNotification = "com.fenwary.trivel3.exceptionsChanged";

}  // namespace trivel3::exceptions
