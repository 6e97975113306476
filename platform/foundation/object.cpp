// SPDX-License-Identifier: MIT
#include "platform/foundation/object.h"

namespace platform {

// Out of line, so that the type information stands in the platform library alone and casts hold
// across every module that is loaded.
Object::~Object() = default;

}  // namespace platform
