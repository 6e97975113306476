// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/system/descriptor.h"
#include "platform/services/file_system.h"

namespace hosts {

/// The phone's file system, in a folder of this machine that stands for its root. The folder is
/// opened once, and no path leads out of it: links and ".." are resolved as if it were the root.
///
/// Reading never waits: a FIFO, a device or a socket where a file should be reads as nothing. What
/// writing does with links, folders and permissions is told with AtomicWriter.
///
/// For one thread at a time.
class PhoneFileSystem final : public platform::FileSystem {
public:
    enum class FileKind { nothing, regularFile, folder, other };

    /// Nothing, with one line in `error` that says why, when the folder cannot be opened or the
    /// kernel cannot confine look-ups to it. `calls` outlives the object.
    static std::optional<PhoneFileSystem> open(const std::string& folder, std::string& error,
                                               FileCalls& calls = FileCalls::system());

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override;
    /// At most 262,144 entries; a larger folder reads as an empty one.
    std::vector<std::string> listFolder(std::string_view path) const override;
    bool writeFileAtomically(std::string_view path, std::string_view contents) override;

    /// What the path leads to, links followed.
    FileKind fileKind(std::string_view path) const;

    /// Why `readFile` or `listFolder` gave nothing for what is there, in one clause; nothing when
    /// there is no such thing. Asks the kernel anew.
    std::optional<std::string> whyUnread(std::string_view path, std::size_t limit) const;
    std::optional<std::string> whyUnlisted(std::string_view path) const;

    /// What became of the last write: empty when it worked, else one line with the phone's path of
    /// the file, the step that failed and the reason.
    const std::string& lastError() const { return _lastError; }

private:
    PhoneFileSystem(Descriptor root, FileCalls& calls);
    Descriptor openPath(std::string_view path, int flags) const;
    std::optional<std::string> whyUnreached(std::string_view path) const;

    Descriptor _root;
    FileCalls* _calls;
    std::string _lastError;
};

}  // namespace hosts
