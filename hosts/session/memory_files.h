// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/value.h"
#include "platform/services/file_system.h"

namespace hosts {

/// Files in memory, by their paths: none at first. Whoever has it puts files there; nobody else changes one.
class MemoryFiles final : public platform::FileSystem {
public:
    /// In place of what is there by that path.
    void put(const std::string& path, std::string contents);
    /// The same with a property list.
    void put(const std::string& path, platform::Dictionary contents);

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override;
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

private:
    struct File {
        std::string contents;
        platform::Stamp stamp;
    };

    std::map<std::string, File, std::less<>> _files;
    std::uint64_t _puts = 0;
};

}  // namespace hosts
