// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/services/file_system.h"

namespace hosts {

/// How much one piece of work may take from the phone before everything else reads as missing.
struct FileRation {
    std::size_t calls;  ///< files and folders asked for, there or not
    std::size_t names;  ///< names listed, in all folders together
    std::size_t bytes;  ///< bytes read, of all files together
};

/// The phone's file system for one piece of work. A phone may hold anything, a folder of links to
/// itself for one: a ration keeps the work short, whatever is there.
class RationedFiles {
public:
    RationedFiles(const platform::FileSystem& files, const FileRation& ration) : _files(files), _left(ration) {}

    /// As `FileSystem::look`.
    std::optional<platform::Stamp> look(std::string_view path);

    /// As `FileSystem::readFile`.
    std::optional<platform::Stamp> readFile(std::string_view path, std::string& contents, std::size_t limit);

    /// As `FileSystem::listFolder`. The folder that exceeds the ration reads as empty.
    std::vector<std::string> listFolder(std::string_view path);

    /// As `FileSystem::expect`; `isFar` tells whether it is worth while.
    void expect(std::span<const std::string> files, std::span<const std::string> folders) const {
        _files.expect(files, folders);
    }
    bool isFar() const { return _files.isFar(); }

    /// For what is read of small files, one after the other: made once, where making it for each file
    /// would cost more than reading it.
    std::string& room() { return _room; }

    const FileRation& left() const { return _left; }

    /// The path that was asked for first when the ration did not reach; empty when it always has.
    const std::string& firstRefused() const { return _firstRefused; }

private:
    bool takeCall(std::string_view path);
    void refuse(std::string_view path);

    const platform::FileSystem& _files;
    FileRation _left;
    std::string _firstRefused;
    std::string _room;
};

}  // namespace hosts
