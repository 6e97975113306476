// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/value.h"
#include "platform/services/file_system.h"

namespace fuzz {

/// A phone in memory that holds each write of a property list against the file that it replaces: the
/// new file reads, and all but one key are as they were.
class CheckedPhone final : public platform::FileSystem {
public:
    void put(std::string_view path, std::string bytes) { _files.insert_or_assign(std::string(path), std::move(bytes)); }

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override;
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

    /// What the file holds; nothing when it is missing or no dictionary.
    std::optional<platform::Dictionary> dictionary(std::string_view path) const;

    /// How many writes there have been.
    std::size_t writes() const { return _writes; }

private:
    void check(const std::optional<platform::Dictionary>& before, std::string_view path) const;

    std::map<std::string, std::string, std::less<>> _files;
    std::size_t _writes = 0;
};

}  // namespace fuzz
