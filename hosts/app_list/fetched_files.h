// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/application_icon.h"
#include "platform/services/file_system.h"

namespace hosts {

/// The files of applications on a phone that is far. What the search for applications reads is kept for their icons,
/// whose names stand there too, and with the first icon the files of very many are fetched at once. What was fetched
/// serves until the object goes; anything else is asked of the phone.
class FetchedFiles final : public platform::FileSystem {
public:
    /// `phone` outlives the object.
    explicit FetchedFiles(const platform::FileSystem& phone) : _phone(phone) {}

    /// Fetches what the icons of this application, and of those behind it in the list, are read from; nothing where
    /// that has been done.
    void fetchIconsFrom(const InstalledApplications& applications, const InstalledApplication& first,
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
    bool isFar() const override { return true; }
    void expect(std::span<const std::string> files, std::span<const std::string> folders) const override;

private:
    using Bytes = std::optional<std::string>;  ///< nothing for what is not there

    void fetch(std::span<const std::string> paths, std::size_t most) const;

    const platform::FileSystem& _phone;
    mutable std::map<std::string, Bytes, std::less<>> _fetched;
    mutable std::size_t _bytes = 0;
    std::set<std::string, std::less<>> _folders;  ///< of the applications whose icons have been fetched
};

}  // namespace hosts
