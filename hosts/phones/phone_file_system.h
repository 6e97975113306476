// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/phone.h"
#include "hosts/phones/phone_listener.h"
#include "hosts/system/descriptor.h"
#include "platform/services/file_system.h"

namespace hosts {

/// The phone's file system, in a folder of this machine that stands for its root. The folder is
/// opened once, and no path leads out of it: links and ".." are resolved as if it were the root.
///
/// Reading waits for nothing but, a second at most, a lease: a FIFO, a device or a socket where a file should be is a
/// problem. What writing does with links, folders and permissions is told with AtomicChange.
///
/// For one thread at a time.
class PhoneFileSystem final : public platform::FileSystem {
public:
    /// A problem when the folder cannot be opened. `calls` outlives the object.
    static platform::Result<PhoneFileSystem> open(const std::string& folder, FileCalls& calls = FileCalls::system());

    /// From here on the listener, which may be null and else outlives the object, is told of what the file system does
    /// not promise and, where `tellsPassedOver`, of files and folders that are there and cannot be read, and of
    /// property lists that are none. Without the latter nothing is looked into for it.
    void tell(PhoneListener* listener, bool tellsPassedOver);

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<platform::Stamp> readAgain(std::string_view path, std::string& contents) const override;
    /// At most 262,144 entries.
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override;
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

    PhonePromises promises() const;

    /// The folder's own descriptor, for as long as the object lives: what is confined to the phone starts from it.
    int root() const { return _root.get(); }

private:
    PhoneFileSystem(Descriptor root, FileCalls& calls);
    bool isConfinedByKernel() const;
    Descriptor openPath(std::string_view path, int flags) const;
    Descriptor openFile(std::string_view path, int flags) const;
    Descriptor openByEitherName(std::string_view path, int flags) const;
    std::optional<std::string> whyUnread(std::string_view path, std::size_t limit) const;
    std::optional<std::string> whyUnlisted(std::string_view path) const;
    std::optional<std::string> whyUnreached(std::string_view path) const;

    Descriptor _root;
    FileCalls* _calls;
    /// Such a file system may remember what a path led to, and know nothing of a file that is just being replaced.
    bool _isOfProgram;
    PhoneListener* _listener = nullptr;
    bool _tellsPassedOver = false;
};

}  // namespace hosts
