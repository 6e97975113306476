// SPDX-License-Identifier: MIT
#include "hosts/linux/folder_listing.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

namespace hosts {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

bool isSelfOrParent(std::string_view name) {
    return name == "." || name == "..";
}

}  // namespace

std::optional<std::vector<std::string>> listNames(Descriptor folder) {
    if (!folder.isOpen()) return std::nullopt;
    const std::unique_ptr<DIR, CloseFolder> stream{::fdopendir(folder.get())};
    if (!stream) return std::nullopt;
    folder.release();

    std::vector<std::string> names;
    for (errno = 0; const dirent* entry = ::readdir(stream.get()); errno = 0) {
        if (isSelfOrParent(entry->d_name)) continue;
        if (names.size() == mostFolderEntries) return std::nullopt;
        names.emplace_back(entry->d_name);
    }
    if (errno != 0) return std::nullopt;
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace hosts
