// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

#include "platform/foundation/value.h"
#include "platform/services/platform.h"

/// The file in which the applications without hot corners are ticked: bundle identifier to boolean,
/// and nothing else.
namespace trivel3::exceptions {

inline constexpr std::string_view file = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";
inline constexpr std::string_view changeNotification = "com.fenwary.trivel3.exceptionsChanged";

/// Whether the application is ticked: its entry's truth value, false without one.
bool isTicked(platform::Platform& platform, std::string_view identifier);

/// Makes the file anew from what it holds at the moment of the write (nothing where it does not read
/// as a dictionary) and posts the notification, whether or not the write succeeded. The change may be
/// asked again of a newer file: it keeps what it needs by value and does nothing but answer.
void change(platform::Platform& platform, const std::function<platform::Dictionary(platform::Dictionary)>& change);

}  // namespace trivel3::exceptions
