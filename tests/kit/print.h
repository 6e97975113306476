// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>

#include "platform/foundation/value.h"
#include "platform/ui/geometry.h"
#include "platform/ui/index_path.h"

/// How failure messages show the platform's values.
namespace platform {

/// As an XML property list.
std::ostream& operator<<(std::ostream& stream, const Value& value);
std::ostream& operator<<(std::ostream& stream, NSIndexPath path);
std::ostream& operator<<(std::ostream& stream, const CGRect& rect);

}  // namespace platform
