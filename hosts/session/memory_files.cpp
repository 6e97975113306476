// SPDX-License-Identifier: MIT
#include "hosts/session/memory_files.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/property_list.h"

namespace hosts {
namespace {

using platform::Result;
using platform::Stamp;

// Other than those of a file system that is laid over this one.
constexpr std::uint64_t memoryDevice = 1;

platform::Problem noSuchFile(std::string_view path) {
    return {std::string(path), "cannot read", "there is no such file"};
}

}  // namespace

void MemoryFiles::put(const std::string& path, std::string contents) {
    const Stamp stamp{.device = memoryDevice, .inode = ++_puts, .size = contents.size(), .isSettled = true};
    _files.insert_or_assign(path, File{std::move(contents), stamp});
}

void MemoryFiles::put(const std::string& path, platform::Dictionary contents) {
    if (auto written = platform::writeBinaryPropertyList(platform::Value(std::move(contents))))
        put(path, *std::move(written.bytes));
}

Result<Stamp> MemoryFiles::look(std::string_view path) const {
    const auto file = _files.find(path);
    return file == _files.end() ? Result<Stamp>(noSuchFile(path)) : Result<Stamp>(file->second.stamp);
}

Result<Stamp> MemoryFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    contents.clear();
    const auto file = _files.find(path);
    if (file == _files.end() || file->second.contents.size() > limit) return noSuchFile(path);
    contents = file->second.contents;
    return file->second.stamp;
}

Result<std::vector<std::string>> MemoryFiles::listFolder(std::string_view path) const {
    const std::string folder = path.ends_with('/') ? std::string(path) : std::string(path) + "/";
    std::vector<std::string> names;
    for (auto file = _files.lower_bound(folder); file != _files.end() && file->first.starts_with(folder); ++file) {
        std::string name = file->first.substr(folder.size());
        name.resize(std::min(name.find('/'), name.size()));
        if (names.empty() || names.back() != name) names.push_back(std::move(name));
    }
    if (names.empty()) return noSuchFile(path);
    std::ranges::sort(names);
    return names;
}

Result<Stamp> MemoryFiles::changeFile(std::string_view path, const platform::Change&) {
    return platform::Problem{std::string(path), "cannot write", "it is only looked at"};
}

}  // namespace hosts
