// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "platform/foundation/property_list.h"
#include "platform/foundation/value.h"
#include "platform/services/file_system.h"

/// The phone's property-list files, as the pane reads and writes them: a file that is missing,
/// unreadable or no dictionary reads as nothing, and writing tells nothing of failure.
namespace trivel3 {

/// The whole file, XML or binary.
std::optional<platform::Dictionary> readPhoneDictionary(const platform::FileSystem& files, std::string_view path);

/// One entry of the file.
std::optional<platform::Value> readPhoneDictionaryEntry(const platform::FileSystem& files, std::string_view path,
                                                        std::string_view key);

/// Replaces the file atomically, as XML. A dictionary that XML cannot say leaves the file as it is.
void writePhoneDictionary(platform::FileSystem& files, std::string_view path, const platform::Dictionary& content);

}  // namespace trivel3
