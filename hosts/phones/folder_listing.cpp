// SPDX-License-Identifier: MIT
#include "hosts/phones/folder_listing.h"

#include <dirent.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace hosts {

namespace {

bool isSelfOrParent(std::string_view name) {
    return name == "." || name == "..";
}

// Adds the names of one piece of the listing. False when there are too many.
bool addNames(const std::byte* entries, std::size_t length, std::vector<std::string>& names) {
    for (std::size_t position = 0; position < length;) {
        const auto* entry = reinterpret_cast<const dirent64*>(entries + position);
        position += entry->d_reclen;
        if (isSelfOrParent(entry->d_name)) continue;
        if (names.size() == mostFolderEntries) return false;
        names.emplace_back(entry->d_name);
    }
    return true;
}

}  // namespace

// The folder is read piece by piece into the stack: a stream's buffer on the heap costs more than the
// listing of a small folder.
std::optional<std::vector<std::string>> listNames(Descriptor folder) {
    if (!folder.isOpen()) return std::nullopt;
    alignas(dirent64) std::byte entries[16384];
    std::vector<std::string> names;
    while (true) {
        const ssize_t length = uninterrupted([&] { return ::getdents64(folder.get(), entries, sizeof entries); });
        if (length < 0 || !addNames(entries, static_cast<std::size_t>(length), names)) return std::nullopt;
        if (length == 0) break;
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace hosts
