// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "platform/foundation/value.h"

namespace platform::property_list {

/// The one key of a dictionary that stands for a keyed archiver's reference.
inline constexpr std::string_view uidKey = "CF$UID";

/// Nothing when the text (UTF-8) is no XML property list; the fault's offset is one of the text.
std::optional<Value> readXml(std::string_view text, PropertyListError& fault);

/// The root dictionary with these of its keys and no others. Nothing when the text is no XML property list, or
/// the root is no dictionary.
std::optional<Dictionary> readXmlRootKeys(std::string_view text, std::span<const std::string_view> keys);

}  // namespace platform::property_list
