// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/export.h"

namespace platform {

/// The shared application's way to other programs (`UIApplication`).
class TRIVEL3_PLATFORM_EXPORT UIApplication {
public:
    virtual ~UIApplication() = default;

    /// Whether a program is there that handles the URL's scheme.
    virtual bool canOpenURL(std::string_view url) = 0;

    /// Hands the URL to the program that handles it. False when that did not work.
    virtual bool openURL(std::string_view url) = 0;
};

}  // namespace platform
