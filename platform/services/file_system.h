// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The phone's file system, as far as the pane needs it. Paths are the phone's own and absolute
/// ("/var/mobile/Library/Preferences/…"); where they lie on the machine at hand is the host's
/// business.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Reads a whole regular file into `contents`, whose capacity is reused. False, with `contents`
    /// empty, when there is no such file, it is no regular file, or it cannot be read.
    virtual bool readFile(std::string_view path, std::string& contents) const = 0;

    /// Replaces the file, or makes it, in one step: any reader finds either the old content or the
    /// new one, whole, and so does whoever comes after a crash. False when it did not work; the old
    /// file then stands as it was.
    virtual bool writeFileAtomically(std::string_view path, std::string_view contents) = 0;
};

}  // namespace platform
