// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace platform::property_list {

/// Makes each object once: where objects are shared, so are the values. Nothing when the bytes are no
/// binary property list; then `error` says why, and where.
std::optional<Value> readBinary(std::string_view bytes, PropertyListError& error);

/// The root dictionary with these of its keys and no others. Nothing when the bytes are no binary property
/// list, or the root is no dictionary.
std::optional<Dictionary> readBinaryRootKeys(std::string_view bytes, std::span<const std::string_view> keys);

}  // namespace platform::property_list
