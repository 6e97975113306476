// SPDX-License-Identifier: MIT
#include "tests/kit/print.h"

#include <ostream>

#include "platform/foundation/property_list.h"

namespace platform {

std::ostream& operator<<(std::ostream& stream, const Value& value) {
    const PropertyListWriting writing = writeXmlPropertyList(value);
    return stream << (writing ? *writing.bytes : "a value that XML cannot say: " + writing.reason);
}

std::ostream& operator<<(std::ostream& stream, NSIndexPath path) {
    return stream << "section " << path.section << " row " << path.row;
}

std::ostream& operator<<(std::ostream& stream, const CGRect& rect) {
    return stream << '(' << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ')';
}

}  // namespace platform
