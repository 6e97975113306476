// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <system_error>

namespace hosts {

/// Makes the folder and those above it that are missing, for their user alone (0700), as the rules
/// for the user's folders ask. Folders that are there stay as they are. False, with `failure` set,
/// when there is no such folder afterwards.
bool makePrivateFolders(const std::filesystem::path& folder, std::error_code& failure);

}  // namespace hosts
