// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/application_icon.h"
#include "platform/services/file_system.h"

namespace hosts {

/// What icons are read from on a phone that is far: with the first icon of some applications, the files of all their
/// icons are fetched at once. What was fetched serves until it is dropped; anything else is asked of the phone.
class FetchedIcons final : public platform::FileSystem {
public:
    /// `phone` outlives the object.
    explicit FetchedIcons(const platform::FileSystem& phone) : _phone(phone) {}

    /// Fetches what the icons of this application, and of those behind it in the list, are read from; nothing where
    /// that has been done.
    void fetchFrom(const InstalledApplications& applications, const InstalledApplication& first,
                   const IconTarget& target);

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override { return _phone.look(path); }
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        return _phone.listFolder(path);
    }
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change&) override {
        return platform::Problem{std::string(path), "cannot write", "it is only read"};
    }

private:
    using Bytes = std::optional<std::string>;  ///< nothing for what is not there

    void fetch(const std::vector<std::string>& paths);

    const platform::FileSystem& _phone;
    std::map<std::string, Bytes, std::less<>> _fetched;
    std::set<std::string, std::less<>> _folders;
    std::size_t _bytes = 0;
};

}  // namespace hosts
