// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/result.h"
#include "platform/foundation/value.h"
#include "platform/services/dictionary_files.h"
#include "platform/services/file_system.h"

namespace hosts {

/// Why a file of the pane's reads as nothing; no problem where it can be read, or is not there.
std::optional<platform::Problem> whyNothing(const platform::FileSystem& files, const std::string& path);

/// What the file holds, for those who must not take one that cannot be read for one that holds nothing. Nothing where
/// there is no such file; a problem where there is one, and it cannot be read or is no dictionary.
platform::Result<std::optional<platform::Dictionary>> storedContent(const platform::FileSystem& files,
                                                                    platform::DictionaryFiles& dictionaries,
                                                                    const std::string& path);

}  // namespace hosts
