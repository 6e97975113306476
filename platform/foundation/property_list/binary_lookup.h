// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/property_list.h"
#include "platform/foundation/property_list/binary_layout.h"

namespace platform::property_list {

/// `lookUpRootKey` for a validated binary property list.
PropertyListLookup lookUpBinary(const BinaryLayout& layout, std::string_view key);

}  // namespace platform::property_list
