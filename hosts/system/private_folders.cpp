// SPDX-License-Identifier: MIT
#include "hosts/system/private_folders.h"

namespace hosts {

bool makePrivateFolders(const std::filesystem::path& folder, std::error_code& failure) {
    if (std::filesystem::is_directory(folder, failure)) return true;
    if (folder.has_relative_path() && !makePrivateFolders(folder.parent_path(), failure)) return false;
    if (std::filesystem::create_directory(folder, failure)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, failure);
    }
    return !failure;
}

}  // namespace hosts
