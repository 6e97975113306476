// SPDX-License-Identifier: MIT
#include "platform/foundation/utf8.h"

#include "platform/foundation/property_list/unicode.h"

namespace platform {

bool isValidUtf8(std::string_view bytes) {
    return property_list::isValidUtf8(bytes);
}

}  // namespace platform
