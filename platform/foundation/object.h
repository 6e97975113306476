// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/export.h"

namespace platform {

/// The root of everything that can be made by class name.
class TRIVEL3_PLATFORM_EXPORT Object {
public:
    virtual ~Object();
};

}  // namespace platform
