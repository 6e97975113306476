// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/phones/phone_file_system.h"
#include "platform/services/file_system.h"
#include "platform/services/skip_listener.h"

namespace hosts {

/// The phone's file system as the programs have it. Their user may want to know what is passed over:
/// files and folders that are there and cannot be read, and property lists that are none. Without a
/// listener that costs nothing.
class InspectedPhone final : public platform::FileSystem {
public:
    explicit InspectedPhone(PhoneFileSystem files) : _files(std::move(files)) {}

    /// `listener` outlives the object; null for none.
    void tell(platform::SkipListener* listener) { _listener = listener; }

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override;
    std::vector<std::string> listFolder(std::string_view path) const override;
    /// More than is read of a file is not written: the file would count as nothing from then on.
    bool writeFileAtomically(std::string_view path, std::string_view contents) override;

    /// What became of the last write, as PhoneFileSystem tells it.
    const std::string& lastError() const { return _lastError; }

private:
    PhoneFileSystem _files;
    platform::SkipListener* _listener = nullptr;
    std::string _lastError;
};

}  // namespace hosts
