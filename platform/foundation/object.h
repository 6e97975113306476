// SPDX-License-Identifier: MIT
#pragma once

namespace platform {

/// The root of everything that can be made by class name.
class Object {
public:
    virtual ~Object();
};

}  // namespace platform
