// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The phone's file system, as far as the pane needs it. Paths are the phone's own and absolute
/// ("/var/mobile/Library/Preferences/…"); where they lie on the machine at hand is the host's
/// business.
class FileSystem {
public:
    /// The most bytes that a file is read with when the caller names no other limit: far above any
    /// property list of settings, and little enough to be refused before it hurts.
    static constexpr std::size_t usualReadLimit = std::size_t{64} << 20;

    virtual ~FileSystem() = default;

    /// Reads a whole regular file into `contents`, whose capacity is reused. False, with `contents`
    /// empty, when there is no such file, it is no regular file, it holds more than `limit` bytes,
    /// or it cannot be read.
    virtual bool readFile(std::string_view path, std::string& contents, std::size_t limit) const = 0;

    bool readFile(std::string_view path, std::string& contents) const {
        return readFile(path, contents, usualReadLimit);
    }

    /// The names of a folder's entries, without "." and "..", in byte order. Empty when there is no
    /// such folder, it cannot be read, or it has more entries than the host is ready to list.
    virtual std::vector<std::string> listFolder(std::string_view path) const = 0;

    /// Replaces the file, or makes it, in one step: any reader finds either the old content or the
    /// new one, whole, and so does whoever comes after a crash. False when it did not work: the old
    /// file then stands as it was, unless all that failed was making the new file's name durable,
    /// and then the new one stands, whole.
    virtual bool writeFileAtomically(std::string_view path, std::string_view contents) = 0;
};

}  // namespace platform
