// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/property_list.h"

namespace platform::property_list {

/// `lookUpRootKey` for XML that is UTF-8.
PropertyListLookup lookUpXml(std::string_view text, std::string_view key);

}  // namespace platform::property_list
