// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/export.h"

namespace platform {

/// The system-wide (Darwin) notification centre: a name, seen by every process that observes it,
/// and nothing else. No object, no user information (`CFNotificationCenterGetDarwinNotifyCenter`).
class TRIVEL3_PLATFORM_EXPORT DarwinNotifyCenter {
public:
    virtual ~DarwinNotifyCenter() = default;

    /// Posts at once (`CFNotificationCenterPostNotification`). Whether anybody listens, or could, is not told.
    virtual void postNotification(std::string_view name) = 0;
};

}  // namespace platform
