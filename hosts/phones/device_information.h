// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/services/device_query.h"
#include "platform/services/file_system.h"

namespace hosts {

/// Answers about the phone from what can be known of it on this machine: a property list of answers
/// (the form that device tools write), kept with the phone or named by the user. What the list lacks
/// is told by the phone's own files where they do: "ProductVersion" by its system version, and
/// "DiskUsage" by the file system that its folder lies on. A list that is no property list, no
/// dictionary or too large answers nothing.
class DeviceInformation final : public platform::DeviceQuery {
public:
    /// The list that is kept with the phone; it is read anew for each answer.
    static constexpr std::string_view phoneFile = "/device-information.plist";

    /// More bytes than any list of answers has.
    static constexpr std::size_t fileLimit = std::size_t{4} << 20;

    /// `phoneFolder` is the folder of this machine that stands for the phone's root. `files` outlives
    /// the object.
    DeviceInformation(const platform::FileSystem& files, std::string phoneFolder)
        : _files(files), _phoneFolder(std::move(phoneFolder)) {}

    /// From here on each of the phone's files is read once at most.
    void readOnce() { _kept.emplace(); }

    /// From here on, the file of this machine stands in for the phone's list. It is read now, and
    /// once. An empty path names none, and changes nothing. A problem, with nothing changed, when the
    /// file is no list of answers.
    platform::Result<platform::Done> useFile(const std::string& path);

    std::optional<platform::Value> copyAnswer(std::string_view key) override;

private:
    std::optional<platform::Value> listedAnswer(std::string_view key) const;
    std::optional<platform::Value> phoneFileEntry(std::string_view path, std::string_view key) const;
    std::optional<platform::Dictionary> readPhoneFile(std::string_view path) const;

    const platform::FileSystem& _files;
    std::string _phoneFolder;
    std::optional<platform::Dictionary> _userList;
    /// What has been read, where that is kept.
    using Kept = std::map<std::string, std::optional<platform::Dictionary>, std::less<>>;
    mutable std::optional<Kept> _kept;
};

}  // namespace hosts
