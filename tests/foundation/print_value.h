// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>

#include "platform/foundation/property_list.h"

namespace platform {

/// Lets failed expectations show values as XML.
inline void PrintTo(const Value& value, std::ostream* stream) {
    const PropertyListWriting writing = writeXmlPropertyList(value);
    *stream << (writing ? *writing.bytes : "a value that XML cannot say: " + writing.reason);
}

inline std::ostream& operator<<(std::ostream& stream, const Value& value) {
    PrintTo(value, &stream);
    return stream;
}

}  // namespace platform
