// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/value.h"

namespace platform {

/// The device-information query (`MGCopyAnswer`).
class TRIVEL3_PLATFORM_EXPORT DeviceQuery {
public:
    virtual ~DeviceQuery() = default;

    /// The answer for a key such as "ProductVersion", or nothing.
    virtual std::optional<Value> copyAnswer(std::string_view key) = 0;
};

}  // namespace platform
