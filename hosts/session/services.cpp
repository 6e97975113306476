// SPDX-License-Identifier: MIT
#include "hosts/session/services.h"

#include <atomic>
#include <cstdint>
#include <utility>

namespace hosts {

using platform::Result;
using platform::Stamp;

Result<Stamp> ScratchFileSystem::look(std::string_view path) const {
    const auto written = _written.find(path);
    return written == _written.end() ? _below.look(path) : Result<Stamp>(written->second.stamp);
}

Result<Stamp> ScratchFileSystem::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const auto written = _written.find(path);
    if (written == _written.end()) return _below.readFile(path, contents, limit);
    contents = written->second.contents;
    return written->second.stamp;
}

Result<Stamp> ScratchFileSystem::readAgain(std::string_view path, std::string& contents) const {
    return _written.contains(path) ? readFile(path, contents) : _below.readAgain(path, contents);
}

Result<Stamp> ScratchFileSystem::changeFile(std::string_view path, const platform::Change& change) {
    std::string held;
    const Result<Stamp> reading = readFile(path, held, usualReadLimit);
    if (!reading && reading.error().isPassing) return reading;
    auto wanted = change(reading ? std::optional<std::string_view>(held) : std::nullopt);
    if (!wanted) return std::move(wanted).error();
    // Like none of the file system below, which may be one of these, and another one at each write.
    static std::atomic<std::uint64_t> next{UINT64_MAX};
    const Stamp stamp{.inode = next--, .size = wanted->bytes.size(), .isSettled = true};
    _written.insert_or_assign(std::string(path), Written{std::move(wanted->bytes), stamp});
    return stamp;
}

}  // namespace hosts
