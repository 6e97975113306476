// SPDX-License-Identifier: MIT
#pragma once

namespace hosts::notificationSignal {

/// How a notification travels: a signal with the name as its one argument, a string. Other programs
/// send and observe it by these names.
constexpr const char* path = "/com/fenwary/DarwinNotifyCenter";
constexpr const char* interface = "com.fenwary.DarwinNotifyCenter";
constexpr const char* member = "Posted";
constexpr const char* signature = "s";

}  // namespace hosts::notificationSignal
