// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/foundation/value.h"

namespace resources_test {

/// The bytes of a regular file; empty when it cannot be read.
std::string bytesOf(const std::filesystem::path& file);

/// The root dictionary of a property-list file; nothing when it cannot be read as one.
std::optional<platform::Dictionary> dictionaryOf(const std::filesystem::path& file);

/// Every file and folder below `root` by its path relative to it: a file's bytes, and nothing for a
/// folder. Files named `leftOut` are passed over.
using Tree = std::map<std::filesystem::path, std::optional<std::string>>;
Tree treeOf(const std::filesystem::path& root, const std::filesystem::path& leftOut = {});

/// Calls `visit` with the path of each regular file below `root` that bears the name.
void forEachFileNamed(const std::filesystem::path& name, const std::filesystem::path& root,
                      const std::function<void(const std::filesystem::path&)>& visit);

}  // namespace resources_test
