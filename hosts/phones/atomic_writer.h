// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"

namespace hosts {

/// One atomic write of a file of the phone: a new file beside the old one, made durable, then put in
/// its place by one rename. The old file's permissions and owner are kept; a new file gets 0644.
/// Folders that the path lacks are made (0755) and stay, even when the write then fails.
///
/// A symbolic link at the path stays, and the file that it leads to is replaced, when that is a
/// regular file inside the phone. A link to anything else, or to nothing, is itself replaced, and so
/// are a FIFO, a socket and a device. A folder is not replaced: the write fails.
class AtomicWriter {
public:
    /// Where a write stopped.
    struct Failure {
        const char* step;
        int error;  ///< an errno value
    };

    AtomicWriter(FileCalls& calls, int root) : _calls(calls), _root(root) {}

    /// Nothing when all went well.
    std::optional<Failure> write(std::string_view path, std::string_view contents);

private:
    // An entry of a folder, whether anything goes by that name yet or not.
    struct Place {
        Descriptor folder;
        std::string name;
        std::optional<struct stat> old;

        bool holds(mode_t kind) const { return old && (old->st_mode & S_IFMT) == kind; }
    };

    std::optional<Place> findPlace(std::string_view path);
    // The regular file that a link leads to; nothing, with errno set, when it leads to none.
    std::optional<Place> followLink(std::string_view path, const Place& link);
    std::optional<Place> lookAt(Descriptor folder, std::string_view name);
    std::optional<std::string> linkTarget(const Place& link);
    Descriptor openFolder(std::string_view path);
    Descriptor openOrMakeFolder(std::string_view path);
    Descriptor openOrMakeChild(const Descriptor& parent, std::string_view path, const std::string& name);
    bool makeFolder(const Descriptor& parent, const std::string& name);
    bool synchroniseFolder(const Descriptor& folder);
    bool replace(const Place& place, std::string_view contents);
    bool check(bool succeeded, const char* step);

    FileCalls& _calls;
    int _root;
    std::optional<Failure> _failure;
};

}  // namespace hosts
